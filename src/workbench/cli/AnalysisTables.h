#pragma once
// The three analysis tables as a script or a terminal wants them: columns by name, rows as texts or
// as JSON.

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analyze/model/CsvWriter.h"
#include "trace/TraceData.h"

namespace kvx::cli {

class AnalysisTable {
  public:
    AnalysisTable(COSTraceData& data, EAnalysis which) : data_(data), which_(which) {}

    EAnalysis Which() const { return which_; }
    // "Run Time", "Rdy->Run", "System Call".
    const char* Title() const;
    // Key of its rows in JSON: "run_time", "rdy_run", "system_calls".
    const char* Key() const;

    struct Column {
        const char* name;   // as an option gives it
        const char* title;  // as the window shows it
        bool right;         // aligned to the right
    };
    const std::vector<Column>& Columns() const;
    // False when the table has no such column.
    bool Sort(std::string_view column, bool descending);

    // Display rows, in display order. Texts are the window's without leading blanks.
    int RowCount() const;
    std::vector<std::string> Texts(int row) const;
    nlohmann::ordered_json Json(int row) const;

  private:
    std::vector<std::string> ShownTexts(int row) const;
    nlohmann::ordered_json RunTimeJson(int row) const;
    nlohmann::ordered_json RdyToRunJson(int row) const;
    nlohmann::ordered_json SysCallJson(int row) const;

    COSTraceData& data_;
    EAnalysis which_;
};

}  // namespace kvx::cli
