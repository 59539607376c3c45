// What records mean: contexts, states, waits, calls, handlers, processors.

#include <gmock/gmock.h>

#include "formats/TraceFiles.h"
#include "workbench/service/DecodedRecording.h"

namespace kvx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Lines = std::vector<std::string>;

constexpr const char* kTwoTasks = R"({"TimeScale":"us","Resources":{
  "CurrentContext":{"Type":"Context","Attributes":{"name":"None"}},
  "MAIN":{"Type":"Task","Attributes":{"id":1,"pri":5,"state":"RUNNABLE"}},
  "WORK":{"Type":"Task","Attributes":{"id":2,"pri":9,"state":"DORMANT"}},
  "TIMER":{"Type":"InterruptHandler","Attributes":{"id":5,"state":"DORMANT"}}}})";

TEST(Decoder, ATaskWaitsIsReleasedByAHandlerAndPreemptsAnother) {
    EXPECT_THAT(
        EventsOfLog("[100] dispatch to task 1.\n"
                    "[110] enter to act_tsk tskid=2.\n"
                    "[120] task 2 becomes RUNNABLE.\n"
                    "[130] leave from act_tsk ercd=0.\n"
                    "[140] enter to twai_sem semid=3. tmout=10.\n"
                    "[150] task 1 becomes WAITING.\n"
                    "[160] dispatch from task 1.\n"
                    "[170] dispatch to task 2.\n"
                    "[180] enter to int handler 5.\n"
                    "[190] enter to isig_sem semid=3.\n"
                    "[200] task 1 becomes RUNNABLE.\n"
                    "[210] leave from isig_sem ercd=0.\n"
                    "[220] leave from int handler 5.\n"
                    "[230] dispatch from task 2.\n"
                    "[240] dispatch to task 1.\n"
                    "[250] leave from twai_sem ercd=-50.\n",
                    kTwoTasks),
        ElementsAre("100 state WORK: DMT",  //
                    "100 run Idle: MAIN", "110 call MAIN: act_tsk(tskid=2) -> ercd=0",
                    "120 state WORK: RDY", "140 call MAIN: twai_sem(semid=3, tmout=10) -> ercd=-50",
                    "150 state MAIN: WAI (SEM)", "160 run MAIN: Idle", "170 run Idle: WORK",
                    "180 run WORK: TIMER", "190 call TIMER: isig_sem(semid=3) -> ercd=0",
                    "200 state MAIN: RDY", "220 run TIMER: WORK", "230 run WORK: Idle",
                    "230 state WORK: RDY", "240 run Idle: MAIN"));
}

TEST(Decoder, WithoutResourcesTheStartIsUnknownAndNamesAreMade) {
    EXPECT_THAT(EventsOfLog("[1] dispatch to task 7.\n[2] enter to cyclic handler 1.\n"
                            "[3] leave from cyclic handler 1.\n"),
                ElementsAre("1 run Unknown: task 7", "2 run task 7: cyclic handler 1",
                            "3 run cyclic handler 1: task 7"));
}

TEST(Decoder, ALaterRecordTellsWhatRanAtTheStart) {
    EXPECT_THAT(
        EventsOfLog("[1] enter to slp_tsk.\n[2] enter to int handler 3.\n"
                    "[3] leave from int handler 3.\n[4] dispatch from task 2.\n"),
        ElementsAre("1 call task 2: slp_tsk()", "2 run task 2: int handler 3",
                    "3 run int handler 3: task 2", "4 run task 2: Idle", "4 state task 2: RDY"));
}

