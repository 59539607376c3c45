// Workspaces: what is written, and what comes back from it.

#include <gtest/gtest.h>

#include "component/ModuleBoxes.h"
#include "component/SmallTrace.h"
#include "component/TestHost.h"
#include "host/WorkSpaceClient.h"
#include "support/DrawnWindow.h"
#include "support/toolkit/Toolkit.h"

namespace kvx::test {
namespace {

IQWorkSpaceClient2* Client(TestHost& host) {
    return host.Client<IQWorkSpaceClient2>(host::kWorkSpaceClient2);
}

std::int32_t Modified(TestHost& host) {
    std::int32_t modified = 9;
    EXPECT_EQ(Client(host)->QueryModified(1, 2, 3, &modified), S_OK);
    return modified;
}

TEST(Workspace, WindowsColoursAndSettingsComeBack) {
    std::map<std::string, std::string> saved;
    {
        TestHost host;
        ModuleBoxes boxes;
        const Session session(host);
        EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
        EXPECT_EQ(Modified(host), 0);
        host.docking.Command(32770);
        EXPECT_EQ(Modified(host), 1);
        EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
        EXPECT_EQ(Modified(host), 0);
        saved = host.store.texts;
    }
    EXPECT_EQ(saved["OSTraceCtrlTraceViews"], "1");
    EXPECT_EQ(saved["OSTraceCtrlAnalyzeViews"], "0");
    EXPECT_EQ(saved["OSTraceWndInstanceKey0"], "{WK_00000001_OSTRACE}_long_short0");
    EXPECT_EQ(saved["OSTraceWndCOLOR_RUN"], "0");
    EXPECT_EQ(saved["OSTraceWndCOLOR_WAI_MPL"], "cfb0");
    EXPECT_EQ(saved["OSTraceViewView"], "5,8,5,12,0");

    TestHost host;
    ModuleBoxes boxes;
    host.store.texts = saved;
    const Session session(host);
    EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
    ASSERT_EQ(host.docking.windows.size(), 1u);
    EXPECT_EQ(host.docking.states.count(host.docking.Docking()), 0u);  // left to the host
    EXPECT_EQ(Modified(host), 0);
    // A notification while the window is open opens no second one.
    EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
    EXPECT_EQ(host.docking.windows.size(), 1u);
}

TEST(Workspace, EachOfSeveralWindowsComesBack) {
    TestHost host;
    const ModuleBoxes boxes;
    host.store.texts = {
        {"OSTraceCtrlAnalyzeViews", "2"},
        {"OSAnalyzeWndInstanceKey0", "one"},
        {"OSAnalyzeWndInstanceKey1", "two"},
        {"OSAnalyzeViewView", "1,5,8,5,12,7,22,22,22,22,8,18,5,12,8,22,22,22,7,13,35,35,22"}};
    const Session session(host);
    EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
    EXPECT_EQ(host.docking.windows.size(), 2u);
    host.store.texts.clear();
    EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
    EXPECT_EQ(host.store.texts["OSAnalyzeWndInstanceKey0"], "one");
    EXPECT_EQ(host.store.texts["OSAnalyzeWndInstanceKey1"], "two");
    // They share one record of how they look: the last one has it from what came back.
    EXPECT_TRUE(host.store.texts["OSAnalyzeViewView"].starts_with("1,"));
}

// Drags in the window until something that is saved has changed: a column's edge is somewhere.
void WidenSomeColumn(TestHost& host, HWND docking) {
    for (const auto& [identifier, registration] : host.docking.registrations) {
        if (registration.docking != docking || !registration.control) continue;
        const HWND view = WindowAt(registration.control, {100, 100});
        ASSERT_NE(view, registration.control);
        for (int x = 10; x < 200 && !Modified(host); ++x) {
            PressMouse(view, {x, 5});
            MoveMouse(view, {x + 30, 5});
            ReleaseMouse(view, {x + 30, 5});
        }
    }
    EXPECT_EQ(Modified(host), 1);
    EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
}

TEST(Workspace, AWholeSessionComesBack) {
    std::map<std::string, std::string> saved;
    {
        TestHost host;
        const ModuleBoxes boxes;
        host.trace.Load(SmallTrace());
        host.store.texts["OSTraceWndCOLOR_RUN"] = "12ab";
        const Session session(host);
        EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
        host.docking.Command(32770);
        const HWND trace = host.docking.Docking();
        host.docking.Command(32773);
        const HWND analyze = host.docking.Docking();
        host.Send(host::kEventTraceReady);
        EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
        WidenSomeColumn(host, trace);
        host.docking.Command(47500);  // Rdy->Run
        EXPECT_EQ(Modified(host), 1);
        EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
        WidenSomeColumn(host, analyze);
        EXPECT_EQ(host.store.where, "1 2 demo 4");
        saved = host.store.texts;
    }
    EXPECT_EQ(saved["OSTraceCtrlTraceViews"], "1");
    EXPECT_EQ(saved["OSTraceCtrlAnalyzeViews"], "1");
    EXPECT_EQ(saved["OSAnalyzeWndInstanceKey0"], "{WK_00000001_OSANALYZE}_long_short1");
    EXPECT_EQ(saved["OSTraceWndCOLOR_RUN"], "12ab");
    EXPECT_NE(saved["OSTraceViewView"], "5,8,5,12,0");
    EXPECT_TRUE(saved["OSAnalyzeViewView"].starts_with("1,")) << saved["OSAnalyzeViewView"];

    TestHost host;
    const ModuleBoxes boxes;
    host.store.texts = saved;
    host.trace.Load(SmallTrace());
    const Session session(host);
    EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
    EXPECT_EQ(host.docking.windows.size(), 2u);
    EXPECT_EQ(host.docking.StateOf(47500).checked, 1);
    EXPECT_EQ(Modified(host), 0);
    host.store.texts.clear();
    EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
    EXPECT_EQ(host.store.texts, saved);
    // The commands show the windows that came back.
    EXPECT_EQ(host.docking.Command(32770), S_OK);
    EXPECT_EQ(host.docking.Command(32773), S_OK);
    EXPECT_EQ(host.docking.windows.size(), 2u);
    for (const auto& window : host.docking.windows) {
        EXPECT_EQ(host.docking.states[window->GetSafeHwnd()], kDockShow);
    }
}

TEST(Workspace, DamagedTextsCostOnlyThemselves) {
    const std::string manyDigits(400, '9');
    const std::string endless(100000, 'x');
    struct Case {
        std::map<std::string, std::string> texts;
        std::size_t windows;
    };
    const std::string count = "OSTraceCtrlTraceViews";
    const std::string name = "OSTraceWndInstanceKey0";
    for (const Case& each : {
             Case{{{count, ""}, {name, "a"}}, 0},
             {{{count, "x"}, {name, "a"}}, 0},
             {{{count, "-1"}, {name, "a"}}, 0},
             {{{count, manyDigits}, {name, "a"}}, 0},
             {{{count, " 1 window"}, {name, "a"}}, 1},
             {{{count, "1000000"}, {name, "a0"}}, 1},
             {{{count, "1"}}, 1},  // without a name: under a fresh one
             {{{count, "1"}, {name, "../../\n\t\xff\xfe%s%n"}}, 1},
             {{{count, "1"}, {name, endless}}, 1},
             {{{count, "1"}, {"OSTraceViewView", manyDigits + ",-1,,x"}}, 1},
             {{{count, "1"}, {"OSTraceViewView", "2147483647,2147483647,-2147483648,0,0"}}, 1},
             {{{count, "1"}, {"OSTraceWndCOLOR_RUN", "zz"}, {"OSTraceWndCOLOR_RDY", endless}}, 1},
         }) {
        TestHost host;
        const ModuleBoxes boxes;
        host.trace.Load(SmallTrace());
        host.store.texts = each.texts;
        const Session session(host);
        EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, nullptr, 4), S_OK);
        EXPECT_EQ(host.docking.windows.size(), each.windows) << each.texts.begin()->second;
        host.Send(host::kEventTraceReady);
        if (each.windows) DrawingOf(host.docking.Docking());
        EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
        EXPECT_EQ(host.store.texts[count], std::to_string(each.windows));
    }
}

