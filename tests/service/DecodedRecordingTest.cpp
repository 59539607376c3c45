// Decoding runs ahead of the display, and may lag behind it: what is shown, what is known, and what
// is not known yet.

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "formats/TraceFiles.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/service/RecordPrefetch.h"

namespace kvx::test {
namespace {

using service::ContextKind;
using service::Record;
using service::RecordKind;

constexpr std::uint32_t kRecords = 1000;
constexpr std::uint32_t kLongRun =
    150;  // the dispatch that this record makes lasts to the last one

// Records 10 counts apart, on one processor or on two. Reading stops in front of a record until it
// is let go on.
class GatedRecording final : public service::Recording {
  public:
    explicit GatedRecording(std::uint32_t gate, bool two = false) : gate_(gate) {
        if (two) processors_.push_back(2);
        for (std::uint32_t i = 0; i < kRecords; ++i) records_.push_back(Make(i, two));
    }
    static void Open(std::atomic<std::uint32_t>& gate) {
        gate = kRecords;
        gate.notify_all();
    }
    std::atomic<std::uint32_t>& Gate() { return gate_; }

    std::string Path() const override { return "gated"; }
    std::string FormatName() const override { return "made up"; }
    const service::TraceClock& Clock() const override { return clock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }
    std::uint32_t RecordCount() const override { return kRecords; }
    std::int64_t FirstTime() const override { return TimeOf(0); }
    std::int64_t LastTime() const override { return TimeOf(kRecords - 1); }
    void Read(std::uint32_t first, std::span<Record> out) override {
        const auto end = first + static_cast<std::uint32_t>(out.size());
        for (auto gate = gate_.load(); end > gate; gate = gate_.load()) gate_.wait(gate);
        std::copy_n(records_.begin() + first, out.size(), out.begin());
    }
    std::string Detail(std::uint32_t) const override { return {}; }
    std::string NameOf(std::uint32_t) const override { return "wai_sem"; }
    std::int64_t TimeOf(std::uint32_t record) const override { return records_[record].time; }

  private:
    // One call in each ten records, which returns with the next, on processor 2 where there is one;
    // else two tasks take turns until one of them runs to the end.
    static Record Make(std::uint32_t i, bool two) {
        Record record;
        record.time = 100 + std::int64_t{10} * i;
        record.processor = two && i % 10 < 2 ? 2 : 1;
        record.name = "wai_sem";
        record.kind = i % 10 == 0 ? RecordKind::Call : RecordKind::Return;
        if (i % 10 < 2) return record;
        const bool last = i == kRecords - 1;
        record.kind = i <= kLongRun + 2 || last ? RecordKind::DispatchTo : RecordKind::Comment;
        record.subject = {ContextKind::Task, i > kLongRun + 1 && !last ? 1 : 1 + i % 2};
        return record;
    }