TEST(Decoder, TheCauseOfAWaitIsTheInnermostOpenCall) {
    const std::pair<const char*, const char*> kCauses[] = {
        {"slp_tsk", "SLP"},  {"tslp_tsk", "SLP"}, {"dly_tsk", "DLY"},          {"wai_flg", "FLG"},
        {"twai_flg", "FLG"}, {"wai_sem", "SEM"},  {"rcv_mbx", "MBX"},          {"trcv_mbx", "MBX"},
        {"snd_dtq", "DTQ"},  {"trcv_dtq", "DTQ"}, {"vsnd_dtq", "VSDTQ,VRDTQ"}, {"get_mpf", "MPF"},
        {"tget_mpf", "MPF"}, {"snd_mbf", "MBF"},  {"trcv_mbf", "MBF"},         {"loc_mtx", "MTX"},
        {"tloc_mtx", "MTX"}, {"get_mpl", "MPL"},  {"tget_mpl", "MPL"}};
    for (const auto& [call, cause] : kCauses) {
        const auto log = std::string(
                             "[1] dispatch to task 1.\n[2] enter to wup_tsk tskid=2.\n"
                             "[3] leave from wup_tsk ercd=0.\n[4] enter to ") +
                         call + " id=1.\n[5] task 1 becomes WAITING.\n[6] dispatch from task 1.\n";
        EXPECT_THAT(EventsOfLog(log), Contains(std::string("5 state task 1: WAI (") + cause + ")"));
        EXPECT_THAT(LossesOfLog(log, true), IsEmpty()) << call;
    }
}

TEST(Decoder, AWaitWithoutAnOpenCallIsCountedAndSaidSo) {
    const TempFolder folder;
    const auto trace = Show(folder.Write(
        "x.log",
        "[1] dispatch to task 1.\n[2] task 1 becomes WAITING.\n[3] dispatch from task 1.\n"));
    EXPECT_THAT(CountersOf(trace->Summarize().losses, true), ElementsAre("wait_cause_unknown 1"));
    Bstr tip;
    ASSERT_EQ(trace->GetEventTipText(1, tip.Receive()), S_OK);
    EXPECT_THAT(tip.Utf8(), testing::HasSubstr("Cause not recorded"));
}

TEST(Decoder, BasePrioritiesAreThoseOfTheResourceFileUntilACallChangesThem) {
    const TempFolder folder;
    folder.Write("x.res", kTwoTasks);
    const auto path =
        folder.Write("x.log",
                     "[1] dispatch to task 1.\n[2] enter to chg_pri tskid=2. tskpri=3.\n"
                     "[3] enter to chg_pri tskid=0. tskpri=7.\n"
                     "[4] enter to chg_pri tskid=2. tskpri=3.\n"
                     "[5] enter to ichg_pri tskid=2. tskpri=0.\n"
                     "[6] enter to chg_pri tskid=2.\n[7] enter to my_pri tskid=2.\n");
    service::DecodedRecording decoded(std::move(*formats::OpenRecording(path)));
    decoded.WaitForAll();
    std::vector<std::string> changes;
    const auto& told = decoded.BasePriorities().Changes();
    for (std::uint32_t i = 0; i < told.size(); ++i)
        changes.push_back(FormatText("%d: task %d %d", static_cast<int>(told[i].time),
                                     static_cast<int>(told[i].task), told[i].priority));
    EXPECT_THAT(changes, ElementsAre("0: task 1 5", "0: task 2 9", "2: task 2 3", "3: task 1 7",
                                     "5: task 2 9"));
}

// Two processors; on the first the records between times 4 and 8 are lost.
class GappedRecording final : public service::Recording {
  public:
    std::string Path() const override { return "gapped"; }
    std::string FormatName() const override { return "made up"; }
    const service::TraceClock& Clock() const override { return clock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }
    std::uint32_t RecordCount() const override {
        return static_cast<std::uint32_t>(records_.size());
    }
    std::int64_t FirstTime() const override { return records_.front().time; }
    std::int64_t LastTime() const override { return records_.back().time; }
    void Read(std::uint32_t first, std::span<service::Record> out) override {
        std::copy_n(records_.begin() + first, out.size(), out.begin());
    }
    std::string Detail(std::uint32_t) const override { return {}; }
    std::string NameOf(std::uint32_t) const override { return {}; }
    std::int64_t TimeOf(std::uint32_t record) const override { return records_[record].time; }

    void Add(std::int64_t time, std::uint32_t processor, service::RecordKind kind,
             std::uint64_t subject, const char* name = "") {
        service::Record record;
        record.time = time;
        record.processor = processor;
        record.kind = kind;
        const bool handler =
            kind == service::RecordKind::Enter || kind == service::RecordKind::Leave;
        record.subject = {handler ? service::ContextKind::Interrupt : service::ContextKind::Task,
                          subject};
        record.name = name;
        records_.push_back(record);
    }

  private:
    service::TraceClock clock_;
    std::vector<std::uint32_t> processors_{1, 2};
    std::vector<service::DeclaredContext> contexts_;
    std::vector<service::Record> records_;
};

