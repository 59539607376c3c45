// Real events of the toolkit as messages: mouse, wheel, keys, focus, capture, disabled windows.

#include "platform/base/Keys.h"
#include "platform/controls/Static.h"
#include "platform/qt/MessageEvent.h"
#include "platform_qt/QtFixture.h"

namespace {

using kvx::test::Log;

class Listener : public CWnd {
  public:
    Log log;
    bool takesKeys = true;
    bool logMoves = true;
    LRESULT OnNumbers(WPARAM wParam, LPARAM lParam) {
        log.push_back("user " + std::to_string(wParam) + " " + std::to_string(lParam));
        return static_cast<LRESULT>(wParam) + lParam;
    }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_LBUTTONDOWN<&Listener::OnDown>(),
            ON_WM_LBUTTONUP<&Listener::OnUp>(),
            ON_WM_LBUTTONDBLCLK<&Listener::OnTwice>(),
            ON_WM_RBUTTONDOWN<&Listener::OnRight>(),
            ON_WM_MOUSEMOVE<&Listener::OnMove>(),
            ON_WM_MOUSEWHEEL<&Listener::OnWheel>(),
            ON_WM_CHAR<&Listener::OnCharacter>(),
            ON_WM_KEYDOWN<&Listener::OnKey>(),
            ON_WM_CAPTURECHANGED<&Listener::OnCaptureLost>(),
            ON_WM_CANCELMODE<&Listener::OnCancel>(),
            ON_WM_SETCURSOR<&Listener::OnCursor>(),
            ON_MESSAGE<WM_SETFOCUS, &Listener::OnFocus>(),
            ON_MESSAGE<WM_KILLFOCUS, &Listener::OnFocusLost>(),
            ON_MESSAGE<WM_USER, &Listener::OnNumbers>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void Add(const char* what, UINT flags, CPoint at) {
        log.push_back(std::string(what) + " " + std::to_string(flags) + " " + std::to_string(at.x) +
                      "," + std::to_string(at.y));
    }
    void OnDown(UINT flags, CPoint at) { Add("down", flags, at); }
    void OnUp(UINT flags, CPoint at) { Add("up", flags, at); }
    void OnTwice(UINT flags, CPoint at) { Add("twice", flags, at); }
    void OnRight(UINT flags, CPoint at) { Add("right", flags, at); }
    void OnMove(UINT flags, CPoint at) {
        if (logMoves) Add("move", flags, at);
    }
    bool OnWheel(UINT flags, short delta, CPoint) {
        log.push_back("wheel " + std::to_string(flags) + " " + std::to_string(delta));
        return true;
    }
    void OnCharacter(UINT character, UINT, UINT) {
        log.push_back("char " + std::to_string(character));
    }
    void OnKey(UINT key, UINT, UINT) {
        log.push_back("key " + std::to_string(key) +
                      (GetKeyState(key) < 0 ? " held" : " not held"));
    }
    void OnCaptureLost() { log.push_back("capture lost"); }
    void OnCancel() {
        log.push_back("cancel");
        CWnd::OnCancelMode();
    }
    bool OnCursor(CWnd*, UINT, UINT) {
        if (logMoves) log.push_back("cursor");
        return false;
    }
    LRESULT OnFocus(WPARAM, LPARAM) { return log.push_back("focus"), 0; }
    LRESULT OnFocusLost(WPARAM, LPARAM) { return log.push_back("focus lost"), 0; }
};

class InputTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        MakeTop(top);
        ASSERT_TRUE(child.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, {50, 40, 252, 142}, &top, 1));
        Settle();
        child.log.clear();
    }
    CWnd top;
    Listener child;
};

TEST_F(InputTest, ButtonsAndMoves) {
    child.logMoves = false;
    Press(child, 10, 20, Qt::ShiftModifier);
    Release(child, 11, 21);
    Press(child, 0, 0, Qt::ControlModifier, Qt::RightButton);
    Release(child, 0, 0, Qt::RightButton);
    EXPECT_EQ(child.log, (Log{"down 5 10,20", "up 0 11,21", "right 10 0,0"}));
    child.log.clear();
    ClickTwice(child, 3, 4);
    EXPECT_EQ(child.log, (Log{"down 1 3,4", "up 0 3,4", "twice 1 3,4", "up 0 3,4"}));
    child.logMoves = true;
    child.log.clear();
    MoveMouse(child, 30, 31);
    EXPECT_EQ(child.log, (Log{"cursor", "move 0 30,31"}));
}

TEST_F(InputTest, WheelsSendWholeNotches) {
    const auto turn = [this](QPoint delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPointF at(20, 20);
        QWheelEvent event(at, Widget(child)->mapToGlobal(at), {}, delta, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Widget(child), &event);
    };
    turn({0, -360}, Qt::ShiftModifier);
    turn({0, 50});
    turn({0, 50});
    turn({0, 50});
    EXPECT_EQ(child.log, (Log{"wheel 4 -360", "wheel 0 120"}));
}

