// Random, cut and corrupted logs: always consistent events, and the same ones however they are
// asked for.

#include <gmock/gmock.h>

#include <random>

#include "formats/TraceFiles.h"

namespace kvx::test {
namespace {

class RandomLog {
  public:
    explicit RandomLog(unsigned seed) : random_(seed) {}

    unsigned UpTo(unsigned most) { return static_cast<unsigned>(random_() % (most + 1)); }

    // Lines that a kernel could write, in an order that it would not.
    std::string Make(unsigned lines, unsigned processors) {
        std::string log;
        std::int64_t time = UpTo(1000);
        for (unsigned i = 0; i < lines; ++i) {
            time += UpTo(5);
            const auto shown = UpTo(15) == 0 ? std::max<std::int64_t>(0, time - UpTo(30)) : time;
            log += FormatText("[%lld]", static_cast<long long>(shown));
            if (processors > 1) log += FormatText(":[%u]:", 1 + UpTo(processors - 1));
            log += " " + Message() + (UpTo(5) ? ".\r\n" : "\n");
        }
        return log;
    }

  private:
    std::string Message() {
        static const char* const kCalls[] = {"wai_sem",   "isig_sem", "slp_tsk", "act_tsk",
                                             "loc_mtx",   "dly_tsk",  "ext_tsk", "irot_rdq",
                                             "imrot_rdq", "my_call"};
        static const char* const kHandlers[] = {"int handler",   "exc handler", "cyclic handler",
                                                "alarm handler", "isr",         "tex"};
        static const char* const kStates[] = {"RUNNABLE", "DORMANT", "WAITING", "SUSPENDED",
                                              "WAITING-SUSPENDED"};
        const auto task = UpTo(5);
        switch (UpTo(11)) {
            case 0:
            case 1:
                return FormatText("dispatch to task %u", task);
            case 2:
                return FormatText("dispatch from task %u", task);
            case 3:
            case 4:
                return FormatText("task %u becomes %s", task, kStates[UpTo(4)]);
            case 5:
                return FormatText("enter to %s %u", kHandlers[UpTo(5)], UpTo(2));
            case 6:
                return FormatText("leave from %s %u", kHandlers[UpTo(5)], UpTo(2));
            case 7:
            case 8:
                return FormatText("enter to %s%s", kCalls[UpTo(9)], UpTo(1) ? " id=-1. p=2" : "");
            case 9:
                return FormatText("leave from %s ercd=%d", kCalls[UpTo(9)],
                                  -static_cast<int>(UpTo(50)));
            case 10:
                return FormatText("task %u migrates from processor 1 to processor %u", task,
                                  1 + UpTo(1));
            default:
                return "comment";
        }
    }

    std::mt19937 random_;
};

// Texts of all kinds for every event: none of them may fail.
void AskForEveryText(service::TraceService& trace) {
    std::uint32_t count = 0;
    trace.GetEventCount(&count);
    for (std::uint32_t event = 0; event < count; ++event) {
        Bstr tip;
        ASSERT_EQ(trace.GetEventTipText(event, tip.Receive()), S_OK);
        ASSERT_FALSE(tip.Utf8().empty());
    }
}

TEST(Properties, PiecesOfAnySizeGiveTheSameEvents) {
    const TempFolder folder;
    for (unsigned seed = 0; seed < 150; ++seed) {
        RandomLog random(seed);
        const unsigned processors = 1 + random.UpTo(2);
        const auto path = folder.Write("x.log", random.Make(random.UpTo(400) + 1, processors));
        const auto whole = Show(path);
        const auto pieces = Show(path);
        for (const auto processor : whole->GetRecording()->Processors()) {
            ASSERT_TRUE(whole->ShowProcessor(processor) && pieces->ShowProcessor(processor));
            const auto summary = whole->Summarize();
            std::int64_t a = 0;
            std::int64_t b = 0;
            std::int64_t c = 0;
            for (std::uint32_t at = 0; at < summary.records;) {
                const auto to = std::min(at + random.UpTo(random.UpTo(40)), summary.records - 1);
                ASSERT_EQ(pieces->AnalyzeRecords(static_cast<std::int32_t>(random.UpTo(at)),
                                                 static_cast<std::int32_t>(to), &a, &b, &c),
                          S_OK);
                EXPECT_EQ(pieces->Check(), "");
                at = to + 1;
            }
            ASSERT_EQ(Events(*whole), Events(*pieces)) << "seed " << seed;
            EXPECT_EQ(CountersOf(whole->Losses(), true), CountersOf(pieces->Losses(), true));
            AskForEveryText(*whole);
            EXPECT_EQ(pieces->DiscardData(), S_OK);
            pieces->Summarize();
            ASSERT_EQ(Events(*whole), Events(*pieces)) << "seed " << seed;
        }
    }
}

TEST(Properties, CutAtEveryLength) {
    const TempFolder folder;
    const auto log = RandomLog(7).Make(25, 2);
    for (std::size_t length = 1; length <= log.size(); ++length) {
        auto recording = formats::OpenRecording(folder.Write("x.log", log.substr(0, length)));
        if (!recording) {
            EXPECT_LT(length, 20u) << recording.GetError().message;
            continue;
        }
        service::TraceService trace;
        trace.SetRecording(std::move(*recording));
        trace.Summarize();
        ASSERT_EQ(trace.Check(), "") << length;
    }
}

TEST(Properties, CorruptedBytes) {
    const TempFolder folder;
    for (unsigned seed = 0; seed < 300; ++seed) {
        RandomLog random(seed);
        auto log = random.Make(80, 1 + random.UpTo(1));
        for (unsigned i = 0; i <= random.UpTo(40); ++i)
            log[random.UpTo(static_cast<unsigned>(log.size()) - 1)] =
                static_cast<char>(random.UpTo(255));
        auto recording = formats::OpenRecording(folder.Write("x.log", log));
        if (!recording) continue;
        service::TraceService trace;
        trace.SetRecording(std::move(*recording));
        trace.Summarize();
        ASSERT_EQ(trace.Check(), "") << "seed " << seed;
        AskForEveryText(trace);
    }
}

}  // namespace
}  // namespace kvx::test
