#pragma once
// A trace that a test writes down event by event: contexts and the columns of its events.

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "host/OSTraceColumns.h"
#include "host/OSTraceService.h"

namespace kvx::test {

struct ScriptedContext {
    int type = kContextTask;
    int number = 0;
    std::string name;
    std::uint32_t tableAddress = 0;
    int hatched = 0;
    int sysCallProcess = 0;
    int shown = 1;
};

struct ScriptedTexts {
    std::string name;
    std::string parameters;
    std::string returned;
};

// Events are added in order of time. A dispatch ends the one before it, a state the context's one
// before it; endEvent may be changed afterwards.
struct ScriptedTrace {
    std::vector<ScriptedContext> contexts;
    std::vector<std::int64_t> time;
    std::vector<std::uint32_t> endEvent;
    std::vector<std::uint32_t> context;
    std::vector<std::uint32_t> next;
    std::vector<std::uint8_t> kind;
    std::vector<std::uint8_t> code;
    std::vector<std::uint8_t> flags;
    std::vector<std::uint32_t> text;  // kind 3: index into texts
    std::vector<ScriptedTexts> texts;
    std::map<std::uint32_t, std::uint32_t> placedAt;  // GetSysCallEvent where it is not the event
    std::vector<std::uint32_t> dispatches;
    std::vector<std::uint32_t> sysCalls;
    std::vector<std::vector<std::uint32_t>> statesOf;
    std::vector<std::vector<std::uint32_t>> dispatchesTo;
    std::vector<std::vector<std::uint32_t>> sysCallsOf;

    std::uint32_t AddContext(ScriptedContext added) {
        contexts.push_back(std::move(added));
        statesOf.emplace_back();
        dispatchesTo.emplace_back();
        sysCallsOf.emplace_back();
        return static_cast<std::uint32_t>(contexts.size() - 1);
    }
    std::uint32_t AddTask(int number, std::string name) {
        return AddContext({kContextTask, number, std::move(name)});
    }
    std::uint32_t AddHandler(int number, std::string name, std::uint32_t address = 0) {
        return AddContext({kContextHandler, number, std::move(name), address});
    }
    std::uint32_t AddIdle() { return AddContext({kContextTask, 0, "", 0, 1}); }
    std::uint32_t AddUnknown() { return AddContext({kContextUnknown, 0, ""}); }

    std::uint32_t Dispatch(std::int64_t t, std::uint32_t from, std::uint32_t to) {
        const std::uint32_t event = Add(t, kEventDispatch, from, to, 0, 0);
        if (!dispatches.empty()) endEvent[dispatches.back()] = event;
        dispatches.push_back(event);
        dispatchesTo[to].push_back(event);
        return event;
    }
    std::uint32_t State(std::int64_t t, std::uint32_t of, int state, int eventFlags = 0) {
        const std::uint32_t event = Add(t, kEventState, of, of, state, eventFlags);
        EndState(of, event);
        statesOf[of].push_back(event);
        return event;
    }
    // A dispatch to a context that is not known, with which the states of all contexts end.
    void Gap(std::int64_t t, std::uint32_t from, std::uint32_t unknown) {
        const auto event = Dispatch(t, from, unknown);
        for (std::uint32_t c = 0; c < contexts.size(); ++c) EndState(c, event);
    }
    std::uint32_t Call(std::int64_t t, std::uint32_t issuer, int cls, const ScriptedTexts& said) {
        texts.push_back(said);
        return CallOf(t, issuer, cls, static_cast<std::uint32_t>(texts.size() - 1));
    }
    // A call whose texts stand in texts already.
    std::uint32_t CallOf(std::int64_t t, std::uint32_t issuer, int cls, std::uint32_t textIndex) {
        const std::uint32_t event = Add(t, kEventSysCall, issuer, issuer, cls, 0);
        text[event] = textIndex;
        sysCalls.push_back(event);
        sysCallsOf[issuer].push_back(event);
        return event;
    }

    std::uint32_t Count() const { return static_cast<std::uint32_t>(time.size()); }
    const ScriptedTexts& Texts(std::uint32_t call) const { return texts[text[call]]; }

  private:
    void EndState(std::uint32_t of, std::uint32_t event) {
        if (statesOf[of].empty() || endEvent[statesOf[of].back()] != host::kOpenEnd) return;
        endEvent[statesOf[of].back()] = event;
    }
    std::uint32_t Add(std::int64_t t, int eventKind, std::uint32_t of, std::uint32_t to,
                      int eventCode, int eventFlags) {
        time.push_back(t);
        endEvent.push_back(host::kOpenEnd);
        context.push_back(of);
        next.push_back(to);
        kind.push_back(static_cast<std::uint8_t>(eventKind));
        code.push_back(static_cast<std::uint8_t>(eventCode));
        flags.push_back(static_cast<std::uint8_t>(eventFlags));
        text.push_back(0);
        return Count() - 1;
    }
};

}  // namespace kvx::test
