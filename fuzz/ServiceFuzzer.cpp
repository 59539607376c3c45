// The service's operations in any order, on a small log of two processors. An input is a list of
// operations of four bytes: which, and three arguments.

#include <cstdlib>
#include <span>

#include "fuzz/DecodeAll.h"
#include "fuzz/Scratch.h"

namespace {

using kvx::Bstr;
using kvx::service::TraceService;

constexpr std::string_view kLog =
    "[1]:[1]: dispatch to task 1.\n[2]:[2]: dispatch to task 3.\n[3]:[1]: enter to wai_sem "
    "semid=1.\n"
    "[4]:[1]: task 1 becomes WAITING.\n[4]:[1]: dispatch from task 1.\n[5]:[2]: enter to sig_sem "
    "semid=1.\n[6]:[2]: task 1 becomes RUNNABLE.\n[7]:[2]: leave from sig_sem ercd=0.\n[8]:[1]: "
    "enter "
    "to int handler 4.\n[9]:[1]: leave from int handler 4.\n[10]:[1]: dispatch to task "
    "1.\n[11]:[1]: "
    "leave from wai_sem ercd=0.\n[12]:[1]: task 1 migrates from processor 1 to processor "
    "2.\n[13]:[1]: "
    "dispatch from task 1.\n[14]:[2]: dispatch to task 1.\n[15]:[2]: task 3 becomes DORMANT.\n";

class Dialogs final : public kvx::service::IServiceDialogs {
  public:
    bool AskSearchCondition(kvx::service::SearchCondition& condition) override {
        condition = LastCondition();
        return true;
    }
    kvx::service::SearchCondition LastCondition() const override {
        kvx::service::SearchCondition condition;
        condition.text = "sem";
        return condition;
    }
    bool AskPickUp(const std::vector<kvx::service::NameCount>& calls,
                   kvx::service::PickUp& chosen) override {
        for (std::size_t i = 0; i < calls.size(); i += 2) chosen.names.push_back(calls[i].name);
        return true;
    }
};

// Asks everything that an event answers.
void Ask(TraceService& trace, std::uint32_t event) {
    std::int32_t number = 0;
    std::int64_t time = 0;
    std::uint32_t other = 0;
    VARIANT_BOOL yes = VARIANT_FALSE;
    Bstr text;
    trace.GetEventKind(event, &number);
    trace.GetEventTime(event, &time);
    trace.GetEventEndTime(event, &time);
    trace.GetEventContext(event, &number);
    trace.GetEventNextContext(event, &number);
    trace.GetEventState(event, &number);
    trace.GetEventStateContext(event, &number);
    trace.IsEventSuspended(event, &yes);
    trace.IsEventPaused(event, &yes);
    trace.GetEventTipText(event, text.Receive());
    trace.GetSysCallEvent(event, &other);
    trace.GetSysCallClass(event, &number);
    trace.GetHistoryIndex(event, &other);
}

// Asks everything that a line and an entry of the history answer.
void AskLine(TraceService& trace, std::int32_t line, std::uint32_t number) {
    std::uint32_t event = 0;
    std::int32_t history = 0;
    std::int64_t time = 0;
    _tagSContextData data{};
    Bstr name;
    Bstr parameters;
    Bstr result;
    trace.GetContextData(line, &data);
    SysFreeString(data.name);
    trace.GetContextEventCount(line, &event);
    trace.GetContextEventTime(line, number, &time);
    trace.GetContextEvent(line, number, &event);
    trace.GetHistoryEvent(number, &event);
    trace.GetHistoryNumber(number, &history);
    trace.GetHistoryName(number, name.Receive());
    trace.GetHistoryParameter(number, parameters.Receive());
    trace.GetHistoryReturnParameter(number, result.Receive());
    trace.GetHistoryTime(number, &time);
}

void Do(TraceService& trace, std::span<const std::uint8_t, 4> operation) {
    const auto signedOf = [](std::uint8_t byte) { return static_cast<std::int32_t>(byte) - 4; };
    const auto a = signedOf(operation[1]);
    const auto b = signedOf(operation[2]);
    const auto event = static_cast<std::uint32_t>(a);
    std::int64_t times[3] = {};
    std::int32_t last = 0;
    std::uint32_t found = 0;
    VARIANT_BOOL more = VARIANT_FALSE;
    VARIANT_BOOL hit = VARIANT_FALSE;
    kvx::host::OSTraceColumns columns{};
    switch (operation[0] % 17) {
        case 0:
            trace.AnalyzeRecords(a, b, &times[0], &times[1], &times[2]);
            return;
        case 1:
            trace.AnalyzeUntil(a, b, operation[3], &last, &times[0], &times[1], &times[2]);
            return;
        case 2:
            trace.DiscardData();
            return;
        case 3:
            trace.ShowProcessor(operation[1]);
            return;
        case 4:
            return Ask(trace, event);
        case 5:
            return AskLine(trace, a, static_cast<std::uint32_t>(b));
        case 6:
            trace.MoveContext(a, b);
            return;
        case 7:
            trace.ResetContextOrder();
            return;
        case 8:
            trace.SearchFirst(event, &found, &more, &hit);
            return;
        case 9:
            trace.SearchNext(event, &found);
            return;
        case 10:
            trace.SearchPrevious(event, &found);
            return;
        case 11:
            trace.StartPickUp();
            return;
        case 12:
            trace.EndPickUp();
            return;
        case 13:
            trace.GetColumns(&columns);
            return;
        case 14:
            trace.EndAnalysis();
            return;
        case 15:
            trace.ViewClosed();
            return;
        default:
            trace.Summarize();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kvx::fuzz::Scratch scratch;
    static const bool written = (scratch.Write("x.log", kLog), true);
    auto recording = kvx::formats::OpenRecording(scratch.Path("x.log"));
    kvx::fuzz::Require(written && recording, "the log does not open");
    TraceService trace;
    Dialogs dialogs;
    trace.SetDialogs(&dialogs);
    trace.SetRecording(std::move(*recording));
    for (const std::span input(data, size); size >= 4; size -= 4) {
        Do(trace, input.subspan(size - 4).first<4>());
        kvx::fuzz::Require(trace.Check().empty(), trace.Check());
    }
    return 0;
}
