#pragma once
// The host's OS-trace service: the recorded trace, decoded on demand into events.
//
// Times are signed 64-bit counts of the trace clock. Events are numbered from 0 in order of
// non-decreasing time. Lines are positions in the current line order of the contexts. A negative
// status is failure; *out is then unchanged.

#include "host/Host.h"

// Kinds of event.
inline constexpr int kEventDispatch = 1;
inline constexpr int kEventState = 2;
inline constexpr int kEventSysCall = 3;

// Kinds of context.
inline constexpr int kContextHandler = 1;
inline constexpr int kContextTask = 2;
inline constexpr int kContextUnknown = 3;

// Trace range conditions.
inline constexpr int kRangeFull = 5;
inline constexpr int kRangeFree = 6;

// Time display modes.
inline constexpr int kTimeMilliseconds = 1;
inline constexpr int kTimeMicroseconds = 2;
inline constexpr int kTimeNanoseconds = 3;
inline constexpr int kTimeCycles = 4;

// Capabilities.
inline constexpr int kCapabilityVariablePools = 1;
inline constexpr int kCapabilityNanoseconds = 2;
inline constexpr int kCapabilityTime = 3;

// One context. name is allocated for the call; the receiver frees it.
struct _tagSContextData {
    std::int32_t type = 0;           // kContextHandler, kContextTask, kContextUnknown
    std::int32_t number = 0;         // vector number or task ID; a task's 0 is the idle state
    std::uint32_t tableAddress = 0;  // handlers
    BSTR name = nullptr;
    std::int32_t hatched = 0;
    std::int32_t sysCallProcess = 0;
    std::int32_t shown = 1;
};

