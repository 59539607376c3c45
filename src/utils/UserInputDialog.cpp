#include "utils/UserInputDialog.h"

#include "host/CommandIds.h"
#include "platform/base/Text.h"
#include "platform/dialogs/Dialog.h"

namespace ids = kvx::ids;

namespace {

class CUserInputDialog : public CDialog {
  public:
    explicit CUserInputDialog(std::string_view name)
        : CDialog(ids::kDialogUserInput), name_(name) {}
    const CString& Answer() const { return answer_; }

    bool OnInitDialog() override {
        SetDlgItemText(ids::kUserInputLabel,
                       kvx::FormatResource(LoadString(ids::kStringUserInput), name_));
        return CDialog::OnInitDialog();
    }

  protected:
    void OnOK() override {
        answer_ = GetDlgItemText(ids::kUserInputEdit);
        CDialog::OnOK();
    }

  private:
    CString name_;
    CString answer_;
};

}  // namespace

CString AskUserInput(std::string_view name) {
    CUserInputDialog dialog(name);
    return dialog.DoModal() == IDOK ? dialog.Answer() : CString();
}
