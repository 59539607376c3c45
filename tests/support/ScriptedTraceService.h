#pragma once
// A trace service that plays a ScriptedTrace: every event is one record, decoded on demand. It
// answers with and without the bulk interface, and any operation can be made to fail.

#include <algorithm>
#include <functional>
#include <optional>
#include <set>

#include "host/Identifiers.h"
#include "support/DecodedTrace.h"

namespace kvx::test {

class ScriptedTraceService final : public IQOSTraceService,
                                   public IQOSTraceAvailability,
                                   public host::IQOSTraceColumns {
  public:
    explicit ScriptedTraceService(ScriptedTrace trace = {}) { Load(std::move(trace)); }

    // What a test sets.
    bool bulk = true;     // offers the columns
    bool indexed = true;  // with dispatches and calls by context
    bool available = true;
    bool timeText = false;  // counts convert into time
    bool nanoseconds = false;
    bool variablePools = true;
    int timeMode = kTimeCycles;
    std::int64_t nanosecondsPerCount = 1000;
    int condition = kRangeFree;
    std::int32_t firstRecord = 0;
    std::int64_t end = 0;                    // of the trace
    std::int64_t coveredAhead = 0;           // covered time beyond the analysed-up-to time
    std::set<std::string> failing;           // names of operations that answer E_FAIL
    VARIANT_BOOL pickUpTrue = VARIANT_TRUE;  // how an active pick-up is told
    std::set<std::string> pickUpChoice;  // names that the pick-up dialog ticks; empty: cancelled
    std::function<void(host::OSTraceColumns&)> breakColumns;  // before they are handed out
    std::function<void(const std::string&)> onCall;           // before those counted in calls
    std::optional<std::int32_t> anyContext;  // the line of every event, whatever the trace says
    std::string searchText;                  // found in names; empty: the search is abandoned

    // What a test reads.
    std::map<std::string, int> calls;  // of the operations that do not read an event
    std::uint64_t reads = 0;           // of the operations that do

    // Replaces the trace; nothing is decoded.
    void Load(ScriptedTrace trace) {
        decoded_ = DecodedTrace(std::move(trace));
        end = Trace().Count() ? Trace().time.back() + 1 : 0;
    }
    void DecodeAll() { decoded_.DecodeUpTo(Trace().Count()); }
    // After a change of what is offered or of the trace.
    void Reload() { decoded_.Changed(); }
    ScriptedTrace& Trace() { return decoded_.Trace(); }
    const ScriptedTrace& Trace() const { return decoded_.Trace(); }
    std::uint32_t Decoded() const { return decoded_.Count(); }
    std::uint32_t ContextOfLine(int line) const { return decoded_.ContextOfLine(line); }
    int LineOf(std::uint32_t context) const { return decoded_.LineOf(context); }

    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override {
        if (id == host::kOSTraceService) return Give<IQOSTraceService>(out);
        if (id == host::kOSTraceAvailability) return Give<IQOSTraceAvailability>(out);
        if (id == host::kOSTraceColumns && bulk) return Give<host::IQOSTraceColumns>(out);
        *out = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }

    HRESULT KVX_CALL IsTraceAvailable(VARIANT_BOOL* yes) override {
        if (Fails("IsTraceAvailable")) return E_FAIL;
        *yes = available ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

    HRESULT KVX_CALL StopMeasurement() override { return Called("StopMeasurement"); }
    HRESULT KVX_CALL ResetMeasurement() override { return Called("ResetMeasurement"); }
    HRESULT KVX_CALL StartMeasurement() override { return Called("StartMeasurement"); }
    HRESULT KVX_CALL Attach() override { return Called("Attach"); }
    HRESULT KVX_CALL Detach() override { return Called("Detach"); }
    HRESULT KVX_CALL EndAnalysis() override { return Called("EndAnalysis"); }
    HRESULT KVX_CALL ViewClosed() override { return Called("ViewClosed"); }
    HRESULT KVX_CALL Reserved53() override { return Called("Reserved53"); }

    HRESULT KVX_CALL GetRecordRange(std::int32_t* first, std::int32_t* last, std::int64_t* start,
                                    std::int64_t* endCount) override {
        if (Fails("GetRecordRange")) return E_FAIL;
        *first = firstRecord;
        *last = firstRecord + static_cast<std::int32_t>(Trace().Count()) - 1;
        *start = Trace().Count() ? Trace().time.front() : 0;
        *endCount = end;
        return S_OK;
    }
    HRESULT KVX_CALL AnalyzeRecords(std::int32_t from, std::int32_t to, std::int64_t* a,
                                    std::int64_t* b, std::int64_t* c) override {
        if (Failed(Called("AnalyzeRecords"))) return E_FAIL;
        if (to < from || to < firstRecord) return E_INVALIDARG;
        Decode(std::min(static_cast<std::uint32_t>(to - firstRecord), Trace().Count() - 1), a, b,
               c);
        return S_OK;
    }
    HRESULT KVX_CALL DiscardData() override {
        decoded_.Discard();
        return Called("DiscardData");
    }
    HRESULT KVX_CALL GetRangeCondition(std::int32_t* out) override {
        if (Fails("GetRangeCondition")) return E_FAIL;
        *out = condition;
        return S_OK;
    }
    HRESULT KVX_CALL SetRangeCondition(std::int32_t value) override {
        if (Failed(Called("SetRangeCondition"))) return E_FAIL;
        condition = value;
        return S_OK;
    }

    HRESULT KVX_CALL TimeToCount(std::int64_t* count, std::int32_t h, std::int32_t m,
                                 std::int32_t s, std::int32_t ms, std::int32_t us,
                                 std::int32_t ns) override {
        if (Fails("TimeToCount")) return E_FAIL;
        const std::int64_t seconds = (std::int64_t{h} * 60 + m) * 60 + s;
        *count = (((seconds * 1000 + ms) * 1000 + us) * 1000 + ns) / nanosecondsPerCount;
        return S_OK;
    }
    HRESULT KVX_CALL CountToTime(std::int64_t count, std::int32_t* h, std::int32_t* m,
                                 std::int32_t* s, std::int32_t* ms, std::int32_t* us,
                                 std::int32_t* ns) override {
        if (Fails("CountToTime")) return E_FAIL;
        std::int64_t rest = count * nanosecondsPerCount;
        for (auto [out, unit] : {std::pair{ns, 1000}, {us, 1000}, {ms, 1000}, {s, 60}, {m, 60}}) {
            *out = static_cast<std::int32_t>(rest % unit);
            rest /= unit;
        }
        *h = static_cast<std::int32_t>(rest);
        return S_OK;
    }
    HRESULT KVX_CALL GetTimeMode(std::int32_t* mode) override {
        if (Fails("GetTimeMode")) return E_FAIL;
        *mode = timeMode;
        return S_OK;
    }
    HRESULT KVX_CALL QueryCapability(std::int32_t code, VARIANT_BOOL* yes) override {
        if (Fails("QueryCapability")) return E_FAIL;
        const bool answer = code == kCapabilityTime            ? timeText
                            : code == kCapabilityNanoseconds   ? nanoseconds
                            : code == kCapabilityVariablePools ? variablePools
                                                               : false;
        *yes = answer ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

    HRESULT KVX_CALL GetContextCount(std::int32_t* count) override {
        if (Fails("GetContextCount")) return E_FAIL;
        *count = static_cast<std::int32_t>(Trace().contexts.size());
        return S_OK;
    }
    HRESULT KVX_CALL GetContextData(std::int32_t line, _tagSContextData* out) override {
        if (Fails("GetContextData") || line == failingLine) return E_FAIL;
        const ScriptedContext& c = Trace().contexts[ContextOfLine(line)];
        *out = {c.type,    c.number,         c.tableAddress, ToBstr(c.name),
                c.hatched, c.sysCallProcess, c.shown};
        return S_OK;
    }
    HRESULT KVX_CALL MoveContext(std::int32_t from, std::int32_t to) override {
        if (Failed(Called("MoveContext"))) return E_FAIL;
        decoded_.MoveLine(from, to);
        return S_OK;
    }
    HRESULT KVX_CALL ResetContextOrder() override {
        decoded_.SortLines();
        return Called("ResetContextOrder");
    }
    HRESULT KVX_CALL ShowContext(VARIANT lines) override {
        return SetShown("ShowContext", lines, 1);
    }
    HRESULT KVX_CALL HideContext(VARIANT lines) override {
        return SetShown("HideContext", lines, 0);
    }
    int failingLine = -1;  // GetContextData fails for it

    HRESULT KVX_CALL GetEventCount(std::uint32_t* count) override {
        if (Fails("GetEventCount")) return E_FAIL;
        *count = Decoded();
        return S_OK;
    }
    HRESULT KVX_CALL GetEventKind(std::uint32_t e, std::int32_t* kind) override {
        return Read("GetEventKind", e, kind, [&] { return Trace().kind[e]; });
    }
    HRESULT KVX_CALL GetEventTime(std::uint32_t e, std::int64_t* t) override {
        return Read("GetEventTime", e, t, [&] { return Trace().time[e]; });
    }
    HRESULT KVX_CALL GetEventEndTime(std::uint32_t e, std::int64_t* t) override {
        return Read("GetEventEndTime", e, t, [&] {
            const std::uint32_t last = Trace().endEvent[e];
            if (last >= Decoded()) return std::int64_t{0};
            return Trace().time[last] ? Trace().time[last] : host::kEndAtZero;
        });
    }
    HRESULT KVX_CALL GetEventTipText(std::uint32_t e, BSTR* text) override {
        return Read("GetEventTipText", e, text, [&] {
            return ToBstr("Event " + std::to_string(e) + "\nat " + std::to_string(Trace().time[e]));
        });
    }
    HRESULT KVX_CALL GetEventContext(std::uint32_t e, std::int32_t* line) override {
        return ReadLine("GetEventContext", e, line, Trace().context);
    }
    HRESULT KVX_CALL GetEventNextContext(std::uint32_t e, std::int32_t* line) override {
        return ReadLine("GetEventNextContext", e, line, Trace().next);
    }
    HRESULT KVX_CALL GetEventState(std::uint32_t e, std::int32_t* state) override {
        return Read("GetEventState", e, state, [&] { return Trace().code[e]; });
    }
    HRESULT KVX_CALL GetEventStateContext(std::uint32_t e, std::int32_t* line) override {
        return ReadLine("GetEventStateContext", e, line, Trace().next);
    }
    HRESULT KVX_CALL IsEventSuspended(std::uint32_t e, VARIANT_BOOL* yes) override {
        return Flag("IsEventSuspended", e, yes, host::kFlagSuspended);
    }
    HRESULT KVX_CALL IsEventPaused(std::uint32_t e, VARIANT_BOOL* yes) override {
        return Flag("IsEventPaused", e, yes, host::kFlagPaused);
    }
    HRESULT KVX_CALL GetContextEventCount(std::int32_t line, std::uint32_t* count) override {
        if (Fails("GetContextEventCount")) return E_FAIL;
        *count = decoded_.StatesOf(line).count;
        return S_OK;
    }
    HRESULT KVX_CALL GetContextEventTime(std::int32_t line, std::uint32_t j,
                                         std::int64_t* t) override {
        std::uint32_t e = 0;
        const HRESULT status = GetContextEvent(line, j, &e);
        if (Failed(status) || Fails("GetContextEventTime")) return E_FAIL;
        *t = Trace().time[e];
        return S_OK;
    }
    HRESULT KVX_CALL GetContextEvent(std::int32_t line, std::uint32_t j,
                                     std::uint32_t* event) override {
        ++reads;
        const host::EventList list = decoded_.StatesOf(line);
        if (Fails("GetContextEvent") || j >= list.count) return E_FAIL;
        *event = list.events[j];
        return S_OK;
    }
    HRESULT KVX_CALL GetSysCallEvent(std::uint32_t e, std::uint32_t* timed) override {
        return Read("GetSysCallEvent", e, timed, [&] {
            const auto at = Trace().placedAt.find(e);
            return at == Trace().placedAt.end() ? e : at->second;
        });
    }
    HRESULT KVX_CALL GetSysCallClass(std::uint32_t e, std::int32_t* cls) override {
        return Read("GetSysCallClass", e, cls, [&] { return Trace().code[e]; });
    }

    HRESULT KVX_CALL SearchFirst(std::uint32_t from, std::uint32_t* found, VARIANT_BOOL* more,
                                 VARIANT_BOOL* hit) override {
        if (searchText.empty() || Failed(Called("SearchFirst"))) return E_FAIL;
        *hit = Succeeded(Search(from, 1, found)) ? VARIANT_TRUE : VARIANT_FALSE;
        *more = Decoded() < Trace().Count() ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    HRESULT KVX_CALL SearchPrevious(std::uint32_t from, std::uint32_t* found) override {
        return Failed(Called("SearchPrevious")) ? E_FAIL : Search(from, -1, found);
    }
    HRESULT KVX_CALL SearchNext(std::uint32_t from, std::uint32_t* found) override {
        return Failed(Called("SearchNext")) ? E_FAIL : Search(from, 1, found);
    }

    HRESULT KVX_CALL StartPickUp() override {
        if (pickUpChoice.empty() || Failed(Called("StartPickUp"))) return E_FAIL;
        decoded_.PickUp(pickUpChoice);
        return S_OK;
    }
    HRESULT KVX_CALL EndPickUp() override {
        decoded_.PickUp({});
        return Called("EndPickUp");
    }
    HRESULT KVX_CALL IsPickUpActive(VARIANT_BOOL* yes) override {
        if (Fails("IsPickUpActive")) return E_FAIL;
        *yes = decoded_.IsPickedUp() ? pickUpTrue : VARIANT_FALSE;
        return S_OK;
    }
    HRESULT KVX_CALL GetHistoryCount(std::uint32_t* count) override {
        if (Fails("GetHistoryCount")) return E_FAIL;
        *count = static_cast<std::uint32_t>(decoded_.History().size());
        return S_OK;
    }
    HRESULT KVX_CALL GetHistoryEvent(std::uint32_t h, std::uint32_t* event) override {
        return ReadHistory("GetHistoryEvent", h, event, [](std::uint32_t e) { return e; });
    }
    HRESULT KVX_CALL GetHistoryIndex(std::uint32_t event, std::uint32_t* h) override {
        ++reads;
        const auto& history = decoded_.History();
        const auto at = std::lower_bound(history.begin(), history.end(), event);
        if (Fails("GetHistoryIndex") || at == history.end() || *at != event) return E_FAIL;
        *h = static_cast<std::uint32_t>(at - history.begin());
        return S_OK;
    }
    HRESULT KVX_CALL GetHistoryNumber(std::uint32_t h, std::int32_t* number) override {
        return ReadHistory("GetHistoryNumber", h, number, [this](std::uint32_t e) {
            const auto& all = Trace().sysCalls;
            return std::lower_bound(all.begin(), all.end(), e) - all.begin() + 1;
        });
    }
    HRESULT KVX_CALL GetHistoryName(std::uint32_t h, BSTR* text) override {
        return ReadHistory("GetHistoryName", h, text,
                           [this](std::uint32_t e) { return ToBstr(Trace().Texts(e).name); });
    }
    HRESULT KVX_CALL GetHistoryParameter(std::uint32_t h, BSTR* text) override {
        return ReadHistory("GetHistoryParameter", h, text,
                           [this](std::uint32_t e) { return ToBstr(Trace().Texts(e).parameters); });
    }
    HRESULT KVX_CALL GetHistoryReturnParameter(std::uint32_t h, BSTR* text) override {
        return ReadHistory("GetHistoryReturnParameter", h, text,
                           [this](std::uint32_t e) { return ToBstr(Trace().Texts(e).returned); });
    }
    HRESULT KVX_CALL GetHistoryTime(std::uint32_t h, std::int64_t* t) override {
        return ReadHistory("GetHistoryTime", h, t,
                           [this](std::uint32_t e) { return Trace().time[e]; });
    }

    HRESULT KVX_CALL GetColumns(host::OSTraceColumns* out) override {
        if (Failed(Called("GetColumns"))) return E_FAIL;
        *out = decoded_.Columns();
        if (!indexed) out->dispatchesTo = out->sysCallsOf = nullptr;
        if (breakColumns) breakColumns(*out);
        return S_OK;
    }
    HRESULT KVX_CALL AnalyzeUntil(std::int32_t from, std::int32_t to, double until,
                                  std::int32_t* last, std::int64_t* a, std::int64_t* b,
                                  std::int64_t* c) override {
        if (Failed(Called("AnalyzeUntil"))) return E_FAIL;
        for (*last = from; *last < to; ++*last) {
            const auto at = static_cast<std::size_t>(*last - firstRecord);
            if (static_cast<double>(Trace().time[at]) > until) break;
        }
        Decode(static_cast<std::uint32_t>(*last - firstRecord), a, b, c);
        return S_OK;
    }

  private:
    template <class Interface>
    HRESULT Give(void** out) {
        *out = static_cast<Interface*>(this);
        return S_OK;
    }
    bool Fails(const char* operation) const {
        return !failing.empty() && failing.contains(operation);
    }
    HRESULT ReadLine(const char* operation, std::uint32_t e, std::int32_t* line,
                     const std::vector<std::uint32_t>& contexts) {
        return Read(operation, e, line,
                    [&] { return anyContext ? *anyContext : decoded_.LineOf(contexts[e]); });
    }
    HRESULT Called(const char* operation) {
        if (onCall) onCall(operation);
        ++calls[operation];
        return Fails(operation) ? E_FAIL : S_OK;
    }
    template <class Out, class Value>
    HRESULT Read(const char* operation, std::uint32_t event, Out* out, Value value) {
        ++reads;
        if (Fails(operation) || event >= Decoded()) return E_FAIL;
        *out = static_cast<Out>(value());
        return S_OK;
    }
    HRESULT Flag(const char* operation, std::uint32_t e, VARIANT_BOOL* yes, std::uint8_t flag) {
        return Read(operation, e, yes,
                    [&] { return Trace().flags[e] & flag ? VARIANT_TRUE : VARIANT_FALSE; });
    }
    template <class Out, class Value>
    HRESULT ReadHistory(const char* operation, std::uint32_t h, Out* out, Value value) {
        ++reads;
        if (Fails(operation) || h >= decoded_.History().size()) return E_FAIL;
        *out = static_cast<Out>(value(decoded_.History()[h]));
        return S_OK;
    }
    // Up to the record, and how far that is.
    void Decode(std::uint32_t record, std::int64_t* a, std::int64_t* b, std::int64_t* c) {
        decoded_.DecodeUpTo(record + 1);
        *a = *b = Trace().time[record];
        *c = *b + coveredAhead;
    }
    HRESULT Search(std::uint32_t from, int step, std::uint32_t* found) const {
        const auto event = decoded_.FindCall(searchText, from, step);
        if (!event) return E_FAIL;
        *found = *event;
        return S_OK;
    }
    HRESULT SetShown(const char* operation, const VARIANT& lines, int shown) {
        for (std::uint32_t i = 0; i < SafeArrayGetCount(lines.parray); ++i) {
            const auto line = static_cast<int>(SafeArrayElement(lines.parray, i)->uintVal);
            Trace().contexts[ContextOfLine(line)].shown = shown;
        }
        return Called(operation);
    }
    DecodedTrace decoded_;
};

}  // namespace kvx::test
