#pragma once
// Asks what system call to search for, with the template of the resource library.

#include "platform/dialogs/Dialog.h"
#include "workbench/service/Dialogs.h"

namespace kvx::viewer {

class FindDialog : public CDialog {
  public:
    // condition: what the controls show first; history: texts searched for before, newest first.
    FindDialog(const service::SearchCondition& condition, const std::vector<CString>& history,
               CWnd* parent);
    const service::SearchCondition& Condition() const { return condition_; }

    bool OnInitDialog() override;

  protected:
    const MessageMap& GetMessageMap() const override;

  private:
    void OnFindNext();
    void OnClose() { EndDialog(IDCANCEL); }
    void Check(UINT button, bool on);
    bool IsChecked(UINT button) const;

    service::SearchCondition condition_;
    const std::vector<CString>& history_;
};

}  // namespace kvx::viewer
