#pragma once
// The texts of an event, made from its record when somebody asks.

#include <cstdint>
#include <string>

#include "workbench/service/DecodedRecording.h"

namespace kvx::service {

// "dispatch", "state" or "syscall", for a kind of event.
const char* EventKindName(int kind);

class EventTexts {
  public:
    // Both are borrowed; the timeline is one of the recording's.
    EventTexts(const DecodedRecording& decoded, const Timeline& timeline)
        : decoded_(decoded),
          recording_(decoded.GetRecording()),
          contexts_(timeline.contexts),
          store_(timeline.events) {}

    // System calls.
    const std::string& CallName(std::uint32_t event) const;
    std::string Parameters(std::uint32_t event) const;
    // What the call returned; empty where no return is recorded. A return that decoding has not
    // come to yet is said to be just that.
    std::string ReturnText(std::uint32_t event) const;
    // "wai_sem(semid=1) -> ercd=0"; without the arrow for a call that did not return.
    std::string Call(std::uint32_t event) const;
    // "WAI (SEM)+SUS".
    std::string State(std::uint32_t event) const;
    // What happened, in short: the context that runs next, the new state, or the call.
    std::string Detail(std::uint32_t event) const;
    // For people, lines separated by "\n".
    std::string Tip(std::uint32_t event) const;

  private:
    std::string Who(std::uint32_t context) const;
    std::string Facts(std::uint32_t context) const;
    std::string RunTip(std::uint32_t event) const;
    std::string StateTip(std::uint32_t event) const;
    std::string CallTip(std::uint32_t event) const;
    std::string Cause(std::uint32_t event) const;
    std::string Releaser(std::uint32_t event) const;
    std::string Span(std::uint32_t event) const;
    std::string Format(std::int64_t count) const { return recording_.Clock().Format(count); }
    std::uint32_t RunningAt(std::uint32_t event) const;
    std::uint32_t OpenCallAt(std::uint32_t event, std::uint32_t context) const;

    const DecodedRecording& decoded_;
    const Recording& recording_;
    const ContextTable& contexts_;
    const EventStore& store_;
};

}  // namespace kvx::service
