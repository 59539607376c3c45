// Whole sessions: the window opens, shows the trace, and goes again.

#include <gtest/gtest.h>

#include "component/ModuleBoxes.h"
#include "component/SmallTrace.h"
#include "component/TestHost.h"
#include "host/FormatViewClient.h"
#include "host/OSTraceRange.h"
#include "platform/base/Resources.h"
#include "support/DrawnWindow.h"
#include "support/toolkit/Toolkit.h"

namespace kvx::test {
namespace {

constexpr std::uint32_t kOpenOSTrace = 32770;

TEST(Session, OneWindowOpensAndShowsTheTrace) {
    TestHost host;
    ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session session(host);
    auto* const window = host.Client<IQEOSTraceWindow>(host::kOSTraceWindow);
    std::uint16_t open = 1;
    window->IsOpen(&open);
    EXPECT_EQ(open, 0);

    host.trace.DecodeAll();  // by whom or whenever
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);
    EXPECT_EQ(host.trace.Decoded(), 300u);
    window->IsOpen(&open);
    EXPECT_EQ(open, 0xFFFF);
    EXPECT_EQ(host.docking.states[host.docking.Docking()], kDockShow);
    host.Send(host::kEventTraceReady);
    EXPECT_EQ(host.trace.Decoded(), 300u);
    EXPECT_TRUE(host.docking.StateOf(47104).enabled);  // Expand

    // It counts as open also while it is hidden.
    EXPECT_EQ(host.docking.Command(32769), S_OK);
    EXPECT_EQ(host.docking.states[host.docking.Docking()], kDockHide);
    window->IsOpen(&open);
    EXPECT_EQ(open, 0xFFFF);

    // A second open command shows the window that is there.
    host.docking.states.clear();
    EXPECT_EQ(host.docking.Command(kOpenOSTrace), S_OK);
    EXPECT_EQ(host.docking.windows.size(), 1u);
    EXPECT_EQ(host.docking.states[host.docking.Docking()], kDockShow);

