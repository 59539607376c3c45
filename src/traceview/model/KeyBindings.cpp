#include "traceview/model/KeyBindings.h"

#include <algorithm>

#include "platform/base/Keys.h"

namespace kvx {
namespace {

using enum KeyAction;

constexpr KeyModifiers kControl{true, false, false};
constexpr KeyModifiers kShift{false, true, false};
constexpr KeyModifiers kAlt{false, false, true};

constexpr KeyBinding Key(UINT key, KeyAction action, const char* keyText, const char* meaning) {
    return {key, 0, {}, action, keyText, meaning};
}
constexpr KeyBinding Character(char character, KeyAction action, const char* keyText,
                               const char* meaning) {
    return {0, character, {}, action, keyText, meaning};
}
constexpr KeyBinding Wheel(KeyAction action, const char* keyText, const char* meaning) {
    return {0, 0, {}, action, keyText, meaning};
}

constexpr KeyBinding kBindings[] = {
    Key(VK_LEFT, kTimeLeft, "Left", "Scroll back in time"),
    Key(VK_RIGHT, kTimeRight, "Right", "Scroll forward in time"),
    Key(VK_UP, kLineUp, "Up", "Scroll one line up"),
    Key(VK_DOWN, kLineDown, "Down", "Scroll one line down"),
    Key(VK_PRIOR, kPageUp, "Page Up", "Scroll one page of lines up"),
    Key(VK_NEXT, kPageDown, "Page Down", "Scroll one page of lines down"),
    Key(VK_HOME, kTop, "Home", "Go to the first line"),
    Key(VK_END, kBottom, "End", "Go to the last line"),
    Character('+', kExpand, "+", "Expand the time scale"),
    Character('-', kReduce, "-", "Reduce the time scale"),
    Key('F', kAdjust, "F", "Adjust the display to start and end marker"),
    {VK_LEFT, 0, kAlt, kDisplayBack, "Alt+Left", "Go back to the display before a zoom or a jump"},
    {VK_RIGHT, 0, kAlt, kDisplayForward, "Alt+Right", "Go forward to the display again"},
    {'F', 0, kControl, kSearch, "Ctrl+F", "Search for a system call"},
    Key(VK_F3, kSearchNext, "F3", "Search the next match"),
    {VK_F3, 0, kShift, kSearchPrevious, "Shift+F3", "Search the previous match"},
    Key(VK_ESCAPE, kCancelDrag, "Esc", "End a drag without effect"),
    Character('?', kKeySheet, "?", "Show this sheet"),
    Wheel(kWheelLines, "Wheel", "Scroll the lines"),
    Wheel(kWheelTime, "Shift+Wheel", "Scroll in time"),
    Wheel(kWheelZoom, "Ctrl+Wheel", "Expand and reduce about the pointer"),
};

}  // namespace

std::span<const KeyBinding> KeyBindings() {
    return kBindings;
}

std::optional<KeyAction> FindKeyAction(UINT key, const KeyModifiers& modifiers) {
    const auto find = [key](const KeyModifiers& wanted) -> std::optional<KeyAction> {
        const auto found = std::ranges::find_if(kBindings, [&](const KeyBinding& each) {
            return each.key != 0 && each.key == key && each.modifiers == wanted;
        });
        if (found == std::end(kBindings)) return std::nullopt;
        return found->action;
    };
    if (const auto action = find(modifiers)) return action;
    return key >= VK_PRIOR && key <= VK_DOWN ? find({}) : std::nullopt;
}

std::optional<KeyAction> FindCharacterAction(UINT character) {
    for (const KeyBinding& each : kBindings) {
        if (each.character != 0 && static_cast<UINT>(each.character) == character) {
            return each.action;
        }
    }
    return std::nullopt;
}

}  // namespace kvx
