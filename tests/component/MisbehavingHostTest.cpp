// Hosts that lack something or fail in something, one clause at a time, each through a whole
// session. Nothing crashes, nothing is left at the host, and nobody is bothered with a message.

#include <gtest/gtest.h>

#include <stdexcept>

#include "component/ModuleBoxes.h"
#include "component/SmallTrace.h"
#include "component/WorkingDay.h"

namespace kvx::test {
namespace {

using Texts = std::vector<std::string>;

TEST(MisbehavingHost, ADayWithAHostThatHasEverything) {
    TestHost host;
    host.trace.Load(SmallTrace());
    EXPECT_EQ(LiveThroughADay(host), Texts());
    EXPECT_EQ(host.docking.windows.size(), 2u);
    EXPECT_GT(host.trace.Decoded(), 0u);
}

TEST(MisbehavingHost, EachServiceIsMissingOrNull) {
    const auto all = TestHost().services;
    EXPECT_EQ(all.size(), 24u);
    for (const auto& [id, service] : all) {
        for (const auto how : {TestHost::Answer::kFailure, TestHost::Answer::kNull}) {
            TestHost host;
            host.trace.Load(SmallTrace());
            host.answer = [&](const GUID& asked) {
                return asked == id ? how : TestHost::Answer::kService;
            };
            EXPECT_EQ(LiveThroughADay(host), Texts());
        }
    }
}

TEST(MisbehavingHost, ServicesEndOnceInTheMiddleOfWork) {
    TestHost whole;
    whole.trace.Load(SmallTrace());
    LiveThroughADay(whole);
    const std::size_t questions = whole.asked.size();
    constexpr std::size_t kSteps = 24;
    for (std::size_t step = 0; step <= kSteps; ++step) {
        TestHost host;
        host.trace.Load(SmallTrace());
        const auto how = step % 2 ? TestHost::Answer::kNull : TestHost::Answer::kFailure;
        // The docking host stays: without it nobody can take the registrations back.
        host.answer = [&](const GUID& id) {
            const bool over = host.asked.size() > questions * step / kSteps;
            return over && id != host::kDockingHost ? how : TestHost::Answer::kService;
        };
        EXPECT_EQ(LiveThroughADay(host), Texts()) << step;
    }
}

TEST(MisbehavingHost, EachDockingOperationFails) {
    for (const std::string& operation : TestDocking::Operations()) {
        TestHost host;
        host.trace.Load(SmallTrace());
        host.docking.failing = {operation};
        EXPECT_EQ(LiveThroughADay(host), Texts()) << operation;
    }
    TestHost host;
    host.docking.giveNoWindows = true;
    EXPECT_EQ(LiveThroughADay(host), Texts());
    EXPECT_EQ(host.docking.Control(), nullptr);
}

TEST(MisbehavingHost, EachOperationOfTheTraceServiceFails) {
    TestHost whole;
    whole.trace.Load(SmallTrace());
    LiveThroughADay(whole);
    for (const auto& [operation, count] : whole.trace.calls) {
        TestHost host;
        host.trace.Load(SmallTrace());
        host.trace.failing = {operation};
        EXPECT_EQ(LiveThroughADay(host), Texts()) << operation;
    }
}

TEST(MisbehavingHost, CommandsThatAreDisabledComeAllTheSame) {
    for (const GUID& missing : {GUID{}, host::kOSTraceService, host::kDebuggerLibrary,
                                host::kOSTraceAvailability, host::kRunState}) {
        TestHost host;
        host.trace.Load(SmallTrace());
        host.services.erase(missing);
        host.docking.ignoreStates = true;
        EXPECT_EQ(LiveThroughADay(host), Texts());
    }
}

// A service of the host that throws must not: nothing of the half-made window stays.
TEST(MisbehavingHost, AWindowThatCannotBeMadeLeavesNothing) {
    constexpr std::uint32_t kOpenOSTrace = 32770;
    TestHost host;
    host.trace.Load(SmallTrace());
    const ModuleBoxes boxes;
    const Session session(host);
    const auto registered = host.docking.registrations.size();
    host.trace.onCall = [](const std::string& operation) {
        if (operation == "DiscardData") throw std::runtime_error("no");
    };
    auto* const window = host.Client<IQEOSTraceWindow>(host::kOSTraceWindow);
    std::uint16_t open = 1;
    for (int attempt = 1; attempt <= 2; ++attempt) {
        host.docking.Command(kOpenOSTrace);
        EXPECT_EQ(window->IsOpen(&open), S_OK);
        EXPECT_EQ(open, 0);
        EXPECT_EQ(host.docking.registrations.size(), registered);
        EXPECT_EQ(host.docking.Control(), nullptr);
        EXPECT_EQ(host.docking.states.at(host.docking.Docking()), kDockHide);
    }
    host.trace.onCall = nullptr;
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);
    EXPECT_EQ(window->IsOpen(&open), S_OK);
    EXPECT_EQ(open, 0xFFFF);
    EXPECT_EQ(host.docking.states.at(host.docking.Docking()), kDockShow);

    // An event that a service spoils is answered all the same.
    host.trace.onCall = [](const std::string&) { throw std::runtime_error("no"); };
    const EventRecord ready{host::kEventTraceReady, 0};
    EXPECT_EQ(session.Component().Notify(&ready), S_OK);
    host.trace.onCall = nullptr;
}

TEST(MisbehavingHost, StoresThatFail) {
    TestHost host;
    host.trace.Load(SmallTrace());
    host.store.failing = host.properties.failing = host.naming.failing = true;
    EXPECT_EQ(LiveThroughADay(host), Texts());
    EXPECT_TRUE(host.store.texts.empty());
}

}  // namespace
}  // namespace kvx::test
