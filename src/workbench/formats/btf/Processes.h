#pragma once
// The tasks, interrupts and cores of a BTF file while it is read: their numbers, where they run,
// and which instances of a task live.

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kvx::formats::btf {

struct Process {
    std::uint64_t number = 0;  // from 1, unique among tasks and among interrupts
    std::string name;          // as people know it
    std::uint16_t core = 0;    // where it runs, or ran last
    bool hasRun = false;
    bool runs = false;
    std::vector<std::string> living;  // instances that were activated and have not ended
    std::string waitsFor;             // the semaphore that it was told to wait for
};

// A target or source as the writer for FreeRTOS names tasks: "[core/id]name".
struct Prefixed {
    std::uint32_t core = 0;
    std::uint64_t id = 0;
    std::string_view name;
};
std::optional<Prefixed> SplitPrefix(std::string_view text);

class Processes {
  public:
    Process& Task(std::string_view target) { return Get(tasks_, target); }
    Process& Interrupt(std::string_view target) { return Get(interrupts_, target); }
    // Null: no task or interrupt of that name has come yet.
    Process* Find(std::string_view name);

    // The number of a core by its name: that in the name, where nobody else has it.
    std::uint16_t Core(std::string_view name);
    // Of those named so far; 0 where there is none.
    std::uint16_t LowestCore() const { return takenCores_.empty() ? 0 : *takenCores_.begin(); }
    // Whether the name is that of the core.
    bool IsCore(std::string_view name, std::uint16_t core) const;

  private:
    struct Group {
        std::unordered_map<std::string, Process> processes;  // by name, without the core before it
        std::set<std::uint64_t> taken;
    };
    static Process& Get(Group& group, std::string_view target);

    Group tasks_;
    Group interrupts_;
    std::unordered_map<std::string, std::uint16_t> cores_;
    std::set<std::uint16_t> takenCores_;
};

}  // namespace kvx::formats::btf
