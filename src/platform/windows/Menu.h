#pragma once
// Menus as trees of items. A menu is a model: who shows it (the host, TrackPopupMenu) reads it.

#include <memory>
#include <vector>

#include "platform/base/Object.h"
#include "platform/base/Types.h"

class CWnd;
struct MenuItemResource;

inline constexpr UINT MF_BYCOMMAND = 0x0000;
inline constexpr UINT MF_BYPOSITION = 0x0400;
inline constexpr UINT MF_STRING = 0x0000;
inline constexpr UINT MF_GRAYED = 0x0001;
inline constexpr UINT MF_CHECKED = 0x0008;
inline constexpr UINT MF_POPUP = 0x0010;
inline constexpr UINT MF_SEPARATOR = 0x0800;

class CMenu : public CObject {
  public:
    struct Item {
        UINT id = 0;  // 0: separator or popup
        CString text;
        bool enabled = true;
        bool checked = false;
        std::unique_ptr<CMenu> popup;
        bool IsSeparator() const { return !popup && text.empty(); }
    };

    // False when the current resources have no such menu.
    bool LoadMenu(UINT id);
    bool CreatePopupMenu();
    void AppendMenu(UINT flags, UINT id = 0, const CString& text = {});
    // The new popup, this menu's.
    CMenu* AppendPopup(const CString& text);
    bool DeleteMenu(UINT item, UINT flags);

    int GetMenuItemCount() const { return static_cast<int>(items_.size()); }
    UINT GetMenuItemID(int position) const;  // 0 for a separator; 0xFFFFFFFF for a popup or none
    CMenu* GetSubMenu(int position) const;   // null when the item is no popup
    // Answers the length, 0 when there is no such item. By command it looks into popups too.
    int GetMenuString(UINT item, CString& text, UINT flags) const;
    void EnableMenuItem(UINT item, UINT flags);
    void CheckMenuItem(UINT item, UINT flags);
    const std::vector<Item>& Items() const { return items_; }

    // Asks the window's update handlers, shows the menu at the screen point until the user chooses
    // or leaves, and sends the choice as WM_COMMAND. Answers the chosen id, or 0.
    UINT TrackPopupMenu(POINT screen, CWnd* window);

  private:
    void Load(const MenuItemResource* items, std::size_t count);
    Item* Find(UINT item, UINT flags);
    const Item* Find(UINT item, UINT flags) const;
    void Update(CWnd* window);
    std::vector<Item> items_;
};
