#pragma once
// The lines of a BTF file that begin with "#": its unit of time, and tables that give numbers to
// names.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace kvx::formats::btf {

class Header {
  public:
    // A line that begins with "#". Keys that are not known are passed over.
    void Add(std::string_view line);

    std::int64_t NanosecondsPerCount() const { return nanoseconds_; }
    // What stands for the text of a column: its name in a table, or the text itself.
    std::string_view Type(std::string_view column) const { return Find(types_, column); }
    std::string_view Entity(std::string_view column) const { return Find(entities_, column); }

  private:
    using Table = std::map<std::string, std::string, std::less<>>;
    static std::string_view Find(const Table& table, std::string_view column);

    std::int64_t nanoseconds_ = 1;
    Table types_;
    Table entities_;
    Table* open_ = nullptr;  // the one whose lines are being read
};

}  // namespace kvx::formats::btf