TEST(Decoder, NothingThatWasKnownHoldsOnAcrossAGap) {
    using service::RecordKind;
    auto made = std::make_unique<GappedRecording>();
    made->Add(1, 1, RecordKind::DispatchTo, 1);
    made->Add(1, 2, RecordKind::DispatchTo, 2);
    made->Add(2, 1, RecordKind::State, 3);  // ready
    made->Add(2, 2, RecordKind::State, 4);
    made->Add(3, 1, RecordKind::Call, 0, "outer");
    made->Add(3, 2, RecordKind::Call, 0, "other");
    made->Add(4, 1, RecordKind::Enter, 9);
    made->Add(4, 1, RecordKind::Gap, 0);
    made->Add(8, 1, RecordKind::Leave, 9);
    made->Add(8, 1, RecordKind::Return, 0, "outer");
    made->Add(9, 2, RecordKind::Return, 0, "other");
    made->Add(10, 1, RecordKind::DispatchTo, 3);
    made->Add(11, 2, RecordKind::DispatchTo, 4);
    service::TraceService trace;
    trace.SetRecording(std::move(made));
    trace.ShowProcessor(1);
    const auto summary = trace.Summarize();
    EXPECT_THAT(Events(trace),
                ElementsAre("1 run Unknown: task 1", "2 state task 3: RDY",
                            "3 call task 1: outer()", "4 run task 1: int handler 9",
                            "4 run int handler 9: Unknown", "10 run Unknown: task 3"));
    std::int64_t end = 0;
    trace.GetEventEndTime(1, &end);
    EXPECT_EQ(end, 4);
    // The other processor goes on with what it ran; who was ready there may have run on the first.
    trace.ShowProcessor(2);
    trace.Summarize();
    EXPECT_THAT(Events(trace), ElementsAre("1 run Unknown: task 2", "2 state task 4: RDY",
                                           "3 call task 2: other()", "4 run task 2: Unknown",
                                           "4 run Unknown: task 2", "11 run task 2: task 4",
                                           "11 state task 2: RDY"));
    trace.GetEventEndTime(1, &end);
    EXPECT_EQ(end, 4);
    EXPECT_THAT(CountersOf(summary.losses), IsEmpty());
}

TEST(Decoder, SuspensionLiesOverTheState) {
    EXPECT_THAT(
        EventsOfLog("[1] dispatch to task 1.\n"
                    "[2] task 2 becomes RUNNABLE.\n[3] task 2 becomes SUSPENDED.\n"
                    "[4] task 2 becomes RUNNABLE.\n"
                    "[5] enter to dly_tsk dlytim=9.\n[6] task 1 becomes WAITING.\n"
                    "[7] dispatch from task 1.\n[8] dispatch to task 2.\n"
                    "[9] task 1 becomes WAITING-SUSPENDED.\n[10] task 1 becomes WAITING.\n"
                    "[11] task 1 becomes WAITING-SUSPENDED.\n[12] task 1 becomes SUSPENDED.\n"),
        ElementsAre("1 run Unknown: task 1", "2 state task 2: RDY", "3 state task 2: RDY+SUS",
                    "4 state task 2: RDY", "5 call task 1: dly_tsk(dlytim=9)",
                    "6 state task 1: WAI (DLY)", "7 run task 1: Idle", "8 run Idle: task 2",
                    "9 state task 1: WAI (DLY)+SUS", "10 state task 1: WAI (DLY)",
                    "11 state task 1: WAI (DLY)+SUS", "12 state task 1: RDY+SUS"));
}

TEST(Decoder, AKernelThatDoesNotLogDispatchesFromATaskStillGoesIdle) {
    // Another task follows at once: the task keeps the processor until then.
    EXPECT_THAT(
        EventsOfLog("[1] dispatch to task 1.\n[5] task 1 becomes WAITING.\n"
                    "[6] a comment\n[7] dispatch to task 2.\n"),
        ElementsAre("1 run Unknown: task 1", "5 state task 1: WAI (SLP)", "7 run task 1: task 2"));
    // Something else follows: nothing has run in between.
    EXPECT_THAT(EventsOfLog("[1] dispatch to task 1.\n[5] task 1 becomes DORMANT.\n"
                            "[9] enter to int handler 2.\n[10] leave from int handler 2.\n"),
                ElementsAre("1 run Unknown: task 1", "5 state task 1: DMT", "5 run task 1: Idle",
                            "9 run Idle: int handler 2", "10 run int handler 2: Idle"));
    EXPECT_THAT(EventsOfLog("[1] dispatch to task 1.\n[5] task 1 becomes WAITING.\n"
                            "[9] dispatch to task 1.\n"),
                Contains("5 run task 1: Idle"));
}

