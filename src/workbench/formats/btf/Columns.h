#pragma once
// One line of a BTF file: time,source,source instance,type,target,target instance,event[,note].

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvx::formats::btf {

struct Columns {
    std::int64_t time = 0;  // in the file's unit
    std::string_view source;
    std::string_view type;
    std::string_view target;
    std::string_view targetInstance;
    std::string_view event;
    std::string_view note;
};

// None: there are too few columns, or the first is no time.
std::optional<Columns> SplitColumns(std::string_view line);

// The types of entities that the format knows, "T" and so on.
bool IsEntityType(std::string_view type);

}  // namespace kvx::formats::btf
