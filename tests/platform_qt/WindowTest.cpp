// Windows on the real toolkit, without a display: life, sizes, relations, visibility.

#include "platform/windows/Wnd.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Backend.h"
#include "support/UnexpectedBoxes.h"

namespace {

constexpr RECT kPlace{10, 20, 210, 120};

// Writes down the messages that reach it.
class Recorder : public CWnd {
  public:
    std::vector<std::string> log;
    LRESULT createResult = 0;
    SIZE size;
    bool ended = false;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_CREATE<&Recorder::OnCreate>(),
            ON_WM_SIZE<&Recorder::OnSize>(),
            ON_WM_DESTROY<&Recorder::OnDestroy>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void PostNcDestroy() override { ended = true; }
    int OnCreate(const CREATESTRUCT* create) {
        log.push_back("create " + std::to_string(create->id));
        return static_cast<int>(createResult);
    }
    void OnSize(UINT, int cx, int cy) {
        size = {cx, cy};
        log.push_back("size " + std::to_string(cx) + " " + std::to_string(cy));
    }
    void OnDestroy() { log.push_back("destroy"); }
};

class WindowTest : public testing::Test {
  protected:
    void SetUp() override {
        kvx::InstallBackend();
        ASSERT_TRUE(top.Create(WS_POPUP | WS_CAPTION, {0, 0, 400, 300}, nullptr, 0));
    }
    CWnd top;
    kvx::test::UnexpectedBoxes boxes;
};

TEST_F(WindowTest, LifeOfAChild) {
    Recorder child;
    ASSERT_TRUE(child.Create(WS_CHILD | WS_VISIBLE, kPlace, &top, 59648));
    EXPECT_EQ(child.log, (std::vector<std::string>{"create 59648", "size 200 100"}));
    EXPECT_EQ(top.GetDlgItem(59648), &child);
    EXPECT_EQ(child.GetDlgCtrlID(), 59648u);
    EXPECT_EQ(child.GetParent(), &top);
    EXPECT_TRUE(top.IsChild(&child));
    EXPECT_EQ(CWnd::FromHandlePermanent(child.m_hWnd), &child);
    EXPECT_FALSE(child.IsWindowVisible()) << "the parent is hidden";
    top.ShowWindow(SW_SHOW);
    EXPECT_TRUE(child.IsWindowVisible());

    child.MoveWindow(10, 20, 50, 60);
    EXPECT_EQ(child.size, (SIZE{50, 60})) << "sizes arrive at once";
    const HWND handle = child.m_hWnd;
    child.DestroyWindow();
    EXPECT_EQ(child.log.back(), "destroy");
    EXPECT_TRUE(child.ended);
    EXPECT_EQ(child.m_hWnd, nullptr);
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(top.GetDlgItem(59648), nullptr);
}

TEST_F(WindowTest, SizesArriveWhileHidden) {
    Recorder child;
    ASSERT_TRUE(child.Create(WS_CHILD, kPlace, &top, 1));
    child.MoveWindow(0, 0, 30, 40);
    child.MoveWindow(5, 5, 30, 40);
    EXPECT_EQ(child.log, (std::vector<std::string>{"create 1", "size 200 100", "size 30 40"}));
}

TEST_F(WindowTest, RefusedCreationEndsTheWindow) {
    Recorder child;
    child.createResult = -1;
    EXPECT_FALSE(child.Create(WS_CHILD | WS_VISIBLE, kPlace, &top, 1));
    EXPECT_EQ(child.m_hWnd, nullptr);
    EXPECT_TRUE(child.ended);
    Recorder orphan;
    EXPECT_FALSE(orphan.Create(WS_CHILD, kPlace, nullptr, 1));
    EXPECT_TRUE(orphan.ended);
}

}  // namespace
