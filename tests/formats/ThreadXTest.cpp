// Event buffers of ThreadX kernels: those that the tests write, damaged ones, and real ones.

#include <gmock/gmock.h>

#include "formats/Damage.h"
#include "formats/TraceFiles.h"
#include "support/Needs.h"
#include "support/ThreadXWriter.h"

namespace kvx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint32_t kForever = 0xFFFFFFFFu;

// FAST waits for a message; SLOW sends it and is preempted; an interrupt wakes FAST from a sleep.
ThreadXWriter Example() {
    ThreadXWriter writer;
    const auto fast = writer.Object(ThreadXWriter::Thread, "FAST");
    const auto slow = writer.Object(ThreadXWriter::Thread, "SLOW");
    const auto queue = writer.Object(ThreadXWriter::Queue, "orders");
    writer.Event(100, fast, 68, {queue, 0x1234, kForever, 0}, 3);
    writer.Event(110, fast, 2, {fast, 5, 0, slow}, 3);
    writer.Event(130, slow, 69, {queue, 0x5678, 0, 1}, 9);
    writer.Event(140, slow, 1, {fast, 5, 0, fast}, 9);
    writer.Event(160, fast, 112, {7, 0, 0, 0}, 3);
    writer.Event(170, fast, 2, {fast, 4, 0, slow}, 3);
    writer.Event(200, ThreadXWriter::kInterrupt, 3, {0, 15, 0, 0}, slow);
    writer.Event(210, ThreadXWriter::kInterrupt, 1, {fast, 4, 0, 0}, slow);
    writer.Event(220, ThreadXWriter::kInterrupt, 4, {0, 15, 0, 0}, slow);
    writer.Event(230, fast, 2, {fast, 3, 0, slow}, 3);
    writer.Event(250, slow, 2, {slow, 1, 0, 0}, 9);
    writer.Event(260, ThreadXWriter::kInterrupt, 5, {0, 0, 0, 0}, 0);
    return writer;
}

const std::vector<std::string> kExample = {
    "0 run Unknown: FAST",
    "0 call FAST: tx_queue_receive(queue=orders, destination=0x1234, wait=forever, enqueued=0)",
    "10 state FAST: WAI (DTQ)",
    "10 run FAST: SLOW",
    "30 call SLOW: tx_queue_send(queue=orders, source=0x5678, wait=0, enqueued=1)",
    "40 state FAST: RDY",
    "40 run SLOW: FAST",
    "40 state SLOW: RDY",
    "60 call FAST: tx_thread_sleep(ticks=7)",
    "70 state FAST: WAI (DLY)",
    "70 run FAST: SLOW",
    "100 run SLOW: int handler 15",
    "110 state FAST: RDY",
    "120 run int handler 15: FAST",
    "120 state SLOW: RDY",
    "130 state FAST: RDY+SUS",
    "130 run FAST: SLOW",
    "150 state SLOW: DMT",
    "150 run SLOW: Idle",
    "160 run Idle: Interrupt",
    "160 run Interrupt: Idle"};

std::unique_ptr<service::TraceService> ShowBytes(const TempFolder& folder, std::string_view bytes,
                                                 const formats::OpenOptions& options = {}) {
    auto recording = formats::OpenRecording(folder.Write("x.trx", bytes), options);
    if (!recording) return nullptr;
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::move(*recording));
    return trace;
}

TEST(ThreadX, BothByteOrdersCountersAndPlacesOfTheOldestEventGiveTheSameEvents) {
    const TempFolder folder;
    for (int form = 0; form < 16; ++form) {
        auto writer = Example();
        writer.bigEndian = form & 1;
        writer.countsDown = form & 2;
        writer.mask = form & 4 ? 0xFF : 0;  // the times go beyond 8 bits
        writer.oldestAt = form & 8 ? 5 : 0;
        const auto trace = ShowBytes(folder, writer.Bytes());
        ASSERT_TRUE(trace);
        const auto summary = trace->Summarize();
        EXPECT_EQ(Events(*trace), kExample) << form;
        EXPECT_THAT(CountersOf(summary.losses), IsEmpty());
        EXPECT_EQ(summary.records, 12u);
        EXPECT_EQ(summary.timeUnit, "counts");
    }
}

TEST(ThreadX, AFrequencyMakesTheCountsTimes) {
    const TempFolder folder;
    formats::OpenOptions options;
    options.frequency = 3000000;
    const auto trace = ShowBytes(folder, Example().Bytes(), options);
    ASSERT_TRUE(trace);
    EXPECT_EQ(trace->Summarize().timeUnit, "ns");
    EXPECT_THAT(Events(*trace), Contains("53333 run Idle: Interrupt"));  // 160 ticks
}

TEST(ThreadX, AFrequencyIsANumberWithOrWithoutAUnit) {
    EXPECT_EQ(formats::ParseFrequency("1MHz"), 1000000u);
    EXPECT_EQ(formats::ParseFrequency("32.768 kHz"), 32768u);
    EXPECT_EQ(formats::ParseFrequency("48000"), 48000u);
    EXPECT_EQ(formats::ParseFrequency("1GHz"), 1000000000u);
    for (const char* text : {"", "MHz", "0", "-1MHz", "1 mhz", "1MHzz", "2000GHz", "1e6", "0.1Hz"})
        EXPECT_EQ(formats::ParseFrequency(text), std::nullopt) << text;
}

