#pragma once
// The OS-trace service: shows one recording, one processor of it at a time, as events, and keeps
// line order, hidden lines, search condition and pick-up.
//
// A recording is decoded from the moment it is set, on a thread of its own. AnalyzeRecords and
// AnalyzeUntil say how far it is shown, and wait where that is further than it is decoded.
// DiscardData shows nothing. The service counts no references; its owner ends it after everyone who
// asked for it.

#include <memory>
#include <string>
#include <vector>

#include "host/OSTraceColumns.h"
#include "host/OSTraceService.h"
#include "workbench/service/Dialogs.h"
#include "workbench/service/LineOrder.h"
#include "workbench/service/Loss.h"
#include "workbench/service/Measurement.h"
#include "workbench/service/Recording.h"
#include "workbench/service/Summary.h"

namespace kvx::service {

class DecodedRecording;
class TraceSession;

class TraceService final : public IQOSTraceService,
                           public IQOSTraceAvailability,
                           public host::IQOSTraceColumns {
  public:
    TraceService();
    ~TraceService();
    TraceService(const TraceService&) = delete;
    TraceService& operator=(const TraceService&) = delete;

    // Shows another recording, or none. Its lowest processor is shown first.
    void SetRecording(std::unique_ptr<Recording> recording);
    const Recording* GetRecording() const;
    // False: the recording has no such processor. Drops the events, line order and hidden lines;
    // whoever shows them must open the trace anew.
    bool ShowProcessor(std::uint32_t processor);
    std::uint32_t ShownProcessor() const;

    // How the user has arranged the lines, and going back to that.
    LineArrangement Lines() const;
    void ArrangeLines(LineArrangement arrangement);

    // Borrowed; null: no question can be asked, searches and pick-ups then fail.
    void SetDialogs(IServiceDialogs* dialogs) { dialogs_ = dialogs; }
    // Borrowed; null: the trace comes from a file, nothing can be measured.
    void SetMeasurement(IMeasurement* measurement) { measurement_ = measurement; }

    // Counts of opening and of what is decoded so far.
    LossCounters Losses() const;
    // All that is decoded; null without a recording.
    const DecodedRecording* Decoded() const;
    // The same for whoever works on it apart from the service, and longer.
    std::shared_ptr<const DecodedRecording> ShareDecoded() const;
    // Shows the whole recording, which is waited for, and counts it. Empty without a recording.
    Summary Summarize();
    // The detail that `events` prints for an event: see docs/FORMATS.md.
    std::string EventDetail(std::uint32_t event) const;
    // Waits until everything is decoded and looks for anything in the events that cannot be; empty:
    // all is well.
    std::string Check() const;
    // Display name of a line: name, "Idle" or "Unknown".
    std::string LineName(std::int32_t line) const;

    // IQUnknown
    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }

    // IQOSTraceAvailability
    HRESULT KVX_CALL IsTraceAvailable(VARIANT_BOOL* yes) override;

    // IQOSTraceColumns
    HRESULT KVX_CALL GetColumns(host::OSTraceColumns* out) override;
    HRESULT KVX_CALL AnalyzeUntil(std::int32_t from, std::int32_t to, double until,
                                  std::int32_t* last, std::int64_t* a, std::int64_t* b,
                                  std::int64_t* c) override;

