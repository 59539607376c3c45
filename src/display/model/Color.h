#pragma once
// The 36 colours of the chart: defaults, look-ups by code, and their texts in the workspace.

#include <array>
#include <cstddef>

#include "host/WorkspaceStore.h"
#include "platform/base/Types.h"

// In the order in which the colours are stored.
enum class EColor : std::size_t {
    TaskManagement,
    TaskSynchronization,
    EventFlags,
    Semaphores,
    Mailboxes,
    DataQueues,
    MessageBuffers,
    Mutexes,
    MemoryManagement,
    InterruptManagement,
    TimerManagement,
    SystemManagement,
    Unknown,
    Run,
    Rdy,
    Dmt,
    WaiSlp,
    WaiDly,
    WaiFlg,
    WaiSem,
    WaiMbx,
    WaiSmbf,
    WaiMtx,
    WaiSdtq,
    WaiVsdtq,
    WaiMpf,
    WaiMpl,
    Pause,
    Sus,
    SysCallBack,
    MarkerS,
    MarkerE,
    Indicator,
    TipMcuExe,
    TipTaskStat,
    TipSysCall,
};
inline constexpr std::size_t kColorCount = 36;

struct ColorRow {
    const char* key;    // "COLOR_RUN"
    const char* label;  // as the colour dialog names it
    COLORREF standard;
};
// By EColor.
extern const std::array<ColorRow, kColorCount> kColorRows;

class COSColor {
  public:
    COSColor();
    virtual ~COSColor() = default;

    COLORREF& operator[](EColor which) { return colors[static_cast<std::size_t>(which)]; }
    COLORREF operator[](EColor which) const { return colors[static_cast<std::size_t>(which)]; }

    // Class code 1 to 13; any other code is drawn as unknown.
    COLORREF GetSysCallColor(int cls) const;
    // State code 1 to 13; black outside.
    COLORREF GetTaskStateColor(int state) const;
    // Background of the tip of an event of kind 1 to 3; white outside.
    COLORREF GetTipColor(int kind) const;

    void Save(IWorkspaceStore& store, CString prefix) const;
    // A text that is missing or no hexadecimal number leaves the colour as it is.
    void Load(IWorkspaceStore& store, CString prefix);

    std::array<COLORREF, kColorCount> colors;
};
