#include "display/model/Color.h"

#include <algorithm>
#include <cstdio>

#include "host/TraceCodes.h"
#include "platform/base/Text.h"

namespace {

using kvx::host::CallClass;
using kvx::host::StateCode;

constexpr const char* NameOf(CallClass cls) {
    return kvx::host::CallClassName(kvx::host::Code(cls));
}
constexpr const char* NameOf(StateCode code) {
    return kvx::host::StateName(kvx::host::Code(code));
}

}  // namespace

const std::array<ColorRow, kColorCount> kColorRows = {{
    {"COLOR_TASK_MANAGEMENT", NameOf(CallClass::TaskManagement), 0xEFEFEF},
    {"COLOR_TASK_SYNCHRONIZATION", NameOf(CallClass::TaskSynchronization), 0x70B0EF},
    {"COLOR_EVENT_FLAGS", NameOf(CallClass::EventFlags), 0xEFB070},
    {"COLOR_SEMAPHORES", NameOf(CallClass::Semaphores), 0xEF70EF},
    {"COLOR_MAILBOXES", NameOf(CallClass::Mailboxes), 0x70EF70},
    {"COLOR_DATA_QUEUES", NameOf(CallClass::DataQueues), 0xB0EF70},
    {"COLOR_MESSAGE_BUFFERS", NameOf(CallClass::MessageBuffers), 0xEFA0DF},
    {"COLOR_MUTEXES", NameOf(CallClass::Mutexes), 0x80DFEF},
    {"COLOR_MEMORY_MANAGEMENT", NameOf(CallClass::MemoryManagement), 0x70EFEF},
    {"COLOR_INTERRUPT_MANAGEMENT", NameOf(CallClass::InterruptManagement), 0xEFEF70},
    {"COLOR_TIMER_MANAGEMENT", NameOf(CallClass::TimerManagement), 0xEF7070},
    {"COLOR_SYSTEM_MANAGEMENT", NameOf(CallClass::SystemManagement), 0x7070EF},
    {"COLOR_UNKNOWN", NameOf(CallClass::Unknown), 0xC0C0C0},
    {"COLOR_RUN", "RUN", 0x000000},
    {"COLOR_RDY", NameOf(StateCode::Ready), 0x7070EF},
    {"COLOR_DMT", NameOf(StateCode::Dormant), 0xB0B0B0},
    {"COLOR_WAI_SLP", NameOf(StateCode::Sleeping), 0xEF7070},
    {"COLOR_WAI_DLY", NameOf(StateCode::Delay), 0x70EFEF},
    {"COLOR_WAI_FLG", NameOf(StateCode::EventFlag), 0xEFB070},
    {"COLOR_WAI_SEM", NameOf(StateCode::Semaphore), 0xEF70EF},
    {"COLOR_WAI_MBX", NameOf(StateCode::Mailbox), 0x70EF70},
    {"COLOR_WAI_SMBF", NameOf(StateCode::MessageBuffer), 0xA070EF},
    {"COLOR_WAI_MTX", NameOf(StateCode::Mutex), 0x10EFCF},
    {"COLOR_WAI_SDTQ", NameOf(StateCode::DataQueue), 0xEFEF30},
    {"COLOR_WAI_VSDTQ", NameOf(StateCode::VariableDataQueue), 0xB030B0},
    {"COLOR_WAI_MPF", NameOf(StateCode::FixedPool), 0x307070},
    {"COLOR_WAI_MPL", NameOf(StateCode::VariablePool), 0x00CFB0},
    {"COLOR_PAUSE", "PAUSE", 0x70B0EF},
    {"COLOR_SUS", "SUS", 0x404040},
    {"COLOR_SYSCALL_BACK", "Back Color (System Call Process)", 0x80FF80},
    {"COLOR_MARKER_S", "Marker S", 0x0000FF},
    {"COLOR_MARKER_E", "Marker E", 0x0000FF},
    {"COLOR_INDICATOR", "Indicator", 0xFF0000},
    {"COLOR_TIP_MCUEXE", "Tip Window (MCU Exe)", 0xC080FF},
    {"COLOR_TIP_TASKSTAT", "Tip Window (Task Stat)", 0xC0FF80},
    {"COLOR_TIP_SYSCALL", "Tip Window (System Call)", 0x80FFFF},
}};

COSColor::COSColor() {
    std::ranges::transform(kColorRows, colors.begin(), &ColorRow::standard);
}

COLORREF COSColor::GetSysCallColor(int cls) const {
    if (cls < 1 || cls > kvx::host::kCallClasses) return (*this)[EColor::Unknown];
    return colors[static_cast<std::size_t>(cls) - 1];
}

COLORREF COSColor::GetTaskStateColor(int state) const {
    // The codes do not follow the stored order.
    static constexpr std::array<EColor, kvx::host::kStateCodes> kByState = {
        EColor::Rdy,     EColor::Dmt,    EColor::WaiSlp,  EColor::WaiDly,   EColor::WaiFlg,
        EColor::WaiSem,  EColor::WaiMbx, EColor::WaiSdtq, EColor::WaiVsdtq, EColor::WaiMpf,
        EColor::WaiSmbf, EColor::WaiMtx, EColor::WaiMpl};
    if (state < 1 || state > kvx::host::kStateCodes) return RGB(0, 0, 0);
    return (*this)[kByState[static_cast<std::size_t>(state) - 1]];
}

COLORREF COSColor::GetTipColor(int kind) const {
    switch (kind) {
        case 1:
            return (*this)[EColor::TipMcuExe];
        case 2:
            return (*this)[EColor::TipTaskStat];
        case 3:
            return (*this)[EColor::TipSysCall];
        default:
            return RGB(255, 255, 255);
    }
}

void COSColor::Save(IWorkspaceStore& store, CString prefix) const {
    for (std::size_t i = 0; i < kColorCount; ++i)
        store.WriteText(prefix + kColorRows[i].key, kvx::FormatText("%x", colors[i]));
}

void COSColor::Load(IWorkspaceStore& store, CString prefix) {
    for (std::size_t i = 0; i < kColorCount; ++i) {
        const CString text = store.ReadText(prefix + kColorRows[i].key, "");
        unsigned value = 0;
        if (std::sscanf(text.c_str(), "%x", &value) == 1) colors[i] = value;
    }
}
