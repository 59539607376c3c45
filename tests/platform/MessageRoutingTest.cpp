// Messages, commands and their updates through message maps.

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/windows/Wnd.h"
#include "support/FakeBackend.h"

namespace {

constexpr UINT kOwnMessage = RegisterWindowMessage("WM_ROUTING_TEST");

class Base : public CWnd {
  public:
    std::vector<std::string> log;
    LRESULT defaultResult = 0;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_KEYDOWN<&Base::OnKey>(),
            ON_WM_MOUSEWHEEL<&Base::OnWheel>(),
            ON_COMMAND<100, &Base::OnHundred>(),
            ON_COMMAND<101, &Base::OnHundredOne>(),
            ON_UPDATE_COMMAND_UI<101, &Base::OnUpdateHundredOne>(),
            ON_CONTROL<EN_CHANGE, 100, &Base::OnEdit>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_KEYDOWN) log.push_back("default key " + std::to_string(wParam));
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
    void OnKey(UINT key, UINT, UINT) {
        log.push_back("base key " + std::to_string(key));
        defaultResult = Default();
    }
    bool OnWheel(UINT flags, short delta, CPoint at) {
        log.push_back("wheel " + std::to_string(flags) + " " + std::to_string(delta) + " " +
                      std::to_string(at.x) + "," + std::to_string(at.y));
        return true;
    }
    void OnHundred() { log.push_back("base 100"); }
    void OnHundredOne() { log.push_back("base 101"); }
    void OnUpdateHundredOne(CCmdUI& ui) {
        ui.Enable(false);
        ui.SetCheck();
        ui.SetText("hundred one");
    }
    void OnEdit() { log.push_back("edit"); }
};

class Derived : public Base {
  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_COMMAND<100, &Derived::OnHundred>(),
            ON_COMMAND_RANGE<200, 210, &Derived::OnRange>(),
            ON_UPDATE_COMMAND_UI_RANGE<200, 205, &Derived::OnUpdateRange>(),
            ON_MESSAGE<kOwnMessage, &Derived::OnOwn>(),
            ON_WM_LBUTTONDOWN<&Derived::OnDown>(),
            ON_WM_HSCROLL<&Derived::OnScroll>(),
        };
        static const MessageMap kMap{&Base::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnHundred() { log.push_back("derived 100"); }
    void OnRange(UINT id) { log.push_back("range " + std::to_string(id)); }
    void OnUpdateRange(CCmdUI& ui) { ui.SetRadio(ui.m_nID == 203); }
    LRESULT OnOwn(WPARAM wParam, LPARAM lParam) {
        return static_cast<LRESULT>(wParam) * 10 + lParam;
    }
    void OnDown(UINT flags, CPoint at) {
        if (at.x == 666) throw std::runtime_error("bad point");
        log.push_back("down " + std::to_string(flags) + " " + std::to_string(at.x) + "," +
                      std::to_string(at.y));
    }
    void OnScroll(UINT code, int position) {
        log.push_back("scroll " + std::to_string(code) + " " + std::to_string(position));
    }
};

class MessageRoutingTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(window.Create(WS_POPUP, {0, 0, 100, 100}, nullptr, 7)); }
    using Log = std::vector<std::string>;
    kvx::test::FakeBackend backend;
    Derived window;
};

TEST_F(MessageRoutingTest, ParametersArriveUnpacked) {
    window.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MakePointParam(-5, 70000));
    window.SendMessage(WM_HSCROLL, MakeScroll(SB_THUMBTRACK, 65535));
    window.SendMessage(WM_HSCROLL, MakeScroll(SB_THUMBPOSITION, -2));
    EXPECT_EQ(window.SendMessage(WM_MOUSEWHEEL, MakeWheel(MK_SHIFT, -360), MakePointParam(3, -4)),
              1);
    EXPECT_EQ(window.SendMessage(kOwnMessage, 4, 2), 42);
    EXPECT_EQ(window.log,
              (Log{"down 5 -5,70000", "scroll 5 65535", "scroll 4 -2", "wheel 4 -360 3,-4"}));
}

TEST_F(MessageRoutingTest, DefaultProcessingIsThatOfTheSameMessage) {
    EXPECT_EQ(window.SendMessage(WM_KEYDOWN, 40), 0);
    EXPECT_EQ(window.log, (Log{"base key 40", "default key 40"}));
    EXPECT_NE(window.defaultResult, 0) << "the platform does nothing with keys";
}

TEST_F(MessageRoutingTest, FirstMatchWinsThenTheBase) {
    EXPECT_TRUE(window.OnCommand(100));
    EXPECT_TRUE(window.OnCommand(101));
    EXPECT_TRUE(window.OnCommand(200));
    EXPECT_TRUE(window.OnCommand(210));
    EXPECT_FALSE(window.OnCommand(211));
    EXPECT_EQ(window.SendMessage(WM_COMMAND, MakeCommand(101)), 1);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, MakeCommand(100, EN_CHANGE)), 1);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, MakeCommand(101, EN_CHANGE)), 0);
    EXPECT_EQ(window.log,
              (Log{"derived 100", "base 101", "range 200", "range 210", "base 101", "edit"}));
}

TEST_F(MessageRoutingTest, UpdatesFillTheState) {
    CCmdUI updated(101);
    EXPECT_TRUE(window.OnUpdateCommand(101, updated));
    EXPECT_FALSE(updated.IsEnabled());
    EXPECT_EQ(updated.Check(), 1);
    EXPECT_EQ(updated.Text(), "hundred one");
    CCmdUI radio(203);
    EXPECT_TRUE(window.OnUpdateCommand(203, radio));
    EXPECT_EQ(radio.Check(), 1);
    CCmdUI handlerOnly(208);
    EXPECT_TRUE(window.OnUpdateCommand(208, handlerOnly));
    EXPECT_TRUE(handlerOnly.IsEnabled());
    CCmdUI unknown(9);
    EXPECT_FALSE(window.OnUpdateCommand(9, unknown));
    EXPECT_FALSE(unknown.IsEnabled());
    EXPECT_TRUE(window.log.empty()) << "updates run no command";
}

TEST_F(MessageRoutingTest, PostedMessagesComeLater) {
    window.PostMessage(WM_LBUTTONDOWN, 0, MakePointParam(1, 2));
    EXPECT_TRUE(window.log.empty());
    backend.windows.RunPosted();
    EXPECT_EQ(window.log, (Log{"down 0 1,2"}));
    EXPECT_FALSE(PostMessage(nullptr, WM_USER, 0, 0));
}

TEST_F(MessageRoutingTest, NoExceptionLeavesAHandler) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(window.SendMessage(WM_LBUTTONDOWN, 0, MakePointParam(666, 0)), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("bad point"), std::string::npos);
    window.SendMessage(WM_LBUTTONDOWN, 0, MakePointParam(1, 1));
    EXPECT_EQ(window.log, (Log{"down 0 1,1"}));
}

TEST(MessageNumbersTest, RegisteredNamesHaveNumbersOfTheirOwn) {
    EXPECT_EQ(RegisterWindowMessage("WM_WINMGR"), RegisterWindowMessage("WM_WINMGR"));
    EXPECT_NE(RegisterWindowMessage("WM_WINMGR"), RegisterWindowMessage("WM_WINMGS"));
    EXPECT_GT(RegisterWindowMessage(""), WM_USER + 0x8000u);
}

}  // namespace
