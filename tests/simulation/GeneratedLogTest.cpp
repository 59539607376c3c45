// Properties of generated logs, by a checker of their own and by the reader of the product.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation/LogChecker.h"
#include "simulation/TemporaryFolder.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/service/Summary.h"
#include "workbench/simulation/DriveController.h"
#include "workbench/simulation/DriveIds.h"
#include "workbench/simulation/Generate.h"

namespace kvx::simulation {
namespace {

using testing::IsSupersetOf;

constexpr std::uint64_t kLongEnough = 40000;

class TextOutput : public IByteOutput {
  public:
    bool Write(std::string_view bytes) override {
        text.append(bytes);
        return true;
    }
    std::string Failure() const override { return "none"; }
    std::string text;
};

std::string Generated(std::uint64_t events, std::uint64_t seed) {
    TextOutput output;
    EXPECT_EQ(GenerateLog({events, seed}, output), "");
    return output.text;
}

std::vector<CheckedMutex> Mutexes() {
    std::vector<CheckedMutex> mutexes;
    for (const auto& config : kMutexes)
        mutexes.push_back({config.protocol == KernelMutex::Protocol::Inherit,
                           config.protocol == KernelMutex::Protocol::Ceiling ? config.ceiling : 0});
    return mutexes;
}

TEST(GeneratedLog, KeepsTheRulesOfAKernel) {
    const TemporaryFolder folder;
    for (const std::uint64_t seed : {1u, 2u, 77u}) {
        const std::string path = folder.Path("rules.log");
        ASSERT_EQ(GenerateFiles({kLongEnough, seed}, path), "");
        LogChecker checker(folder.Read("rules.res"), Mutexes());
        const auto lines = ReadLog(folder.Read("rules.log"));
        ASSERT_EQ(lines.size(), kLongEnough);
        checker.Check(lines);
        EXPECT_THAT(checker.Faults(), testing::IsEmpty()) << "seed " << seed;
        EXPECT_THAT(checker.Waits(),
                    IsSupersetOf({"slp_tsk", "tslp_tsk -50", "dly_tsk", "wai_sem", "twai_sem",
                                  "wai_flg", "twai_flg", "twai_flg -50", "rcv_dtq", "rcv_dtq -49",
                                  "rcv_mbx", "rcv_mbf", "trcv_mbf", "trcv_mbf -50", "snd_mbf",
                                  "loc_mtx", "tget_mpf", "get_mpl"}));
        EXPECT_THAT(
            checker.Calls(),
            IsSupersetOf({"act_tsk", "ext_tsk", "sus_tsk", "rsm_tsk", "iwup_tsk", "isig_sem",
                          "iset_flg", "ipsnd_dtq", "irel_wai", "irot_rdq", "sta_alm", "stp_alm",
                          "snd_mbx", "rel_mpf", "rel_mpl", "get_tim", "loc_cpu", "dis_int"}));
        EXPECT_THAT(checker.States(),
                    testing::UnorderedElementsAre("DORMANT", "RUNNABLE", "WAITING", "SUSPENDED",
                                                  "WAITING-SUSPENDED"));
        EXPECT_EQ(checker.Handlers().size(), 4u);
        EXPECT_GE(checker.DeepestNesting(), 3);
        EXPECT_GT(checker.Preemptions(), 100);
        EXPECT_GT(checker.Boosts(), 0);
        EXPECT_TRUE(checker.WasIdle());
    }
}

// The checker itself sees the faults that it is there for.
TEST(GeneratedLog, CheckerSeesSeededFaults) {
    const TemporaryFolder folder;
    ASSERT_EQ(GenerateFiles({6000, 5}, folder.Path("x.log")), "");
    const auto good = ReadLog(folder.Read("x.log"));
    const auto faults = [&](const std::vector<LogLine>& lines) {
        LogChecker checker(folder.Read("x.res"), Mutexes());
        checker.Check(lines);
        return checker.Faults().size();
    };
    ASSERT_EQ(faults(good), 0u);
    using Kind = LogLine::Kind;
    for (const Kind left : {Kind::DispatchTo, Kind::DispatchFrom, Kind::State, Kind::HandlerEnter,
                            Kind::HandlerLeave, Kind::CallEnter, Kind::CallLeave}) {
        auto lines = good;
        const auto from = lines.begin() + 3000;
        lines.erase(std::find_if(from, lines.end(),
                                 [&](const LogLine& line) { return line.kind == left; }));
        EXPECT_GT(faults(lines), 0u) << static_cast<int>(left);
    }
    auto lines = good;
    std::swap(lines[3000].time, lines[3001].time);
    EXPECT_GT(faults(lines), 0u);
}

TEST(GeneratedLog, SameSeedSameBytes) {
    const std::string log = Generated(20000, 9);
    EXPECT_EQ(log, Generated(20000, 9));
    EXPECT_NE(log, Generated(20000, 10));
    EXPECT_TRUE(log.starts_with(Generated(7000, 9))) << "a shorter log is the beginning of it";
}

TEST(GeneratedLog, HasExactlyAsManyLines) {
    for (const std::uint64_t events : {1u, 2u, 9u, 4321u}) {
        const std::string log = Generated(events, 3);
        EXPECT_EQ(static_cast<std::uint64_t>(std::ranges::count(log, '\n')), events);
        EXPECT_EQ(log.back(), '\n');
    }
}

// Opened and decoded by the product, nothing is lost or guessed.
TEST(GeneratedLog, IsReadWithoutLosses) {
    const TemporaryFolder folder;
    for (const std::uint64_t events : {std::uint64_t{1}, std::uint64_t{777}, kLongEnough}) {
        const std::string path = folder.Path("read.log");
        ASSERT_EQ(GenerateFiles({events, 4}, path), "");
        auto recording = formats::OpenRecording(path);
        ASSERT_TRUE(recording) << recording.GetError().message;
        EXPECT_THAT((*recording)->Warnings(), testing::IsEmpty());
        EXPECT_EQ((*recording)->RecordCount(), events);
        const service::DecodedRecording decoded(std::move(*recording));
        const auto summary = service::Summarize(decoded);
        for (std::size_t i = 0; i < static_cast<std::size_t>(service::Loss::Count); ++i) {
            const auto loss = static_cast<service::Loss>(i);
            EXPECT_EQ(summary.losses.Get(loss), 0u) << service::GetLossInfo(loss).name;
        }
    }
}

TEST(Demonstration, ShowsAMissedDeadlineByPriorityInversion) {
    const TemporaryFolder folder;
    ASSERT_EQ(WriteDemonstration(folder.Path("demo.log")), "");
    const auto lines = ReadLog(folder.Read("demo.log"));
    LogChecker checker(folder.Read("demo.res"), Mutexes());
    checker.Check(lines);
    EXPECT_THAT(checker.Faults(), testing::IsEmpty());
    const auto missed = std::ranges::find_if(lines, [](const LogLine& line) {
        return line.text.find("applog str : ID 1 : deadline missed") != std::string::npos;
    });
    ASSERT_NE(missed, lines.end());
    // Before that, back to the wait of MOTOR_CTRL for the semaphore: PATH_PLAN has run.
    const auto waits =
        std::find_if(std::make_reverse_iterator(missed), lines.rend(), [](const LogLine& line) {
            return line.kind == LogLine::Kind::State && line.id == kMotorCtrl &&
                   line.name == "WAITING";
        });
    ASSERT_NE(waits, lines.rend());
    EXPECT_EQ(std::next(waits)->name, "wai_sem");
    EXPECT_TRUE(std::any_of(waits.base(), missed, [](const LogLine& line) {
        return line.kind == LogLine::Kind::DispatchTo && line.id == kPathPlan;
    }));
    EXPECT_GT(missed->time - waits->time, 6000);
}

}  // namespace
}  // namespace kvx::simulation
