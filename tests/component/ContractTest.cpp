// What the component asks of its host and registers there, in which order and under which names.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/ModuleBoxes.h"
#include "component/SmallTrace.h"
#include "component/TestHost.h"
#include "host/FormatViewClient.h"
#include "host/WorkSpaceClient.h"

namespace kvx::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using Commands = std::vector<std::uint32_t>;

constexpr std::uint32_t kOpenOSTrace = 32770;
constexpr std::uint32_t kOpenOSAnalyze = 32773;

const std::vector<GUID> kDebuggerSide = {host::kRunState, host::kDebugB, host::kDebugC,
                                         host::kDebugG,   host::kDebugH, host::kDebugD,
                                         host::kDebugE,   host::kDebugF};

void Append(std::vector<GUID>& list, const std::vector<GUID>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

// Without the docking service, which is asked for at every use.
std::vector<GUID> AskedFor(const TestHost& host, std::size_t from) {
    std::vector<GUID> asked(host.asked.begin() + static_cast<std::ptrdiff_t>(from),
                            host.asked.end());
    std::erase(asked, host::kDockingHost);
    return asked;
}

TEST(Contract, ServicesAreAskedForInTheOrderOfConstruction) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host, false);
    std::vector<GUID> expected = kDebuggerSide;
    Append(expected, {host::kHostFrame, host::kErrorService, host::kFrameworkA});
    Append(expected, {host::kFrameworkB, host::kFrameworkA, host::kProjectInformation,
                      host::kPropertyStore, host::kWorkspaceStore, host::kFrameworkC});
    Append(expected, kDebuggerSide);
    Append(expected, {host::kPropertyStore});
    EXPECT_EQ(AskedFor(host, 0), expected);

    IQCommandTarget* const target = host.docking.TargetOf(kOpenOSTrace);
    const std::size_t before = host.asked.size();
    EXPECT_EQ(target->OnCommand(kOpenOSTrace), S_OK);
    expected = {host::kHostFrame, host::kFrameworkB, host::kFrameworkA, host::kPropertyStore,
                host::kFrameworkC};
    Append(expected, kDebuggerSide);
    EXPECT_EQ(AskedFor(host, before), expected);
}

// The registration of the window that has the command in its menu, or of the host's menus.
const TestDocking::Registration& Having(const TestHost& host, std::uint32_t command) {
    static const TestDocking::Registration kNone;
    for (const auto& [identifier, registration] : host.docking.registrations) {
        const auto& commands = registration.menuCommands;
        if (std::ranges::find(commands, command) != commands.end()) return registration;
    }
    return kNone;
}

TEST(Contract, MenusAndToolbarsOfHostAndWindows) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    EXPECT_EQ(Having(host, kOpenOSTrace).menuCommands, (Commands{kOpenOSTrace, kOpenOSAnalyze}));
    EXPECT_EQ(Having(host, kOpenOSTrace).toolbarCommands, (Commands{kOpenOSTrace, kOpenOSAnalyze}));
    EXPECT_EQ(Having(host, kOpenOSTrace).toolbar, "{WK_TB00000023_RTOS} RTOS");

    host.docking.Command(kOpenOSTrace);
    host.docking.Command(kOpenOSTrace);
    host.docking.Command(kOpenOSAnalyze);
    EXPECT_THAT(host.docking.log, Contains("create {WK_00000001_OSTRACE} \"OS Trace\" 1804 59422"));
    EXPECT_THAT(host.docking.log, Contains("find {WK_00000001_OSTRACE}0 \"OS Trace\" 10 59422"));
    EXPECT_THAT(host.docking.log,
                Contains("create {WK_00000001_OSANALYZE} \"OS Analyze\" 1804 59422"));
    EXPECT_THAT(Having(host, 47100).owners, ElementsAre(host::kComponent));
    EXPECT_EQ(
        Having(host, 47100).toolbarCommands,
        (Commands{47100, 47101, 47102, 0,     47103, 47104, 47105, 0,     47106, 47107, 47400,
                  32796, 32795, 0,     47402, 47403, 47110, 47111, 47401, 0,     32793, 32794}));
    EXPECT_EQ(Having(host, 47200).toolbarCommands,
              (Commands{47200, 47500, 47501, 0, 47502, 32778}));
    for (const auto& [command, help] : {std::pair{47100u, "OSTrace.chm>F1HelpWindow"},
                                        std::pair{47200u, "OSAnalyze.chm>F1HelpWindow"}}) {
        Bstr key;
        EXPECT_EQ(Having(host, command).target->GetHelpKey(key.Receive()), S_OK);
        EXPECT_EQ(key.Utf8(), help);
    }
}

