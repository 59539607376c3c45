#include "platform/base/MessageMap.h"

#include <algorithm>

namespace {

template <class Match>
const MessageMapEntry* FindEntry(const MessageMap* map, Match match) {
    for (; map; map = map->base) {
        const auto found = std::ranges::find_if(map->entries, match);
        if (found != map->entries.end()) return &*found;
    }
    return nullptr;
}

bool HoldsId(const MessageMapEntry& entry, UINT id) {
    return entry.message == WM_COMMAND && entry.first <= id && id <= entry.last;
}

}  // namespace

const MessageMapEntry* MessageMap::FindMessage(UINT message) const {
    return FindEntry(this, [message](const MessageMapEntry& entry) {
        return entry.handler && entry.message == message;
    });
}

const MessageMapEntry* MessageMap::FindCommand(UINT id, UINT code) const {
    return FindEntry(this, [id, code](const MessageMapEntry& entry) {
        return entry.command && HoldsId(entry, id) && entry.code == code;
    });
}

const MessageMapEntry* MessageMap::FindUpdate(UINT id) const {
    return FindEntry(
        this, [id](const MessageMapEntry& entry) { return entry.update && HoldsId(entry, id); });
}
