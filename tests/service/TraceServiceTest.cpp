// The service as its callers see it: lines, search, pick-up, history, times, refusals.

#include "workbench/service/TraceService.h"

#include <gmock/gmock.h>

#include "formats/TraceFiles.h"
#include "host/Identifiers.h"
#include "workbench/service/EventStore.h"

namespace kvx::test {
namespace {

using service::kNoRecord;
using testing::ElementsAre;

class Answers final : public service::IServiceDialogs {
  public:
    bool AskSearchCondition(service::SearchCondition& asked) override {
        if (giveUp) return false;
        last = asked;
        asked = condition;
        answered_ = condition;
        return true;
    }
    service::SearchCondition LastCondition() const override { return answered_; }
    bool AskPickUp(const std::vector<service::NameCount>& calls, service::PickUp& chosen) override {
        offered = calls;
        chosen = pickUp;
        return !giveUp;
    }

    service::SearchCondition condition;
    service::SearchCondition last;
    service::PickUp pickUp;
    std::vector<service::NameCount> offered;
    bool giveUp = false;

  private:
    service::SearchCondition answered_;
};

class TraceServiceTest : public testing::Test {
  protected:
    TraceServiceTest() {
        folder_.Write("x.res", R"({"TimeScale":"us","Resources":{
          "LOW":{"Type":"Task","Attributes":{"id":2}},"HIGH":{"Type":"Task","Attributes":{"id":1}},
          "CYC":{"Type":"CyclicHandler","Attributes":{"id":1}},
          "TIMER":{"Type":"InterruptHandler","Attributes":{"id":5}}}})");
        Open();
    }

    // A service and a recording of their own, as a host makes them when a file is read anew.
    void Open() {
        trace_ =
            Show(folder_.Write("x.log",
                               "[10] dispatch to task 1.\n"
                               "[20] enter to wai_sem semid=1.\n[25] leave from wai_sem ercd=0.\n"
                               "[30] enter to sig_sem semid=2.\n[35] leave from sig_sem ercd=-18.\n"
                               "[40] enter to wai_sem semid=2.\n[45] leave from wai_sem ercd=0.\n"
                               "[50] enter to int handler 7.\n[60] leave from int handler 7.\n"));
        trace_->SetDialogs(&answers_);
    }

    void Decode(std::int32_t last) {
        std::int64_t a = 0;
        std::int64_t b = 0;
        std::int64_t c = 0;
        ASSERT_EQ(trace_->AnalyzeRecords(0, last, &a, &b, &c), S_OK);
    }
    std::vector<std::string> Lines() {
        std::int32_t count = 0;
        trace_->GetContextCount(&count);
        std::vector<std::string> lines;
        for (std::int32_t line = 0; line < count; ++line) {
            _tagSContextData data;
            EXPECT_EQ(trace_->GetContextData(line, &data), S_OK);
            SysFreeString(data.name);
            lines.push_back(FormatText("%d %d %06X %s%s%s", data.type, data.number,
                                       data.tableAddress, trace_->LineName(line).c_str(),
                                       data.hatched ? " hatched" : "",
                                       data.shown ? "" : " hidden"));
        }
        return lines;
    }
    HRESULT SetShown(std::vector<std::uint32_t> lines, bool shown) {
        VARIANT value;
        value.vt = VT_ARRAY | VT_UINT;
        value.parray = SafeArrayCreateVector(static_cast<std::uint32_t>(lines.size()));
        for (std::uint32_t i = 0; i < lines.size(); ++i) {
            VARIANT* element = SafeArrayElement(value.parray, i);
            element->vt = VT_UINT;
            element->uintVal = lines[i];
        }
        const HRESULT status = shown ? trace_->ShowContext(value) : trace_->HideContext(value);
        VariantClear(&value);
        return status;
    }

    TempFolder folder_;
    Answers answers_;
    std::unique_ptr<service::TraceService> trace_;
};

