#pragma once
// Reads the lines of ftrace's text and hands their events on.

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/formats/events/EventLoader.h"
#include "workbench/formats/ftrace/EventFields.h"
#include "workbench/formats/ftrace/Line.h"

namespace kvx::formats::ftrace {

class TextReader {
  public:
    // trace is the one that the loader fills. Both are borrowed.
    TextReader(EventTrace& trace, EventLoader& loader) : trace_(trace), loader_(loader) {}

    // Whole lines; atEnd: nothing follows, and the last line may be cut. False: stop.
    bool Add(std::string_view text, bool atEnd);
    // What people should be told, one sentence each.
    std::vector<std::string> Warnings(const std::string& path) const;

  private:
    struct Kind {
        std::uint32_t number = 0;
        EventKind event;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    bool AddLine(std::string_view text, bool mayBeCut);
    bool AddEvent(const Line& line, bool mayBeCut);
    void AddOtherLine(std::string_view text, bool mayBeCut);
    void LookAtHeader(std::string_view text);
    const Kind& KindOf(const EventText& event);
    void CountUnreadable(bool isCut);

    EventTrace& trace_;
    EventLoader& loader_;
    std::array<std::unordered_map<std::string, Kind, Hash, std::equal_to<>>, 3> kinds_;  // by form
    std::uint32_t kindCount_ = 0;
    std::vector<EventValue> values_;
    std::string buffer_;
    bool begun_ = false;         // an event was read
    bool takesMore_ = false;     // the latest event is free text, which may go on in further lines
    bool hasPriorities_ = true;  // the latest switch
    std::uint32_t processors_ = kMostProcessors;  // as the header says
    std::uint64_t overwritten_ = 0;               // events older than the first one
    std::uint64_t functions_ = 0;                 // lines of the function tracers
};

}  // namespace kvx::formats::ftrace
