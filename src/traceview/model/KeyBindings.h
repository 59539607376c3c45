#pragma once
// The keys of the OS Trace window, in one table: the view acts on it, and the key sheet and the
// help page are made from it.

#include <optional>
#include <span>

#include "platform/base/Types.h"

namespace kvx {

enum class KeyAction {
    kPageUp,
    kPageDown,
    kTop,
    kBottom,
    kLineUp,
    kLineDown,
    kTimeLeft,
    kTimeRight,
    kExpand,
    kReduce,
    kAdjust,
    kDisplayBack,
    kDisplayForward,
    kSearch,
    kSearchNext,
    kSearchPrevious,
    kCancelDrag,
    kKeySheet,
    // Mouse wheel: not looked up by a key, but part of the sheet.
    kWheelLines,
    kWheelTime,
    kWheelZoom,
};

struct KeyModifiers {
    bool control = false;
    bool shift = false;
    bool alt = false;
    friend bool operator==(const KeyModifiers&, const KeyModifiers&) = default;
};

struct KeyBinding {
    UINT key = 0;            // virtual-key code; 0: by character
    char character = 0;      // 0: by key
    KeyModifiers modifiers;  // by key only: a character needs the Shift that makes it
    KeyAction action = KeyAction::kPageUp;
    const char* keyText = "";
    const char* meaning = "";
};

std::span<const KeyBinding> KeyBindings();
// Keys that scroll do so whatever is held down with them, unless that is another binding.
std::optional<KeyAction> FindKeyAction(UINT key, const KeyModifiers& modifiers);
std::optional<KeyAction> FindCharacterAction(UINT character);

}  // namespace kvx