// Each value in the order in which it comes; the identifiers are the window's two.
TEST(Contract, RegistrationsSayWhereTheyComeFromAndWhoseTheyAre) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    const auto& told = host.docking.told;
    EXPECT_THAT(told.log,
                ElementsAre("menu 201 under 1 of component", "menu 9006 under 1 of component",
                            "bind window", "bind module"));
    EXPECT_NE(told.bound.at(1), nullptr);

    host.docking.told.log.clear();
    host.docking.Command(kOpenOSTrace);
    EXPECT_THAT(told.log, ElementsAre("window -1 \"\" 0 0 under 2 of component",
                                      "menu 202 under 2 of component", "bind window", "bind module",
                                      "group 1906 under 3 of second",
                                      "toolbar 204 0 47110 47111 47401 under 2 of component"));
    EXPECT_EQ(told.bound.at(2), Having(host, 47100).control);

    host.docking.told.log.clear();
    host.docking.Command(kOpenOSAnalyze);
    EXPECT_THAT(told.log, ElementsAre("window -1 \"\" 0 0 under 4 of component",
                                      "menu 9007 under 4 of component", "bind window",
                                      "bind module", "toolbar 9010 0 32778 under 4 of component"));
    EXPECT_EQ(told.bound.at(4), Having(host, 47200).control);
    ASSERT_EQ(told.modules.size(), 1u);
    EXPECT_NE(GetProcAddress(static_cast<HMODULE>(*told.modules.begin()), "GetDLLType"), nullptr)
        << "the resource library";
}

TEST(Contract, KeysComeAndGoWithTheirWindow) {
    TestHost host;
    const ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    host.trace.available = false;
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    const HWND trace = host.docking.Docking();
    host.docking.Command(kOpenOSAnalyze);
    const HWND analyze = host.docking.Docking();
    EXPECT_EQ(Having(host, 47100).docking, trace);
    EXPECT_EQ(Having(host, 47100).keys.size(), 14u);
    EXPECT_EQ(Having(host, 47200).docking, analyze);
    EXPECT_EQ(Having(host, 47200).keys.size(), 5u);
    EXPECT_TRUE(Having(host, kOpenOSTrace).keys.empty());
    for (const Accelerator& key : Having(host, 47100).keys) {
        EXPECT_THAT(Having(host, 47100).menuCommands, Contains(key.command));
    }
    // S is the start marker in one window and the table of system calls in the other.
    EXPECT_EQ(host.docking.Press(trace, 'S'), S_FALSE);  // no trace: nothing to mark
    host.trace.available = true;
    host.Send(host::kEventTraceReady);
    EXPECT_EQ(host.docking.Press(trace, 'S'), S_OK);
    EXPECT_EQ(host.docking.StateOf(47501).checked, 0);
    EXPECT_EQ(host.docking.Press(analyze, 'S'), S_OK);
    EXPECT_EQ(host.docking.StateOf(47501).checked, 1);
    EXPECT_EQ(host.docking.Close(trace), S_OK);
    EXPECT_EQ(host.docking.Press(trace, 'S'), S_FALSE);
    EXPECT_EQ(host.docking.Press(analyze, 'R'), S_OK);
    EXPECT_EQ(host.docking.StateOf(47200).checked, 1);
}

TEST(Contract, OtherHostPartsMayForbidToOpenATraceWindow) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    struct Case {
        std::int16_t flag;
        HRESULT status;
        bool enabled;
    };
    for (const Case& each : {Case{-1, S_OK, false}, {1, S_OK, true}, {-1, E_FAIL, true}}) {
        for (TestBlocker* blocker : {&host.blockerA, &host.blockerB}) {
            blocker->flag = each.flag;
            blocker->status = each.status;
            host.blockerA.asked = host.blockerB.asked = 0;
            EXPECT_EQ(host.docking.StateOf(kOpenOSTrace).enabled != 0, each.enabled);
            EXPECT_TRUE(host.blockerA.asked > 0 && host.blockerB.asked > 0) << "both have a say";
            EXPECT_TRUE(host.docking.StateOf(kOpenOSAnalyze).enabled);
            blocker->flag = 0;
        }
    }
}

