// Workspaces: what is written, and what comes back from it.

#include <gtest/gtest.h>

#include "component/ModuleBoxes.h"
#include "component/TestHost.h"
#include "host/WorkSpaceClient.h"

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

TEST(Workspace, DamagedTextsCostOnlyThemselves) {
    for (const char* count : {"", "x", "-5"}) {
        TestHost host;
        ModuleBoxes boxes;
        host.store.texts = {{"OSTraceCtrlTraceViews", count},
                            {"OSTraceCtrlAnalyzeViews", "1"},
                            {"OSTraceWndCOLOR_RUN", "zz"}};
        const Session session(host);
        EXPECT_EQ(Client(host)->WorkspaceOpened(1, 2, nullptr, 4), S_OK);
        EXPECT_EQ(host.docking.windows.size(), 1u) << count;  // the analyze window
    }
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
