#pragma once
// A kernel whose recordings describe their own events: what each kind of them means.

#include <string>

#include "workbench/kernels/EventPlan.h"
#include "workbench/service/Kernel.h"

namespace kvx::kernels {

class EventKernel : public service::Kernel {
  public:
    // Whether a trace that declares these events is the kernel's. Asked in order of priority,
    // highest first.
    virtual bool Recognises(const EventNames& events) const = 0;
    virtual int Priority() const = 0;

    // False: says nothing about the schedule. all: what else the trace declares.
    virtual bool Plan(const EventShape& shape, const EventNames& all, EventPlan& plan) const = 0;
    // The state that the value of a fromState field stands for.
    virtual service::TaskState StateOf(std::uint64_t /*value*/) const {
        return service::TaskState::Runnable;
    }
    // True: tasks and handlers are named by their addresses, which say nothing to people; they are
    // numbered in order of appearance.
    virtual bool NamesByAddress() const = 0;
    // True: a task of that name is what runs when nothing else does.
    virtual bool IsIdle(std::string_view /*name*/) const { return false; }
    // How the context is shown. id: its number or address; told: its name in the events, or empty.
    // Empty: it has no name of its own.
    virtual std::string ContextName(service::ContextKind kind, std::uint64_t id,
                                    std::string_view told) const = 0;
    // The events that say which task runs: a trace without any of them shows nothing.
    virtual std::string_view SwitchEvents() const = 0;
    // False: part of why tasks wait and become ready has to be concluded (service/Inference.h).
    virtual bool RecordsStates() const = 0;
};

}  // namespace kvx::kernels
