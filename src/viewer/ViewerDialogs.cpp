#include "viewer/ViewerDialogs.h"

#include "viewer/FindDialog.h"
#include "viewer/PickUpDialog.h"

namespace kvx::viewer {

bool ViewerDialogs::AskSearchCondition(service::SearchCondition& condition) {
    FindDialog dialog(condition, history_, &parent_);
    if (dialog.DoModal() != IDOK) return false;
    condition = condition_ = dialog.Condition();
    std::erase(history_, condition.text);
    history_.insert(history_.begin(), condition.text);
    return true;
}

bool ViewerDialogs::AskPickUp(const std::vector<service::NameCount>& calls,
                              service::PickUp& chosen) {
    PickUpDialog dialog(calls, &parent_);
    if (dialog.DoModal() != IDOK) return false;
    chosen = dialog.Chosen();
    return true;
}

}  // namespace kvx::viewer