TEST(Workspace, ModesAndWidthsOfTheAnalyzeWindowAreNotTrusted) {
    std::string widest = "2";
    for (int i = 0; i < 22; ++i) widest += ",2147483647";
    for (const std::string& text : {std::string("77"), std::string("-1,0"), std::string(",,,,"),
                                    widest, std::string(5000, ',')}) {
        TestHost host;
        const ModuleBoxes boxes;
        host.trace.Load(SmallTrace());
        host.store.texts = {{"OSTraceCtrlAnalyzeViews", "1"}, {"OSAnalyzeViewView", text}};
        const Session session(host);
        EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, nullptr, 4), S_OK);
        ASSERT_EQ(host.docking.windows.size(), 1u);
        DrawingOf(host.docking.Docking());
        EXPECT_EQ(host.docking.Command(47501), S_OK);
        EXPECT_EQ(host.docking.StateOf(47501).checked, 1);
    }
}

TEST(Workspace, AStoreThatFailsOpensNothing) {
    TestHost host;
    const ModuleBoxes boxes;
    host.store.texts = {{"OSTraceCtrlTraceViews", "1"}, {"OSTraceWndInstanceKey0", "a"}};
    host.store.failing = true;
    host.naming.failing = true;
    const Session session(host);
    EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4), S_OK);
    EXPECT_TRUE(host.docking.windows.empty());
    // Without names for the workspace the window has its plain one.
    host.docking.Command(32770);
    EXPECT_EQ(host.docking.names[host.docking.Docking()], "{WK_00000001_OSTRACE}0");
    EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
}

TEST(Workspace, WithoutNamesThereIsNoWorkspace) {
    TestHost host;
    ModuleBoxes boxes;
    host.services.erase(host::kNamingService);
    host.services.erase(host::kProjectInformation);
    const Session session(host);
    EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, nullptr, 4), E_FAIL);
    EXPECT_EQ(Client(host)->WorkspaceSaving(1, 2, 4), S_OK);
    EXPECT_TRUE(host.store.texts.empty());
    std::int32_t answer = 9;
    EXPECT_EQ(Client(host)->WorkspaceEvent12(0, &answer), S_OK);
    EXPECT_EQ(answer, 0);
}

}  // namespace
}  // namespace kvx::test