TEST_F(TraceServiceTest, LinesByDefaultAndMoved) {
    EXPECT_THAT(Lines(), ElementsAre("1 5 000000 TIMER", "1 801 C00001 CYC", "2 1 000000 HIGH",
                                     "2 2 000000 LOW", "2 0 000000 Idle hatched"));
    ASSERT_EQ(trace_->MoveContext(0, 3), S_OK);
    ASSERT_EQ(trace_->MoveContext(4, 0), S_OK);
    EXPECT_EQ(trace_->MoveContext(5, 0), E_INVALIDARG);
    EXPECT_EQ(trace_->MoveContext(-1, 0), E_INVALIDARG);
    EXPECT_THAT(Lines(), ElementsAre("2 0 000000 Idle hatched", "1 801 C00001 CYC",
                                     "2 1 000000 HIGH", "2 2 000000 LOW", "1 5 000000 TIMER"));
    // Contexts that decoding finds take their usual places; events keep their contexts.
    Decode(8);
    EXPECT_THAT(Lines(), ElementsAre("1 7 000000 int handler 7", "2 0 000000 Idle hatched",
                                     "1 801 C00001 CYC", "2 1 000000 HIGH", "2 2 000000 LOW",
                                     "1 5 000000 TIMER", "3 0 000000 Unknown"));
    EXPECT_EQ(EventLine(*trace_, 4), "50 run HIGH: int handler 7");
    ASSERT_EQ(trace_->ResetContextOrder(), S_OK);
    EXPECT_THAT(Lines(), ElementsAre("1 5 000000 TIMER", "1 7 000000 int handler 7",
                                     "1 801 C00001 CYC", "2 1 000000 HIGH", "2 2 000000 LOW",
                                     "2 0 000000 Idle hatched", "3 0 000000 Unknown"));
    EXPECT_EQ(EventLine(*trace_, 4), "50 run HIGH: int handler 7");
}

TEST_F(TraceServiceTest, HiddenLinesStayHiddenWhenMovedAndDecodedAnew) {
    ASSERT_EQ(SetShown({2, 4}, false), S_OK);
    ASSERT_EQ(trace_->MoveContext(2, 0), S_OK);
    ASSERT_EQ(trace_->DiscardData(), S_OK);
    EXPECT_THAT(Lines(),
                ElementsAre("2 1 000000 HIGH hidden", "1 5 000000 TIMER", "1 801 C00001 CYC",
                            "2 2 000000 LOW", "2 0 000000 Idle hatched hidden"));
    ASSERT_EQ(SetShown({0, 0, 3}, true), S_OK);
    EXPECT_EQ(SetShown({99}, true), E_INVALIDARG);
    VARIANT wrong;
    EXPECT_EQ(trace_->HideContext(wrong), E_INVALIDARG);
    EXPECT_THAT(Lines(), testing::Contains("2 1 000000 HIGH"));
}

TEST_F(TraceServiceTest, SearchesNameParametersAndReturn) {
    Decode(4);
    std::uint32_t found = 99;
    VARIANT_BOOL more = 0;
    VARIANT_BOOL hit = 0;
    const auto search = [&](const char* text, bool matchCase = false, bool wildCard = false) {
        answers_.condition = {text, matchCase, wildCard, false};
        EXPECT_EQ(trace_->SearchFirst(0, &found, &more, &hit), S_OK);
        return hit == VARIANT_TRUE ? EventLine(*trace_, found) : std::string("none");
    };
    const std::string kWait = "20 call HIGH: wai_sem(semid=1) -> ercd=0";
    const std::string kSignal = "30 call HIGH: sig_sem(semid=2) -> ercd=-18";
    EXPECT_EQ(search("WAI_"), kWait);
    EXPECT_EQ(search("semid=2"), kSignal);
    EXPECT_EQ(search("ercd=-18"), kSignal);
    EXPECT_EQ(search("s?g_*m", false, true), kSignal);
    EXPECT_EQ(search("s?g_*m"), "none");
    EXPECT_EQ(search("WAI_", true), "none");
    EXPECT_EQ(more, VARIANT_TRUE);  // two records are left
    // Nothing more of that name so far; after decoding there is.
    EXPECT_EQ(search("wai_sem"), kWait);
    EXPECT_LT(trace_->SearchNext(found, &found), 0);
    Decode(8);
    ASSERT_EQ(trace_->SearchNext(found, &found), S_OK);
    EXPECT_EQ(EventLine(*trace_, found), "40 call HIGH: wai_sem(semid=2) -> ercd=0");
    ASSERT_EQ(trace_->SearchPrevious(found, &found), S_OK);
    EXPECT_EQ(EventLine(*trace_, found), kWait);
    EXPECT_LT(trace_->SearchPrevious(found, &found), 0);
    ASSERT_EQ(trace_->SearchNext(0xFFFFFFFFu, &found), S_OK);  // from before the first event
    EXPECT_EQ(EventLine(*trace_, found), kWait);
    // The condition is the host's: it holds for the recording that is read anew.
    Open();
    Decode(8);
    ASSERT_EQ(trace_->SearchNext(found, &found), S_OK);
    EXPECT_EQ(EventLine(*trace_, found), "40 call HIGH: wai_sem(semid=2) -> ercd=0");
    EXPECT_EQ(search("nothing of the kind"), "none");
    EXPECT_EQ(more, VARIANT_FALSE);
    EXPECT_EQ(answers_.last.text, "wai_sem");
    answers_.giveUp = true;
    EXPECT_LT(trace_->SearchFirst(0, &found, &more, &hit), 0);
    trace_->SetDialogs(nullptr);
    EXPECT_LT(trace_->SearchFirst(0, &found, &more, &hit), 0);
}

