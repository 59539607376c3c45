#pragma once
// The history of system calls: all of them, or those picked up.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "workbench/service/CallNames.h"
#include "workbench/service/Dialogs.h"
#include "workbench/service/EventStore.h"

namespace kvx::service {

class CallHistory {
  public:
    // Both are borrowed.
    CallHistory(const CallNames& names, const EventStore& store) : names_(names), store_(&store) {}

    // The events that the history is about. Borrowed.
    void ShowCallsOf(const EventStore& store);
    // It ends before that event.
    void ShowUntil(std::uint32_t event);

    // The calls that occur, in order of name.
    std::vector<NameCount> Occurring() const;
    void PickUpOnly(const PickUp& chosen);
    void EndPickUp();
    bool IsPickUpActive() const { return active_; }
    std::uint32_t Count();
    // history must be below Count.
    std::uint32_t EventAt(std::uint32_t history) const;
    std::optional<std::uint32_t> IndexOf(std::uint32_t event);
    // Number of the call among all of the recording, from 1.
    std::uint32_t NumberOf(std::uint32_t event) const;

  private:
    std::span<const std::uint32_t> Calls() const { return store_->Calls(end_); }
    std::span<const std::uint32_t> List() const { return active_ ? picked_ : Calls(); }
    void Forget();
    void CatchUp();

    const CallNames& names_;
    const EventStore* store_;
    std::uint32_t end_ = 0;
    bool active_ = false;
    std::vector<std::string> chosen_;
    std::vector<bool> isChosen_;         // by number of the call's name
    std::vector<std::uint32_t> picked_;  // events
    std::size_t seen_ = 0;               // calls of the store that picked_ has taken in
};

}  // namespace kvx::service
