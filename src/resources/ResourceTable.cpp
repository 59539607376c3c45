#include "resources/Tables.h"

namespace kvx::resources {
namespace {

template <class Entry>
void Point(const Entry*& to, std::uint32_t& count, std::span<const Entry> entries) {
    to = entries.data();
    count = static_cast<std::uint32_t>(entries.size());
}

ResourceTable MakeTable() {
    ResourceTable table;
    Point(table.strings, table.stringCount, Strings());
    Point(table.menus, table.menuCount, Menus());
    Point(table.toolbars, table.toolbarCount, Toolbars());
    Point(table.dialogs, table.dialogCount, Dialogs());
    Point(table.cursors, table.cursorCount, Cursors());
    Point(table.accelerators, table.acceleratorCount, Accelerators());
    return table;
}

}  // namespace

const ResourceTable& Table() {
    static const ResourceTable table = MakeTable();
    return table;
}

}  // namespace kvx::resources