TEST_F(TraceServiceTest, TheHistoryCanBeRestricted) {
    Decode(4);
    const auto history = [&] {
        std::uint32_t count = 0;
        EXPECT_EQ(trace_->GetHistoryCount(&count), S_OK);
        std::vector<std::string> lines;
        for (std::uint32_t i = 0; i < count; ++i) {
            std::int32_t number = 0;
            std::int64_t time = 0;
            std::uint32_t event = 0;
            std::uint32_t back = 99;
            Bstr name;
            Bstr parameter;
            Bstr result;
            EXPECT_EQ(trace_->GetHistoryNumber(i, &number), S_OK);
            EXPECT_EQ(trace_->GetHistoryTime(i, &time), S_OK);
            EXPECT_EQ(trace_->GetHistoryName(i, name.Receive()), S_OK);
            EXPECT_EQ(trace_->GetHistoryParameter(i, parameter.Receive()), S_OK);
            EXPECT_EQ(trace_->GetHistoryReturnParameter(i, result.Receive()), S_OK);
            EXPECT_EQ(trace_->GetHistoryEvent(i, &event), S_OK);
            EXPECT_EQ(trace_->GetHistoryIndex(event, &back), S_OK);
            EXPECT_EQ(back, i);
            lines.push_back(FormatText("%d %s(%s) %s at %lld", number, name.Utf8().c_str(),
                                       parameter.Utf8().c_str(), result.Utf8().c_str(),
                                       static_cast<long long>(time)));
        }
        return lines;
    };
    EXPECT_THAT(history(), ElementsAre("1 wai_sem(semid=1) ercd=0 at 20",
                                       "2 sig_sem(semid=2) ercd=-18 at 30"));
    std::uint32_t index = 99;
    EXPECT_LT(trace_->GetHistoryIndex(0, &index), 0);  // a dispatch
    answers_.pickUp.names = {"wai_sem"};
    ASSERT_EQ(trace_->StartPickUp(), S_OK);
    ASSERT_EQ(answers_.offered.size(), 2u);
    EXPECT_EQ(answers_.offered[0].name, "sig_sem");
    EXPECT_EQ(answers_.offered[0].count, 1u);
    Decode(8);  // the restriction holds for calls decoded later
    EXPECT_THAT(history(),
                ElementsAre("1 wai_sem(semid=1) ercd=0 at 20", "3 wai_sem(semid=2) ercd=0 at 40"));
    EXPECT_LT(trace_->GetHistoryIndex(2, &index), 0);  // a call that is not picked up
    VARIANT_BOOL active = 0;
    ASSERT_EQ(trace_->IsPickUpActive(&active), S_OK);
    EXPECT_EQ(active, VARIANT_TRUE);
    ASSERT_EQ(trace_->EndPickUp(), S_OK);
    EXPECT_THAT(history(), testing::SizeIs(3));
    answers_.giveUp = true;
    EXPECT_LT(trace_->StartPickUp(), 0);
    ASSERT_EQ(trace_->IsPickUpActive(&active), S_OK);
    EXPECT_EQ(active, VARIANT_FALSE);
}

