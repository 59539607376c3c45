// Tasks, time and interrupts of the simulated kernel.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation/TestKernel.h"

namespace kvx::simulation {
namespace {

using testing::ElementsAre;

TEST(SimulatedKernel, RecordsACallThatWaitsAsARealOneDoes) {
    TestKernel test;
    test.kernel.Add<Semaphore>(0, 1);
    test.Task(1, [&]() -> Program { co_await wai_sem(1); });
    test.Task(2, [&]() -> Program {
        co_await Compute{100};
        co_await sig_sem(1);
    });
    test.Run();
    EXPECT_THAT(
        test.lines,
        ElementsAre("dispatch to task 1.", "enter to wai_sem semid=1.", "task 1 becomes WAITING.",
                    "dispatch from task 1.", "dispatch to task 2.", "enter to sig_sem semid=1.",
                    "task 1 becomes RUNNABLE.", "dispatch from task 2.", "dispatch to task 1.",
                    "leave from wai_sem ercd=0.", "enter to ext_tsk.", "task 1 becomes DORMANT.",
                    "dispatch from task 1.", "dispatch to task 2.", "leave from sig_sem ercd=0.",
                    "enter to ext_tsk.", "task 2 becomes DORMANT.", "dispatch from task 2."));
}

TEST(SimulatedKernel, WritesParametersAndWhatCallsHandOut) {
    TestKernel test;
    test.kernel.Add<DataQueue>(1u);
    test.kernel.Add<Mailbox>();
    test.kernel.Add<EventFlag>(false);
    test.Task(1, [&]() -> Program {
        co_await snd_dtq(1, -7);
        co_await trcv_dtq(1, 5);
        co_await prcv_dtq(1);
        co_await snd_mbx(1, 0x2000A0);
        co_await rcv_mbx(1);
        co_await set_flg(1, 6);
        co_await twai_flg(1, 4, TWF_ORW, 3);
    });
    test.Run();
    const auto address = [](int offset) {
        return std::to_string(0x20004000 + 0x1000 - 0x40 + offset);
    };
    EXPECT_THAT(
        (std::vector<std::string>(test.lines.begin() + 1, test.lines.end() - 3)),
        ElementsAre(
            "enter to snd_dtq dtqid=1. data=-7.", "leave from snd_dtq ercd=0.",
            "enter to trcv_dtq dtqid=1. p_data=" + address(4) + ". tmout=5.",
            "leave from trcv_dtq ercd=0. data=-7.",
            "enter to prcv_dtq dtqid=1. p_data=" + address(4) + ".",
            "leave from prcv_dtq ercd=-50.", "enter to snd_mbx mbxid=1. pk_msg=0x2000a0.",
            "leave from snd_mbx ercd=0.", "enter to rcv_mbx mbxid=1. ppk_msg=" + address(4) + ".",
            "leave from rcv_mbx ercd=0. pk_msg=0x2000a0.", "enter to set_flg flgid=1. setptn=6.",
            "leave from set_flg ercd=0.",
            "enter to twai_flg flgid=1. waiptn=4. wfmode=1. p_flgptn=" + address(12) + ". tmout=3.",
            "leave from twai_flg ercd=0. flgptn=6."));
}

TEST(SimulatedKernel, ActivationsAndWakeUpsAreQueuedUpToALimit) {
    TestKernel test;
    const auto worker = test.Task(
        2,
        [&]() -> Program {
            test.Got("sleep", co_await slp_tsk());
            test.Did("end");
        },
        false);
    test.Task(1, [&]() -> Program {
        test.Got("wake dormant", co_await wup_tsk(1));
        for (int i = 0; i < kMostRequests + 2; ++i) test.Got("act", co_await act_tsk(1));
        test.Got("cancel", co_await can_act(1));
        co_await act_tsk(1);
        for (int i = 0; i < kMostRequests + 1; ++i) test.Got("wake", co_await wup_tsk(1));
        test.Got("cancel", co_await can_wup(1));
        co_await wup_tsk(1);
        co_await dly_tsk(1);
        test.Did("later");
        co_await wup_tsk(1);
    });
    test.Run();
    EXPECT_EQ(worker, 1);
    std::vector<std::string> expected = {"wake dormant -41"};
    for (int i = 0; i < kMostRequests + 1; ++i) expected.emplace_back("act 0");
    expected.insert(expected.end(), {"act -43", "cancel 7"});
    for (int i = 0; i < kMostRequests; ++i) expected.emplace_back("wake 0");
    expected.insert(expected.end(),
                    {"wake -43", "cancel 7", "sleep 0", "end", "later", "sleep 0", "end"});
    EXPECT_EQ(test.steps, expected);
}

TEST(SimulatedKernel, SuspensionAddsToAWait) {
    TestKernel test;
    test.kernel.Add<Semaphore>(0, 1);
    test.Task(1, [&]() -> Program {
        test.Got("first", co_await wai_sem(1));
        test.Got("second", co_await twai_sem(1, 2));
    });
    test.Task(2, [&]() -> Program {
        test.Got("resume", co_await rsm_tsk(1));
        test.Got("suspend", co_await sus_tsk(1));
        test.Got("again", co_await sus_tsk(1));
        test.Got("resume", co_await rsm_tsk(1));
        co_await sus_tsk(1);
        test.Did("signal");
        co_await sig_sem(1);
        co_await Compute{10};
        test.Did("not yet");
        co_await rsm_tsk(1);
        co_await sus_tsk(1);
        co_await Compute{5000};
        test.Did("time is over");
        co_await rsm_tsk(1);
        test.Got("dormant", co_await sus_tsk(1));
    });
    test.Run();
    EXPECT_THAT(test.steps,
                ElementsAre("resume -41", "suspend 0", "again -43", "resume 0", "signal", "not yet",
                            "first 0", "time is over", "second -50", "dormant -41"));
}

TEST(SimulatedKernel, WaitsAreReleasedByForceAndTasksAreTerminated) {
    TestKernel test;
    test.kernel.Add<KernelMutex>(KernelMutex::Protocol::None);
    test.Task(1, [&]() -> Program {
        test.Got("sleep", co_await slp_tsk());
        co_await loc_mtx(1);
        co_await slp_tsk();
        test.Did("never");
    });
    test.Task(
        2, [&]() -> Program { test.Got("lock", co_await loc_mtx(1)); }, false);
    test.Task(3, [&]() -> Program {
        test.Got("self", co_await ter_tsk(TSK_SELF));
        test.Got("release", co_await rel_wai(1));
        test.Got("no wait", co_await rel_wai(TSK_SELF));
        co_await act_tsk(2);
        test.Did("terminate");
        test.Got("terminate", co_await ter_tsk(1));
        test.Got("dormant", co_await ter_tsk(1));
    });
    test.Run();
    EXPECT_THAT(test.steps, ElementsAre("self -28", "sleep -49", "release 0", "no wait -41",
                                        "terminate", "lock 0", "terminate 0", "dormant -41"));
}

TEST(SimulatedKernel, PriorityAndTurnDecideWhoRuns) {
    TestKernel test;
    for (const char* name : {"a", "b"})
        test.Task(5, [&test, name]() -> Program {
            for (int i = 0; i < 3; ++i) {
                test.Did(name);
                co_await rot_rdq(5);
            }
        });
    test.Task(1, [&]() -> Program {
        test.Got("no priority", co_await chg_pri(1, 17));
        co_await chg_pri(TSK_SELF, 6);
        test.Got("priority", {(co_await get_pri(TSK_SELF)).value});
        test.Did("last");
    });
    test.Run();
    EXPECT_THAT(test.steps,
                ElementsAre("no priority -17", "a", "b", "a", "b", "a", "b", "priority 6", "last"));
}

TEST(SimulatedKernel, DelaysLastLongEnoughAndCyclicHandlersDoNotDrift) {
    TestKernel test;
    std::vector<Time> delays, ticks;
    test.kernel.AddCyclic("", 7, 3, [&]() -> Program {
        ticks.push_back(test.kernel.Now());
        co_await iwup_tsk(2);
    });
    test.Task(1, [&]() -> Program {
        for (int i = 0; i < 20; ++i) {
            const Time from = test.kernel.Now();
            co_await dly_tsk(3);
            delays.push_back(test.kernel.Now() - from);
            co_await Compute{370};
        }
        co_await stp_cyc(1);
        const std::size_t before = ticks.size();
        co_await dly_tsk(20);
        test.Did(ticks.size() == before ? "stopped" : "goes on");
        co_await sta_cyc(1);
        co_await dly_tsk(5);
        test.Did(ticks.size() == before + 1 ? "started" : "has not started");
        co_await stp_cyc(1);
    });
    test.Task(2, [&]() -> Program {
        for (;;) co_await slp_tsk();
    });
    test.Run(200000);
    ASSERT_EQ(delays.size(), 20u);
    for (const Time delay : delays) {
        EXPECT_GE(delay, 3000);
        EXPECT_LE(delay, 4100);
    }
    EXPECT_THAT(test.steps, ElementsAre("stopped", "started"));
    ASSERT_GE(ticks.size(), 9u);
    for (std::size_t i = 0; i + 1 < ticks.size(); ++i)
        EXPECT_NEAR(static_cast<double>(ticks[i]), 4000 + 7000.0 * static_cast<double>(i), 60);
}

TEST(SimulatedKernel, AlarmsAreStartedAnewAndStopped) {
    TestKernel test;
    test.kernel.AddAlarm("", [&]() -> Program {
        test.Did("alarm " + std::to_string(test.kernel.Now() / 1000));
        co_return;
    });
    test.Task(1, [&]() -> Program {
        co_await sta_alm(1, 5);
        co_await dly_tsk(2);
        co_await sta_alm(1, 5);
        co_await dly_tsk(20);
        co_await sta_alm(1, 5);
        co_await stp_alm(1);
        test.Did("time " + std::to_string((co_await get_tim()).value));
    });
    test.Run();
    EXPECT_THAT(test.steps, ElementsAre("alarm 9", "time 24"));
}

TEST(SimulatedKernel, InterruptsNestByLevelAndDispatchingWaitsForTheOutermost) {
    TestKernel test;
    test.kernel.Add<Semaphore>(0, 9);
    test.Task(1, [&]() -> Program {
        co_await wai_sem(1);
        test.Did("task");
    });
    test.Task(2, [&]() -> Program {
        test.kernel.RaiseAfter(5, 100);
        test.kernel.RaiseAfter(6, 120);
        test.kernel.RaiseAfter(7, 121);
        co_await Compute{900};
    });
    test.Task(
        3,
        [&]() -> Program {
            test.Did("activated");
            co_return;
        },
        false);
    test.Interrupt(5, 3, [&]() -> Program {
        test.Did("5 in");
        co_await Compute{50};
        test.Did("5 out");
    });
    test.Interrupt(6, 4, [&]() -> Program {
        test.Did("6 in");
        co_await isig_sem(1);
        test.Got("6 activates", co_await iact_tsk(3));
        co_await Compute{50};
        test.Did("6 out");
    });
    test.Interrupt(7, 3, [&]() -> Program {
        test.Did("7");
        co_return;
    });
    test.Run(2000);
    EXPECT_THAT(test.steps, ElementsAre("5 in", "6 in", "6 activates 0", "6 out", "5 out", "7",
                                        "task", "activated"));
}

TEST(SimulatedKernel, LockedAndDisabledInterruptsAreTakenLater) {
    TestKernel test;
    test.Interrupt(5, 3, [&]() -> Program {
        test.Did("5");
        co_return;
    });
    test.Task(1, [&]() -> Program {
        test.kernel.RaiseAfter(5, 20);
        co_await loc_cpu();
        co_await Compute{100};
        test.Did("unlock");
        co_await unl_cpu();
        test.Did("unlocked");
        co_await dis_int(5);
        test.kernel.RaiseAfter(5, 20);
        co_await Compute{100};
        test.Did("enable");
        co_await ena_int(5);
        test.Did("enabled");
    });
    test.Run(900);
    EXPECT_THAT(test.steps, ElementsAre("unlock", "5", "unlocked", "enable", "5", "enabled"));
}

}  // namespace
}  // namespace kvx::simulation
