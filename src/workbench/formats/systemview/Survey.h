#pragma once
// What a look at every packet of a recording finds out: names, priorities, stacks, what was lost,
// and what tells whose numbers the calls have.

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/formats/systemview/CoreReader.h"

namespace kvx::formats::systemview {

struct TaskFacts {
    std::uint64_t number = 0;  // in order of appearance, from 1
    std::string name;
    std::optional<std::int32_t> priority;               // as first told
    std::optional<std::array<std::uint32_t, 3>> stack;  // base, size, fill, as last told
};

struct Module {
    std::uint32_t number = 0;
    std::uint32_t firstId = 0;
    std::string text;
};

struct Survey {
    std::uint32_t frequency = 0;  // of time stamps; 0: not told
    std::uint32_t ramBase = 0;
    std::uint32_t shift = 0;
    std::unordered_map<std::uint32_t, TaskFacts> tasks;  // by shrunk id
    std::map<std::uint32_t, std::string> interrupts;
    std::unordered_map<std::uint32_t, std::string> resources;
    std::map<char, std::string> system;  // N, D, C, O of the system's description
    std::vector<Module> modules;
    std::vector<bool> used;   // calls that occur, by id
    std::vector<bool> ended;  // those whose end is recorded
    std::set<std::uint32_t> timers;
    std::uint64_t lost = 0;
    // How often a wait on the delayed list follows a call 34, and a call 35, of one value.
    std::uint32_t delays34 = 0;
    std::uint32_t delays35 = 0;

    std::uint32_t AddressOf(std::uint32_t id) const { return ramBase + (id << (shift & 31)); }
};

// Of one core; one after the other for all of a recording.
class Surveyor {
  public:
    explicit Surveyor(Survey& survey) : survey_(survey) {}
    void See(const Item& item);
    bool KnowsModuleOf(std::uint32_t id) const;

  private:
    void SeeCall(const Packet& packet);
    void SeeTask(std::uint32_t id);
    void SeeSystem(std::string_view text);
    void SeeOverflow(std::uint32_t dropped);

    Survey& survey_;
    std::uint32_t dropped_ = 0;    // as last told
    std::uint32_t lastDelay_ = 0;  // 34 or 35: the packet before is that call, of one value
    bool hasInit_ = false;
};

}  // namespace kvx::formats::systemview
