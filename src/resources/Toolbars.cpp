
#include "host/CommandIds.h"
#include "resources/OSAnalyzeIcons.h"
#include "resources/OSTraceIcons.h"
#include "resources/Tables.h"

namespace kvx::resources {
namespace {

using namespace kvx::ids;

constexpr UINT kOSTraceButtons[] = {kStartMarker,
                                    kEndMarker,
                                    kIndicator,
                                    0,
                                    kAdjust,
                                    kExpand,
                                    kReduce,
                                    0,
                                    kRangeFullCommand,
                                    kRangeFreeCommand,
                                    kSearch,
                                    kSearchPrevious,
                                    kSearchNext,
                                    0,
                                    kTraceStop,
                                    kTraceRestart,
                                    kValue,
                                    kColor,
                                    kDefaultOrder,
                                    0,
                                    kShowLine,
                                    kHideLine};
constexpr UINT kOSAnalyzeButtons[] = {kRunTime, kRdyToRun, kSystemCall, 0, kPickUp, kSave};
constexpr UINT kOpenTraceButtons[] = {kOpenOSTrace};
constexpr UINT kOpenAnalyzeButtons[] = {kOpenOSAnalyze};

constexpr auto kOSTraceStrip = MakeStrip(std::array<IconText, 18>{
    kIconStartMarker, kIconEndMarker, kIconIndicator, kIconAdjust, kIconExpand, kIconReduce,
    kIconRangeFull, kIconRangeFree, kIconSearch, kIconSearchPrevious, kIconSearchNext,
    kIconTraceStop, kIconTraceRestart, kIconValue, kIconColor, kIconDefaultOrder, kIconShowLine,
    kIconHideLine});
constexpr auto kOSAnalyzeStrip = MakeStrip(
    std::array<IconText, 5>{kIconRunTime, kIconRdyToRun, kIconSystemCall, kIconPickUp, kIconSave});
constexpr auto kOpenTraceStrip = MakeStrip(std::array<IconText, 1>{kIconOpenOSTrace});
constexpr auto kOpenAnalyzeStrip = MakeStrip(std::array<IconText, 1>{kIconOpenOSAnalyze});

template <std::size_t Buttons, std::size_t Pixels>
constexpr ToolbarResource Toolbar(UINT id, const UINT (&buttons)[Buttons],
                                  const std::array<std::uint32_t, Pixels>& strip) {
    constexpr auto kImages = static_cast<std::uint32_t>(Pixels / (kIconSize * kIconSize));
    return {id,           buttons, static_cast<std::uint32_t>(Buttons), kIconSize, kIconSize,
            strip.data(), kImages};
}

constexpr ToolbarResource kToolbars[] = {
    Toolbar(kToolbarHostOSTrace, kOpenTraceButtons, kOpenTraceStrip),
    Toolbar(kToolbarOSTrace, kOSTraceButtons, kOSTraceStrip),
    Toolbar(kToolbarHostOSAnalyze, kOpenAnalyzeButtons, kOpenAnalyzeStrip),
    Toolbar(kToolbarOSAnalyze, kOSAnalyzeButtons, kOSAnalyzeStrip),
};

}  // namespace

std::span<const ToolbarResource> Toolbars() {
    return kToolbars;
}

}  // namespace kvx::resources
