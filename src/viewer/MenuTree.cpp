#include "viewer/MenuTree.h"

#include <algorithm>

#include "platform/windows/Menu.h"

namespace kvx::viewer {
namespace {

// Help stays last.
std::vector<MenuEntry>::iterator EndOf(std::vector<MenuEntry>& entries) {
    const bool help = !entries.empty() && entries.back().text == "&Help";
    return help ? std::prev(entries.end()) : entries.end();
}

void MergeInto(std::vector<MenuEntry>& into, const MenuNode& node, IQCommandTarget* target,
               std::uint32_t identifier) {
    for (std::uint32_t i = 0; i < node.childCount; ++i) {
        const MenuNode& child = node.children[i];
        const CString text = ToUtf8(child.text);
        if (child.childCount == 0) {
            const bool separator = text.empty();
            into.push_back(
                {text, separator ? Command{} : Command{target, child.command}, identifier, {}});
            continue;
        }
        auto popup = std::ranges::find_if(
            into, [&](const MenuEntry& each) { return each.IsPopup() && each.text == text; });
        if (popup == into.end()) popup = into.insert(EndOf(into), {text, {}, identifier, {}});
        MergeInto(popup->children, child, target, identifier);
    }
}

void RemoveFrom(std::vector<MenuEntry>& entries, std::uint32_t identifier) {
    for (MenuEntry& entry : entries) RemoveFrom(entry.children, identifier);
    std::erase_if(entries, [&](const MenuEntry& entry) {
        return entry.IsPopup() ? entry.children.empty() : entry.identifier == identifier;
    });
}

// Numbers the commands from 1 on, in the order in which they stand in chosen.
void Fill(CMenu& menu, const std::vector<MenuEntry>& entries, const KeyText& keyText,
          std::vector<Command>& commands) {
    for (const MenuEntry& entry : entries) {
        if (entry.IsPopup()) {
            Fill(*menu.AppendPopup(entry.text), entry.children, keyText, commands);
        } else if (entry.text.empty()) {
            menu.AppendMenu(MF_SEPARATOR);
        } else {
            commands.push_back(entry.command);
            const CommandState state = StateOf(entry.command);
            const CString key = keyText(entry.command);
            menu.AppendMenu((state.enabled ? 0 : MF_GRAYED) | (state.checked ? MF_CHECKED : 0),
                            static_cast<UINT>(commands.size()),
                            key.empty() ? entry.text : entry.text + "\t" + key);
        }
    }
}

}  // namespace

CommandState StateOf(const Command& command) {
    CommandState state;
    if (Failed(command.target->OnUpdateCommand(command.id, &state))) return {0, 0};
    return state;
}

void MenuTree::Merge(const MenuNode& root, IQCommandTarget* target, std::uint32_t identifier) {
    MergeInto(popups_, root, target, identifier);
}

void MenuTree::Remove(std::uint32_t identifier) {
    RemoveFrom(popups_, identifier);
}

std::optional<Command> AskPopup(const MenuEntry& popup, POINT screen, const KeyText& keyText) {
    std::vector<Command> commands;
    CMenu menu;
    menu.CreatePopupMenu();
    Fill(menu, popup.children, keyText, commands);
    const UINT choice = menu.TrackPopupMenu(screen, nullptr);
    if (choice == 0 || choice > commands.size()) return std::nullopt;
    return commands[choice - 1];
}

}  // namespace kvx::viewer
