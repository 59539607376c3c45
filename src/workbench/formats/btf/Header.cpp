#include "workbench/formats/btf/Header.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"
#include "workbench/service/TraceClock.h"

namespace kvx::formats::btf {
namespace {

std::string_view Trim(std::string_view text) {
    return TrimStart(TrimEnd(text));
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

}  // namespace

void Header::Add(std::string_view line) {
    line.remove_prefix(1);
    line = Trim(line);
    const auto blank = std::min(line.find_first_of(" \t"), line.size());
    const auto key = Lower(line.substr(0, blank));
    const auto value = Trim(line.substr(blank));
    if (key.starts_with('-')) {
        if (open_) open_->insert_or_assign(key.substr(1), std::string(value));
        return;
    }
    open_ = key == "typetable" ? &types_ : key == "entitytable" ? &entities_ : nullptr;
    if (key != "timescale") return;
    const service::TraceClock clock(service::TimeUnitOf(Lower(value)));
    if (clock.Known()) nanoseconds_ = clock.NanosecondsPerCount();
}

std::string_view Header::Find(const Table& table, std::string_view column) {
    if (table.empty()) return column;
    auto number = column;
    if (number.starts_with('-')) number.remove_prefix(1);
    const auto at = table.find(number);
    return at == table.end() ? column : std::string_view(at->second);
}

}  // namespace kvx::formats::btf