TEST(Decoder, HandlersNestAndTheirContextsAreTold) {
    EXPECT_THAT(EventsOfLog("[1] dispatch to task 1.\n[2] enter to int handler 5.\n"
                            "[3] enter to isr 5.\n[4] leave from isr 5.\n"
                            "[5] enter to alarm handler 5.\n[6] leave from alarm handler 5.\n"
                            "[7] leave from int handler 5.\n[8] enter to exc handler 5.\n"
                            "[9] leave from exc handler 5.\n"),
                ElementsAre("1 run Unknown: task 1", "2 run task 1: int handler 5",
                            "3 run int handler 5: isr 5", "4 run isr 5: int handler 5",
                            "5 run int handler 5: alarm handler 5",
                            "6 run alarm handler 5: int handler 5", "7 run int handler 5: task 1",
                            "8 run task 1: exc handler 5", "9 run exc handler 5: task 1"));
}

TEST(Decoder, CallsPairByNameAndByTask) {
    // Two tasks in calls of one name; a call inside a call; forms of one call under two names.
    const char* log =
        "[1] dispatch to task 1.\n[2] enter to wai_sem semid=1.\n[3] task 1 becomes WAITING.\n"
        "[4] dispatch from task 1.\n[5] dispatch to task 2.\n[6] enter to wai_sem semid=2.\n"
        "[7] enter to cal_svc fncd=1.\n[8] leave from cal_svc ercd=4.\n"
        "[9] leave from wai_sem ercd=2.\n[10] enter to irot_rdq tskpri=1.\n"
        "[11] leave from imrot_rdq ercd=0. prcid=2.\n[12] enter to ext_tsk.\n"
        "[13] task 2 becomes DORMANT.\n[14] dispatch to task 1.\n[15] leave to wai_sem ercd=1.\n";
    EXPECT_THAT(EventsOfLog(log), testing::IsSupersetOf({
                                      "2 call task 1: wai_sem(semid=1) -> ercd=1",
                                      "6 call task 2: wai_sem(semid=2) -> ercd=2",
                                      "7 call task 2: cal_svc(fncd=1) -> ercd=4",
                                      "10 call task 2: irot_rdq(tskpri=1) -> ercd=0, prcid=2",
                                      "12 call task 2: ext_tsk()",
                                  }));
    EXPECT_THAT(LossesOfLog(log), IsEmpty());
}

TEST(Decoder, WhatIsMissingIsCounted) {
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] enter to wai_sem semid=1.\n"
                            "[3] leave from wai_sem ercd=0.\n[4] leave from sig_sem ercd=0.\n"),
                ElementsAre("returns_without_call 1"));
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] leave from wai_sem ercd=0.\n", true),
                ElementsAre("calls_before_start 1"));
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] enter to int handler 1.\n"
                            "[3] dispatch to task 2.\n[4] leave from int handler 1.\n"),
                ElementsAre("handlers_not_left 1", "handlers_not_entered 1"));
    EXPECT_THAT(LossesOfLog("[1] leave from int handler 1.\n[2] dispatch to task 1.\n", true),
                ElementsAre("handlers_before_start 1"));
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] enter to cal_svc.\n"
                            "[3] enter to sig_sem semid=1.\n[4] leave from cal_svc ercd=0.\n"),
                ElementsAre("calls_without_return 1"));
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] dispatch from task 2.\n"),
                ElementsAre("dispatches_from_other 1"));
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] dispatch to tsk 1.\nno time here\n"
                            "[4] task 1 becomes SLEEPY.\n[5] \x01\x02\x7F\n[6] a comment\n"),
                ElementsAre("unreadable_records 4"));
}

