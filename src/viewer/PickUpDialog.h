#pragma once
// Asks which of the system calls that occur the history is to be restricted to.

#include "platform/controls/ListBox.h"
#include "platform/dialogs/Dialog.h"
#include "workbench/service/Dialogs.h"

namespace kvx::viewer {

class PickUpDialog : public CDialog {
  public:
    PickUpDialog(const std::vector<service::NameCount>& calls, CWnd* parent);
    // Names of the ticked calls, in the order of the list.
    const service::PickUp& Chosen() const { return chosen_; }

    bool OnInitDialog() override;

  protected:
    const MessageMap& GetMessageMap() const override;
    // Without a ticked call there is nothing to pick up: the dialog stays.
    void OnOK() override;

  private:
    void OnAll() { TickAll(true); }
    void OnNone() { TickAll(false); }
    void TickAll(bool tick);
    CCheckListBox* List() const;

    const std::vector<service::NameCount>& calls_;
    service::PickUp chosen_;
};

}  // namespace kvx::viewer
