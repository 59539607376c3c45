#pragma once
// Resources as plain constant tables. A resource library is a module that exports one C function,
// GetKvxResources, which answers its table; everything that the table points to lives as long as
// the module. Texts are UTF-8. Pixels are 0xAARRGGBB, row by row from the top, alpha not
// premultiplied. A count says how many entries its pointer leads to; ids are unique within a list.

#include <cstdint>
#include <span>

#include "platform/base/Styles.h"
#include "platform/base/Types.h"

struct StringResource {
    UINT id;
    const char* text;
};

// One menu item: a separator (text null), a command (no children) or a popup (children, command 0).
// Prompts are no part of it: string <command> is "status text\ntool tip".
struct MenuItemResource {
    const char* text;  // with "&"; "\tCtrl+F" after it shows a key
    UINT command;
    const MenuItemResource* children = nullptr;
    std::uint32_t childCount = 0;
};

struct MenuResource {
    UINT id;
    const MenuItemResource* items;
    std::uint32_t count;
};

// One strip of equally large images side by side: width x height each, imageCount of them, so a row
// of pixels is width * imageCount long. Buttons are command ids, 0 is a separator; the n-th button
// that is no separator shows the n-th image.
struct ToolbarResource {
    UINT id;
    const UINT* buttons;
    std::uint32_t count;
    std::uint16_t width;
    std::uint16_t height;
    const std::uint32_t* pixels;
    std::uint32_t imageCount;
};

struct BitmapResource {
    UINT id;
    std::uint16_t width;
    std::uint16_t height;
    const std::uint32_t* pixels;
};

struct CursorResource {
    UINT id;
    std::uint16_t width;
    std::uint16_t height;
    std::uint16_t hotX;
    std::uint16_t hotY;
    const std::uint32_t* pixels;
};

enum class ControlClass : std::uint16_t {
    Button,  // push, check, radio, group box: by BS_ style
    Edit,
    Static,    // text, black frame: by SS_ style
    ListBox,   // plain or with check boxes: by LBS_ style
    ComboBox,  // height is that of the opened list
    ProgressBar,
};

// Rectangle in dialog units. WS_CHILD and WS_VISIBLE are implied by the dialog; WS_DISABLED is not.
struct ControlResource {
    ControlClass kind;
    UINT id;  // IDC_STATIC when nobody looks it up
    const char* text;
    std::int16_t x;
    std::int16_t y;
    std::int16_t width;
    std::int16_t height;
    DWORD style;
    DWORD exStyle = 0;
};

// Size of the client area in dialog units: a unit is a quarter of the average character width of
// the dialog's font, and an eighth of its height. Controls stand in Tab order.
struct DialogResource {
    UINT id;
    const char* title;
    std::int16_t width;
    std::int16_t height;
    const char* face;  // "MS Sans Serif"
    std::uint16_t points;
    DWORD style;
    const ControlResource* controls;
    std::uint32_t count;
};

// Keys are virtual-key codes (platform/base/Keys.h); letters and digits are their capital ASCII
// codes.
struct AcceleratorResource {
    std::uint16_t key;
    bool control;
    bool shift;
    bool alt;
    UINT command;
};

struct AcceleratorTableResource {
    UINT id;
    const AcceleratorResource* keys;
    std::uint32_t count;
};

inline constexpr std::uint32_t kResourceTableVersion = 1;

struct ResourceTable {
    std::uint32_t version = kResourceTableVersion;
    const StringResource* strings = nullptr;  // in any order
    std::uint32_t stringCount = 0;
    const MenuResource* menus = nullptr;
    std::uint32_t menuCount = 0;
    const ToolbarResource* toolbars = nullptr;
    std::uint32_t toolbarCount = 0;
    const BitmapResource* bitmaps = nullptr;
    std::uint32_t bitmapCount = 0;
    const CursorResource* cursors = nullptr;
    std::uint32_t cursorCount = 0;
    const DialogResource* dialogs = nullptr;
    std::uint32_t dialogCount = 0;
    const AcceleratorTableResource* accelerators = nullptr;
    std::uint32_t acceleratorCount = 0;
};

// What a resource library exports: extern "C" KVX_EXPORT const ResourceTable* GetKvxResources();
using GetKvxResourcesFunction = const ResourceTable* (*)();
inline constexpr char kGetKvxResourcesName[] = "GetKvxResources";

// A loaded module (platform/base/Module.h).
struct NativeModule;
using HMODULE = NativeModule*;
using HINSTANCE = HMODULE;

// The module whose resources the lookups below read. Setting it fetches the module's table; a
// module without one (or null) leaves the lookups empty. The module stays the caller's.
void AfxSetResourceHandle(HINSTANCE module);
HINSTANCE AfxGetResourceHandle();

// Sets the table itself, for resources that are linked in. The table must outlive its use.
void SetResourceTable(const ResourceTable* table);
const ResourceTable* GetResourceTable();

// Null or empty when the current table has no such entry.
const char* FindString(UINT id);
std::span<const MenuItemResource> FindMenu(UINT id);
const ToolbarResource* FindToolbar(UINT id);
const BitmapResource* FindBitmap(UINT id);
const CursorResource* FindCursor(UINT id);
const DialogResource* FindDialog(UINT id);
std::span<const AcceleratorResource> FindAccelerators(UINT id);

// The string, or an empty text.
CString LoadString(UINT id);
