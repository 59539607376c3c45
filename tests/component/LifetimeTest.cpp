// Calls in odd orders, and two instances at once: events, commands and ends interleaved.

#include <gtest/gtest.h>

#include "component/ModuleBoxes.h"
#include "component/SmallTrace.h"
#include "component/TestHost.h"
#include "host/FormatViewClient.h"
#include "host/WorkSpaceClient.h"
#include "platform/base/WinApp.h"

namespace kvx::test {
namespace {

constexpr std::uint32_t kOpenOSTrace = 32770;
constexpr std::uint32_t kOpenOSAnalyze = 32773;
constexpr std::uint32_t kExpand = 47104;

const GUID kEvents[] = {host::kEventDebuggerDisconnected, host::kEventTraceReady,
                        host::kEventTargetDisconnected,   host::kEventDisplayChanged,
                        host::kEventTraceCleared,         host::kEventDebuggerConnected,
                        host::kEventTargetConnected,      host::kComponent,
                        host::kEventDebuggerConnected,    GUID{}};

void NotifyAll(IQComponent& component) {
    int datum = 0;
    for (const GUID& id : kEvents) {
        const EventRecord record{id, reinterpret_cast<std::uintptr_t>(&datum)};
        EXPECT_EQ(component.Notify(&record), S_OK);
    }
}

// A component object by hand, for calls that a session would make in order.
class Instance {
  public:
    explicit Instance(std::uintptr_t key) : key_(key) {
        module_.Entry<CreateInstanceFn>("CreateInstance")(key_);
        component = module_.Query<IQComponent>(key_, host::kComponent);
    }
    ~Instance() { module_.Entry<DestroyInstanceFn>("DestroyInstance")(key_); }

    IQComponent* component = nullptr;

  private:
    TestModule module_;
    std::uintptr_t key_;
};

TEST(Lifetime, EventsComeBeforeTheStartAndAfterTheEnd) {
    TestHost host;
    const ModuleBoxes boxes;
    const Instance instance(9);
    NotifyAll(*instance.component);
    EXPECT_EQ(instance.component->Initialize(&host, 1), S_OK);
    NotifyAll(*instance.component);
    host.docking.Command(kOpenOSTrace);
    host.docking.Command(kOpenOSAnalyze);
    NotifyAll(*instance.component);
    EXPECT_EQ(instance.component->Terminate(1), S_OK);
    NotifyAll(*instance.component);
    EXPECT_EQ(instance.component->Terminate(1), E_FAIL);
    host.ExpectNothingLeft();
}

TEST(Lifetime, AStartWithoutAHostLeavesTheConnectionAlone) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    const HWND control = host.docking.Control();
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(session.Component().Initialize(nullptr, -1), E_FAIL);
    EXPECT_EQ(session.Component().Initialize(nullptr, 0), E_FAIL);
    EXPECT_EQ(host.docking.Control(), control);
    EXPECT_FALSE(host.advised.empty());
    EXPECT_EQ(host.docking.Command(kOpenOSAnalyze), S_OK);
}

TEST(Lifetime, ASecondStartBeginsAnew) {
    TestHost host;
    const ModuleBoxes boxes;
    const Instance instance(9);
    EXPECT_EQ(instance.component->Initialize(&host, 1), S_OK);
    host.docking.Command(kOpenOSTrace);
    ASSERT_NE(host.docking.Control(), nullptr);
    EXPECT_EQ(instance.component->Initialize(&host, 1), S_OK);
    EXPECT_EQ(host.docking.Control(), nullptr);
    EXPECT_EQ(host.docking.Close(host.docking.Docking()), S_OK);
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);
    EXPECT_NE(host.docking.Control(), nullptr);
    // Another host takes over: nothing stays at the first one.
    TestHost other;
    EXPECT_EQ(instance.component->Initialize(&other, 1), S_OK);
    host.ExpectNothingLeft();
    EXPECT_EQ(other.docking.Command(kOpenOSTrace), S_OK);
    EXPECT_NE(other.docking.Control(), nullptr);
    EXPECT_EQ(instance.component->Terminate(1), S_OK);
    other.ExpectNothingLeft();
}

// What keeps the registrations lives as long as the object: where the host gives no identifiers, a
// later connection does not use those of an earlier one again, which the host may still know.
TEST(Lifetime, RegistrationsAreCountedOnUntilTheObjectIsDeleted) {
    const ModuleBoxes boxes;
    const auto connect = [](const Instance& instance) {
        TestHost host;
        host.docking.failing = {"AllocateIdentifier"};
        EXPECT_EQ(instance.component->Initialize(&host, 1), S_OK);
        host.docking.Command(kOpenOSTrace);
        std::vector<std::uint32_t> identifiers;
        for (const auto& [identifier, registration] : host.docking.registrations)
            identifiers.push_back(identifier);
        EXPECT_EQ(instance.component->Terminate(1), S_OK);
        EXPECT_TRUE(host.docking.released.empty()) << "the host did not give them";
        host.ExpectNothingLeft();
        return identifiers;
    };
    std::vector<std::uint32_t> first;
    {
        const Instance instance(9);
        first = connect(instance);
        ASSERT_GE(first.size(), 2u);
        const auto second = connect(instance);
        ASSERT_EQ(second.size(), first.size());
        EXPECT_GT(second.front(), first.back());
    }
    EXPECT_EQ(connect(Instance(9)), first) << "another object counts anew";
    EXPECT_GE(first.front(), 0x80000000u) << "clear of what a host counts up";
}

