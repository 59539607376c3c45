#include "traceview/TraceColumns.h"

#include <algorithm>
#include <charconv>

#include "platform/Text.h"

namespace {

constexpr std::array<const char*, TraceColumns::kCount> kTitles = {"VEC", "table", "ID", "(name)",
                                                                   ""};
constexpr std::array<int, TraceColumns::kCount> kDefaultCharacters = {5, 8, 5, 12, 0};
constexpr int kGrip = 2;  // pixels on both sides of an edge
constexpr int kLeastWidth = 3;

}  // namespace

TraceColumns::TraceColumns() {
    for (std::size_t i = 0; i < kCount; ++i) columns_[i].characters = kDefaultCharacters[i];
}

const char* TraceColumns::Title(std::size_t which) { return kTitles[which]; }

void TraceColumns::Layout(int charWidth) {
    int x = 0;
    for (Column& column : columns_) {
        column.width = std::max(column.characters, 0) * charWidth;
        if (!column.visible) continue;
        column.left = x;
        column.right = x += column.width;
    }
}

std::optional<std::size_t> TraceColumns::EdgeAt(int x) const {
    for (std::size_t i = 0; i < kChart; ++i) {
        const int edge = columns_[i].right;
        if (columns_[i].visible && edge - kGrip < x && x < edge + kGrip) return i;
    }
    return std::nullopt;
}

int TraceColumns::ClampEdge(std::size_t which, int x, int clientWidth) const {
    const int least = columns_[which].left + kLeastWidth;
    return std::max(std::min(x, clientWidth - kLeastWidth), least);
}

void TraceColumns::SetRightEdge(std::size_t which, int x, int charWidth) {
    Column& column = columns_[which];
    column.right = x;
    column.width = x - column.left;
    column.characters = charWidth > 0 ? column.width / charWidth : column.characters;
}

CString TraceColumns::SettingsText() const {
    const auto& c = columns_;
    return kvx::FormatText("%d,%d,%d,%d,%d", c[0].characters, c[1].characters, c[2].characters,
                           c[3].characters, c[4].characters);
}

bool TraceColumns::TakeSettings(const CString& text) {
    std::array<int, kCount> widths{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < kCount; ++i) {
        const auto [next, error] = std::from_chars(at, end, widths[i]);
        const bool last = i + 1 == kCount;
        if (error != std::errc() || (last ? next != end : next == end || *next != ',')) return false;
        at = next + 1;
    }
    for (std::size_t i = 0; i < kCount; ++i) columns_[i].characters = widths[i];
    return true;
}
