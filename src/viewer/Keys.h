#pragma once
// Keys that give commands, as the component describes them.

#include <optional>
#include <vector>

#include "viewer/MenuTree.h"

namespace kvx::viewer {

struct CommandKey {
    Accelerator key;
    IQCommandTarget* target = nullptr;
    std::uint32_t identifier = 0;  // of the registration that it came with
};

// The command of the key that goes down now, with the modifiers that are held.
std::optional<Command> CommandOf(const std::vector<CommandKey>& keys, UINT key);
// "Ctrl+F", of the first key of the command; empty: it has none.
CString KeyTextOf(const std::vector<CommandKey>& keys, const Command& command);

}  // namespace kvx::viewer
