#include "sink/OSTraceInstanceCtrl.h"

#include "host/CommandIds.h"
#include "trace/TraceData.h"
#include "traceview/TraceView.h"

namespace ids = kvx::ids;

namespace {

constexpr UINT kSecondaryGroup = 1906;
constexpr UINT kOptionalCommands[] = {ids::kValue, ids::kColor, ids::kDefaultOrder};
constexpr WindowTraits kTraits = {ids::kOpenOSTrace, ids::kMenuOSTrace, ids::kToolbarOSTrace,
                                  kOptionalCommands, "OSTraceView",     "OSTrace.chm>F1HelpWindow"};

}  // namespace

CKvxOSTraceInstanceCtrl::CKvxOSTraceInstanceCtrl(IQHost* host, IDockingManager* docking,
                                                 COSTraceData& data)
    : CFrameInstanceCtrl(host, docking, frame_, kTraits), data_(data) {}

const IViewSender* CKvxOSTraceInstanceCtrl::Sender() const {
    return frame_.TraceView();
}

// A new window begins with nothing decoded: what an earlier one left is discarded.
void CKvxOSTraceInstanceCtrl::ConnectView() {
    COSTraceView* const view = frame_.TraceView();
    if (!view) return;
    data_.engine.Clear(view, 1);
    view->Connect(data_, *this);
}

void CKvxOSTraceInstanceCtrl::RegisterGroups(IDockingManager& docking) {
    docking.RegisterGroup(kSecondaryGroup, SecondaryId(), kvx::host::kSecondToolbarOwner);
}
