#include "trace/TaskStates.h"

#include <array>
#include <cstddef>

namespace kvx {

namespace {

template <std::size_t Count>
const char* Label(const std::array<const char*, Count>& labels, int code) {
    const bool known = code >= 1 && static_cast<std::size_t>(code) <= Count;
    return known ? labels[static_cast<std::size_t>(code) - 1] : "";
}

}  // namespace

const char* TaskStateLabel(int state) {
    static constexpr std::array<const char*, kTaskStates> kLabels = {
        "RDY",       "DMT",       "WAI (SLP)", "WAI (DLY)",         "WAI (FLG)",
        "WAI (SEM)", "WAI (MBX)", "WAI (DTQ)", "WAI (VSDTQ,VRDTQ)", "WAI (MPF)",
        "WAI (MBF)", "WAI (MTX)", "WAI (MPL)"};
    return Label(kLabels, state);
}

const char* SysCallClassLabel(int cls) {
    static constexpr std::array<const char*, kSysCallClasses> kLabels = {"Task management",
                                                                         "Task synchronization",
                                                                         "Event flags",
                                                                         "Semaphores",
                                                                         "Mailboxes",
                                                                         "Data Queues",
                                                                         "Message Buffers",
                                                                         "Mutexes",
                                                                         "Memory management",
                                                                         "Interrupt management",
                                                                         "Timer management",
                                                                         "System management",
                                                                         "Unknown"};
    const char* const label = Label(kLabels, cls);
    return *label ? label : kLabels.back();
}

const char* TipKindLabel(int kind) {
    static constexpr std::array<const char*, 3> kLabels = {"MCU Exe", "Task Stat", "System Call"};
    return Label(kLabels, kind);
}

}  // namespace kvx
