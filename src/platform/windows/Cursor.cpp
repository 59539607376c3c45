#include "platform/windows/Cursor.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Backend.h"
#include "platform/base/Resources.h"

namespace {

// A cursor of the resources with pixels of its own: it outlives the resource module.
struct LoadedCursor {
    std::vector<std::uint32_t> pixels;
    CursorResource image;
    CursorData data;
};

HCURSOR g_current = nullptr;

}  // namespace

HCURSOR LoadStandardCursor(StandardCursor cursor) {
    static std::map<StandardCursor, CursorData> cursors;
    CursorData& data = cursors[cursor];
    data.standard = cursor;
    return &data;
}

HCURSOR LoadCursor(UINT id) {
    static std::map<std::pair<const ResourceTable*, UINT>, std::unique_ptr<LoadedCursor>> cursors;
    const CursorResource* resource = FindCursor(id);
    if (!resource) return nullptr;
    auto& cursor = cursors[{GetResourceTable(), id}];
    if (!cursor) {
        const std::size_t count = std::size_t{resource->width} * resource->height;
        cursor = std::make_unique<LoadedCursor>();
        cursor->pixels.assign(resource->pixels, resource->pixels + count);
        cursor->image = *resource;
        cursor->image.pixels = cursor->pixels.data();
        cursor->data.image = &cursor->image;
    }
    return &cursor->data;
}

HCURSOR SetCursor(HCURSOR cursor) {
    if (kvx::IBackend* backend = kvx::InstalledBackend()) backend->Desktop().ShowCursor(cursor);
    return std::exchange(g_current, cursor);
}