TEST(ThreadX, TipsTellTheCallThatWaitsThePriorityAndTheStack) {
    const TempFolder folder;
    const auto trace = ShowBytes(folder, Example().Bytes());
    ASSERT_TRUE(trace);
    trace->Summarize();
    Bstr tip;
    ASSERT_EQ(trace->GetEventTipText(2, tip.Receive()), S_OK);
    EXPECT_THAT(tip.Utf8(), HasSubstr("Waits in: tx_queue_receive(queue=orders"));
    EXPECT_THAT(tip.Utf8(), HasSubstr("Priority: 3\nStack: 1024 bytes at 0x20008000"));
}

// The call comes behind the suspension: the thread runs until then, and the call is the cause.
TEST(ThreadX, ACallMayBeRecordedBehindItsOwnSuspension) {
    ThreadXWriter writer;
    const auto one = writer.Object(ThreadXWriter::Thread, "ONE");
    const auto two = writer.Object(ThreadXWriter::Thread, "TWO");
    const auto lock = writer.Object(ThreadXWriter::Mutex, "lock");
    writer.Event(10, one, 2, {one, 13, 0, two});
    writer.Event(14, one, 52, {lock, kForever, two, 1});
    writer.Event(20, two, 57, {lock, two, 0, 0});
    const TempFolder folder;
    const auto trace = ShowBytes(folder, writer.Bytes());
    ASSERT_TRUE(trace);
    trace->Summarize();
    EXPECT_THAT(
        Events(*trace),
        ElementsAre("0 run Unknown: ONE",
                    "4 call ONE: tx_mutex_get(mutex=lock, wait=forever, owner=TWO, count=1)",
                    "4 state ONE: WAI (MTX)", "4 run ONE: TWO",
                    "10 call TWO: tx_mutex_put(mutex=lock, owner=TWO, count=0)"));
    Bstr tip;
    trace->GetEventTipText(2, tip.Receive());
    EXPECT_THAT(tip.Utf8(), HasSubstr("Waits in: tx_mutex_get(mutex=lock"));
}

TEST(ThreadX, WhatLiesOutsideTheFileIsALossAndAGap) {
    auto writer = Example();
    writer.oldestAt = 5;
    auto bytes = writer.Bytes();
    bytes.resize(bytes.size() - 3 * 32 - 7);  // four places, in the middle of the time
    const TempFolder folder;
    const auto trace = ShowBytes(folder, bytes);
    ASSERT_TRUE(trace);
    const auto summary = trace->Summarize();
    EXPECT_THAT(CountersOf(summary.losses), ElementsAre("unreadable_records 4"));
    EXPECT_THAT(Events(*trace), Contains(HasSubstr(": Unknown")));
}

TEST(ThreadX, DamageIsAnsweredAtEveryLengthAndEveryByte) {
    ExpectAnswersToDamage("x.trx", Example().Bytes());
}

struct RealBuffer {
    const char* name;
    std::uint32_t records;
    int switches;
    std::map<std::string, std::int64_t> runTimes;
};

// Counted by the vendor's analyser, whose dumps lie beside the buffers.
TEST(ThreadX, RealBuffersAgreeWithTheVendorsAnalyser) {
    const auto traces = RealTraces();
    if (traces.empty()) KVX_SKIP("no recordings of real kernels");
    const RealBuffer kBuffers[] = {{"demo_filex", 950, 0, {{"thread 0", 949000}}},
                                   {"demo_netx_udp",
                                    950,
                                    87,
                                    {{"System Timer Thread", 5000},
                                     {"thread 0", 595000},
                                     {"thread 1", 86000},
                                     {"NetX IP Instance 0", 4000},
                                     {"NetX IP Instance 1", 259000}}},
                                   {"demo_threadx",
                                    974,
                                    18,
                                    {{"System Timer Thread", 1492},
                                     {"thread 1", 79507},
                                     {"thread 2", 70828},
                                     {"thread 3", 657},
                                     {"thread 4", 1047},
                                     {"thread 6", 843},
                                     {"thread 7", 1076},
                                     {"Interrupt", 756}}}};
    for (const auto& buffer : kBuffers) {
        const auto trace = Show(traces + "/tracex/" + buffer.name + ".trx");
        ASSERT_TRUE(trace);
        const auto summary = trace->Summarize();
        EXPECT_EQ(summary.records, buffer.records);
        EXPECT_THAT(CountersOf(summary.losses), IsEmpty()) << buffer.name;
        std::map<std::string, std::int64_t> runs;
        int switches = -1;  // the first is the start
        std::string last;
        for (std::uint32_t e = 0; e < summary.totals.events; ++e) {
            std::int32_t kind = 0;
            trace->GetEventKind(e, &kind);
            if (kind != kEventDispatch) continue;
            std::int64_t begin = 0;
            std::int64_t end = 0;
            trace->GetEventTime(e, &begin);
            trace->GetEventEndTime(e, &end);
            const auto who = trace->EventDetail(e);
            if (const auto time = (end == 0 ? summary.lastTime : end) - begin; time > 0)
                runs[who] += time;
            if (who == last || who == "Interrupt") continue;
            last = who;
            ++switches;
        }
        EXPECT_EQ(runs, buffer.runTimes) << buffer.name;
        EXPECT_EQ(switches, buffer.switches) << buffer.name;
    }
}

}  // namespace
}  // namespace kvx::test
