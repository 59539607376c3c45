#include <iterator>

#include "host/CommandIds.h"
#include "resources/Tables.h"

namespace kvx::resources {
namespace {

constexpr MenuItemResource kSeparator = {nullptr, 0};

template <std::size_t N>
constexpr MenuItemResource Popup(const char* text, const MenuItemResource (&items)[N]) {
    return {text, 0, items, static_cast<std::uint32_t>(N)};
}

// Host menus: View > RTOS.
constexpr MenuItemResource kOpenTrace[] = {{"&OSTrace", ids::kOpenOSTrace}};
constexpr MenuItemResource kOpenAnalyze[] = {{"OS &Analyze", ids::kOpenOSAnalyze}};
constexpr MenuItemResource kRtosTrace[] = {Popup("&RTOS", kOpenTrace)};
constexpr MenuItemResource kRtosAnalyze[] = {Popup("&RTOS", kOpenAnalyze)};
constexpr MenuItemResource kHostTrace[] = {Popup("&View", kRtosTrace)};
constexpr MenuItemResource kHostAnalyze[] = {Popup("&View", kRtosAnalyze)};

constexpr MenuItemResource kTraceRange[] = {
    {"&Full", ids::kRangeFullCommand},
    {"F&ree", ids::kRangeFreeCommand},
};

constexpr MenuItemResource kOSTrace[] = {
    {"&Start Marker", ids::kStartMarker},
    {"&End Marker", ids::kEndMarker},
    {"&Indicator", ids::kIndicator},
    kSeparator,
    {"&Adjust", ids::kAdjust},
    {"&Expand", ids::kExpand},
    {"&Reduce", ids::kReduce},
    kSeparator,
    Popup("Trace &Range", kTraceRange),
    {"Trace Sto&p", ids::kTraceStop},
    {"Trace Res&tart", ids::kTraceRestart},
    kSeparator,
    {"&Search...", ids::kSearch},
    {"Search &Previous", ids::kSearchPrevious},
    {"Search &Next", ids::kSearchNext},
    kSeparator,
    {"&Value...", ids::kValue},
    {"&Color...", ids::kColor},
    {"Default &Order", ids::kDefaultOrder},
    kSeparator,
    {"Show &Line", ids::kShowLine},
    {"&Hide Line", ids::kHideLine},
    kSeparator,
    {"Toolbar display", ids::kToolbarDisplay},
    {"Customize toolbar...", ids::kCustomizeToolbar},
    kSeparator,
    {"Allow Docking", ids::kAllowDocking},
    {"Hide", ids::kHide},
};

constexpr MenuItemResource kOSAnalyze[] = {
    {"&Run Time", ids::kRunTime},
    {"R&dy->Run", ids::kRdyToRun},
    {"&System Call", ids::kSystemCall},
    {"&Pick Up System Call...", ids::kPickUp},
    kSeparator,
    {"S&ave...", ids::kSave},
    kSeparator,
    {"Toolbar display", ids::kToolbarDisplay},
    {"Customize toolbar...", ids::kCustomizeToolbar},
    kSeparator,
    {"Allow Docking", ids::kAllowDocking},
    {"Hide", ids::kHide},
};

constexpr MenuItemResource kTraceMenu[] = {Popup("OSTrace", kOSTrace)};
constexpr MenuItemResource kAnalyzeMenu[] = {Popup("OSAnalyze", kOSAnalyze)};

constexpr MenuResource kMenus[] = {
    {ids::kMenuHostOSTrace, kHostTrace, std::size(kHostTrace)},
    {ids::kMenuOSTrace, kTraceMenu, std::size(kTraceMenu)},
    {ids::kMenuHostOSAnalyze, kHostAnalyze, std::size(kHostAnalyze)},
    {ids::kMenuOSAnalyze, kAnalyzeMenu, std::size(kAnalyzeMenu)},
};

}  // namespace

std::span<const MenuResource> Menus() {
    return kMenus;
}

}  // namespace kvx::resources