TEST_F(InputTest, KeysAndCharacters) {
    child.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &child);
    Type(top, Qt::Key_PageDown);
    Type(top, 'a');
    Type(top, Qt::Key_Escape);
    EXPECT_EQ(child.log,
              (Log{"focus", "key 34 held", "key 65 held", "char 97", "key 27 held", "char 27"}));
    child.log.clear();
    Type(top, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(child.log, (Log{"key 16 held", "key 37 held"}));
    EXPECT_EQ(GetKeyState(VK_NEXT), 0) << "released";
}

TEST_F(InputTest, FocusFollowsAndIsAnswered) {
    Listener second;
    ASSERT_TRUE(second.Create(WS_CHILD | WS_VISIBLE, {300, 0, 350, 50}, &top, 2));
    child.SetFocus();
    EXPECT_EQ(second.SetFocus(), &child);
    EXPECT_EQ(child.log, (Log{"focus", "focus lost"}));
    EXPECT_EQ(second.log, (Log{"focus"}));
    EXPECT_EQ(CWnd::GetFocus(), &second);
}

TEST_F(InputTest, CaptureBringsTheMouseFromOutside) {
    child.SetCapture();
    EXPECT_EQ(CWnd::GetCapture(), &child);
    child.log.clear();
    MoveMouse(top, 10, 10);
    EXPECT_EQ(child.log, (Log{"move 0 -41,-31"})) << "no WM_SETCURSOR while captured";
    ReleaseCapture();
    child.log.clear();
    MoveMouse(top, 12, 12);
    EXPECT_TRUE(child.log.empty());
    child.SetCapture();
    child.log.clear();
    child.ShowWindow(SW_HIDE);
    EXPECT_EQ(child.log, (Log{"capture lost"})) << "a hidden window loses the mouse";
}

TEST_F(InputTest, DisabledWindowsGetNoInput) {
    child.logMoves = false;
    child.SetFocus();
    child.SetCapture();
    child.log.clear();
    child.EnableWindow(false);
    EXPECT_EQ(child.log.front(), "cancel");
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_FALSE(child.IsWindowEnabled());
    child.log.clear();
    Click(child, 5, 5);
    Type(top, Qt::Key_Down);
    EXPECT_TRUE(child.log.empty());
    EXPECT_NE(CWnd::GetFocus(), &child);
    child.EnableWindow(true);
    EXPECT_EQ(CWnd::GetFocus(), &child) << "the focus comes back";
    child.log.clear();
    Click(child, 5, 5);
    EXPECT_EQ(child.log, (Log{"down 1 5,5", "up 0 5,5"}));
}

TEST_F(InputTest, StaticsLetTheMouseThroughUnlessTheyNotify) {
    CStatic label, bar;
    ASSERT_TRUE(label.Create("x", WS_CHILD | WS_VISIBLE, {0, 0, 50, 50}, &child, 5));
    child.logMoves = false;
    Click(label, 9, 9);
    EXPECT_EQ(child.log, (Log{"down 1 9,9", "up 0 9,9"}));
    child.log.clear();
    ASSERT_TRUE(bar.Create("", WS_CHILD | WS_VISIBLE | SS_NOTIFY, {60, 0, 90, 50}, &child, 6));
    Click(bar, 9, 9);
    EXPECT_TRUE(child.log.empty());
}

TEST_F(InputTest, HiddenWindowsRememberThatTheyHaveTheMouse) {
    CWnd hidden;
    ASSERT_TRUE(hidden.Create(WS_POPUP, {0, 0, 9, 9}, nullptr, 0));
    hidden.SetCapture();
    EXPECT_EQ(CWnd::GetCapture(), &hidden);
    hidden.DestroyWindow();
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(InputTest, LeavingWhileCapturedIsSeen) {
    child.SetCapture();
    child.log.clear();
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Widget(child), &leave);
    ASSERT_EQ(child.log.size(), 1u);
    EXPECT_TRUE(child.log[0].starts_with("move 0 -")) << child.log[0];
    ReleaseCapture();
}

// A view deletes itself while the toolkit is still inside its mouse event.
class Ender : public Listener {
  public:
    explicit Ender(bool* gone) : gone_(gone) {}

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {ON_WM_LBUTTONDOWN<&Ender::OnEnd>()};
        static const MessageMap kMap{&Listener::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnEnd(UINT, CPoint) { DestroyWindow(); }
    void PostNcDestroy() override {
        *gone_ = true;
        delete this;
    }

  private:
    bool* gone_;
};

TEST_F(InputTest, WindowsMayEndInTheirOwnHandlers) {
    bool gone = false;
    auto* const ender = new Ender(&gone);
    ASSERT_TRUE(ender->Create(WS_CHILD | WS_VISIBLE, {300, 0, 350, 50}, &top, 9));
    const HWND handle = ender->m_hWnd;
    Click(*ender, 5, 5);
    EXPECT_TRUE(gone);
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(top.GetDlgItem(9), nullptr);
    Settle();
}

TEST_F(InputTest, PostedMessagesArriveFromTheLoop) {
    child.PostMessage(WM_USER, 3, 4);
    EXPECT_TRUE(child.log.empty());
    Settle();
    EXPECT_EQ(child.log, (Log{"user 3 4"}));
    EXPECT_EQ(child.SendMessage(WM_USER, 1, 2), 3);
}

}  // namespace