    // IQOSTraceService
    HRESULT KVX_CALL StopMeasurement() override;
    HRESULT KVX_CALL ResetMeasurement() override;
    HRESULT KVX_CALL StartMeasurement() override;
    HRESULT KVX_CALL GetRecordRange(std::int32_t* first, std::int32_t* last, std::int64_t* start,
                                    std::int64_t* end) override;
    HRESULT KVX_CALL AnalyzeRecords(std::int32_t from, std::int32_t to, std::int64_t* a,
                                    std::int64_t* b, std::int64_t* c) override;
    HRESULT KVX_CALL GetRangeCondition(std::int32_t* condition) override;
    HRESULT KVX_CALL SetRangeCondition(std::int32_t condition) override;
    HRESULT KVX_CALL Attach() override;
    HRESULT KVX_CALL Detach() override;
    HRESULT KVX_CALL TimeToCount(std::int64_t* count, std::int32_t h, std::int32_t m,
                                 std::int32_t s, std::int32_t ms, std::int32_t us,
                                 std::int32_t ns) override;
    HRESULT KVX_CALL CountToTime(std::int64_t count, std::int32_t* h, std::int32_t* m,
                                 std::int32_t* s, std::int32_t* ms, std::int32_t* us,
                                 std::int32_t* ns) override;
    HRESULT KVX_CALL DiscardData() override;
    HRESULT KVX_CALL GetContextCount(std::int32_t* count) override;
    HRESULT KVX_CALL GetContextData(std::int32_t line, _tagSContextData* out) override;
    HRESULT KVX_CALL MoveContext(std::int32_t from, std::int32_t to) override;
    HRESULT KVX_CALL ResetContextOrder() override;
    HRESULT KVX_CALL EndAnalysis() override;
    HRESULT KVX_CALL ShowContext(VARIANT lines) override;
    HRESULT KVX_CALL HideContext(VARIANT lines) override;
    HRESULT KVX_CALL GetEventCount(std::uint32_t* count) override;
    HRESULT KVX_CALL GetEventKind(std::uint32_t event, std::int32_t* kind) override;
    HRESULT KVX_CALL GetEventTime(std::uint32_t event, std::int64_t* time) override;
    HRESULT KVX_CALL GetEventEndTime(std::uint32_t event, std::int64_t* time) override;
    HRESULT KVX_CALL GetEventTipText(std::uint32_t event, BSTR* text) override;
    HRESULT KVX_CALL GetEventContext(std::uint32_t event, std::int32_t* line) override;
    HRESULT KVX_CALL GetEventNextContext(std::uint32_t event, std::int32_t* line) override;
    HRESULT KVX_CALL GetEventState(std::uint32_t event, std::int32_t* state) override;
    HRESULT KVX_CALL GetEventStateContext(std::uint32_t event, std::int32_t* line) override;
    HRESULT KVX_CALL IsEventSuspended(std::uint32_t event, VARIANT_BOOL* yes) override;
    HRESULT KVX_CALL IsEventPaused(std::uint32_t event, VARIANT_BOOL* yes) override;
    HRESULT KVX_CALL GetContextEventCount(std::int32_t line, std::uint32_t* count) override;
    HRESULT KVX_CALL GetContextEventTime(std::int32_t line, std::uint32_t number,
                                         std::int64_t* time) override;
    HRESULT KVX_CALL GetContextEvent(std::int32_t line, std::uint32_t number,
                                     std::uint32_t* event) override;
    HRESULT KVX_CALL GetSysCallEvent(std::uint32_t event, std::uint32_t* timed) override;
    HRESULT KVX_CALL GetSysCallClass(std::uint32_t event, std::int32_t* cls) override;
    HRESULT KVX_CALL SearchFirst(std::uint32_t from, std::uint32_t* found, VARIANT_BOOL* more,
                                 VARIANT_BOOL* hit) override;
    HRESULT KVX_CALL SearchPrevious(std::uint32_t from, std::uint32_t* found) override;
    HRESULT KVX_CALL SearchNext(std::uint32_t from, std::uint32_t* found) override;
    HRESULT KVX_CALL ViewClosed() override;
    HRESULT KVX_CALL StartPickUp() override;
    HRESULT KVX_CALL EndPickUp() override;
    HRESULT KVX_CALL GetHistoryCount(std::uint32_t* count) override;
    HRESULT KVX_CALL GetHistoryEvent(std::uint32_t history, std::uint32_t* event) override;
    HRESULT KVX_CALL GetHistoryIndex(std::uint32_t event, std::uint32_t* history) override;
    HRESULT KVX_CALL GetHistoryNumber(std::uint32_t history, std::int32_t* number) override;
    HRESULT KVX_CALL GetHistoryName(std::uint32_t history, BSTR* name) override;
    HRESULT KVX_CALL GetHistoryParameter(std::uint32_t history, BSTR* text) override;
    HRESULT KVX_CALL GetHistoryReturnParameter(std::uint32_t history, BSTR* text) override;
    HRESULT KVX_CALL GetHistoryTime(std::uint32_t history, std::int64_t* time) override;
    HRESULT KVX_CALL IsPickUpActive(VARIANT_BOOL* yes) override;
    HRESULT KVX_CALL Reserved53() override;
    HRESULT KVX_CALL GetTimeMode(std::int32_t* mode) override;
    HRESULT KVX_CALL QueryCapability(std::int32_t code, VARIANT_BOOL* yes) override;

  private:
    std::unique_ptr<TraceSession> session_;
    IServiceDialogs* dialogs_ = nullptr;
    IMeasurement* measurement_ = nullptr;
    std::int32_t range_ = kRangeFull;
};

}  // namespace kvx::service