constexpr const char* kTwoProcessors = R"({"Resources":{
  "A":{"Type":"Task","Attributes":{"id":1,"prcId":1,"state":"RUNNABLE"}},
  "B":{"Type":"Task","Attributes":{"id":2,"prcId":2,"state":"DORMANT"}},
  "TIMER1":{"Type":"InterruptHandler","Attributes":{"id":5,"prcIdI":1}},
  "TIMER2":{"Type":"InterruptHandler","Attributes":{"id":5,"prcIdI":2}}}})";

// A task that moves runs until the log takes the processor from it.
TEST(Decoder, OneProcessorIsShownWithTheTasksThatAreOnIt) {
    const char* log =
        "[10]:[1]: dispatch to task 1.\n[20]:[2]: enter to int handler 5.\n"
        "[30]:[1]: enter to act_tsk tskid=2.\n[40]:[1]: task 2 becomes RUNNABLE.\n"
        "[50]:[2]: leave from int handler 5.\n[60]:[2]: dispatch to task 2.\n"
        "[70]:[1]: enter to mig_tsk tskid=0. prcid=2.\n"
        "[80]:[1]: task 1 migrates from processor 1 to processor 2.\n"
        "[90]:[1]: dispatch from task 1.\n[95]:[2]: dispatch to task 1.\n"
        "[99]:[2]: leave from mig_tsk ercd=0.\n";
    EXPECT_THAT(EventsOfLog(log, kTwoProcessors, 1),
                ElementsAre("10 run Unknown: A", "30 call A: act_tsk(tskid=2)",
                            "70 call A: mig_tsk(tskid=0, prcid=2) -> ercd=0", "90 run A: Idle",
                            "90 state A: DMT+PAUSE"));
    EXPECT_THAT(EventsOfLog(log, kTwoProcessors, 2),
                ElementsAre("20 state B: DMT", "20 run Unknown: TIMER2", "40 state B: RDY",
                            "50 run TIMER2: Unknown", "60 run Unknown: B", "90 state A: RDY",
                            "95 run B: A", "95 state B: RDY"));
}

TEST(Decoder, TipsTellWhoWhatAndHowLong) {
    const TempFolder folder;
    folder.Write("x.res", kTwoTasks);
    const auto trace = Show(folder.Write("x.log",
                                         "[100] dispatch to task 1.\n"
                                         "[140] enter to wai_sem semid=3.\n"
                                         "[150] task 1 becomes WAITING.\n"
                                         "[160] dispatch from task 1.\n"
                                         "[180] enter to int handler 5.\n"
                                         "[190] enter to isig_sem semid=3.\n"
                                         "[1200] task 1 becomes RUNNABLE.\n"
                                         "[1210] leave from isig_sem ercd=0.\n"
                                         "[1220] leave from int handler 5.\n"
                                         "[1230] dispatch to task 1.\n"
                                         "[1240] leave from wai_sem ercd=0.\n"));
    trace->Summarize();
    const auto tipOf = [&](const char* line) {
        const auto lines = Events(*trace);
        const auto at = std::ranges::find(lines, line) - lines.begin();
        Bstr tip;
        EXPECT_EQ(trace->GetEventTipText(static_cast<std::uint32_t>(at), tip.Receive()), S_OK)
            << line;
        return tip.Utf8();
    };
    EXPECT_EQ(tipOf("150 state MAIN: WAI (SEM)"),
              "MAIN (task 1): WAI (SEM)\nWaits in: wai_sem(semid=3)\nSince: 00:00:00.000.150\n"
              "Until: 00:00:00.001.200\nFor: 00:00:00.001.050");
    EXPECT_EQ(
        tipOf("1200 state MAIN: RDY"),
        "MAIN (task 1): RDY\nMade ready by: TIMER (handler 5) in isig_sem(semid=3) -> ercd=0\n"
        "Since: 00:00:00.001.200\nUntil: 00:00:00.001.230\nFor: 00:00:00.000.030");
    EXPECT_EQ(tipOf("140 call MAIN: wai_sem(semid=3) -> ercd=0"),
              "wai_sem\nIssued by: MAIN (task 1)\nParameters: semid=3\nAt: 00:00:00.000.140\n"
              "Return: ercd=0\nReturned at: 00:00:00.001.240\nTook: 00:00:00.001.100");
    EXPECT_EQ(tipOf("1230 run Idle: MAIN"),
              "MAIN (task 1): RUN\nSince: 00:00:00.001.230\nUntil: end of the recording\n"
              "For: 00:00:00.000.010\nBefore: Idle");
}