class IQOSTraceService : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL StopMeasurement() = 0;
    virtual HRESULT KVX_CALL ResetMeasurement() = 0;
    virtual HRESULT KVX_CALL StartMeasurement() = 0;
    virtual HRESULT KVX_CALL GetRecordRange(std::int32_t* first, std::int32_t* last,
                                            std::int64_t* start, std::int64_t* end) = 0;
    // Decodes records from..to. a: time of the last record; b: analysed-up-to time; c: covered
    // time.
    virtual HRESULT KVX_CALL AnalyzeRecords(std::int32_t from, std::int32_t to, std::int64_t* a,
                                            std::int64_t* b, std::int64_t* c) = 0;
    virtual HRESULT KVX_CALL GetRangeCondition(std::int32_t* condition) = 0;
    virtual HRESULT KVX_CALL SetRangeCondition(std::int32_t condition) = 0;
    virtual HRESULT KVX_CALL Attach() = 0;
    virtual HRESULT KVX_CALL Detach() = 0;
    virtual HRESULT KVX_CALL TimeToCount(std::int64_t* count, std::int32_t h, std::int32_t m,
                                         std::int32_t s, std::int32_t ms, std::int32_t us,
                                         std::int32_t ns) = 0;
    virtual HRESULT KVX_CALL CountToTime(std::int64_t count, std::int32_t* h, std::int32_t* m,
                                         std::int32_t* s, std::int32_t* ms, std::int32_t* us,
                                         std::int32_t* ns) = 0;
    virtual HRESULT KVX_CALL DiscardData() = 0;
    virtual HRESULT KVX_CALL GetContextCount(std::int32_t* count) = 0;
    virtual HRESULT KVX_CALL GetContextData(std::int32_t line, _tagSContextData* out) = 0;
    virtual HRESULT KVX_CALL MoveContext(std::int32_t from, std::int32_t to) = 0;
    virtual HRESULT KVX_CALL ResetContextOrder() = 0;
    virtual HRESULT KVX_CALL EndAnalysis() = 0;
    // VT_ARRAY | VT_UINT whose elements are VT_UINT line indexes; borrowed.
    virtual HRESULT KVX_CALL ShowContext(VARIANT lines) = 0;
    virtual HRESULT KVX_CALL HideContext(VARIANT lines) = 0;
    virtual HRESULT KVX_CALL GetEventCount(std::uint32_t* count) = 0;
    virtual HRESULT KVX_CALL GetEventKind(std::uint32_t event, std::int32_t* kind) = 0;
    virtual HRESULT KVX_CALL GetEventTime(std::uint32_t event, std::int64_t* time) = 0;
    // When what the event began was over; 0 where that lies beyond what was recorded.
    virtual HRESULT KVX_CALL GetEventEndTime(std::uint32_t event, std::int64_t* time) = 0;
    // Lines separated by "\n".
    virtual HRESULT KVX_CALL GetEventTipText(std::uint32_t event, BSTR* text) = 0;
    // Whose event it is, as a line. A dispatch is that of the context that loses the processor.
    virtual HRESULT KVX_CALL GetEventContext(std::uint32_t event, std::int32_t* line) = 0;
    virtual HRESULT KVX_CALL GetEventNextContext(std::uint32_t event, std::int32_t* line) = 0;
    virtual HRESULT KVX_CALL GetEventState(std::uint32_t event, std::int32_t* state) = 0;
    virtual HRESULT KVX_CALL GetEventStateContext(std::uint32_t event, std::int32_t* line) = 0;
    virtual HRESULT KVX_CALL IsEventSuspended(std::uint32_t event, VARIANT_BOOL* yes) = 0;
    virtual HRESULT KVX_CALL IsEventPaused(std::uint32_t event, VARIANT_BOOL* yes) = 0;
    virtual HRESULT KVX_CALL GetContextEventCount(std::int32_t line, std::uint32_t* count) = 0;
    virtual HRESULT KVX_CALL GetContextEventTime(std::int32_t line, std::uint32_t number,
                                                 std::int64_t* time) = 0;
    virtual HRESULT KVX_CALL GetContextEvent(std::int32_t line, std::uint32_t number,
                                             std::uint32_t* event) = 0;
    virtual HRESULT KVX_CALL GetSysCallEvent(std::uint32_t event, std::uint32_t* timed) = 0;
    virtual HRESULT KVX_CALL GetSysCallClass(std::uint32_t event, std::int32_t* cls) = 0;
    virtual HRESULT KVX_CALL SearchFirst(std::uint32_t from, std::uint32_t* found,
                                         VARIANT_BOOL* more, VARIANT_BOOL* hit) = 0;
    virtual HRESULT KVX_CALL SearchPrevious(std::uint32_t from, std::uint32_t* found) = 0;
    virtual HRESULT KVX_CALL SearchNext(std::uint32_t from, std::uint32_t* found) = 0;
    virtual HRESULT KVX_CALL ViewClosed() = 0;
    virtual HRESULT KVX_CALL StartPickUp() = 0;
    virtual HRESULT KVX_CALL EndPickUp() = 0;
    virtual HRESULT KVX_CALL GetHistoryCount(std::uint32_t* count) = 0;
    virtual HRESULT KVX_CALL GetHistoryEvent(std::uint32_t history, std::uint32_t* event) = 0;
    virtual HRESULT KVX_CALL GetHistoryIndex(std::uint32_t event, std::uint32_t* history) = 0;
    virtual HRESULT KVX_CALL GetHistoryNumber(std::uint32_t history, std::int32_t* number) = 0;
    virtual HRESULT KVX_CALL GetHistoryName(std::uint32_t history, BSTR* name) = 0;
    virtual HRESULT KVX_CALL GetHistoryParameter(std::uint32_t history, BSTR* text) = 0;
    virtual HRESULT KVX_CALL GetHistoryReturnParameter(std::uint32_t history, BSTR* text) = 0;
    virtual HRESULT KVX_CALL GetHistoryTime(std::uint32_t history, std::int64_t* time) = 0;
    virtual HRESULT KVX_CALL IsPickUpActive(VARIANT_BOOL* yes) = 0;
    virtual HRESULT KVX_CALL Reserved53() = 0;
    virtual HRESULT KVX_CALL GetTimeMode(std::int32_t* mode) = 0;
    virtual HRESULT KVX_CALL QueryCapability(std::int32_t code, VARIANT_BOOL* yes) = 0;

  protected:
    ~IQOSTraceService() = default;
};

class IQOSTraceAvailability : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL IsTraceAvailable(VARIANT_BOOL* yes) = 0;

  protected:
    ~IQOSTraceAvailability() = default;
};
