// The simulated target: its trace memory, and whether what is read from there is what happened.

#include "workbench/target/SimulatedTarget.h"

#include <gtest/gtest.h>

#include <map>

#include "host/OSTraceService.h"
#include "simulation/TemporaryFolder.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/service/TraceService.h"

namespace kvx::target {
namespace {

using simulation::TemporaryFolder;

constexpr simulation::Time kSecond = 1'000'000;
constexpr std::size_t kLarge = 1'000'000;

struct Event {
    std::int64_t time = 0;
    std::int32_t kind = 0;
    std::string text;
    friend bool operator==(const Event&, const Event&) = default;
};

std::vector<Event> EventsOf(const SimulatedTarget& target, service::LossCounters* losses) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("target.log");
    EXPECT_EQ(target.WriteRecording(path), "");
    auto recording = formats::OpenRecording(path);
    EXPECT_TRUE(recording);
    if (!recording) return {};
    EXPECT_EQ((*recording)->RecordCount(), target.Buffer().Count());
    service::TraceService trace;
    trace.SetRecording(std::move(*recording));
    trace.Summarize();
    EXPECT_EQ(trace.Check(), "");
    std::vector<Event> events;
    std::uint32_t count = 0;
    trace.GetEventCount(&count);
    for (std::uint32_t i = 0; i < count; ++i) {
        Event event;
        std::int32_t line = 0;
        trace.GetEventTime(i, &event.time);
        trace.GetEventKind(i, &event.kind);
        trace.GetEventContext(i, &line);
        event.text = trace.LineName(line) + " " + trace.EventDetail(i);
        events.push_back(event);
    }
    *losses = trace.Losses();
    return events;
}

// The state of every task at that time: the first three letters, for the cause of a wait that began
// earlier is not known.
std::map<std::string, std::string> StatesAt(const std::vector<Event>& events, std::int64_t time) {
    std::map<std::string, std::string> states;
    for (const Event& event : events) {
        if (event.time > time) break;
        if (event.kind != kEventState) continue;
        const auto space = event.text.find(' ');
        states[event.text.substr(0, space)] = event.text.substr(space + 1, 3);
    }
    return states;
}

TEST(SimulatedTarget, RecordsFromItsFirstStepWithoutLoss) {
    SimulatedTarget target(kLarge);
    EXPECT_EQ(target.Start(), S_FALSE) << "nothing to record while the program halts";
    target.Advance(kSecond);
    EXPECT_EQ(target.Buffer().Count(), 0U);
    target.Go();
    target.Advance(kSecond);
    target.Halt();
    const std::size_t count = target.Buffer().Count();
    EXPECT_GT(count, 10'000U);
    target.Advance(kSecond);
    EXPECT_EQ(target.Buffer().Count(), count);
    service::LossCounters losses;
    const auto events = EventsOf(target, &losses);
    EXPECT_EQ(losses.TotalLosses(), 0U);
    EXPECT_LT(events.front().time, 100);
    EXPECT_GT(events.back().time, 990'000);
}

TEST(SimulatedTarget, FullStopsWhenTheBufferIsFullAndFreeKeepsTheNewest) {
    SimulatedTarget whole(kLarge);
    SimulatedTarget full(5000);
    SimulatedTarget free(5000);
    ASSERT_EQ(free.SetRangeCondition(kRangeFree), S_OK);
    EXPECT_EQ(free.GetRangeCondition(), kRangeFree);
    EXPECT_EQ(full.GetRangeCondition(), kRangeFull);
    for (SimulatedTarget* target : {&whole, &full, &free}) {
        target->Go();
        for (int i = 0; i < 100; ++i) target->Advance(kSecond / 100);
    }
    EXPECT_TRUE(full.IsRunning()) << "the program goes on";
    EXPECT_FALSE(full.Buffer().IsRecording());
    EXPECT_TRUE(free.Buffer().IsRecording());
    EXPECT_EQ(full.Buffer().Count(), 5000U);
    EXPECT_EQ(free.Buffer().Count(), 5000U);

    service::LossCounters losses;
    const auto all = EventsOf(whole, &losses);
    const auto first = EventsOf(full, &losses);
    const auto last = EventsOf(free, &losses);
    ASSERT_GT(first.size(), 1000U);
    ASSERT_GT(last.size(), 1000U);
    // A call that has not returned when the buffer is full lacks its result.
    const auto same = [](const Event& a, const Event& b) {
        return a.kind == kEventSysCall ? a.time == b.time && a.kind == b.kind : a == b;
    };
    EXPECT_TRUE(std::equal(first.begin(), first.end(), all.begin(), same));
    EXPECT_EQ(last.back().time, all.back().time);
    const std::int64_t beginning = last.front().time;
    EXPECT_GT(beginning, 100'000);
    EXPECT_EQ(StatesAt(last, beginning + 1), StatesAt(all, beginning + 1))
        << "the tasks stand where they stood, although the records of that are gone";
}

TEST(SimulatedTarget, RecordingStopsAndStartsAnewWhileTheProgramRuns) {
    SimulatedTarget target(kLarge);
    target.Go();
    target.Advance(kSecond / 10);
    target.Stop();
    const std::size_t count = target.Buffer().Count();
    target.Advance(kSecond / 10);
    EXPECT_EQ(target.Buffer().Count(), count);
    EXPECT_TRUE(target.IsRunning());
    target.Stop();
    target.Reset();
    EXPECT_EQ(target.Start(), S_OK);
    EXPECT_EQ(target.Buffer().Count(), 0U);
    target.Advance(kSecond / 10);
    service::LossCounters losses;
    const auto events = EventsOf(target, &losses);
    ASSERT_FALSE(events.empty());
    EXPECT_GT(events.front().time, 199'000);
    EXPECT_EQ(StatesAt(events, events.front().time + 1).size(), 11U) << "of every task";
}

TEST(SimulatedTarget, GoRecordsAnewAndResetBeginsAtTimeZero) {
    SimulatedTarget target(kLarge);
    const TemporaryFolder folder;
    EXPECT_NE(target.WriteRecording(folder.Path("nothing.log")), "");
    target.SetRangeCondition(kRangeFree);
    target.Go();
    target.Advance(kSecond / 10);
    target.Halt();
    target.Go();
    target.Advance(kSecond / 10);
    target.Halt();
    service::LossCounters losses;
    EXPECT_GT(EventsOf(target, &losses).front().time, 99'000) << "the program went on";
    target.ResetProgram();
    EXPECT_EQ(target.Buffer().Count(), 0U);
    EXPECT_EQ(target.GetRangeCondition(), kRangeFree);
    target.Go();
    target.Advance(kSecond / 10);
    EXPECT_LT(EventsOf(target, &losses).front().time, 100);
    EXPECT_NE(target.WriteRecording("/nowhere/at/all.log"), "");
}

}  // namespace
}  // namespace kvx::target
