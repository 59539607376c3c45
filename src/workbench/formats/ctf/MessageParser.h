#pragma once
// Takes the messages of the program that reads CTF apart (Wire.h) and hands them to a sink.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/formats/ctf/Wire.h"
#include "workbench/formats/events/ByteCursor.h"
#include "workbench/formats/events/EventSink.h"

namespace kvx::formats::ctf {

class MessageParser {
  public:
    // sink is borrowed.
    explicit MessageParser(IEventSink& sink) : sink_(sink) {}

    enum class Next : std::uint8_t { GoOn, Stop, Nonsense };
    // block: whole messages.
    Next Take(std::string_view block);
    // How the run ended, once that was said; the text is the reason, empty for a complete one.
    const std::optional<std::string>& End() const { return end_; }

  private:
    struct Kind {
        bool hasTime = false;
        bool hasPacket = false;
        std::vector<kernels::EventField::Form> forms;  // of all but the fields of the packet
    };

    bool TakeNames(ByteCursor& from);
    bool TakeKind(ByteCursor& from);
    bool TakePacket(ByteCursor& from);
    Next TakeEvent(std::uint64_t kind, ByteCursor& from);
    static EventValue TakeValue(kernels::EventField::Form form, ByteCursor& from);

    IEventSink& sink_;
    std::vector<kernels::EventNames> names_;
    std::vector<Kind> kinds_;
    std::unordered_map<std::uint64_t, std::vector<EventValue>> packets_;  // by stream: its latest
    std::uint64_t latestStream_ = 0;
    const std::vector<EventValue>* latestPacket_ = nullptr;
    std::vector<EventValue> values_;
    std::int64_t time_ = 0;
    std::optional<std::string> end_;
};

}  // namespace kvx::formats::ctf