TEST_F(TraceServiceTest, ColumnsSayWhatTheOperationsSay) {
    Decode(8);
    ASSERT_EQ(trace_->MoveContext(0, 2), S_OK);
    void* out = nullptr;
    ASSERT_EQ(trace_->QueryInterface(host::kOSTraceColumns, &out), S_OK);
    host::OSTraceColumns columns;
    ASSERT_EQ(static_cast<host::IQOSTraceColumns*>(out)->GetColumns(&columns), S_OK);
    std::uint32_t count = 0;
    trace_->GetEventCount(&count);
    ASSERT_EQ(columns.eventCount, count);
    for (std::uint32_t event = 0; event < count; ++event) {
        std::int64_t time = 0;
        std::int64_t end = 0;
        std::int32_t line = 0;
        std::int32_t next = 0;
        std::int32_t kind = 0;
        trace_->GetEventTime(event, &time);
        trace_->GetEventEndTime(event, &end);
        trace_->GetEventContext(event, &line);
        trace_->GetEventNextContext(event, &next);
        trace_->GetEventKind(event, &kind);
        EXPECT_EQ(columns.time[event], time);
        EXPECT_EQ(columns.kind[event], kind);
        EXPECT_EQ(columns.lineOfContext[columns.context[event]], static_cast<std::uint32_t>(line));
        if (kind == kEventSysCall) continue;
        EXPECT_EQ(columns.lineOfContext[columns.next[event]], static_cast<std::uint32_t>(next));
        const auto by = columns.endEvent[event];
        EXPECT_EQ(by == host::kOpenEnd ? 0 : columns.time[by], end);
    }
}

TEST_F(TraceServiceTest, TimesConvertInTheClocksUnit) {
    std::int64_t count = 0;
    ASSERT_EQ(trace_->TimeToCount(&count, 1, 2, 3, 4, 5, 999), S_OK);
    EXPECT_EQ(count, 3723004005);
    std::int32_t f[6] = {};
    ASSERT_EQ(trace_->CountToTime(count, &f[0], &f[1], &f[2], &f[3], &f[4], &f[5]), S_OK);
    EXPECT_THAT(f, ElementsAre(1, 2, 3, 4, 5, 0));
    std::int32_t mode = 0;
    ASSERT_EQ(trace_->GetTimeMode(&mode), S_OK);
    EXPECT_EQ(mode, kTimeMicroseconds);
    using service::TimeUnit;
    EXPECT_EQ(service::TraceClock(TimeUnit::Nanoseconds).Format(3723004005006),
              "01:02:03.004.005.006");
    EXPECT_EQ(service::TraceClock(TimeUnit::Milliseconds).Format(360000001), "100:00:00.001.000");
    EXPECT_EQ(service::TraceClock().Format(-12345), "-12345");
    // Fields that no count holds saturate instead of wrapping round.
    constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(service::TraceClock(TimeUnit::Nanoseconds).ToCount({kMost, 0, 0, 0, 0, 0}),
              std::numeric_limits<std::int64_t>::max());
    for (const auto unit :
         {TimeUnit::Seconds, TimeUnit::Milliseconds, TimeUnit::Microseconds, TimeUnit::Nanoseconds})
        for (const std::int64_t value : {0L, 1L, 999L, 86399999999L})
            EXPECT_EQ(service::TraceClock(unit).ToCount(service::TraceClock(unit).ToFields(value)),
                      value);
}

TEST_F(TraceServiceTest, CapabilitiesFollowTheClock) {
    folder_.Write("x.res", R"({"TimeScale":"tick","Resources":{}})");
    const auto trace = Show(folder_.Path("x.log"));
    VARIANT_BOOL yes = 0;
    std::int32_t mode = 0;
    std::int64_t count = 0;
    ASSERT_EQ(trace->QueryCapability(kCapabilityTime, &yes), S_OK);
    EXPECT_EQ(yes, VARIANT_FALSE);
    ASSERT_EQ(trace->GetTimeMode(&mode), S_OK);
    EXPECT_EQ(mode, kTimeCycles);
    EXPECT_LT(trace->TimeToCount(&count, 0, 0, 1, 0, 0, 0), 0);
    ASSERT_EQ(trace_->QueryCapability(kCapabilityTime, &yes), S_OK);
    EXPECT_EQ(yes, VARIANT_TRUE);
    ASSERT_EQ(trace_->QueryCapability(kCapabilityNanoseconds, &yes), S_OK);
    EXPECT_EQ(yes, VARIANT_FALSE);
}

TEST_F(TraceServiceTest, WithoutATraceNothingIsMadeUp) {
    service::TraceService empty;
    VARIANT_BOOL yes = VARIANT_TRUE;
    ASSERT_EQ(empty.IsTraceAvailable(&yes), S_OK);
    EXPECT_EQ(yes, VARIANT_FALSE);
    std::int32_t number = 0;
    std::int64_t time = 0;
    std::uint32_t event = 0;
    EXPECT_LT(empty.GetRecordRange(&number, &number, &time, &time), 0);
    EXPECT_LT(empty.AnalyzeRecords(0, 0, &time, &time, &time), 0);
    EXPECT_LT(empty.GetContextCount(&number), 0);
    EXPECT_LT(empty.GetEventCount(&event), 0);
    EXPECT_LT(empty.GetTimeMode(&number), 0);
    EXPECT_GE(empty.Attach(), 0);
    EXPECT_GE(empty.DiscardData(), 0);
}

