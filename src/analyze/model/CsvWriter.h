#pragma once
// A table as comma-separated values, in display order. Lines end in CR LF; fields are neither
// quoted nor escaped.

#include <functional>
#include <string_view>
#include <utility>

#include "analyze/model/SharedAnalysis.h"

class CCsvWriter {
  public:
    // The row that is written in place k.
    using RowAt = std::function<int(int k)>;
    // Borrows the table.
    CCsvWriter(const kvx::Analysis& table, RowAt rowAt) : table_(table), rowAt_(std::move(rowAt)) {}
    explicit CCsvWriter(const kvx::SharedAnalysis& table)
        : CCsvWriter(table, [&table](int k) { return table.Row(k); }) {}

    struct Failure {
        bool opened = false;  // false: the file could not be opened; true: writing failed
        CString reason;       // of the system
    };
    // 1: written. 0: failure tells why (when given), and what the file holds is not to be trusted.
    int Write(const CString& path, Failure* failure = nullptr) const;

    // Each line, ended by CR LF, until the sink answers false; false then.
    using Sink = std::function<bool(std::string_view line)>;
    bool WriteLines(const Sink& sink) const;

  private:
    const kvx::Analysis& table_;
    RowAt rowAt_;
};
