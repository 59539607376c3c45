#pragma once
// The columns of the three tables of the OS Analyze window.

#include <array>

#include "analyze/model/CsvWriter.h"
#include "framework/ColumnTable.h"

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

    // Twenty-three numbers: the mode, then the widths of all columns in characters.
    CString SettingsText(int mode) const;
    // A text that is not twenty-three numbers changes nothing.
    void TakeSettings(const CString& text, int* mode);

  private:
    std::array<CColumnTable, 3> tables_;
};
