#include "viewer/Keys.h"

#include <algorithm>

#include "platform/base/Keys.h"

namespace kvx::viewer {
namespace {

bool IsHeld(UINT key) {
    return GetKeyState(key) < 0;
}

CString NameOf(std::uint16_t key) {
    if (key == VK_ADD) return "+";
    if (key == VK_SUBTRACT) return "-";
    if (key >= VK_F1 && key <= VK_F12) return "F" + std::to_string(key - VK_F1 + 1);
    return CString(1, static_cast<char>(key));
}

}  // namespace

std::optional<Command> CommandOf(const std::vector<CommandKey>& keys, UINT key) {
    const bool control = IsHeld(VK_CONTROL);
    const bool shift = IsHeld(VK_SHIFT);
    const bool alt = IsHeld(VK_MENU);
    const auto found = std::ranges::find_if(keys, [&](const CommandKey& each) {
        return each.key.key == key && (each.key.control != 0) == control &&
               (each.key.shift != 0) == shift && (each.key.alt != 0) == alt;
    });
    if (found == keys.end()) return std::nullopt;
    return Command{found->target, found->key.command};
}

CString KeyTextOf(const std::vector<CommandKey>& keys, const Command& command) {
    const auto found = std::ranges::find_if(keys, [&](const CommandKey& each) {
        return each.target == command.target && each.key.command == command.id;
    });
    if (found == keys.end()) return {};
    CString text;
    if (found->key.control) text += "Ctrl+";
    if (found->key.alt) text += "Alt+";
    if (found->key.shift) text += "Shift+";
    return text + NameOf(found->key.key);
}

}  // namespace kvx::viewer
