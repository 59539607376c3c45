// The bases of views and frames: when a drag begins, how menu texts are found, what a frame does
// with its view.

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "framework/CoreView.h"
#include "framework/QFrameWnd.h"
#include "platform/windows/Menu.h"
#include "support/FakeBackend.h"

namespace {

class DraggedView : public CCoreView {
  public:
    using CCoreView::SearchMenuString;
    int begun = 0;
    void StartDragDrop(CPoint) override { ++begun; }
};

TEST(CoreView, ADragBeginsOutsideOfTheSquareAroundItsStart) {
    kvx::test::FakeBackend backend;
    const auto begins = [](CPoint to) {
        DraggedView view;
        view.Set_DragStart({50, 50});
        view.Start_DragDrop(to);
        EXPECT_EQ(view.begun, 0) << "at once";
        std::this_thread::sleep_for(std::chrono::milliseconds(210));
        view.Start_DragDrop(to);
        return view.begun == 1;
    };
    for (const CPoint near : {CPoint{52, 50}, CPoint{50, 52}, CPoint{47, 47}})
        EXPECT_FALSE(begins(near)) << near.x << "," << near.y;
    for (const CPoint far : {CPoint{53, 50}, CPoint{50, 53}, CPoint{46, 50}, CPoint{50, 46}})
        EXPECT_TRUE(begins(far)) << far.x << "," << far.y;
}

TEST(CoreView, TextsAreFoundInPopupsHoweverShort) {
    kvx::test::FakeBackend backend;
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    menu.AppendMenu(MF_STRING, 1, "First");
    CMenu* const popup = menu.AppendPopup("More");
    popup->AppendMenu(MF_STRING, 7, "X");
    menu.AppendMenu(MF_STRING, 2, "Last");
    DraggedView view;
    CString text;
    EXPECT_EQ(view.SearchMenuString(&menu, 7, text), 1);
    EXPECT_EQ(text, "X");
    EXPECT_EQ(view.SearchMenuString(&menu, 9, text), 0);
}

class PlainView : public CQView {
  public:
    static const CRuntimeClass kClass;
    void OnDraw(CDC*) override {}
};
const CRuntimeClass PlainView::kClass = MakeDynamicClass<PlainView>("PlainView", &CQView::kClass);

class PlainFrame : public CQFrameWnd {
  public:
    void GetWindowTitle(CString& title) const override { title = "Plain"; }
    void GetDataName(CString&) const override {}
    int UpdateView(LPARAM) override { return 0; }
    int RefreshView() override { return 0; }
    int SaveSettings(IWorkspaceStore&, const CString&) override { return 0; }
    int LoadSettings(IWorkspaceStore&, const CString&) override { return 0; }
    void SetViewFont(CFont*) override {}
    void SetViewColors(const CString&, COLORREF, COLORREF) override {}
    using CQFrameWnd::SetView;
    using CQFrameWnd::View;
};

TEST(QFrameWnd, ItsViewFillsItAndIsShown) {
    kvx::test::FakeBackend backend;
    CWnd owner;
    ASSERT_TRUE(owner.Create(WS_POPUP | WS_VISIBLE, {0, 0, 200, 200}, nullptr, 0));
    PlainFrame frame;
    ASSERT_TRUE(frame.Create(WS_CHILD | WS_VISIBLE, {0, 0, 100, 80}, &owner, 1));
    CQView* const view = frame.CreateView(&PlainView::kClass, 2);
    ASSERT_NE(view, nullptr);
    frame.SetView(view);
    view->ShowWindow(SW_HIDE);
    frame.MoveWindow(0, 0, 120, 90);
    EXPECT_TRUE(view->IsWindowVisible());
    EXPECT_EQ(view->GetWindowRect().Width(), 120);
    EXPECT_EQ(view->GetWindowRect().Height(), 90);
    owner.DestroyWindow();
    EXPECT_EQ(frame.View(), nullptr);
}

}  // namespace
