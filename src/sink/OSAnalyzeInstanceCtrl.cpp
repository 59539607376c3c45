#include "sink/OSAnalyzeInstanceCtrl.h"

#include "analyze/AnalyzeView.h"
#include "host/CommandIds.h"
#include "utils/PlaceholderExpander.h"

namespace ids = kvx::ids;

namespace {

constexpr UINT kOptionalCommands[] = {ids::kSave};
constexpr WindowTraits kTraits = {ids::kOpenOSAnalyze,    ids::kMenuOSAnalyze,
                                  ids::kToolbarOSAnalyze, kOptionalCommands,
                                  "OSAnalyzeView",        "OSAnalyze.chm>F1HelpWindow"};
constexpr char kConfigurationDirectory[] = "$(CONFIGDIR)";
constexpr char kFilePattern[] = "/*.csv";

}  // namespace

CKvxOSAnalyzeInstanceCtrl::CKvxOSAnalyzeInstanceCtrl(IQHost* host, IDockingManager* docking,
                                                     COSTraceData& data)
    : CFrameInstanceCtrl(host, docking, frame_, kTraits), data_(data) {}

const MessageMap& CKvxOSAnalyzeInstanceCtrl::GetMessageMap() const {
    using Self = CKvxOSAnalyzeInstanceCtrl;
    static constexpr MessageMapEntry kEntries[] = {ON_COMMAND<ids::kSave, &Self::OnSave>()};
    static const MessageMap kMap{&CFrameInstanceCtrl::GetMessageMap(), kEntries};
    return kMap;
}

const IViewSender* CKvxOSAnalyzeInstanceCtrl::Sender() const {
    return frame_.AnalyzeView();
}

void CKvxOSAnalyzeInstanceCtrl::ConnectView() {
    if (COSAnalyzeView* view = frame_.AnalyzeView()) view->Connect(data_, *this);
}

void CKvxOSAnalyzeInstanceCtrl::OnSave() {
    const CString folder = CPlaceholderExpander(Host()).Expand(kConfigurationDirectory);
    if (COSAnalyzeView* view = frame_.AnalyzeView()) view->Save(folder + kFilePattern);
}
