#pragma once
// The packets of a SystemView recording: an identifier, values, and the ticks since the packet
// before.

#include <cstdint>
#include <string_view>

#include "workbench/formats/systemview/PacketCursor.h"

namespace kvx::formats::systemview {

enum Id : std::uint32_t {
    kNop = 0,
    kOverflow = 1,
    kIsrEnter = 2,
    kIsrExit = 3,
    kTaskStartExec = 4,
    kTaskStopExec = 5,
    kTaskStartReady = 6,
    kTaskStopReady = 7,
    kTaskCreate = 8,
    kTaskInfo = 9,
    kTraceStart = 10,
    kSystemDescription = 14,
    kMarkStart = 15,
    kMarkStop = 16,
    kIdle = 17,
    kIsrToScheduler = 18,
    kTimerEnter = 19,
    kTimerExit = 20,
    kStackInfo = 21,
    kModuleDescription = 22,
    kFirstWithLength = 24,
    kInit = 24,
    kNameResource = 25,
    kPrint = 26,
    kEndCall = 28,
    kTaskTerminate = 29,
    kExtended = 31,
    kFirstCall = 32,
    kFirstOfModules = 512
};

// Between packets, and in front of the first.
inline constexpr std::string_view kSync{"\0\0\0\0\0\0\0\0\0\0", 10};

struct Packet {
    std::uint32_t id = 0;
    std::string_view values;
    std::uint32_t delta = 0;
    std::size_t size = 0;  // bytes in all
};

// Reads the packet that the bytes begin with.
PacketCursor::Failure ReadPacket(std::string_view bytes, Packet& packet);

}  // namespace kvx::formats::systemview
