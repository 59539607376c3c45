#include "traceview/TraceColumns.h"

#include "utils/NumberList.h"

TraceColumns::TraceColumns()
    : CColumnTable({{"VEC", 5}, {"table", 8}, {"ID", 5}, {"(name)", 12}, {"", 0}}) {}

void TraceColumns::Layout(int charWidth) {
    SetCharWidth(charWidth);
    LayOut();
}

CString TraceColumns::SettingsText() const {
    return kvx::JoinNumbers(Characters());
}

bool TraceColumns::TakeSettings(const CString& text) {
    const auto widths = kvx::ParseNumbers(text, Count());
    if (widths) SetCharacters(*widths);
    return widths.has_value();
}