TEST(Lifetime, AnInstanceDestroyedWhileConnectedLeavesNothing) {
    const ModuleBoxes boxes;
    {
        TestHost host;
        host.trace.Load(SmallTrace());
        {
            const Instance instance(9);
            EXPECT_EQ(instance.component->Initialize(&host, 1), S_OK);
            NotifyAll(*instance.component);
            host.docking.Command(kOpenOSTrace);
            host.docking.Command(kOpenOSAnalyze);
        }
        host.ExpectNothingLeft();
    }
    // The host has gone, and with it what the module knew of its debugger.
    TestHost host;
    const Session session(host, false);
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);
    host.Send(host::kEventTraceReady);
    EXPECT_FALSE(host.docking.StateOf(kExpand).enabled);
}

TEST(Lifetime, DockingWindowsThatGoWithoutAWord) {
    TestHost host;
    const ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session session(host);
    auto* const window = host.Client<IQEOSTraceWindow>(host::kOSTraceWindow);
    host.docking.Command(kOpenOSTrace);
    host.docking.Command(kOpenOSAnalyze);
    host.Send(host::kEventTraceReady);
    host.docking.windows.front()->DestroyWindow();
    host.docking.windows.back()->DestroyWindow();
    host.docking.windows.clear();
    host.docking.names.clear();
    std::uint16_t open = 1;
    window->IsOpen(&open);
    EXPECT_EQ(open, 0);
    for (const GUID& event : kEvents) host.Send(event);
    host.Client<IQFormatViewClient2>(host::kFormatViewClient)->SetTextColours(1, 0);
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);
    EXPECT_EQ(host.docking.windows.size(), 1u);
    window->IsOpen(&open);
    EXPECT_EQ(open, 0xFFFF);
}

TEST(Lifetime, WhatIsOpenedAndClosedIsAChangeOfTheWorkspace) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    auto* const workspace = host.Client<IQWorkSpaceClient2>(host::kWorkSpaceClient2);
    const auto isModified = [&] {
        std::int32_t modified = -1;
        EXPECT_EQ(workspace->QueryModified(1, 2, 3, &modified), S_OK);
        return modified;
    };
    const auto save = [&] { EXPECT_EQ(workspace->WorkspaceSaving(1, 2, 3), S_OK); };
    for (const std::uint32_t open : {kOpenOSTrace, kOpenOSAnalyze}) {
        save();
        EXPECT_EQ(isModified(), 0);
        host.docking.Command(open);
        EXPECT_EQ(isModified(), 1) << open;
        save();
        EXPECT_EQ(host.docking.Close(host.docking.Docking()), S_OK);
        EXPECT_EQ(isModified(), 1) << open;
        host.docking.Command(open);
        save();
        host.docking.windows.back()->DestroyWindow();
        host.docking.windows.clear();
        host.docking.names.clear();
        host.docking.Command(open == kOpenOSTrace ? kOpenOSAnalyze : kOpenOSTrace);
        EXPECT_EQ(isModified(), 1) << "one that went without a word: " << open;
        host.docking.Close(host.docking.Docking());
    }
}

TEST(Lifetime, AHostWithoutAMainWindow) {
    TestHost host;
    const ModuleBoxes boxes;
    AfxSetMainWnd(nullptr);
    const Session session(host);
    EXPECT_EQ(session.Status(), S_OK);
    for (const GUID& event : kEvents) host.Send(event);
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), E_FAIL);  // its menus went nowhere
}

TEST(Lifetime, AMainWindowThatGoesBeforeTheEnd) {
    TestHost host;
    const ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    host.docking.Command(kOpenOSAnalyze);
    host.Send(host::kEventTraceReady);
    host.docking.main->DestroyWindow();
    for (const GUID& event : kEvents) host.Send(event);
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);  // there is nothing to open it in
    EXPECT_EQ(host.docking.Control(), nullptr);
}

