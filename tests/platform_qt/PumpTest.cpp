// Serving one window while the rest of the program waits: the STOP dialog during long work.

#include <QMouseEvent>

#include "platform/base/WinApp.h"
#include "platform/dialogs/Dialog.h"
#include "platform/windows/View.h"
#include "platform_qt/QtFixture.h"
#include "platform_qt/SampleDialogs.h"

namespace {

class StopDialog : public CDialog {
  public:
    bool cancelled = false;

  protected:
    void OnCancel() override {
        cancelled = true;
        CDialog::OnCancel();
    }
};

class Worker : public CView {
  public:
    int draws = 0;
    int clicks = 0;
    int sizes = 0;
    int users = 0;
    void OnDraw(CDC*) override { ++draws; }
    void OnDown(UINT, CPoint) { ++clicks; }
    void OnResize(UINT, int, int) { ++sizes; }
    LRESULT OnUser(WPARAM, LPARAM) { return ++users; }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_LBUTTONDOWN<&Worker::OnDown>(),
            ON_WM_SIZE<&Worker::OnResize>(),
            ON_MESSAGE<WM_USER, &Worker::OnUser>(),
        };
        static const MessageMap kMap{&CView::GetMessageMap(), kEntries};
        return kMap;
    }
};

class PumpTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        SetResourceTable(&kvx::test::SampleTable());
        MakeTop(top);
        view = new Worker;
        ASSERT_TRUE(view->Create(WS_CHILD | WS_VISIBLE, {0, 0, 300, 200}, &top, 1));
        Settle();
    }
    void TearDown() override {
        if (stop.IsWindow()) stop.DestroyWindow();
        SetResourceTable(nullptr);
    }
    // Waits in the queue, as a real click does.
    static void PostClick(const CWnd& at, int x, int y) {
        const QPointF point = InWindow(at, x, y);
        const QPointF screen = Widget(at)->window()->mapToGlobal(point);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QCoreApplication::postEvent(
                Native(at),
                new QMouseEvent(type, point, screen, Qt::LeftButton,
                                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                                Qt::NoModifier));
    }
    CWnd top;
    Worker* view = nullptr;
    StopDialog stop;
};

TEST_F(PumpTest, StopIsPressedWhileTheParentIsDisabled) {
    view->EnableWindow(false);
    ASSERT_TRUE(stop.Create(9014, view));
    DispatchWaitingMessages(stop.m_hWnd);
    EXPECT_FALSE(stop.cancelled);
    EXPECT_TRUE(stop.IsWindowVisible());
    PostClick(*stop.GetDlgItem(IDCANCEL), 10, 5);
    EXPECT_FALSE(stop.cancelled) << "seen at the next poll";
    DispatchWaitingMessages(stop.m_hWnd);
    EXPECT_TRUE(stop.cancelled);
    EXPECT_FALSE(stop.IsWindowVisible());
    DispatchWaitingMessages(stop.m_hWnd);
    view->EnableWindow(true);
}

TEST_F(PumpTest, OthersWaitAndLoseNothing) {
    ASSERT_TRUE(stop.Create(9014, &top));
    int fired = 0;
    QTimer timer;
    timer.setSingleShot(true);
    timer.callOnTimeout([&fired] { ++fired; });
    timer.start(0);
    const int draws = view->draws;
    PostClick(*view, 10, 10);
    view->PostMessage(WM_USER);
    view->Invalidate();
    for (int i = 0; i < 5; ++i) DispatchWaitingMessages(stop.m_hWnd);
    EXPECT_EQ(view->clicks, 0);
    EXPECT_EQ(view->users, 0);
    EXPECT_EQ(view->draws, draws);
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(view->SendMessage(WM_USER), 1) << "what is sent directly arrives";
    EXPECT_TRUE(QTest::qWaitFor([&] { return fired == 1 && view->draws == draws + 1; }));
    EXPECT_EQ(view->clicks, 1);
    EXPECT_EQ(view->users, 2);
}

TEST_F(PumpTest, SizesOfOthersComeLater) {
    ASSERT_TRUE(stop.Create(9014, &top));
    const int sizes = view->sizes;
    Widget(*view)->resize(250, 150);
    Settle();
    EXPECT_EQ(view->sizes, sizes + 1);
    QTimer::singleShot(0, Widget(stop), [this] { Widget(*view)->resize(200, 100); });
    DispatchWaitingMessages(stop.m_hWnd);
    DispatchWaitingMessages(stop.m_hWnd);
    EXPECT_EQ(Widget(*view)->width(), 200);
    EXPECT_EQ(view->sizes, sizes + 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->sizes == sizes + 2; }));
}

TEST_F(PumpTest, TheServedWindowIsPainted) {
    class Painted : public StopDialog {
      public:
        int paints = 0;

      protected:
        LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            paints += message == WM_PAINT;
            return StopDialog::DefWindowProc(message, wParam, lParam);
        }
    } dialog;
    ASSERT_TRUE(dialog.Create(9014, &top));
    DispatchWaitingMessages(dialog.m_hWnd);
    EXPECT_EQ(dialog.paints, 1);
    dialog.Invalidate();
    DispatchWaitingMessages(dialog.m_hWnd);
    EXPECT_EQ(dialog.paints, 2);
}

TEST_F(PumpTest, TheServedWindowMayEndItself) {
    ASSERT_TRUE(stop.Create(9014, &top));
    QTimer::singleShot(0, Widget(stop), [this] { stop.DestroyWindow(); });
    DispatchWaitingMessages(stop.m_hWnd);
    EXPECT_FALSE(stop.IsWindow());
    PostClick(*view, 5, 5);
    DispatchWaitingMessages(nullptr);
    EXPECT_EQ(view->clicks, 1) << "without a window everything is dispatched";
}

}  // namespace
