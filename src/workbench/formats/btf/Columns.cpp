#include "workbench/formats/btf/Columns.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::btf {

std::optional<Columns> SplitColumns(std::string_view line) {
    constexpr std::size_t kColumns = 8;
    std::array<std::string_view, kColumns> column;
    std::size_t count = 0;
    while (count + 1 < kColumns) {
        const auto comma = line.find(',');
        column[count++] = line.substr(0, comma);
        if (comma == std::string_view::npos) break;
        line.remove_prefix(comma + 1);
        if (count + 1 == kColumns) column[count++] = line;  // a note may hold commas
    }
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