TEST(Decoder, AskedForPiecemealOrAgainNothingIsDecodedTwice) {
    const TempFolder folder;
    const auto trace =
        Show(folder.Write("x.log",
                          "[1] dispatch to task 1.\n[2] enter to slp_tsk.\n"
                          "[3] task 1 becomes WAITING.\n[4] dispatch from task 1.\n"));
    std::int64_t a = 0;
    std::int64_t b = 0;
    std::int64_t c = 0;
    std::uint32_t count = 0;
    trace->GetEventCount(&count);
    EXPECT_EQ(count, 0u);
    ASSERT_EQ(trace->AnalyzeRecords(0, 1, &a, &b, &c), S_OK);
    EXPECT_EQ(b, 2);
    ASSERT_EQ(trace->AnalyzeRecords(0, 1, &a, &b, &c), S_OK);
    trace->GetEventCount(&count);
    EXPECT_EQ(count, 2u);
    std::int32_t last = -1;
    ASSERT_EQ(trace->AnalyzeUntil(2, 3, 2.5, &last, &a, &b, &c), S_OK);
    EXPECT_EQ(last, 2);
    EXPECT_EQ(b, 3);
    ASSERT_EQ(trace->DiscardData(), S_OK);
    trace->GetEventCount(&count);
    EXPECT_EQ(count, 0u);
    ASSERT_EQ(trace->AnalyzeRecords(0, 3, &a, &b, &c), S_OK);
    EXPECT_THAT(Events(*trace), testing::SizeIs(4));
}

TEST(Decoder, AnApplicationsCallIsNoneOfAnotherKernels) {
    constexpr const char* kLog =
        "[1] dispatch to task 1.\n[2] enter to exit code=0.\n[3] leave from exit ercd=0.\n"
        "[4] enter to read fd=1.\n[5] task 1 becomes WAITING.\n[6] dispatch from task 1.\n";
    EXPECT_THAT(EventsOfLog(kLog),
                ElementsAre("1 run Unknown: task 1", "2 call task 1: exit(code=0) -> ercd=0",
                            "4 call task 1: read(fd=1)", "5 state task 1: WAI (SLP)",
                            "6 run task 1: Idle"));
    EXPECT_THAT(LossesOfLog(kLog, true), ElementsAre("wait_cause_unknown 1"));
}

// Whole days are taken off times that floating point does not tell apart.
TEST(Decoder, LargeTimesStayExact) {
    constexpr const char* kNanoseconds = R"({"TimeScale":"ns","Resources":{}})";
    EXPECT_THAT(EventsOfLog("[1700000000000000001] dispatch to task 1.\n"
                            "[1700000000000000301] dispatch from task 1.\n",
                            kNanoseconds),
                ElementsAre("80000000000001 run Unknown: task 1", "80000000000301 run task 1: Idle",
                            "80000000000301 state task 1: RDY"));
    EXPECT_THAT(EventsOfLog("[20000000000001] dispatch to task 1.\n[20000000000003] x\n",
                            R"({"TimeScale":"us","TimeRadix":16,"Resources":{}})"),
                ElementsAre("85654740993 run Unknown: task 1"));
    EXPECT_THAT(EventsOfLog("[20000000000000000] dispatch to task 1.\n",
                            R"({"TimeScale":"ticks","Resources":{}})"),
                ElementsAre("0 run Unknown: task 1"));
    EXPECT_THAT(EventsOfLog("[9007199254740990] dispatch to task 1.\n", kNanoseconds),
                ElementsAre("9007199254740990 run Unknown: task 1"));
}

TEST(Decoder, ALogOfOneProcessorIsOfTheOneThatItsResourcesName) {
    constexpr const char* kResources =
        R"({"Resources":{"A":{"Type":"Task","Attributes":{"id":1,"prcId":2}},
        "B":{"Type":"Task","Attributes":{"id":2,"prcId":2}}}})";
    EXPECT_THAT(
        EventsOfLog("[1] dispatch to task 1.\n[2] task 2 becomes RUNNABLE.\n", kResources, 2),
        ElementsAre("1 run Unknown: A", "2 state B: RDY"));
}

}  // namespace
}  // namespace kvx::test
