#pragma once
// The viewer's menus: what the component adds, merged with the viewer's own. Popups of the same
// text are one.

#include <functional>
#include <optional>
#include <vector>

#include "host/DockingHost.h"
#include "platform/base/Types.h"

namespace kvx::viewer {

// One command of whoever carries it out.
struct Command {
    IQCommandTarget* target = nullptr;
    std::uint32_t id = 0;
    friend bool operator==(const Command&, const Command&) = default;
};

struct MenuEntry {
    CString text;                  // with "&"; empty: a separator
    Command command;               // no target: a popup, or a separator
    std::uint32_t identifier = 0;  // of the registration that it came with
    std::vector<MenuEntry> children;
    bool IsPopup() const { return !command.target && !text.empty(); }
};

// The text of a command's key, or an empty one.
using KeyText = std::function<CString(const Command&)>;

// What the target says of the command; nobody handles it: disabled.
CommandState StateOf(const Command& command);

class MenuTree {
  public:
    // The popups of the bar, in the order in which they came.
    const std::vector<MenuEntry>& Popups() const { return popups_; }
    void Merge(const MenuNode& root, IQCommandTarget* target, std::uint32_t identifier);
    // Takes out what came with the identifier, and popups that have nothing left.
    void Remove(std::uint32_t identifier);

  private:
    std::vector<MenuEntry> popups_;
};

// Shows the popup at the screen point until the user chooses or leaves; what was chosen.
std::optional<Command> AskPopup(const MenuEntry& popup, POINT screen, const KeyText& keyText);

}  // namespace kvx::viewer
