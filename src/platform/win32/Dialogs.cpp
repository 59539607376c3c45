#include "platform/win32/Dialogs.h"

#include <algorithm>

#include "platform/os/windows/Wide.h"
#include "platform/win32/Convert.h"
#include "platform/win32/PlainWindow.h"
#include "platform/win32/Screens.h"

namespace kvx::win32 {

namespace {

constexpr std::size_t kLongestPath = 32768;

struct MenuDeleter {
    void operator()(win::HMENU menu) const { win::DestroyMenu(menu); }
};
using MenuHandle = std::unique_ptr<std::remove_pointer_t<win::HMENU>, MenuDeleter>;

// Pairs of a label and its patterns, each ended by a null, and one null more.
std::wstring FiltersOf(const std::vector<FileFilter>& filters) {
    std::wstring all;
    for (const FileFilter& filter : filters) {
        (all += os::Wide(filter.label)) += L'\0';
        (all += os::Wide(filter.patterns)) += L'\0';
    }
    return all += L'\0';
}

win::HMENU Make(const CMenu& menu) {
    const win::HMENU made = win::CreatePopupMenu();
    for (const CMenu::Item& item : menu.Items()) {
        const std::wstring text = os::Wide(item.text);
        if (item.IsSeparator()) {
            win::AppendMenuW(made, MF_SEPARATOR, 0, nullptr);
        } else if (item.popup) {
            win::AppendMenuW(made, MF_POPUP, reinterpret_cast<std::uintptr_t>(Make(*item.popup)),
                             text.c_str());
        } else {
            const auto state = static_cast<UINT>((item.enabled ? MF_ENABLED : MF_GRAYED) |
                                                 (item.checked ? MF_CHECKED : MF_UNCHECKED));
            win::AppendMenuW(made, state, item.id, text.c_str());
        }
    }
    return made;
}

void Read(win::HMENU from, CMenu& menu) {
    for (int i = 0; i < win::GetMenuItemCount(from); ++i) {
        wchar_t text[256];
        win::MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
        item.dwTypeData = text;
        item.cch = 256;
        if (!win::GetMenuItemInfoW(from, static_cast<UINT>(i), 1, &item)) continue;
        const CString words = os::Narrow({text, item.fType & MFT_SEPARATOR ? 0 : item.cch});
        if (item.fType & MFT_SEPARATOR)
            menu.AppendMenu(MF_SEPARATOR);
        else if (item.hSubMenu)
            Read(item.hSubMenu, *menu.AppendPopup(words));
        else
            menu.AppendMenu(static_cast<UINT>((item.fState & MFS_DISABLED ? MF_GRAYED : 0) |
                                              (item.fState & MFS_CHECKED ? MF_CHECKED : 0)),
                            item.wID, words);
    }
}

}  // namespace

int Win32Dialogs::MessageBox(const MessageBoxRequest& request) {
    return win::MessageBoxW(ToSystem(request.owner), os::Wide(request.text).c_str(),
                            os::Wide(request.caption).c_str(), request.type);
}

// Whether a file that is there is written over is asked by the layer above.
CString Win32Dialogs::File(const FileDialogRequest& request) {
    const std::wstring filters = FiltersOf(request.filters);
    const std::wstring title = os::Wide(request.title);
    std::wstring directory = os::Wide(request.directory);
    std::ranges::replace(directory, L'/', L'\\');
    std::wstring path = os::Wide(request.name);
    path.resize(kLongestPath);
    win::OPENFILENAMEW asked = {};
    asked.lStructSize = sizeof asked;
    asked.hwndOwner = ToSystem(request.owner);
    asked.lpstrFilter = request.filters.empty() ? nullptr : filters.c_str();
    asked.lpstrFile = path.data();
    asked.nMaxFile = static_cast<win::DWORD>(path.size());
    asked.lpstrInitialDir = directory.empty() ? nullptr : directory.c_str();
    asked.lpstrTitle = title.empty() ? nullptr : title.c_str();
    asked.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    const bool chosen =
        request.open ? win::GetOpenFileNameW(&asked) : win::GetSaveFileNameW(&asked);
    return chosen ? os::Narrow(path.c_str()) : CString();
}

std::optional<COLORREF> Win32Dialogs::Colour(COLORREF initial, HWND owner) {
    static win::COLORREF custom[16] = {};
    win::CHOOSECOLORW asked = {};
    asked.lStructSize = sizeof asked;
    asked.hwndOwner = ToSystem(owner);
    asked.rgbResult = initial;
    asked.lpCustColors = custom;
    asked.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!win::ChooseColorW(&asked)) return {};
    return static_cast<COLORREF>(asked.rgbResult);
}

// The system asks for a window that the menu belongs to; it gets no command.
UINT Win32Dialogs::PopupMenu(const CMenu& menu, POINT screen) {
    const MenuHandle shown(Make(menu));
    const win::HWND active = win::GetActiveWindow();
    const win::HWND owner = active ? active : win::GetDesktopWindow();
    const win::POINT at = Screens::ToDevice(screen);
    return static_cast<UINT>(win::TrackPopupMenuEx(shown.get(), TPM_RETURNCMD | TPM_NONOTIFY,
                                                   static_cast<int>(at.x), static_cast<int>(at.y),
                                                   owner, nullptr));
}

bool Win32Dialogs::ReadMenuBar(HWND window, CMenu& menu) {
    const win::HMENU bar = win::GetMenu(ToSystem(window));
    if (bar) Read(bar, menu);
    return bar != nullptr;
}

void Win32Dialogs::RunModal(HWND window) {
    if (const auto plain = PlainWindow::Of(ToSystem(window))) plain->RunModal();
}

void Win32Dialogs::EndModal(HWND window) {
    if (const auto plain = PlainWindow::Of(ToSystem(window))) plain->EndModal();
}

}  // namespace kvx::win32
