#include "viewer/FindDialog.h"

#include "host/CommandIds.h"
#include "platform/controls/Button.h"
#include "platform/controls/ComboBox.h"

namespace kvx::viewer {

FindDialog::FindDialog(const service::SearchCondition& condition,
                       const std::vector<CString>& history, CWnd* parent)
    : CDialog(ids::kDialogFind, parent), condition_(condition), history_(history) {}

const MessageMap& FindDialog::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_BN_CLICKED<ids::kFindNext, &FindDialog::OnFindNext>(),
        ON_BN_CLICKED<IDCLOSE, &FindDialog::OnClose>(),
    };
    static const MessageMap kMap{&CDialog::GetMessageMap(), kEntries};
    return kMap;
}

void FindDialog::Check(UINT button, bool on) {
    if (auto* const found = dynamic_cast<CButton*>(GetDlgItem(button)))
        found->SetCheck(on ? BST_CHECKED : BST_UNCHECKED);
}

bool FindDialog::IsChecked(UINT button) const {
    const auto* const found = dynamic_cast<const CButton*>(GetDlgItem(button));
    return found && found->GetCheck() == BST_CHECKED;
}

bool FindDialog::OnInitDialog() {
    if (auto* const text = dynamic_cast<CComboBox*>(GetDlgItem(ids::kFindText))) {
        for (const CString& each : history_) text->AddString(each);
        text->SetWindowText(condition_.text);
    }
    Check(ids::kFindMatchCase, condition_.matchCase);
    Check(ids::kFindWildCard, condition_.wildCard);
    Check(condition_.upwards ? ids::kFindUp : ids::kFindDown, true);
    return CDialog::OnInitDialog();
}

void FindDialog::OnFindNext() {
    condition_ = {GetDlgItemText(ids::kFindText), IsChecked(ids::kFindMatchCase),
                  IsChecked(ids::kFindWildCard), IsChecked(ids::kFindUp)};
    EndDialog(IDOK);
}

}  // namespace kvx::viewer