TEST(Lifetime, EventsComeWhileADialogIsOpen) {
    for (const std::uint32_t command : {47110u, 47111u, 32778u}) {  // Value, Color, Save
        TestHost host;
        ModuleBoxes boxes;
        host.trace.Load(SmallTrace());
        const Session session(host);
        host.docking.Command(kOpenOSTrace);
        host.docking.Command(kOpenOSAnalyze);
        host.Send(host::kEventTraceReady);
        boxes.onDialog = [&] {
            host.runState.running = true;
            for (const GUID& event : kEvents) host.Send(event);
            host.runState.running = false;
        };
        EXPECT_EQ(host.docking.Command(command), S_OK);
        EXPECT_EQ(boxes.TakeDialogs().size(), 1u) << command;
        host.Send(host::kEventTraceReady);
        EXPECT_TRUE(host.docking.StateOf(kExpand).enabled);
    }
}

// The targets whose menus have the command, in the order of their registration.
std::vector<IQCommandTarget*> WithInMenu(const TestHost& host, std::uint32_t command) {
    std::vector<IQCommandTarget*> targets;
    for (const auto& [identifier, registration] : host.docking.registrations) {
        const auto& commands = registration.menuCommands;
        if (std::ranges::find(commands, command) != commands.end()) {
            targets.push_back(registration.target);
        }
    }
    return targets;
}

TEST(Lifetime, TwoInstancesAtOneHost) {
    TestHost host;
    const ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session first(host, true, 1);
    {
        const Session second(host, true, 2);
        const auto openers = WithInMenu(host, kOpenOSTrace);
        ASSERT_EQ(openers.size(), 2u);
        EXPECT_EQ(openers[1]->OnCommand(kOpenOSTrace), S_OK);
        EXPECT_EQ(openers[0]->OnCommand(kOpenOSTrace), S_OK);
        EXPECT_EQ(openers[1]->OnCommand(kOpenOSAnalyze), S_OK);
        EXPECT_EQ(host.docking.windows.size(), 3u);
        for (const GUID& event : kEvents) host.Send(event);
        host.Send(host::kEventTraceReady);
        for (const auto& window : host.docking.windows) {
            EXPECT_NE(host.docking.TargetIn(window->GetSafeHwnd()), nullptr);
        }
    }
    // The second took its own windows along and left the first its resources.
    EXPECT_EQ(WithInMenu(host, kOpenOSTrace).size(), 1u);
    EXPECT_EQ(host.docking.Command(kOpenOSAnalyze), S_OK);
    EXPECT_EQ(WithInMenu(host, 47200).size(), 1u);
    host.SendConnected();
    EXPECT_TRUE(host.docking.StateOf(kExpand).enabled);
}

TEST(Lifetime, TwoInstancesAtTwoHosts) {
    TestHost host;
    const ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session first(host, true, 1);
    host.docking.Command(kOpenOSTrace);
    {
        TestHost other;
        other.trace.Load(SmallTrace());
        const Session second(other, true, 2);
        other.docking.Command(kOpenOSTrace);
        other.Send(host::kEventTraceReady);
        EXPECT_TRUE(other.docking.StateOf(kExpand).enabled);
    }
    // The debugger that is left is the one that is asked.
    host.trace.DiscardData();
    host.Send(host::kEventTargetConnected);
    host.Send(host::kEventTraceReady);
    EXPECT_EQ(host.trace.Decoded(), 300u);
    EXPECT_TRUE(host.docking.StateOf(kExpand).enabled);
}

TEST(Lifetime, StoredPropertiesAreNotTrustedBlindly) {
    struct Case {
        const char* face;
        std::int32_t points;
        const char* expectedFace;
        std::int32_t expectedPoints;
    };
    for (const Case& each : {Case{"Liberation Mono", 14, "Liberation Mono", 14},
                             {"", 14, "Courier New", 11},
                             {"Liberation Mono", 0, "Liberation Mono", 11},
                             {"Liberation Mono", 2000000000, "Liberation Mono", 11}}) {
        TestHost host;
        const ModuleBoxes boxes;
        host.properties.texts["KVX_OSTRACE_FONT_NAME"] = each.face;
        host.properties.numbers = {{"KVX_OSTRACE_FONT_SIZE", each.points},
                                   {"KVX_OSTRACE_FGCOLOUR", 4711},
                                   {"KVX_OSTRACE_BKCOLOUR", -3}};
        const Session session(host);
        auto* const format = host.Client<IQFormatViewClient2>(host::kFormatViewClient);
        Bstr face;
        std::int32_t points = 0;
        EXPECT_EQ(format->GetFont(face.Receive(), &points), S_OK);
        EXPECT_EQ(face.Utf8(), each.expectedFace);
        EXPECT_EQ(points, each.expectedPoints);
        host.docking.Command(kOpenOSTrace);
        EXPECT_EQ(format->SetFont(Bstr("Liberation Mono").Get(), -1), E_INVALIDARG);
        EXPECT_EQ(host.properties.numbers["KVX_OSTRACE_FONT_SIZE"], each.points);
    }
}

}  // namespace
}  // namespace kvx::test
