#pragma once
// The texts of an event, made from its record when somebody asks.

#include <cstdint>
#include <string>

#include "workbench/service/CallNames.h"
#include "workbench/service/ContextTable.h"
#include "workbench/service/EventStore.h"
#include "workbench/service/Recording.h"

namespace kvx::service {

class EventTexts {
  public:
    // All are borrowed.
    EventTexts(const Recording& recording, const ContextTable& contexts, const CallNames& names,
               const EventStore& store)
        : recording_(recording), contexts_(contexts), names_(names), store_(store) {}

    // System calls.
    const std::string& CallName(std::uint32_t event) const;
    std::string Parameters(std::uint32_t event) const;
    std::string ReturnText(std::uint32_t event) const;
    // "wai_sem(semid=1) -> ercd=0"; without the arrow for a call that did not return.
    std::string Call(std::uint32_t event) const;
    // "WAI (SEM)+SUS".
    std::string State(std::uint32_t event) const;
    // For people, lines separated by "\n".
    std::string Tip(std::uint32_t event) const;

  private:
    std::string Who(std::uint32_t context) const;
    std::string RunTip(std::uint32_t event) const;
    std::string StateTip(std::uint32_t event) const;
    std::string CallTip(std::uint32_t event) const;
    std::string Cause(std::uint32_t event) const;
    std::string Releaser(std::uint32_t event) const;
    std::string Span(std::uint32_t event) const;
    std::string Format(std::int64_t count) const { return recording_.Clock().Format(count); }
    std::uint32_t RunningAt(std::uint32_t event) const;
    std::uint32_t OpenCallAt(std::uint32_t event, std::uint32_t context) const;

    const Recording& recording_;
    const ContextTable& contexts_;
    const CallNames& names_;
    const EventStore& store_;
};

}  // namespace kvx::service
