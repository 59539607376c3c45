// Program and module on one platform library: windows of one side, and of the toolkit, in the hands
// of the other.

#include <QMainWindow>
#include <QMenuBar>
#include <cstdlib>

#include "platform/base/Module.h"
#include "platform/base/WinApp.h"
#include "platform/windows/Menu.h"
#include "platform_qt/QtFixture.h"
#include "platform_qt/module/TestModule.h"

namespace {

class HostWindow : public CWnd {
  public:
    LRESULT OnUser(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) - lParam; }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_MESSAGE<WM_USER, &HostWindow::OnUser>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
};

class ForeignWindowTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        const char* const folder = std::getenv("KVX_BIN_DIR");
        const CString path = CString(folder ? folder : "bin") + "/platform_test_module.dll";
        CString error;
        module = LoadLibrary(path, &error);
        ASSERT_NE(module, nullptr) << error;
        api = GetProcAddress<GetTestModuleApi>(module, "GetTestModule")();
        ASSERT_TRUE(host.Create(WS_POPUP | WS_CAPTION | WS_VISIBLE, {0, 0, 200, 100}, nullptr, 0));
    }
    void TearDown() override {
        host.DestroyWindow();
        api->remove();
        EXPECT_TRUE(FreeLibrary(module));
        Settle();  // nothing of the module may be left in the toolkit
    }
    HMODULE module = nullptr;
    const TestModuleApi* api = nullptr;
    HostWindow host;
};

TEST_F(ForeignWindowTest, OneTableHoldsTheWindowsOfBothSides) {
    const HWND handle = api->create(host.m_hWnd, 77);
    ASSERT_NE(handle, nullptr);
    CWnd* const window = CWnd::FromHandlePermanent(handle);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(CWnd::FromHandle(handle), window);
    EXPECT_EQ(host.GetDlgItem(77), window);
    EXPECT_EQ(window->GetParent(), &host);
    EXPECT_EQ(api->find(host.m_hWnd), &host);
    window->MoveWindow(0, 0, 80, 40);
    Settle();
    EXPECT_EQ(Widget(host)->grab().toImage().pixel(70, 35), qRgb(0, 0, 255))
        << "the module painted in the new size";

    api->destroy(handle);
    EXPECT_EQ(CWnd::FromHandle(handle), nullptr);
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(SendMessage(handle, WM_USER, 1, 1), 0);
}

TEST_F(ForeignWindowTest, WindowsOfTheToolkitAreWrapped) {
    QWidget plain;
    plain.setGeometry(0, 0, 50, 30);
    const auto handle = reinterpret_cast<HWND>(&plain);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    CWnd* const wrapper = CWnd::FromHandle(handle);
    ASSERT_NE(wrapper, nullptr);
    EXPECT_EQ(api->find(handle), wrapper);
    EXPECT_EQ(wrapper->GetParent(), nullptr);
    EXPECT_FALSE(wrapper->IsWindowVisible());
    EXPECT_EQ(wrapper->GetClientRect(), (RECT{0, 0, 50, 30}));
    wrapper->MoveWindow(0, 0, 80, 40);
    wrapper->EnableWindow(false);
    EXPECT_FALSE(wrapper->IsWindowEnabled());
    EXPECT_EQ(plain.geometry(), QRect(0, 0, 80, 40));
}

TEST_F(ForeignWindowTest, TheBackendStaysUntilItsLastUserHasGone) {
    ASSERT_NE(api->create(host.m_hWnd, 1), nullptr);  // the module is the second user
    kvx::IBackend* const before = kvx::InstalledBackend();
    api->remove();
    EXPECT_EQ(kvx::InstalledBackend(), before);
    EXPECT_TRUE(::IsWindow(host.m_hWnd));
}

TEST_F(ForeignWindowTest, MessagesReachTheHandlersOfTheOtherSide) {
    const HWND handle = api->create(host.m_hWnd, 1);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(SendMessage(handle, WM_USER, 6, 7), 42);
    EXPECT_EQ(api->received(), 6u);
    EXPECT_TRUE(PostMessage(handle, WM_USER, 100, 0));
    EXPECT_EQ(api->received(), 6u);
    Settle();
    EXPECT_EQ(api->received(), 106u);
    EXPECT_EQ(api->ask(host.m_hWnd), -1) << "5 - 6, as the host's window answers";
    EXPECT_EQ(api->ask(nullptr), -1);
    QWidget plain;
    EXPECT_EQ(api->ask(reinterpret_cast<HWND>(&plain)), 0) << "no window of the platform layer";
    EXPECT_EQ(api->registered(), RegisterWindowMessage("WM_WINMGR"));
}

TEST_F(ForeignWindowTest, TheHostsMainWindowIsSeenFromTheModule) {
    QMainWindow main;
    main.menuBar()->addMenu("&Option")->addAction("&Colour")->setData(4711u);
    EXPECT_NE(api->create(host.m_hWnd, 1), nullptr);
    AfxSetMainWnd(host.m_hWnd);
    EXPECT_EQ(api->mainWindow(), host.m_hWnd);
    AfxSetMainWnd(nullptr);
    EXPECT_EQ(api->mainWindow(), reinterpret_cast<HWND>(static_cast<QWidget*>(&main)));
    CMenu* const bar = AfxGetMainWnd()->GetMenu();
    ASSERT_NE(bar, nullptr);
    CString text;
    EXPECT_EQ(bar->GetMenuString(0, text, MF_BYPOSITION), 7);
    EXPECT_EQ(text, "&Option");
    EXPECT_GT(bar->GetMenuString(4711, text, MF_BYCOMMAND), 0);
    EXPECT_EQ(text, "&Colour");
    EXPECT_EQ(host.GetMenu(), nullptr);
}

TEST_F(ForeignWindowTest, TheParentTakesTheOtherSidesWindowsWithIt) {
    const HWND handle = api->create(host.m_hWnd, 1);
    ASSERT_NE(handle, nullptr);
    PostMessage(handle, WM_USER, 1, 0);
    host.DestroyWindow();
    EXPECT_FALSE(IsWindow(handle));
    api->destroy(handle);  // nothing left to destroy
}

}  // namespace
