#pragma once
// The tasks and handlers of a standard-format log, which it calls by name, and where they are.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/formats/text/ResourceFile.h"
#include "workbench/service/Record.h"

namespace kvx::formats::itron_standard {

struct Object {
    service::ContextKey key;
    std::uint32_t processor = service::kAnyProcessor;  // at the start
    // From which record on it is on another one; ascending.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> moves;

    std::uint32_t ProcessorAt(std::uint32_t record) const;
};

class Objects {
  public:
    // Those that the resource file names.
    explicit Objects(const ResourceFile& resources);

    const Object* Find(std::string_view name) const;
    // Adds what the resource file does not name, numbered in order of appearance.
    Object& Meet(std::string_view name, bool isHandler);
    // All of them, as contexts.
    std::vector<service::DeclaredContext> Declared(const ResourceFile& resources) const;

  private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    std::unordered_map<std::string, Object, Hash, std::equal_to<>> objects_;
    std::vector<std::string> met_;  // not named by the resource file
    std::uint64_t nextTask_ = 1;
    std::uint64_t nextHandler_ = 1;
};

}  // namespace kvx::formats::itron_standard
