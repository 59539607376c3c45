#include "analyze/AnalyzeColumns.h"

#include "utils/NumberList.h"

AnalyzeColumns::AnalyzeColumns() {
    for (const kvx::AnalysisForm* const form : COSTraceData::kForms) {
        std::vector<CColumnTable::Column> columns;
        for (const kvx::AnalysisColumn& column : form->columns) {
            const bool isTime = column.kind == kvx::ValueKind::Time;
            columns.push_back(
                {column.title, column.width, isTime ? CellAlign::Right : CellAlign::Left});
        }
        tables_.emplace_back(std::move(columns));
    }
}

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
