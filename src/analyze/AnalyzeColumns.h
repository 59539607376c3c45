#pragma once
// The columns of the tables of the OS Analyze window.

#include <vector>

#include "framework/ColumnTable.h"
#include "trace/TraceData.h"

class AnalyzeColumns {
  public:
    AnalyzeColumns();

    CColumnTable& operator[](EAnalysis table) { return tables_[static_cast<std::size_t>(table)]; }
    const CColumnTable& operator[](EAnalysis table) const {
        return tables_[static_cast<std::size_t>(table)];
    }
    // Widths in pixels from those in characters, of all tables.
    void SetCharWidth(int charWidth);
    // Edges from left to right, of all tables.
    void LayOut();

    // The mode, then the widths of all columns in characters: twenty-three numbers.
    CString SettingsText(int mode) const;
    // A text that is not so many numbers changes nothing.
    void TakeSettings(const CString& text, int* mode);

  private:
    std::vector<CColumnTable> tables_;  // in the order of COSTraceData::kForms
};
