#include "hosting/HostObject.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "host/DebuggerFunctions.h"
#include "workbench/desktop/QtText.h"
#include "workbench/desktop/services/WorkbenchServices.h"

namespace kvx::desktop {
namespace {

constexpr GUID kSome = MakeGuid("{11111111-2222-3333-4444-555555555555}");

// Counts events; may take another component out while it handles one.
class Listener final : public IQComponent {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }
    HRESULT KVX_CALL Notify(const EventRecord* record) override {
        last = record->datum;
        ++events;
        if (host && removes) host->RemoveComponent(removes);
        return S_OK;
    }
    HRESULT KVX_CALL Initialize(IQHost*, std::int16_t) override { return S_OK; }
    HRESULT KVX_CALL Reserved3() override { return S_OK; }
    HRESULT KVX_CALL Reserved4() override { return S_OK; }
    HRESULT KVX_CALL Terminate(std::int16_t) override { return S_OK; }

    hosting::HostObject* host = nullptr;
    IQComponent* removes = nullptr;
    std::uintptr_t last = 0;
    int events = 0;
};

TEST(HostObject, KeepsServicesUntilTheirOwnerTakesThemBack) {
    hosting::HostObject host;
    int first = 0;
    int second = 0;
    void* out = &first;
    EXPECT_EQ(host.GetService(kSome, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(host.AddService(kSome, &first), S_OK);
    EXPECT_EQ(host.AddService(kSome, &second), S_OK);
    EXPECT_EQ(host.GetService(kSome, &out), S_OK);
    EXPECT_EQ(out, &second);
    EXPECT_EQ(host.RemoveService(kSome, &first), E_FAIL) << "not what is there now";
    EXPECT_EQ(host.RemoveService(kSome, &second), S_OK);
    EXPECT_EQ(host.GetService(kSome, &out), E_NOINTERFACE);
    EXPECT_EQ(host.AddService(kSome, nullptr), E_POINTER);
    EXPECT_EQ(host.GetService(kSome, nullptr), E_POINTER);
}

TEST(HostObject, AdvisesEachClientAsOftenAsItAsked) {
    hosting::HostObject host;
    int client = 0;
    host.Advise(kSome, &client);
    host.Advise(kSome, &client);
    host.Advise(host::kSteppingClient, &client);
    EXPECT_EQ(host.Clients<int>(kSome).size(), 2U);
    EXPECT_EQ(host.Unadvise(kSome, &client), S_OK);
    EXPECT_EQ(host.Clients<int>(kSome), std::vector<int*>{&client});
    EXPECT_EQ(host.Unadvise(kSome, &client), S_OK);
    EXPECT_EQ(host.Unadvise(kSome, &client), E_FAIL);
    EXPECT_EQ(host.Clients<int>(host::kSteppingClient).size(), 1U);
}

TEST(HostObject, EventReachesEveryComponentStillThere) {
    hosting::HostObject host;
    Listener first;
    Listener second;
    host.AddComponent(&first);
    host.AddComponent(&second);
    const EventRecord record{kSome, 42};
    EXPECT_EQ(host.BroadcastEvent(&record), S_OK);
    EXPECT_EQ(first.last, 42U);
    EXPECT_EQ(second.last, 42U);

    first.host = &host;
    first.removes = &second;
    host.BroadcastEvent(&record);
    EXPECT_EQ(first.events, 2);
    EXPECT_EQ(second.events, 1) << "was taken out by the event itself";
    EXPECT_EQ(host.BroadcastEvent(nullptr), E_POINTER);
}

class Services : public testing::Test {
  protected:
    template <class Interface>
    Interface* Get(const GUID& id) {
        return host::Service<Interface>(&host_, id);
    }
    hosting::HostObject host_;
    Settings settings_;
    WorkbenchServices services_{host_, settings_, qgetenv("KVX_BIN_DIR").toStdString()};
};

TEST_F(Services, NoTargetRuns) {
    // S_FALSE would mean that it runs.
    EXPECT_LT(Get<IQRunState>(host::kRunState)->IsRunning(), 0);
}

TEST_F(Services, FrameworkServicesAndTheFrameAreThere) {
    for (const GUID& id :
         {host::kFrameworkA, host::kFrameworkB, host::kFrameworkC, host::kDebugB, host::kDebugC,
          host::kDebugD, host::kDebugE, host::kDebugF, host::kDebugG, host::kDebugH}) {
        ASSERT_NE(Get<IQUnknown>(id), nullptr);
    }
    void* frame = nullptr;
    EXPECT_EQ(host_.QueryInterface(host::kHostFrame, &frame), S_OK);
    EXPECT_NE(frame, nullptr);
    EXPECT_EQ(Get<IQOpenBlocker>(host::kOpenBlockerA), nullptr) << "nothing forbids windows";
}

TEST_F(Services, PropertiesKeepTheirKind) {
    auto* store = Get<IQPropertyStore>(host::kPropertyStore);
    const Bstr size("KVX_OSTRACE_FONT_SIZE");
    const Bstr face("KVX_OSTRACE_FONT_NAME");
    std::int32_t number = 7;
    Bstr text;
    EXPECT_LT(store->GetNumber(size.Get(), &number), 0);
    EXPECT_EQ(number, 7) << "unchanged when nothing is stored";
    EXPECT_LT(store->GetText(face.Get(), text.Receive()), 0);

    EXPECT_EQ(store->SetNumber(size.Get(), -13), S_OK);
    EXPECT_EQ(store->SetText(face.Get(), Bstr("Größe, \"Courier\"").Get()), S_OK);
    EXPECT_EQ(store->GetNumber(size.Get(), &number), S_OK);
    EXPECT_EQ(number, -13);
    EXPECT_EQ(store->GetText(face.Get(), text.Receive()), S_OK);
    EXPECT_EQ(text.Utf8(), "Größe, \"Courier\"");
    EXPECT_LT(store->GetNumber(face.Get(), &number), 0) << "a text is no number";
}

TEST_F(Services, TextsAreTheUsersOwnOrThoseOfTheWorkspaceThatIsOpen) {
    auto* store = Get<IQWorkspaceStoreService>(host::kWorkspaceStore);
    const Bstr key("OSTraceViewView");
    const WorkspaceKey user;
    WorkspaceKey workspace;
    workspace.a = 1;
    const auto write = [&](const WorkspaceKey& where, const char* value) {
        EXPECT_EQ(store->WriteText(&where, key.Get(), Bstr(value).Get()), S_OK);
    };
    const auto read = [&](const WorkspaceKey& where) {
        Bstr text;
        return Succeeded(store->ReadText(&where, key.Get(), text.Receive())) ? text.Utf8() : "none";
    };
    EXPECT_EQ(read(user), "none");
    write(user, "user's");
    EXPECT_EQ(read(workspace), "none");
    write(workspace, "of no file");
    services_.Workspace().SetTexts(WorkspaceTexts{{"other", "text"}});
    EXPECT_EQ(read(workspace), "none");
    write(workspace, "of a file");
    EXPECT_EQ(services_.Workspace().Texts()->at("OSTraceViewView"), "of a file");
    EXPECT_EQ(read(workspace), "of a file");
    EXPECT_EQ(read(user), "user's");
    services_.Workspace().SetTexts(std::nullopt);
    EXPECT_EQ(read(workspace), "of no file");
}

TEST_F(Services, DebuggerLibraryExportsEveryFunctionThatIsLookedUp) {
    void* module = nullptr;
    ASSERT_EQ(Get<IQDebuggerLibrary>(host::kDebuggerLibrary)->GetModule(&module), S_OK);
    auto* const library = static_cast<HMODULE>(module);
    for (const char* name : host::kDirectFunctionNames) {
        EXPECT_NE(GetProcAddress(library, name), nullptr) << name;
    }
    using Info = std::intptr_t (*)(std::uintptr_t, std::uintptr_t);
    const auto info = GetProcAddress<Info>(library, "IN1_Get_service_info");
    EXPECT_EQ(info(1050, 0), 1) << "nothing can be measured in a recording";
    using Message = const char* (*)();
    EXPECT_STREQ(GetProcAddress<Message>(library, "ERR_GetErrMsg")(), "");
}

TEST(DebuggerLibraryMissing, IsAFailureAndNoCrash) {
    hosting::HostObject host;
    Settings settings;
    const WorkbenchServices services(host, settings, "/nowhere");
    void* module = &host;
    EXPECT_LT(host::Service<IQDebuggerLibrary>(&host, host::kDebuggerLibrary)->GetModule(&module),
              0);
    EXPECT_EQ(module, nullptr);
}

TEST(SettingsFile, ComesBackInTheNextRun) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("deep/er/kvxostrace.ini");
    const QStringList list{"a, b", "c;d", "ü"};
    {
        Settings settings(path);
        settings.Set("Window/recent", list);
        settings.Set("View/OSTraceViewView", "7,8,5,20,0");
        settings.Set("Window/state", QByteArray("\0\xFF\n,", 4));
    }
    const Settings settings(path);
    EXPECT_EQ(settings.Get("Window/recent").toStringList(), list);
    EXPECT_EQ(settings.Get("View/OSTraceViewView").toString(), "7,8,5,20,0");
    EXPECT_EQ(settings.Get("Window/state").toByteArray(), QByteArray("\0\xFF\n,", 4));
    EXPECT_FALSE(settings.Get("Window/nothing").isValid());
}

}  // namespace
}  // namespace kvx::desktop
