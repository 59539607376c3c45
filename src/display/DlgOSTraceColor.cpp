#include "display/DlgOSTraceColor.h"

#include <algorithm>

#include "host/CommandIds.h"
#include "platform/dialogs/ColorDialog.h"
#include "platform/drawing/ClientDC.h"

namespace {

constexpr UINT kResetStates = 4114;
constexpr UINT kResetCalls = 4113;
constexpr UINT kResetOthers = 4119;
constexpr UINT kVariablePoolLabel = 9007;

// To the colour that it has at first.
void Reset(COSColor& colors, EColor color) {
    colors[color] = kColorRows[static_cast<std::size_t>(color)].standard;
}

struct ColorControls {
    EColor color;
    UINT button;
    UINT swatch;
    UINT reset;  // the button that restores the row's group
};

// In the order of the dialog.
constexpr ColorControls kRows[] = {
    {EColor::Run, 4061, 4082, kResetStates},
    {EColor::Rdy, 4062, 4083, kResetStates},
    {EColor::Dmt, 4072, 4084, kResetStates},
    {EColor::WaiSlp, 4063, 4085, kResetStates},
    {EColor::WaiDly, 4064, 4086, kResetStates},
    {EColor::WaiFlg, 4065, 4087, kResetStates},
    {EColor::WaiSem, 4066, 4088, kResetStates},
    {EColor::WaiMbx, 4067, 4089, kResetStates},
    {EColor::WaiSmbf, 4185, 4187, kResetStates},
    {EColor::WaiMtx, 4193, 4195, kResetStates},
    {EColor::WaiSdtq, 4178, 4109, kResetStates},
    {EColor::WaiVsdtq, 4128, 4131, kResetStates},
    {EColor::WaiMpf, 4155, 4157, kResetStates},
    {EColor::WaiMpl, 4156, 4158, kResetStates},
    {EColor::Pause, 4181, 4182, kResetStates},
    {EColor::Sus, 4069, 4090, kResetStates},
    {EColor::TaskManagement, 4091, 4100, kResetCalls},
    {EColor::TaskSynchronization, 4092, 4101, kResetCalls},
    {EColor::EventFlags, 4093, 4102, kResetCalls},
    {EColor::Semaphores, 4094, 4103, kResetCalls},
    {EColor::Mailboxes, 4095, 4104, kResetCalls},
    {EColor::DataQueues, 4164, 4166, kResetCalls},
    {EColor::MessageBuffers, 4197, 4198, kResetCalls},
    {EColor::Mutexes, 4199, 4200, kResetCalls},
    {EColor::MemoryManagement, 4096, 4105, kResetCalls},
    {EColor::InterruptManagement, 4097, 4106, kResetCalls},
    {EColor::TimerManagement, 4098, 4107, kResetCalls},
    {EColor::SystemManagement, 4099, 4108, kResetCalls},
    {EColor::Unknown, 1143, 4110, kResetCalls},
    {EColor::SysCallBack, 4074, 4117, kResetOthers},
    {EColor::MarkerS, 4070, 4111, kResetOthers},
    {EColor::MarkerE, 4071, 4112, kResetOthers},
    {EColor::Indicator, 4073, 4115, kResetOthers},
    {EColor::TipMcuExe, 4075, 4120, kResetOthers},
    {EColor::TipTaskStat, 4076, 4123, kResetOthers},
    {EColor::TipSysCall, 4077, 4126, kResetOthers},
};

}  // namespace

CDlgOSTraceColor::CDlgOSTraceColor(const COSColor& colors, bool offersVariablePools, CWnd* parent)
    : CDialog(kvx::ids::kDialogColor, parent),
      colors_(colors),
      offersVariablePools_(offersVariablePools) {}

const MessageMap& CDlgOSTraceColor::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&CDlgOSTraceColor::OnPaint>(),
        ON_WM_LBUTTONDOWN<&CDlgOSTraceColor::OnLButtonDown>(),
        ON_COMMAND<kvx::ids::kResetAllColors, &CDlgOSTraceColor::ResetAll>(),
    };
    static const MessageMap kMap{&CDialog::GetMessageMap(), kEntries};
    return kMap;
}

bool CDlgOSTraceColor::OnInitDialog() {
    CDialog::OnInitDialog();
    if (offersVariablePools_) return true;
    const auto row = std::ranges::find(kRows, EColor::WaiMpl, &ColorControls::color);
    for (const UINT id : {kVariablePoolLabel, row->button, row->swatch}) {
        if (CWnd* item = GetDlgItem(id)) item->ShowWindow(SW_HIDE);
    }
    return true;
}

// The buttons of the table, then everything else.
bool CDlgOSTraceColor::OnCmdMsg(UINT id, UINT code, CCmdUI* ui) {
    if (ui || code != BN_CLICKED) return CDialog::OnCmdMsg(id, code, ui);
    if (id == kResetStates || id == kResetCalls || id == kResetOthers) {
        ResetGroup(id);
        return true;
    }
    const auto row = std::ranges::find(kRows, id, &ColorControls::button);
    if (row == std::end(kRows)) return CDialog::OnCmdMsg(id, code, ui);
    ChooseColor(row->color);
    return true;
}

void CDlgOSTraceColor::ChooseColor(EColor which) {
    CColorDialog picker(colors_[which], 0, this);
    if (picker.DoModal() != IDOK) return;
    colors_[which] = picker.GetColor();
    PaintSwatches();
}

void CDlgOSTraceColor::ResetGroup(UINT reset) {
    for (const ColorControls& row : kRows) {
        if (row.reset != reset) continue;
        Reset(colors_, row.color);
    }
    PaintSwatches();
}

void CDlgOSTraceColor::ResetAll() {
    for (const ColorControls& row : kRows) Reset(colors_, row.color);
    PaintSwatches();
}

// Label and swatch, which stand beside a button, do as it does.
void CDlgOSTraceColor::OnLButtonDown(UINT, CPoint point) {
    for (const ColorControls& row : kRows) {
        const CWnd* const button = GetDlgItem(row.button);
        const CWnd* const swatch = GetDlgItem(row.swatch);
        if (!button || !swatch || !swatch->IsWindowVisible()) continue;
        CRect area = swatch->GetWindowRect();
        area.left = button->GetWindowRect().left;
        ScreenToClient(&area);
        if (area.PtInRect(point)) return ChooseColor(row.color);
    }
    Default();
}

void CDlgOSTraceColor::OnPaint() {
    Default();
    PaintSwatches();
}

void CDlgOSTraceColor::PaintSwatches() {
    for (const ColorControls& row : kRows) {
        CWnd* const swatch = GetDlgItem(row.swatch);
        if (!swatch) continue;
        CRect rect = swatch->GetClientRect();
        rect.DeflateRect(1, 1);
        CClientDC(swatch).FillSolidRect(rect, colors_[row.color]);
    }
}