TEST_F(TraceServiceTest, WrongArgumentsAreRefused) {
    Decode(8);
    std::int64_t time = 0;
    std::int32_t number = 0;
    EXPECT_LT(trace_->GetEventTime(1000, &time), 0);
    EXPECT_EQ(trace_->GetEventTime(0, nullptr), E_POINTER);
    EXPECT_LT(trace_->GetEventState(0, &number), 0);  // a dispatch has none
    EXPECT_LT(trace_->GetSysCallClass(0, &number), 0);
    EXPECT_LT(trace_->AnalyzeRecords(-1, 0, &time, &time, &time), 0);
    EXPECT_LT(trace_->AnalyzeRecords(3, 2, &time, &time, &time), 0);
    EXPECT_EQ(trace_->SetRangeCondition(7), E_INVALIDARG);
    EXPECT_FALSE(trace_->ShowProcessor(9));
}

TEST_F(TraceServiceTest, ARecordedTraceIsNotMeasured) {
    EXPECT_LT(trace_->StartMeasurement(), 0);
    EXPECT_GE(trace_->StopMeasurement(), 0);
    EXPECT_GE(trace_->ResetMeasurement(), 0);
    std::int32_t range = 0;
    ASSERT_EQ(trace_->GetRangeCondition(&range), S_OK);
    EXPECT_EQ(range, kRangeFull);
    ASSERT_EQ(trace_->SetRangeCondition(kRangeFree), S_OK);
    ASSERT_EQ(trace_->GetRangeCondition(&range), S_OK);
    EXPECT_EQ(range, kRangeFree);
}

// A host asks for the first hundred records; those may all be of the other processor.
TEST(TraceOfTwoProcessors, ShowsTheFirstEventOfTheShownOneHoweverLateItIs) {
    std::string log = "[0]:[1]: dispatch to task 1.\n";
    for (int i = 1; i < 1000; ++i)
        log += FormatText("[%d]:[1]: dispatch to task %d.\n", i, i % 2 + 1);
    log += "[1000]:[2]: dispatch to task 3.\n[1001]:[1]: dispatch to task 1.\n";
    const TempFolder folder;
    const auto trace = Show(folder.Write("x.log", log));
    ASSERT_TRUE(trace);
    ASSERT_TRUE(trace->ShowProcessor(2));
    std::int64_t a = 0;
    std::int64_t b = 0;
    std::int64_t c = 0;
    ASSERT_EQ(trace->AnalyzeRecords(0, 99, &a, &b, &c), S_OK);
    EXPECT_EQ(b, 99) << "the time of the records that were asked for";
    std::int64_t first = 0;
    ASSERT_EQ(trace->GetEventTime(0, &first), S_OK);
    EXPECT_EQ(first, 1000);
}

// What the events of a store have to say about themselves when they are published.
std::string Fault(service::EventStore& store) {
    store.Publish();
    return store.Check();
}

TEST(EventStoreCheck, FindsWhatCannotBe) {
    service::EventStore store(10);
    store.AddDispatch(10, 0, 1, 0);
    const auto state = store.AddState(11, 2, 1, 0, 1);
    store.AddDispatch(12, 1, 2, 2);
    EXPECT_EQ(Fault(store), "");
    store.Close(state, 0);
    EXPECT_THAT(Fault(store), testing::HasSubstr("event 1 ends nowhere"));
    store.Close(state, 2);
    EXPECT_EQ(Fault(store), "");
    store.AddDispatch(13, 1, 3, 3);  // 2 was running
    EXPECT_THAT(Fault(store), testing::HasSubstr("does not lead to the next"));
    service::EventStore coded(10);
    coded.AddCall(5, 0, 14, 0, 0);
    EXPECT_THAT(Fault(coded), testing::HasSubstr("event 0"));
    service::EventStore timed(10);
    timed.AddCall(5, 0, 1, 0, 0);
    timed.AddCall(4, 0, 1, 0, 1);
    EXPECT_THAT(Fault(timed), testing::HasSubstr("earlier than the one before"));
}

}  // namespace
}  // namespace kvx::test