    std::atomic<std::uint32_t> gate_;
    std::vector<Record> records_;
    std::vector<std::uint32_t> processors_{1};
    std::vector<service::DeclaredContext> contexts_;
    service::TraceClock clock_{service::TimeUnit::Microseconds};
};

std::uint32_t CountOf(service::TraceService& trace) {
    std::uint32_t count = 0;
    EXPECT_EQ(trace.GetEventCount(&count), S_OK);
    return count;
}

std::string TipOf(service::TraceService& trace, std::uint32_t event) {
    Bstr text;
    EXPECT_EQ(trace.GetEventTipText(event, text.Receive()), S_OK);
    return text.Utf8();
}

std::uint32_t LastRun(service::TraceService& trace) {
    auto event = CountOf(trace) - 1;
    std::int32_t kind = 0;
    while (trace.GetEventKind(event, &kind) == S_OK && kind != kEventDispatch) --event;
    return event;
}

TEST(DecodedRecording, WhatIsShownEndsWithTheRecordAskedForAndGrowsWithIt) {
    service::TraceService trace;
    trace.SetRecording(std::make_unique<GatedRecording>(kRecords));
    trace.Decoded()->WaitForAll();
    EXPECT_EQ(CountOf(trace), 0u);
    std::int64_t a = 0, b = 0, c = 0;
    ASSERT_EQ(trace.AnalyzeRecords(0, 3, &a, &b, &c), S_OK);
    EXPECT_EQ(b, 130);
    const auto few = CountOf(trace);
    std::int64_t end = 0;
    EXPECT_EQ(trace.GetEventEndTime(LastRun(trace), &end), S_OK);
    EXPECT_EQ(end, 140) << "the end of an interval is known although it is not shown";
    std::int32_t last = 0;
    ASSERT_EQ(trace.AnalyzeUntil(4, 900, 505.0, &last, &a, &b, &c), S_OK);
    EXPECT_EQ(last, 41) << "the first record behind the time asked for";
    EXPECT_EQ(b, 510);
    EXPECT_GT(CountOf(trace), few);
    ASSERT_EQ(trace.AnalyzeRecords(5, 5, &a, &b, &c), S_OK);
    EXPECT_EQ(b, 150) << "the time of the record asked for, although more is shown";
    EXPECT_EQ(trace.DiscardData(), S_OK);
    EXPECT_EQ(CountOf(trace), 0u);
    const auto events = trace.Summarize().Shown().events;
    EXPECT_EQ(CountOf(trace), events);
}

// The same run: its end not come to yet, then known, then nobody's.
TEST(DecodedRecording, EndedOpenAndNotReadYetAreToldApart) {
    service::TraceService trace;
    auto recording = std::make_unique<GatedRecording>(kLongRun + 500);
    auto& gate = recording->Gate();
    trace.SetRecording(std::move(recording));
    std::int64_t a = 0, b = 0, c = 0;
    ASSERT_EQ(trace.AnalyzeRecords(0, kLongRun + 50, &a, &b, &c), S_OK);
    const auto run = LastRun(trace);
    EXPECT_THAT(TipOf(trace, run), testing::HasSubstr("Until: not read that far yet\n"));
    std::int64_t end = 0;
    EXPECT_EQ(trace.GetEventEndTime(run, &end), S_OK);
    EXPECT_EQ(end, 0);
    GatedRecording::Open(gate);
    trace.Decoded()->WaitForAll();
    EXPECT_THAT(TipOf(trace, run), testing::HasSubstr("Until: 00:00:00.010.090\n"));
    EXPECT_EQ(trace.GetEventEndTime(run, &end), S_OK);
    EXPECT_EQ(end, 10090);
    trace.Summarize();
    EXPECT_THAT(TipOf(trace, LastRun(trace)), testing::HasSubstr("Until: end of the recording"));
}

TEST(DecodedRecording, WhoeverAsksForMoreThanIsDecodedWaits) {
    service::TraceService trace;
    auto recording = std::make_unique<GatedRecording>(300);
    auto& gate = recording->Gate();
    trace.SetRecording(std::move(recording));
    std::atomic<bool> opened = false;
    const std::jthread opener([&] {
        opened = true;
        GatedRecording::Open(gate);
    });
    std::int64_t a = 0, b = 0, c = 0;
    ASSERT_EQ(trace.AnalyzeRecords(0, kRecords - 1, &a, &b, &c), S_OK);
    EXPECT_TRUE(opened);
    EXPECT_EQ(b, 10090);
}

TEST(DecodedRecording, EveryProcessorIsDecodedInOnePassAndTotalsAreOfAll) {
    service::TraceService trace;
    trace.SetRecording(std::make_unique<GatedRecording>(kRecords, true));
    const auto summary = trace.Summarize();
    ASSERT_EQ(summary.byProcessor.size(), 2u);
    EXPECT_EQ(summary.byProcessor[1].systemCalls, kRecords / 10);
    EXPECT_EQ(summary.byProcessor[1].dispatches, 0u);
    EXPECT_EQ(summary.totals.events, summary.byProcessor[0].events + kRecords / 10);
    ASSERT_TRUE(trace.ShowProcessor(2));
    EXPECT_EQ(CountOf(trace), 0u);
    EXPECT_EQ(trace.Summarize().Shown().events, kRecords / 10);
    EXPECT_FALSE(trace.ShowProcessor(3));
    EXPECT_EQ(trace.ShownProcessor(), 2u);
    EXPECT_EQ(trace.Check(), "");
}

// Parts of a log that other threads parse come in order, whole, and once; whoever stops early
// leaves no thread behind.
TEST(RecordPrefetch, ReadsWhatReadingInOrderReads) {
    const TempFolder folder;
    std::string log;
    for (int i = 0; i < 10007; ++i) log += FormatText("[%d] dispatch to task %d.\n", i, 1 + i % 97);
    const auto recording = formats::OpenRecording(folder.Write("x.log", log));
    ASSERT_TRUE(recording) << recording.GetError().message;
    ASSERT_TRUE((*recording)->IsReadInParts());
    for (const unsigned threads : {1u, 3u}) {
        service::RecordPrefetch prefetch(**recording, threads);
        std::uint32_t next = 0;
        for (std::uint32_t size = 1; next < 10007; size = size * 5 % 1531) {
            std::vector<Record> records(std::min(size, 10007 - next));
            prefetch.Read(records);
            for (const Record& record : records) {
                ASSERT_EQ(record.time, next);
                ASSERT_EQ(record.subject.id, 1 + next % 97);
                ++next;
            }
        }
        service::RecordPrefetch stopped(**recording, threads);
        std::vector<Record> few(10);
        stopped.Read(few);
        EXPECT_EQ(few[9].time, 9);
    }
}

}  // namespace
}  // namespace kvx::test
