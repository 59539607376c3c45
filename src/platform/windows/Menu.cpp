#include "platform/windows/Menu.h"

#include <utility>

#include "platform/Backend.h"
#include "platform/base/Resources.h"
#include "platform/windows/WindowState.h"
#include "platform/windows/Wnd.h"

namespace {
constexpr UINT kNoItem = 0xFFFFFFFFu;
}

bool CMenu::LoadMenu(UINT id) {
    const auto items = FindMenu(id);
    items_.clear();
    Load(items.data(), items.size());
    return !items.empty();
}

void CMenu::Load(const MenuItemResource* items, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const MenuItemResource& item = items[i];
        if (!item.text)
            AppendMenu(MF_SEPARATOR);
        else if (item.children)
            AppendPopup(item.text)->Load(item.children, item.childCount);
        else
            AppendMenu(MF_STRING, item.command, item.text);
    }
}

bool CMenu::CreatePopupMenu() {
    items_.clear();
    return true;
}

void CMenu::AppendMenu(UINT flags, UINT id, const CString& text) {
    Item item;
    if (!(flags & MF_SEPARATOR)) {
        item.id = id;
        item.text = text;
        item.enabled = !(flags & MF_GRAYED);
        item.checked = (flags & MF_CHECKED) != 0;
    }
    items_.push_back(std::move(item));
}

CMenu* CMenu::AppendPopup(const CString& text) {
    Item item;
    item.text = text;
    item.popup = std::make_unique<CMenu>();
    items_.push_back(std::move(item));
    return items_.back().popup.get();
}

bool CMenu::DeleteMenu(UINT item, UINT flags) {
    for (auto it = items_.begin(); it != items_.end(); ++it) {
        const bool byPosition = (flags & MF_BYPOSITION) != 0;
        const bool match = byPosition ? static_cast<UINT>(it - items_.begin()) == item
                                      : !it->popup && !it->IsSeparator() && it->id == item;
        if (match) {
            items_.erase(it);
            return true;
        }
        if (!byPosition && it->popup && it->popup->DeleteMenu(item, flags)) return true;
    }
    return false;
}

UINT CMenu::GetMenuItemID(int position) const {
    const Item* item = Find(static_cast<UINT>(position), MF_BYPOSITION);
    return !item || item->popup ? kNoItem : item->id;
}

CMenu* CMenu::GetSubMenu(int position) const {
    const Item* item = Find(static_cast<UINT>(position), MF_BYPOSITION);
    return item ? item->popup.get() : nullptr;
}

int CMenu::GetMenuString(UINT item, CString& text, UINT flags) const {
    const Item* found = Find(item, flags);
    text = found ? found->text : CString();
    return static_cast<int>(text.size());
}

void CMenu::EnableMenuItem(UINT item, UINT flags) {
    if (Item* found = Find(item, flags)) found->enabled = !(flags & MF_GRAYED);
}

void CMenu::CheckMenuItem(UINT item, UINT flags) {
    if (Item* found = Find(item, flags)) found->checked = (flags & MF_CHECKED) != 0;
}

const CMenu::Item* CMenu::Find(UINT item, UINT flags) const {
    if (flags & MF_BYPOSITION) return item < items_.size() ? &items_[item] : nullptr;
    for (const Item& each : items_) {
        if (!each.popup && !each.IsSeparator() && each.id == item) return &each;
        if (const Item* found = each.popup ? each.popup->Find(item, flags) : nullptr) return found;
    }
    return nullptr;
}

CMenu::Item* CMenu::Find(UINT item, UINT flags) {
    return const_cast<Item*>(std::as_const(*this).Find(item, flags));
}

// Commands that nobody handles are shown disabled.
void CMenu::Update(CWnd* window) {
    for (Item& item : items_) {
        if (item.popup) {
            item.popup->Update(window);
        } else if (!item.IsSeparator()) {
            CCmdUI ui(item.id);
            item.enabled = window->OnUpdateCommand(item.id, ui) && ui.IsEnabled();
            item.checked = ui.Check() != 0;
            if (!ui.Text().empty()) item.text = ui.Text();
        }
    }
}

UINT CMenu::TrackPopupMenu(POINT screen, CWnd* window) {
    kvx::EndCapture();
    if (window) Update(window);
    const UINT choice = kvx::Backend().Dialogs().PopupMenu(*this, screen);
    const HWND handle = window ? window->GetSafeHwnd() : nullptr;
    if (choice != 0 && handle) SendMessage(handle, WM_COMMAND, MakeCommand(choice), 0);
    return choice;
}
