#include "viewer/PickUpDialog.h"

#include "host/CommandIds.h"
#include "platform/base/SystemInfo.h"
#include "platform/controls/Button.h"
#include "platform/dialogs/MessageBox.h"

namespace kvx::viewer {

PickUpDialog::PickUpDialog(const std::vector<service::NameCount>& calls, CWnd* parent)
    : CDialog(ids::kDialogPickUp, parent), calls_(calls) {}

const MessageMap& PickUpDialog::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_BN_CLICKED<ids::kPickUpAll, &PickUpDialog::OnAll>(),
        ON_BN_CLICKED<ids::kPickUpNone, &PickUpDialog::OnNone>(),
    };
    static const MessageMap kMap{&CDialog::GetMessageMap(), kEntries};
    return kMap;
}

CCheckListBox* PickUpDialog::List() const {
    return dynamic_cast<CCheckListBox*>(GetDlgItem(ids::kPickUpList));
}

bool PickUpDialog::OnInitDialog() {
    for (const service::NameCount& call : calls_)
        List()->AddString(call.name + " (" + std::to_string(call.count) + ")");
    return CDialog::OnInitDialog();
}

void PickUpDialog::TickAll(bool tick) {
    for (int i = 0; i < List()->GetCount(); ++i)
        List()->SetCheck(i, tick ? BST_CHECKED : BST_UNCHECKED);
}

void PickUpDialog::OnOK() {
    chosen_.names.clear();
    for (std::size_t i = 0; i < calls_.size(); ++i) {
        if (List()->GetCheck(static_cast<int>(i)) == BST_CHECKED)
            chosen_.names.push_back(calls_[i].name);
    }
    if (chosen_.names.empty()) return MessageBeep(MB_OK);
    CDialog::OnOK();
}

}  // namespace kvx::viewer
