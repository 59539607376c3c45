#include "analyze/AnalyzeColumns.h"

#include "utils/NumberList.h"

namespace {

constexpr int kTimeWidth = 22;

CColumnTable::Column Time(const char* title) {
    return {title, kTimeWidth, CellAlign::Right};
}

}  // namespace

AnalyzeColumns::AnalyzeColumns()
    : tables_{CColumnTable{{"VEC", 5},
                           {"table", 8},
                           {"ID", 5},
                           {"(name)", 12},
                           {"Num", 7},
                           Time("Max"),
                           Time("Min"),
                           Time("Avg"),
                           Time("Total"),
                           {"Ratio%", 8},
                           {"", 18}},
              CColumnTable{
                  {"ID", 5}, {"(name)", 12}, {"Num", 8}, Time("Max"), Time("Min"), Time("Avg")},
              CColumnTable{{"No", 7},
                           {"System Call", 13},
                           {"Parameter", 35},
                           {"Return Parameter", 35},
                           Time("TIME")}} {}

void AnalyzeColumns::SetCharWidth(int charWidth) {
    for (CColumnTable& table : tables_) table.SetCharWidth(charWidth);
}

void AnalyzeColumns::LayOut() {
    for (CColumnTable& table : tables_) table.LayOut();
}

CString AnalyzeColumns::SettingsText(int mode) const {
    std::vector<int> numbers = {mode};
    for (const CColumnTable& table : tables_) {
        const std::vector<int> widths = table.Characters();
        numbers.insert(numbers.end(), widths.begin(), widths.end());
    }
    return kvx::JoinNumbers(numbers);
}

void AnalyzeColumns::TakeSettings(const CString& text, int* mode) {
    std::size_t count = 1;
    for (const CColumnTable& table : tables_) count += table.Count();
    const auto numbers = kvx::ParseNumbers(text, count);
    if (!numbers) return;
    *mode = numbers->front();
    std::span<const int> widths = std::span(*numbers).subspan(1);
    for (CColumnTable& table : tables_) {
        table.SetCharacters(widths.first(table.Count()));
        widths = widths.subspan(table.Count());
    }
}
