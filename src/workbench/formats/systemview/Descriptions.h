#pragma once
// The files that describe an operating system's calls: a number, a name and the form of each
// parameter. What is not understood in one is left out, a piece at a time.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvx::formats::systemview {

struct ValueForm {
    std::string name;
    char form = 'u';   // u d x p I t T s c; N: the named type
    std::string type;  // of N
    std::string unit;  // behind the value
};

struct CallDescription {
    std::string name;
    std::vector<ValueForm> parameters;
    std::optional<ValueForm> result;
};

// Names for values; others have a form.
struct NamedType {
    std::map<std::uint32_t, std::string> names;
    ValueForm others;
};

struct Descriptions {
    std::map<std::uint32_t, CallDescription> calls;
    std::map<std::string, NamedType, std::less<>> types;
    std::uint32_t stateMask = 0;  // 0: states have no names
    std::map<std::uint32_t, std::string> states;

    // Adds what a file's text says.
    void Add(std::string_view text);
    // The parameters of a call as they are written there: "xQueue=%I xTicksToWait=%u ms".
    static std::vector<ValueForm> ParseForms(std::string_view text);
};

}  // namespace kvx::formats::systemview
