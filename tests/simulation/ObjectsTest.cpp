// The objects on which tasks of the simulated kernel wait.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/base/Text.h"
#include "simulation/TestKernel.h"

namespace kvx::simulation {
namespace {

using testing::ElementsAre;

TEST(Semaphore, ServesInOrderOfArrivalOrOfPriority) {
    for (const auto order : {WaitQueue::Order::Fifo, WaitQueue::Order::Priority}) {
        TestKernel test;
        test.kernel.Add<Semaphore>(0, 1, order);
        for (const int priority : {4, 3, 2})  // the last one is the first to run
            test.Task(priority, [&test, priority]() -> Program {
                co_await dly_tsk(4 - priority);
                co_await wai_sem(1);
                test.Did(std::to_string(priority));
            });
        test.Task(9, [&]() -> Program {
            co_await dly_tsk(9);
            co_await pol_sem(1);
            for (int i = 0; i < 3; ++i) co_await sig_sem(1);
            test.Got("signal", co_await sig_sem(1));
            test.Got("signal", co_await sig_sem(1));
            test.Got("poll", co_await pol_sem(1));
            test.Got("poll", co_await pol_sem(1));
        });
        test.Run();
        const bool isFifo = order == WaitQueue::Order::Fifo;
        EXPECT_THAT(test.steps, ElementsAre(isFifo ? "4" : "2", "3", isFifo ? "2" : "4", "signal 0",
                                            "signal -43", "poll 0", "poll -50"));
    }
}

TEST(EventFlag, ReleasesThoseWhosePatternFits) {
    for (const bool clears : {false, true}) {
        TestKernel test;
        test.kernel.Add<EventFlag>(clears);
        const auto waiter = [&](const std::string& name, int pattern, int mode) {
            test.Task(1, [&test, name, pattern, mode]() -> Program {
                const CallResult got = co_await wai_flg(1, pattern, mode);
                test.Did(name + " " + std::to_string(got.value));
            });
        };
        waiter("and", 6, TWF_ANDW);
        waiter("or", 5, TWF_ORW);
        test.Task(9, [&]() -> Program {
            co_await set_flg(1, 2);
            test.Did("4");
            co_await set_flg(1, 4);
            test.Did("1");
            co_await set_flg(1, 1);
            test.Got("none", co_await pol_flg(1, 0, TWF_ORW));
            co_await clr_flg(1, ~2);
            test.Got("poll", co_await pol_flg(1, 2, TWF_ORW));
        });
        test.Run();
        if (clears)
            EXPECT_THAT(test.steps, ElementsAre("4", "and 6", "1", "or 1", "none -17", "poll -50"));
        else
            EXPECT_THAT(test.steps, ElementsAre("4", "and 6", "or 6", "1", "none -17", "poll -50"));
    }
}

TEST(DataQueue, KeepsTheOrderWhoeverWaits) {
    for (const std::size_t capacity : {0u, 1u, 3u}) {
        TestKernel test;
        test.kernel.Add<DataQueue>(capacity);
        test.kernel.Add<DataQueue>(capacity);
        test.Task(1, [&]() -> Program {
            for (int i = 0; i < 6; ++i) co_await snd_dtq(1, i);
            for (int i = 0; i < 6; ++i) test.Did(std::to_string((co_await rcv_dtq(2)).value));
        });
        test.Task(2, [&]() -> Program {
            for (int i = 0; i < 6; ++i) test.Did(std::to_string((co_await rcv_dtq(1)).value));
            for (int i = 10; i < 16; ++i) co_await snd_dtq(2, i);
            test.Got("empty", co_await prcv_dtq(1));
            for (std::size_t i = 0; i < capacity; ++i) co_await psnd_dtq(1, 1);
            test.Got("full", co_await psnd_dtq(1, 1));
            test.Got("late", co_await tsnd_dtq(1, 1, 2));
        });
        test.Run();
        EXPECT_THAT(test.steps, ElementsAre("0", "1", "2", "3", "4", "5", "10", "11", "12", "13",
                                            "14", "15", "empty -50", "full -50", "late -50"))
            << capacity;
    }
}

TEST(Mailbox, HandsAddressesOverInOrder) {
    TestKernel test;
    test.kernel.Add<Mailbox>();
    test.Task(1, [&]() -> Program {
        test.Got("empty", co_await prcv_mbx(1));
        test.Got("late", co_await trcv_mbx(1, 2));
        for (int i = 0; i < 3; ++i) test.Did(std::to_string((co_await rcv_mbx(1)).value));
    });
    test.Task(2, [&]() -> Program {
        co_await dly_tsk(5);
        for (int i = 1; i < 4; ++i) co_await snd_mbx(1, i);
        for (int i = 4; i < 6; ++i) co_await snd_mbx(1, i);
        for (int i = 0; i < 2; ++i) test.Did(std::to_string((co_await prcv_mbx(1)).value));
    });
    test.Run();
    EXPECT_THAT(test.steps, ElementsAre("empty -50", "late -50", "1", "2", "3", "4", "5"));
}

TEST(MessageBuffer, SendersKeepTheirOrder) {
    TestKernel test;
    test.kernel.Add<MessageBuffer>(24);
    test.Task(1, [&]() -> Program { test.Got("large", co_await tsnd_mbf(1, 0, 16, 5)); });
    test.Task(2, [&]() -> Program { test.Got("small", co_await snd_mbf(1, 0, 4)); });
    test.Task(3, [&]() -> Program { test.Got("poll", co_await psnd_mbf(1, 0, 1)); });
    test.Task(9, [&]() -> Program {
        test.Got("too large", co_await snd_mbf(1, 0, 24));
        test.Got("empty", co_await snd_mbf(1, 0, 0));
        for (int i = 0; i < 3; ++i) test.Got("receive", co_await trcv_mbf(1, 0, 1));
        test.Got("poll", co_await prcv_mbf(1, 0));
    });
    test.Run();
    EXPECT_THAT(test.steps,
                ElementsAre("large 0", "poll -50", "too large -17", "empty -17", "small 0",
                            "receive 16", "receive 4", "receive -50", "poll -50"));
}

TEST(MessageBuffer, WhenALargeMessageGivesUpTheSmallOneBehindItGoes) {
    TestKernel test;
    test.kernel.Add<MessageBuffer>(24);
    test.Task(1, [&]() -> Program {
        co_await snd_mbf(1, 0, 8);
        test.Got("large", co_await tsnd_mbf(1, 0, 16, 5));
    });
    test.Task(2, [&]() -> Program {
        test.Got("small", co_await snd_mbf(1, 0, 4));
        test.Got("receive", co_await rcv_mbf(1, 0));
        test.Got("receive", co_await rcv_mbf(1, 0));
    });
    test.Run();
    EXPECT_THAT(test.steps, ElementsAre("large -50", "small 0", "receive 8", "receive 4"));
}

// A low task holds the mutex when a high one wants it and a medium one begins a long calculation.
std::vector<std::string> Inversion(KernelMutex::Protocol protocol) {
    TestKernel test;
    test.kernel.Add<KernelMutex>(protocol, 1);
    test.Task(1, [&]() -> Program {
        co_await dly_tsk(1);
        test.Got("high", co_await loc_mtx(1));
        co_await unl_mtx(1);
    });
    test.Task(2, [&]() -> Program {
        co_await dly_tsk(1);
        co_await Compute{20000};
        test.Did("medium");
    });
    test.Task(3, [&]() -> Program {
        co_await loc_mtx(1);
        test.Did("low holds it with priority " +
                 std::to_string((co_await get_pri(TSK_SELF)).value));
        co_await Compute{5000};
        co_await unl_mtx(1);
        test.Did("low");
    });
    test.Run();
    return test.steps;
}

TEST(KernelMutex, ProtocolsAgainstPriorityInversion) {
    EXPECT_THAT(Inversion(KernelMutex::Protocol::None),
                ElementsAre("low holds it with priority 3", "medium", "high 0", "low"));
    EXPECT_THAT(Inversion(KernelMutex::Protocol::Inherit),
                ElementsAre("low holds it with priority 3", "high 0", "medium", "low"));
    EXPECT_THAT(Inversion(KernelMutex::Protocol::Ceiling),
                ElementsAre("low holds it with priority 1", "high 0", "medium", "low"));
}

// Whoever gets a mutex with the priority of the running task waits for its turn.
TEST(KernelMutex, UnlockingDoesNotGiveWayToAnEqual) {
    TestKernel test;
    test.kernel.Add<KernelMutex>(KernelMutex::Protocol::Ceiling, 4);
    test.Task(4, [&]() -> Program {
        co_await loc_mtx(1);
        co_await dly_tsk(3);
        co_await unl_mtx(1);
        test.Did("equal goes on");
    });
    test.Task(7, [&]() -> Program {
        co_await loc_mtx(1);
        test.Did("owner");
    });
    test.Run();
    EXPECT_THAT(test.steps, ElementsAre("equal goes on", "owner"));
}

TEST(KernelMutex, PriorityIsInheritedAlongAChainAndGivenBack) {
    TestKernel test;
    test.kernel.Add<KernelMutex>(KernelMutex::Protocol::Inherit);
    test.kernel.Add<KernelMutex>(KernelMutex::Protocol::Inherit);
    const auto priority = [&](const char* who, CallResult got) {
        test.Did(std::string(who) + " " + std::to_string(got.value));
    };
    test.Task(1, [&]() -> Program {
        co_await dly_tsk(2);
        test.Got("high", co_await tloc_mtx(2, 3));
    });
    test.Task(5, [&]() -> Program {
        co_await loc_mtx(2);
        co_await dly_tsk(1);
        test.Got("medium", co_await loc_mtx(1));
    });
    test.Task(9, [&]() -> Program {
        co_await loc_mtx(1);
        test.Got("twice", co_await ploc_mtx(1));
        priority("alone", co_await get_pri(TSK_SELF));
        co_await Compute{2000};
        priority("for medium", co_await get_pri(TSK_SELF));
        co_await Compute{1500};
        priority("for high", co_await get_pri(TSK_SELF));
        co_await Compute{6000};
        priority("high has given up", co_await get_pri(TSK_SELF));
        co_await unl_mtx(1);
        priority("own again", co_await get_pri(TSK_SELF));
        test.Got("not mine", co_await unl_mtx(1));
    });
    test.Run();
    EXPECT_THAT(test.steps,
                ElementsAre("twice -28", "alone 9", "for medium 5", "for high 1", "high -50",
                            "high has given up 5", "medium 0", "own again 9", "not mine -28"));
}

TEST(FixedPool, HandsBlocksOver) {
    TestKernel test;
    test.kernel.Add<FixedPool>(0x1000, 2, 32);
    test.Task(1, [&]() -> Program {
        const CallResult first = co_await get_mpf(1);
        const CallResult second = co_await get_mpf(1);
        test.Got("none left", co_await pget_mpf(1));
        test.Got("late", co_await tget_mpf(1, 2));
        const CallResult third = co_await get_mpf(1);
        test.Did(third.value == second.value ? "the one given back" : "another one");
        test.Got("no block", co_await rel_mpf(1, first.value + 1));
        co_await rel_mpf(1, first.value);
        test.Got("twice", co_await rel_mpf(1, first.value));
    });
    test.Task(2, [&]() -> Program {
        co_await dly_tsk(5);
        co_await rel_mpf(1, 0x1020);
    });
    test.Run();
    EXPECT_THAT(test.steps, ElementsAre("none left -50", "late -50", "the one given back",
                                        "no block -17", "twice -17"));
}

TEST(VariablePool, FillsTheFirstGapAndServesInOrder) {
    TestKernel test;
    test.kernel.Add<VariablePool>(0x1000, 96);
    const auto address = [&](const char* who, CallResult got) {
        test.Did(FormatText("%s %x", who, static_cast<unsigned>(got.value)));
    };
    test.Task(1, [&]() -> Program {
        address("first", co_await get_mpl(1, 30));
        address("second", co_await get_mpl(1, 32));
        test.Got("too large", co_await get_mpl(1, 97));
        co_await rel_mpl(1, 0x1000);
        address("gap", co_await get_mpl(1, 8));
        test.Got("no gap", co_await pget_mpl(1, 40));
        address("waits", co_await tget_mpl(1, 40, 5));
        test.Got("not mine", co_await rel_mpl(1, 0x1001));
    });
    test.Task(2, [&]() -> Program { address("behind it", co_await get_mpl(1, 8)); });
    test.Task(9, [&]() -> Program {
        co_await dly_tsk(2);
        test.Did("release");
        co_await rel_mpl(1, 0x1020);
    });
    test.Run();
    EXPECT_THAT(test.steps,
                ElementsAre("first 1000", "second 1020", "too large -17", "gap 1000", "no gap -50",
                            "release", "waits 1008", "not mine -17", "behind it 1030"));
}

}  // namespace
}  // namespace kvx::simulation
