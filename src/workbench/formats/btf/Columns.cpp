#include "workbench/formats/btf/Columns.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::btf {

std::optional<Columns> SplitColumns(std::string_view line) {
    constexpr std::size_t kColumns = 8;
    std::array<std::string_view, kColumns> column;
    std::size_t count = 0;
    std::size_t begin = 0;
    // Columns are too short for a search in the library to be worth its call.
    for (std::size_t at = 0; at < line.size() && count + 1 < kColumns; ++at) {
        if (line[at] != ',') continue;
        column[count++] = line.substr(begin, at - begin);
        begin = at + 1;
    }
    column[count++] = line.substr(begin);  // a note may hold commas
    if (count + 1 < kColumns) return std::nullopt;
    LineCursor cursor(column[0]);
    const auto time = cursor.AcceptNumber<std::int64_t>();
    if (!time || !cursor.AtEnd() || column[6].empty()) return std::nullopt;
    return Columns{*time, column[1], column[3], column[4], column[5], column[6], column[7]};
}

bool IsEntityType(std::string_view type) {
    constexpr std::array<std::string_view, 18> kTypes = {
        "T",     "I",   "ISR", "R",   "IB",  "STI",   "ECU",     "P",        "C",
        "SCHED", "SIG", "SEM", "SIM", "SYS", "EVENT", "OSEVENT", "SPINLOCK", "S"};
    return std::ranges::find(kTypes, type) != kTypes.end();
}

}  // namespace kvx::formats::btf
