// What becomes of a dialog's template, and where the dialog stands.

#include <gtest/gtest.h>

#include "platform/base/Resources.h"
#include "platform/dialogs/Dialog.h"
#include "platform/drawing/Brush.h"
#include "platform/drawing/Font.h"
#include "support/FakeBackend.h"

namespace {

constexpr ControlResource kControls[] = {
    {ControlClass::Static, 7, "x", 10, 10, 30, 14, 0},
    {ControlClass::Button, 8, "y", 10, 30, 30, 14, BS_DEFPUSHBUTTON},
    {ControlClass::Button, 9, "z", 50, 30, 30, 14, 0},
};
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION;

DialogResource Resource(std::uint16_t points) {
    return {1, "title", 100, 50, "MS Sans Serif", points, kStyle, kControls, 3};
}

class DialogTemplate : public testing::Test {
  protected:
    kvx::test::FakeBackend backend;
};

class PlainDialog : public CDialog {
  public:
    PlainDialog() : CDialog(1, nullptr) {}
    using CDialog::Create;
    using CDialog::GetDefID;
};

// The font is of 8 x 16 pixels: a unit is 2 pixels either way.
TEST_F(DialogTemplate, UnitsAreThoseOfItsFont) {
    PlainDialog dialog;
    ASSERT_TRUE(dialog.Create(Resource(8), nullptr));
    EXPECT_EQ(dialog.GetWindowRect().Size(), (SIZE{200, 100}));
    CWnd* const control = dialog.GetDlgItem(7);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(backend.windows.At(control->GetSafeHwnd()).rect, (RECT{20, 20, 80, 48}));
    EXPECT_EQ(dialog.GetDefID(), 8u);
    for (const auto& [points, height] : {std::pair(8, -11), {9, -12}, {10, -13}, {12, -16}}) {
        PlainDialog other;
        ASSERT_TRUE(other.Create(Resource(static_cast<std::uint16_t>(points)), nullptr));
        const LOGFONT font = other.GetDlgItem(7)->GetFont()->Description();
        EXPECT_EQ(font.lfHeight, height) << points << " points at 96 pixels an inch";
        EXPECT_EQ(font.lfFaceName, "MS Sans Serif");
    }
}

// The work area is 1024 x 740.
TEST_F(DialogTemplate, StandsOverItsOwnerInsideTheWorkArea) {
    const auto cornerOver = [this](const RECT& place, bool shown) {
        CWnd owner;
        EXPECT_TRUE(owner.Create(WS_POPUP | (shown ? WS_VISIBLE : 0), place, nullptr, 0));
        PlainDialog dialog;
        EXPECT_TRUE(dialog.Create(Resource(8), &owner));
        const POINT corner = backend.windows.At(dialog.GetSafeHwnd()).rect.TopLeft();
        dialog.DestroyWindow();
        owner.DestroyWindow();
        return corner;
    };
    EXPECT_EQ(cornerOver({100, 100, 500, 400}, true), (POINT{200, 200})) << "in its middle";
    EXPECT_EQ(cornerOver({100, 100, 500, 400}, false), (POINT{412, 320})) << "of the screen";
    EXPECT_EQ(cornerOver({0, 0, 50, 50}, true), (POINT{0, 0}));
    EXPECT_EQ(cornerOver({1000, 700, 1024, 740}, true), (POINT{824, 640}));
}

// One that could not be opened is no modal one afterwards.
TEST_F(DialogTemplate, WhatFailedToOpenEndsNothing) {
    PlainDialog dialog;
    EXPECT_EQ(dialog.DoModal(), -1) << "there is no such template";
    ASSERT_TRUE(dialog.Create(Resource(8), nullptr));
    dialog.EndDialog(5);
    EXPECT_EQ(backend.dialogs.modalsEnded, 0);
    EXPECT_FALSE(dialog.IsWindowVisible());
}

TEST(Brushes, AreWhatTheyWereMadeLast) {
    CBrush brush;
    ASSERT_TRUE(brush.CreateSolidBrush(RGB(1, 2, 3)));
    EXPECT_FALSE(brush.IsNull());
    EXPECT_FALSE(brush.CreateHatchBrush(-1, 0));
    EXPECT_FALSE(brush.CreateHatchBrush(HS_DIAGCROSS + 1, 0));
    EXPECT_TRUE(brush.CreateHatchBrush(HS_DIAGCROSS, RGB(4, 5, 6)));
    EXPECT_FALSE(brush.IsNull());
}

}  // namespace
