#include "platform/base/Resources.h"

#include "platform/base/Module.h"

namespace {

HINSTANCE g_module = nullptr;
const ResourceTable* g_table = nullptr;

template <class Entry>
const Entry* Find(const Entry* ResourceTable::*list, std::uint32_t ResourceTable::*count, UINT id) {
    if (!g_table) return nullptr;
    const Entry* const entries = g_table->*list;
    for (std::uint32_t i = 0; i < g_table->*count; ++i)
        if (entries[i].id == id) return &entries[i];
    return nullptr;
}

}  // namespace

void AfxSetResourceHandle(HINSTANCE module) {
    g_module = module;
    g_table = nullptr;
    if (!module) return;
    const auto get = GetProcAddress<GetKvxResourcesFunction>(module, kGetKvxResourcesName);
    SetResourceTable(get ? get() : nullptr);
}

HINSTANCE AfxGetResourceHandle() {
    return g_module;
}

void SetResourceTable(const ResourceTable* table) {
    g_table = table && table->version == kResourceTableVersion ? table : nullptr;
}

const ResourceTable* GetResourceTable() {
    return g_table;
}

const char* FindString(UINT id) {
    const auto* entry = Find(&ResourceTable::strings, &ResourceTable::stringCount, id);
    return entry ? entry->text : nullptr;
}

std::span<const MenuItemResource> FindMenu(UINT id) {
    const auto* entry = Find(&ResourceTable::menus, &ResourceTable::menuCount, id);
    if (!entry) return {};
    return {entry->items, entry->count};
}

const ToolbarResource* FindToolbar(UINT id) {
    return Find(&ResourceTable::toolbars, &ResourceTable::toolbarCount, id);
}

const BitmapResource* FindBitmap(UINT id) {
    return Find(&ResourceTable::bitmaps, &ResourceTable::bitmapCount, id);
}

const CursorResource* FindCursor(UINT id) {
    return Find(&ResourceTable::cursors, &ResourceTable::cursorCount, id);
}

const DialogResource* FindDialog(UINT id) {
    return Find(&ResourceTable::dialogs, &ResourceTable::dialogCount, id);
}

std::span<const AcceleratorResource> FindAccelerators(UINT id) {
    const auto* entry = Find(&ResourceTable::accelerators, &ResourceTable::acceleratorCount, id);
    if (!entry) return {};
    return {entry->keys, entry->count};
}

CString LoadString(UINT id) {
    const char* text = FindString(id);
    return text ? text : "";
}
