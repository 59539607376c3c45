#pragma once
// Hands out the lines of a text log in the order of its index.

#include <cstdint>
#include <string_view>

#include "workbench/formats/text/LineIndex.h"

namespace kvx::formats {

class LineReader {
  public:
    // The index must outlive the reader.
    explicit LineReader(const LineIndex& index) : index_(index) {}

    // The record that Next hands out; must be one of the index.
    void Seek(std::uint32_t record);
    std::uint32_t Position() const { return next_; }
    // The line of the record without its end. There must be one more.
    std::string_view Next();

  private:
    std::string_view TakeLine();

    const LineIndex& index_;
    std::uint32_t next_ = 0;
    std::size_t segment_ = 0;   // the one that next_ lies in
    std::uint64_t offset_ = 0;  // where its line, or blank lines before it, begin
    bool positioned_ = false;
};

}  // namespace kvx::formats
