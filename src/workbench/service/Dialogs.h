#pragma once
// The two questions that the trace service asks the user. The desktop implements them with windows.

#include <cstdint>
#include <string>
#include <vector>

namespace kvx::service {

struct SearchCondition {
    std::string text;  // looked for in name, parameters and return of a system call
    bool matchCase = false;
    bool wildCard = false;  // * and ? in text
    bool upwards = false;   // towards earlier calls
};

// A system call that occurs, and how often.
struct NameCount {
    std::string name;
    std::uint32_t count = 0;
};

// The calls that the history is to be restricted to.
struct PickUp {
    std::vector<std::string> names;
};

class IServiceDialogs {
  public:
    virtual ~IServiceDialogs() = default;
    // condition comes in with the last one used. False: the user gave up.
    virtual bool AskSearchCondition(SearchCondition& condition) = 0;
    // The one that was asked for last, of whatever recording.
    virtual SearchCondition LastCondition() const = 0;
    // calls in order of name. False: the user gave up.
    virtual bool AskPickUp(const std::vector<NameCount>& calls, PickUp& chosen) = 0;
};

}  // namespace kvx::service