TEST(Contract, SearchCommandsOfTheHostAreTheWindowsOwn) {
    TestHost host;
    ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    host.Send(host::kEventTraceReady);
    constexpr std::uint32_t kAgain[] = {32795, 32796, 39512, 39513};
    for (const auto command : kAgain) EXPECT_FALSE(host.docking.StateOf(command).enabled);
    host.trace.searchText = "sig";
    EXPECT_EQ(host.docking.Command(47400), S_OK);
    for (const auto command : kAgain) EXPECT_TRUE(host.docking.StateOf(command).enabled);
    host.trace.calls.clear();
    for (const auto command : kAgain) EXPECT_EQ(host.docking.Command(command), S_OK);
    EXPECT_EQ(host.trace.calls["SearchNext"], 2);
    EXPECT_EQ(host.trace.calls["SearchPrevious"], 2);
}

TEST(Contract, ErrorsAndInterfacesPassThrough) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    auto* const reporter =
        session.Module().Query<IQErrorReporter>(Session::kKey, host::kErrorReporter);
    EXPECT_EQ(reporter->ReportError(11, 22), S_FALSE);  // the answer of the error service
    EXPECT_THAT(host.errors.reported, ElementsAre(11, 22));

    auto* const client = host.Client<IQFormatViewClient2>(host::kFormatViewClient);
    void* out = nullptr;
    for (const GUID& id : {IID_IUnknown, host::kWorkSpaceClient, host::kWorkSpaceClient2}) {
        EXPECT_EQ(client->QueryInterface(id, &out), S_OK);
        EXPECT_EQ(out, host.advised[host::kWorkSpaceClient2]);
    }
    EXPECT_EQ(client->QueryInterface(host::kCommandSink, &out), S_OK);
    EXPECT_NE(out, nullptr);
    EXPECT_EQ(client->QueryInterface(host::kRunState, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(client->AddRef(), 1u);
    EXPECT_EQ(client->Release(), 0u);
}

TEST(Contract, NullPointersAreAnswered) {
    TestHost host;
    const ModuleBoxes boxes;
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    const TestModule& module = session.Module();
    const auto query = module.Entry<QueryInterface2Fn>("QueryInterface2");
    EXPECT_TRUE(Failed(query(Session::kKey, &host::kComponent, nullptr)));
    void* out = nullptr;
    EXPECT_TRUE(Failed(query(Session::kKey, nullptr, &out)));
    EXPECT_EQ(module.Entry<LibraryRegister2Fn>("LibraryRegister2")(nullptr), S_OK);
    std::int32_t number = 0;
    EXPECT_TRUE(
        Failed(module.Entry<GetComponentVersionFn>("GetComponentVersion")(&number, nullptr)));
    EXPECT_EQ(session.Component().Notify(nullptr), S_OK);
    EXPECT_TRUE(Failed(session.Component().QueryInterface(host::kComponent, nullptr)));

    auto* const format = host.Client<IQFormatViewClient2>(host::kFormatViewClient);
    EXPECT_TRUE(Failed(format->QueryInterface(IID_IUnknown, nullptr)));
    EXPECT_TRUE(Failed(format->GetName(nullptr)));
    EXPECT_TRUE(Failed(format->GetItemNames(nullptr)));
    EXPECT_TRUE(Failed(format->GetFont(nullptr, &number)));
    EXPECT_TRUE(Failed(format->SetFont(nullptr, 11)));
    EXPECT_EQ(format->SetColours(nullptr, 1, 2), S_OK);  // an item that there is not

    auto* const workspace = host.Client<IQWorkSpaceClient2>(host::kWorkSpaceClient2);
    EXPECT_TRUE(Failed(workspace->WorkspaceEvent12(0, nullptr)));
    EXPECT_TRUE(Failed(workspace->QueryModified(1, 2, 3, nullptr)));
    EXPECT_EQ(workspace->WorkspaceOpened(1, 2, nullptr, 4), S_OK);
    EXPECT_TRUE(Failed(host.Client<IQEOSTraceWindow>(host::kOSTraceWindow)->IsOpen(nullptr)));

    IQCommandTarget* const target = host.docking.TargetOf(47104);
    EXPECT_TRUE(Failed(target->OnUpdateCommand(47104, nullptr)));
    EXPECT_TRUE(Failed(target->GetHelpKey(nullptr)));
    EXPECT_TRUE(Failed(target->OnCommand(1)));
}

}  // namespace
}  // namespace kvx::test
