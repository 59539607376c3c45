#include <iterator>

#include "host/CommandIds.h"
#include "platform/base/Keys.h"
#include "resources/Tables.h"

namespace kvx::resources {
namespace {

// Where nothing speaks against it, the underlined letter of the menu text. Keys that the view acts
// on by itself are here as well where they mean a command, so that a host shows them beside the
// menu text; those that belong to a host are not.
constexpr AcceleratorResource Key(char letter, UINT command) {
    return {static_cast<std::uint16_t>(letter), false, false, false, command};
}

constexpr AcceleratorResource kOSTrace[] = {
    Key('S', ids::kStartMarker),
    Key('E', ids::kEndMarker),
    Key('I', ids::kIndicator),
    Key('V', ids::kValue),
    Key('C', ids::kColor),
    Key('O', ids::kDefaultOrder),
    Key('L', ids::kShowLine),
    Key('H', ids::kHideLine),
    Key('F', ids::kAdjust),
    {VK_ADD, false, false, false, ids::kExpand},
    {VK_SUBTRACT, false, false, false, ids::kReduce},
    {'F', true, false, false, ids::kSearch},
    {VK_F3, false, false, false, ids::kSearchNext},
    {VK_F3, false, true, false, ids::kSearchPrevious},
};

constexpr AcceleratorResource kOSAnalyze[] = {
    Key('R', ids::kRunTime), Key('D', ids::kRdyToRun), Key('S', ids::kSystemCall),
    Key('P', ids::kPickUp),  Key('A', ids::kSave),
};

constexpr AcceleratorTableResource kAccelerators[] = {
    {ids::kMenuOSTrace, kOSTrace, std::size(kOSTrace)},
    {ids::kMenuOSAnalyze, kOSAnalyze, std::size(kOSAnalyze)},
};

}  // namespace

std::span<const AcceleratorTableResource> Accelerators() {
    return kAccelerators;
}

}  // namespace kvx::resources
