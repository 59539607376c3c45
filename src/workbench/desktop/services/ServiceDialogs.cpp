#include "workbench/desktop/services/ServiceDialogs.h"

#include "workbench/desktop/QtText.h"
#include "workbench/desktop/services/FindDialog.h"
#include "workbench/desktop/services/PickUpDialog.h"

namespace kvx::desktop {
namespace {

constexpr char kHistory[] = "Find/history";
constexpr int kKept = 20;

}  // namespace

bool ServiceDialogs::AskSearchCondition(service::SearchCondition& condition) {
    QStringList history = settings_.Get(kHistory).toStringList();
    FindDialog dialog(condition, history, parent_);
    if (dialog.exec() != QDialog::Accepted) return false;
    condition = condition_ = dialog.Condition();
    const QString text = FromUtf8(condition.text);
    history.removeAll(text);
    history.prepend(text);
    settings_.Set(kHistory, history.mid(0, kKept));
    return true;
}

bool ServiceDialogs::AskPickUp(const std::vector<service::NameCount>& calls,
                               service::PickUp& chosen) {
    PickUpDialog dialog(calls, parent_);
    if (dialog.exec() != QDialog::Accepted) return false;
    chosen = dialog.Chosen();
    return true;
}

}  // namespace kvx::desktop
