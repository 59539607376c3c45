// The dialog of the 36 colours works on a copy.

#include "display/DlgOSTraceColor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "platform/windows/WindowState.h"
#include "support/ResourceFixture.h"

namespace kvx::test {
namespace {

struct Row {
    EColor color;
    UINT button;
    UINT swatch;
};
constexpr Row kStates[] = {
    {EColor::Run, 4061, 4082},    {EColor::Rdy, 4062, 4083},     {EColor::Dmt, 4072, 4084},
    {EColor::WaiSlp, 4063, 4085}, {EColor::WaiDly, 4064, 4086},  {EColor::WaiFlg, 4065, 4087},
    {EColor::WaiSem, 4066, 4088}, {EColor::WaiMbx, 4067, 4089},  {EColor::WaiSmbf, 4185, 4187},
    {EColor::WaiMtx, 4193, 4195}, {EColor::WaiSdtq, 4178, 4109}, {EColor::WaiVsdtq, 4128, 4131},
    {EColor::WaiMpf, 4155, 4157}, {EColor::WaiMpl, 4156, 4158},  {EColor::Pause, 4181, 4182},
    {EColor::Sus, 4069, 4090}};
constexpr Row kCalls[] = {
    {EColor::TaskManagement, 4091, 4100},   {EColor::TaskSynchronization, 4092, 4101},
    {EColor::EventFlags, 4093, 4102},       {EColor::Semaphores, 4094, 4103},
    {EColor::Mailboxes, 4095, 4104},        {EColor::DataQueues, 4164, 4166},
    {EColor::MessageBuffers, 4197, 4198},   {EColor::Mutexes, 4199, 4200},
    {EColor::MemoryManagement, 4096, 4105}, {EColor::InterruptManagement, 4097, 4106},
    {EColor::TimerManagement, 4098, 4107},  {EColor::SystemManagement, 4099, 4108},
    {EColor::Unknown, 1143, 4110}};
constexpr Row kOthers[] = {{EColor::SysCallBack, 4074, 4117}, {EColor::MarkerS, 4070, 4111},
                           {EColor::MarkerE, 4071, 4112},     {EColor::Indicator, 4073, 4115},
                           {EColor::TipMcuExe, 4075, 4120},   {EColor::TipTaskStat, 4076, 4123},
                           {EColor::TipSysCall, 4077, 4126}};
constexpr UINT kResetStates = 4114, kResetCalls = 4113, kResetOthers = 4119, kResetAll = 4129;

class ColorDialog : public ResourceFixture {
  protected:
    // Every colour another one, none of them standard.
    static COSColor Odd() {
        COSColor colors;
        for (std::size_t i = 0; i < kColorRows.size(); ++i) {
            colors[static_cast<EColor>(i)] = RGB(1u, 2u, static_cast<unsigned>(i) + 3u);
        }
        return colors;
    }
    static COLORREF Standard(EColor color) {
        return kColorRows[static_cast<std::size_t>(color)].standard;
    }
    static COLORREF Pixel(const CWnd& window, int x, int y) {
        return WindowState::Of(&window)->CurrentSurface()->At(x, y);
    }
    static COLORREF Shown(const CDialog& dialog, UINT swatch) {
        const CWnd& item = *dialog.GetDlgItem(swatch);
        return Pixel(item, item.GetClientRect().Width() / 2, item.GetClientRect().Height() / 2);
    }
};

TEST_F(ColorDialog, EachButtonChoosesItsColour) {
    CDlgOSTraceColor dialog(Odd(), true);
    COSColor wanted = Odd();
    boxes.ExpectDialog([&](CDialog& shown) {
        unsigned n = 0;
        for (const auto& rows : {std::span<const Row>(kStates), std::span<const Row>(kCalls),
                                 std::span<const Row>(kOthers)}) {
            for (const Row& row : rows) {
                wanted[row.color] = RGB(200u, ++n, 7u);
                boxes.ExpectColour(wanted[row.color]);
                Click(shown, row.button);
                EXPECT_EQ(Shown(shown, row.swatch), wanted[row.color]) << row.button;
            }
        }
        boxes.ExpectColour(std::nullopt);
        Click(shown, kStates[0].button);
        EXPECT_EQ(Shown(shown, kStates[0].swatch), wanted[kStates[0].color]) << "cancelled";
        Click(shown, IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    for (std::size_t i = 0; i < kColorRows.size(); ++i) {
        const auto color = static_cast<EColor>(i);
        EXPECT_EQ(dialog.Colors()[color], wanted[color]) << kColorRows[i].key;
    }
}

// A press on the label or the swatch is a press on the button.
TEST_F(ColorDialog, TheWholeRowChoosesItsColour) {
    CDlgOSTraceColor dialog(Odd(), false);
    COSColor wanted = Odd();
    boxes.ExpectDialog([&](CDialog& shown) {
        const auto press = [&](UINT id, int right) {
            CRect rect = shown.GetDlgItem(id)->GetWindowRect();
            shown.ScreenToClient(&rect);
            shown.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON,
                              MakePointParam(rect.left + right, rect.top + 3));
        };
        for (const Row& row : {kStates[2], kCalls[7], kOthers[0]}) {
            wanted[row.color] = RGB(9u, 8u, row.swatch % 256);
            boxes.ExpectColour(wanted[row.color]);
            press(row.swatch, 4);
            EXPECT_EQ(Shown(shown, row.swatch), wanted[row.color]) << row.swatch;
            wanted[row.color] = RGB(7u, 6u, row.swatch % 256);
            boxes.ExpectColour(wanted[row.color]);
            press(row.button, 40);
            EXPECT_EQ(Shown(shown, row.swatch), wanted[row.color]) << row.button;
        }
        press(4158, 4);                // a row that is not offered
        press(kStates[2].button, -4);  // beside the row
        Click(shown, IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    for (std::size_t i = 0; i < kColorRows.size(); ++i) {
        const auto color = static_cast<EColor>(i);
        EXPECT_EQ(dialog.Colors()[color], wanted[color]) << kColorRows[i].key;
    }
}

TEST_F(ColorDialog, ResetRestoresItsGroupAlone) {
    const auto afterReset = [&](UINT reset) {
        CDlgOSTraceColor dialog(Odd(), true);
        boxes.ExpectDialog([&](CDialog& shown) {
            Click(shown, reset);
            EXPECT_TRUE(shown.IsWindow());
            Click(shown, IDOK);
        });
        EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
        return dialog.Colors();
    };
    struct Group {
        UINT reset;
        std::span<const Row> rows;
    };
    for (const Group& group :
         {Group{kResetStates, kStates}, Group{kResetCalls, kCalls}, Group{kResetOthers, kOthers}}) {
        const COSColor colors = afterReset(group.reset);
        const COSColor before = Odd();
        for (std::size_t i = 0; i < kColorRows.size(); ++i) {
            const auto color = static_cast<EColor>(i);
            const bool inGroup = std::ranges::count(group.rows, color, &Row::color) > 0;
            EXPECT_EQ(colors[color], inGroup ? Standard(color) : before[color]) << group.reset;
        }
    }
    const COSColor all = afterReset(kResetAll);
    for (std::size_t i = 0; i < kColorRows.size(); ++i) {
        EXPECT_EQ(all[static_cast<EColor>(i)], kColorRows[i].standard) << kColorRows[i].key;
    }
}

TEST_F(ColorDialog, VariablePoolsAreOfferedWhereTheKernelHasThem) {
    for (const bool offered : {true, false}) {
        CDlgOSTraceColor dialog(Odd(), offered);
        boxes.ExpectDialog([&](CDialog& shown) {
            for (const UINT id : {9007u, 4156u, 4158u}) EXPECT_EQ(IsShown(shown, id), offered);
            EXPECT_TRUE(IsShown(shown, 4155));
            Click(shown, IDOK);
        });
        EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
        EXPECT_EQ(dialog.Colors()[EColor::WaiMpl], Odd()[EColor::WaiMpl]);
    }
}

TEST_F(ColorDialog, SwatchesShowTheColoursInsideTheirFrames) {
    CDlgOSTraceColor dialog(Odd(), true);
    boxes.ExpectDialog([&](CDialog& shown) {
        shown.UpdateWindow();
        for (const Row& row : kStates) {
            const CWnd& swatch = *shown.GetDlgItem(row.swatch);
            const CRect rect = swatch.GetClientRect();
            EXPECT_EQ(Pixel(swatch, 1, 1), Odd()[row.color]);
            EXPECT_EQ(Pixel(swatch, rect.right - 2, rect.bottom - 2), Odd()[row.color]);
            EXPECT_NE(Pixel(swatch, 0, 0), Odd()[row.color]) << "the frame";
            EXPECT_NE(Pixel(swatch, rect.right - 1, rect.bottom - 1), Odd()[row.color]);
        }
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
}

}  // namespace
}  // namespace kvx::test