    host.Send(host::kEventTargetDisconnected);
    EXPECT_FALSE(host.docking.StateOf(47104).enabled);
}

TEST(Session, AChangedDisplayIsNewsToAllViewsButItsSender) {
    TestHost host;
    const ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    host.docking.Command(32773);
    host.Send(host::kEventTraceReady);
    host.docking.Command(47501);  // the table of system calls follows the indicator
    const HWND analyze = host.docking.Docking();
    const HWND view = WindowAt(analyze, {100, 150});
    ASSERT_NE(view, analyze);
    host.broadcasts.clear();
    ClickMouse(view, {60, 60});  // goes to the call of a row
    ASSERT_FALSE(host.broadcasts.empty());
    EXPECT_EQ(host.broadcasts.back().id, host::kEventDisplayChanged);
    const std::uintptr_t sender = host.broadcasts.back().datum;
    EXPECT_NE(sender, 0u);

    const auto readsOf = [&](std::uintptr_t datum) {
        const std::uint64_t before = host.trace.reads;
        host.Send(host::kEventDisplayChanged, datum);
        return host.trace.reads - before;
    };
    EXPECT_EQ(readsOf(sender), 0u);
    EXPECT_GT(readsOf(0), 0u);
    EXPECT_GT(readsOf(sender + 1), 0u);  // no view at all
}

TEST(Session, AnExactRangeDecodesNoMoreThanItNeeds) {
    TestHost host;
    ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session session(host);
    auto* const range = host.Client<host::IQOSTraceRange>(host::kOSTraceRange);
    EXPECT_EQ(range->SetDisplayRange(0, 100), E_FAIL);  // no window
    host.docking.Command(kOpenOSTrace);
    host.Send(host::kEventTraceReady);
    EXPECT_EQ(range->SetDisplayRange(100, 100), E_INVALIDARG);
    EXPECT_EQ(range->SetDisplayRange(0, 1e9), E_INVALIDARG);
    EXPECT_EQ(range->SetDisplayRange(1000, 8000), S_OK);
    EXPECT_GT(host.trace.Decoded(), 480u);
    EXPECT_LT(host.trace.Decoded(), 520u);
    EXPECT_EQ(range->SetDisplayRange(0, static_cast<double>(host.trace.end)), S_OK);
    EXPECT_EQ(host.trace.Decoded(), host.trace.Trace().Count());
}

TEST(Session, ClosingIsRefusedWhileTheTargetRuns) {
    TestHost host;
    ModuleBoxes boxes;
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    IQCommandTarget* const target = host.docking.TargetOf(47104);
    ASSERT_NE(target, nullptr);
    host.runState.running = true;
    host.docking.states.clear();
    EXPECT_EQ(target->OnCloseRequest(), S_FALSE);
    EXPECT_EQ(host.docking.states[host.docking.Docking()], kDockShow);
    EXPECT_FALSE(host.docking.StateOf(kOpenOSTrace).enabled);
    EXPECT_FALSE(host.docking.StateOf(32769).enabled);
    host.runState.running = false;
    EXPECT_TRUE(host.docking.StateOf(32769).enabled);
    EXPECT_EQ(target->OnCloseRequest(), S_OK);
    EXPECT_EQ(host.docking.TargetOf(47104), nullptr);
    std::uint16_t open = 1;
    host.Client<IQEOSTraceWindow>(host::kOSTraceWindow)->IsOpen(&open);
    EXPECT_EQ(open, 0);
    EXPECT_TRUE(host.docking.StateOf(kOpenOSTrace).enabled);
}

TEST(Session, ToolbarAndDockingCommands) {
    TestHost host;
    ModuleBoxes boxes;
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    const HWND docking = host.docking.Docking();
    EXPECT_EQ(host.docking.StateOf(32771).checked, 1);
    EXPECT_EQ(host.docking.Command(32772), S_OK);
    EXPECT_EQ(host.docking.customized, std::vector<HWND>{docking});
    EXPECT_EQ(host.docking.Command(32771), S_OK);
    EXPECT_EQ(host.docking.StateOf(32771).checked, 0);
    EXPECT_FALSE(host.docking.StateOf(32772).enabled);
    EXPECT_EQ(host.docking.StateOf(32768).checked, 1);
    host.docking.states[docking] = kDockFloating;
    EXPECT_EQ(host.docking.StateOf(32768).checked, 0);
    host.docking.states[docking] = kDockFloating | kDockMayDock;
    EXPECT_EQ(host.docking.StateOf(32768).checked, 1);
    host.docking.Command(32769);
    EXPECT_EQ(host.docking.states[docking], kDockHide);
}

TEST(Session, ADockingWindowThatCannotBeMadeLeavesNoWindow) {
    TestHost host;
    ModuleBoxes boxes;
    host.docking.failing = {"CreateDockingWindow"};
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    EXPECT_EQ(host.docking.Control(), nullptr);
    EXPECT_TRUE(host.docking.StateOf(kOpenOSTrace).enabled);
}

TEST(Session, ADarkDesktopKeepsTheChartOnLightGround) {
    TestHost host;
    const ModuleBoxes boxes;
    if (!SetDarkDesktop(true)) GTEST_SKIP() << "this desktop is never dark";
    host.trace.Load(SmallTrace());
    {
        const Session session(host);
        host.docking.Command(kOpenOSTrace);
        host.Send(host::kEventTraceReady);
        CWnd* const control = CWnd::FromHandle(host.docking.Control());
        ASSERT_NE(control, nullptr);
        control->MoveWindow(0, 0, 600, 300);
        const Surface picture = DrawingOf(control->m_hWnd);
        // In the chart below the lines, and in the face of a table cell.
        EXPECT_GT(GetRValue(picture.At(500, 220)), 200u);
        EXPECT_GT(GetRValue(picture.At(20, 200)), 150u);
    }
    SetDarkDesktop(false);
}

TEST(Session, FontAndColoursAreKeptAsProperties) {
    TestHost host;
    ModuleBoxes boxes;
    const Session session(host);
    auto* const format = host.Client<IQFormatViewClient2>(host::kFormatViewClient);
    Bstr text;
    EXPECT_EQ(format->GetName(text.Receive()), S_OK);
    EXPECT_EQ(text.Utf8(), "OS Trace, OS Analyze");
    std::int32_t points = 0;
    using Keys = std::vector<std::string>;
    const Keys font = {"KVX_OSTRACE_FONT_NAME", "KVX_OSTRACE_FONT_SIZE"};
    const Keys colours = {"KVX_OSTRACE_BKCOLOUR", "KVX_OSTRACE_FGCOLOUR"};
    Keys all = font;
    all.insert(all.end(), colours.begin(), colours.end());
    EXPECT_EQ(host.properties.asked, all) << "read in this order";
    format->GetFont(text.Receive(), &points);
    EXPECT_EQ(text.Utf8(), "Courier New");
    EXPECT_EQ(points, 11);
    host.docking.Command(kOpenOSTrace);
    const auto itemHeight = [&host] {
        MEASUREITEMSTRUCT item;
        SendMessage(host.docking.Control(), WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
        return item.itemHeight;
    };
    const UINT before = itemHeight();
    EXPECT_GT(before, 11u);
    format->SetFont(Bstr("Liberation Mono").Get(), 28);
    EXPECT_GT(itemHeight(), before + before / 2);
    host.properties.asked.clear();
    format->SetFont(Bstr("Liberation Mono").Get(), 14);
    EXPECT_EQ(host.properties.asked, font) << "and written";
    host.properties.asked.clear();
    format->SetTextColours(1, 6);
    EXPECT_EQ(host.properties.asked, colours);
    EXPECT_EQ(host.properties.texts["KVX_OSTRACE_FONT_NAME"], "Liberation Mono");
    EXPECT_EQ(host.properties.numbers["KVX_OSTRACE_FONT_SIZE"], 14);
    EXPECT_EQ(host.properties.numbers["KVX_OSTRACE_FGCOLOUR"], 1);
    EXPECT_EQ(host.properties.numbers["KVX_OSTRACE_BKCOLOUR"], 6);
    EXPECT_EQ(format->GetItemColours(nullptr, nullptr, nullptr), E_FAIL);
}

}  // namespace
}  // namespace kvx::test
