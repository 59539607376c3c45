#include "workbench/service/EventTexts.h"

#include <algorithm>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"
#include "platform/base/Text.h"
#include "workbench/service/Task.h"

namespace kvx::service {
namespace {

constexpr const char* kNotReadYet = "not read that far yet";

std::string WithParameters(const std::string& name, const std::string& parameters) {
    return FormatText("%s(%s)", name.c_str(), parameters.c_str());
}

}  // namespace

const char* EventKindName(int kind) {
    switch (kind) {
        case kEventDispatch:
            return "dispatch";
        case kEventState:
            return "state";
        default:
            return "syscall";
    }
}

const std::string& EventTexts::CallName(std::uint32_t event) const {
    return decoded_.Names().Get(store_.Call(event)).name;
}

std::string EventTexts::Parameters(std::uint32_t event) const {
    return recording_.Detail(store_.RecordOf(event));
}

std::string EventTexts::ReturnText(std::uint32_t event) const {
    const auto record = store_.ReturnRecord(event);
    if (record != kNoRecord) return recording_.Detail(record);
    return decoded_.IsComplete() ? "" : kNotReadYet;
}

std::string EventTexts::Call(std::uint32_t event) const {
    auto text = WithParameters(CallName(event), Parameters(event));
    if (const auto result = ReturnText(event); !result.empty()) text += " -> " + result;
    return text;
}

std::string EventTexts::State(std::uint32_t event) const {
    std::string text(host::StateName(store_.Code(event)));
    if (store_.Flags(event) & host::kFlagSuspended) text += "+SUS";
    if (store_.Flags(event) & host::kFlagPaused) text += "+PAUSE";
    return text;
}

std::string EventTexts::Detail(std::uint32_t event) const {
    switch (store_.Kind(event)) {
        case kEventDispatch:
            return contexts_.DisplayName(store_.Next(event));
        case kEventState:
            return State(event);
        default:
            return Call(event);
    }
}

std::string EventTexts::Tip(std::uint32_t event) const {
    switch (store_.Kind(event)) {
        case kEventDispatch:
            return RunTip(event);
        case kEventState:
            return StateTip(event);
        default:
            return CallTip(event);
    }
}

std::string EventTexts::Who(std::uint32_t context) const {
    const Context& c = contexts_.Get(context);
    const auto name = contexts_.DisplayName(context);
    if (c.type == kContextUnknown || c.IsIdle()) return name;
    return FormatText("%s (%s %d)", name.c_str(), c.type == kContextTask ? "task" : "handler",
                      c.number);
}

std::string EventTexts::Facts(std::uint32_t context) const {
    const auto facts = recording_.FactsOf(contexts_.Get(context).key);
    return facts.empty() ? facts : "\n" + facts;
}

std::string EventTexts::RunTip(std::uint32_t event) const {
    auto text = Who(store_.Next(event)) + ": RUN\n" + Span(event);
    text += "\nBefore: " + contexts_.DisplayName(store_.Context(event));
    const auto end = store_.EndEvent(event);
    if (end != host::kOpenEnd) text += "\nThen: " + contexts_.DisplayName(store_.Next(end));
    return text + Facts(store_.Next(event));
}

std::string EventTexts::StateTip(std::uint32_t event) const {
    auto text = Who(store_.Next(event)) + ": " + State(event);
    const auto code = store_.Code(event);
    if (store_.Flags(event) & host::kFlagPaused)
        text += "\nOn another processor";
    else if (code >= kCodeSleeping)
        text += "\n" + Cause(event);
    else if (code == kCodeReady)
        text += Releaser(event);
    return text + "\n" + Span(event) + Facts(store_.Next(event));
}

std::string EventTexts::CallTip(std::uint32_t event) const {
    auto text = CallName(event) + "\nIssued by: " + Who(store_.Context(event));
    if (const auto parameters = Parameters(event); !parameters.empty())
        text += "\nParameters: " + parameters;
    text += "\nAt: " + Format(store_.Time(event));
    const auto record = store_.ReturnRecord(event);
    if (record == kNoRecord)
        return text + (decoded_.IsComplete() ? "\nNo return recorded"
                                             : std::string("\nReturn: ") + kNotReadYet);
    const auto result = recording_.Detail(record);
    text += "\nReturn: " + (result.empty() ? std::string("no value recorded") : result);
    const auto time = recording_.TimeOf(record);
    text += "\nReturned at: " + Format(time);
    return text + "\nTook: " + Format(time - store_.Time(event));
}

// What a wait is for: the call that waits, with its object, as it was issued.
std::string EventTexts::Cause(std::uint32_t event) const {
    const auto record = store_.RecordOf(event);
    if (record == kNoRecord) return "Cause not recorded";
    const auto call = recording_.NameOf(record);
    const auto detail = recording_.Detail(record);
    if (call.empty()) return "Waits, as recorded: " + detail;
    const bool later = recording_.TimeOf(record) > store_.Time(event);
    return "Waits in: " + WithParameters(call, detail) +
           (later ? "\n(concluded: the kernel records the call behind its wait)" : "");
}

// Who made a task ready, and with which call.
std::string EventTexts::Releaser(std::uint32_t event) const {
    const auto running = RunningAt(event);
    if (running == kNoContext || running == store_.Next(event)) return {};
    const Context& by = contexts_.Get(running);
    const auto call = OpenCallAt(event, running);
    if (call != kNoRecord) return "\nMade ready by: " + Who(running) + " in " + Call(call);
    if (by.type == kContextHandler) return "\nMade ready by: " + Who(running);
    return {};
}

std::string EventTexts::Span(std::uint32_t event) const {
    const auto since = store_.Time(event);
    const auto end = store_.EndEvent(event);
    auto text = "Since: " + Format(since) + "\nUntil: ";
    if (end == host::kOpenEnd && !decoded_.IsComplete()) return text + kNotReadYet;
    const auto until = end == host::kOpenEnd ? recording_.LastTime() : store_.Time(end);
    text += end == host::kOpenEnd ? std::string("end of the recording") : Format(until);
    return text + "\nFor: " + Format(until - since);
}

std::uint32_t EventTexts::RunningAt(std::uint32_t event) const {
    const auto before = store_.Dispatches(event);
    return before.empty() ? kNoContext : store_.Next(before.back());
}

// The call of context that had been issued and had not returned when event came; kNoRecord: none
// among the last few.
std::uint32_t EventTexts::OpenCallAt(std::uint32_t event, std::uint32_t context) const {
    constexpr int kLookBack = 16;
    const auto before = store_.Calls(event);
    auto at = before.end();
    for (int i = 0; i < kLookBack && at != before.begin(); ++i) {
        const auto call = *--at;
        const auto returned = store_.ReturnRecord(call);
        const bool open = returned == kNoRecord || returned > store_.RecordOf(event);
        if (store_.Context(call) == context && open) return call;
    }
    return kNoRecord;
}

}  // namespace kvx::service
