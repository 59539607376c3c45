#pragma once
// The events of Zephyr kernels, without and with ready events.

#include "formats/CtfWriter.h"

namespace kvx::test::zephyr {

inline constexpr const char* kZephyrHeader =
    "stream { event.header := struct { uint32_t timestamp; uint8_t id; }; };\n";
inline constexpr const char* kThread = "uint32_t thread_id; name_t name[8];";

// Ids as a kernel could choose them; nothing may depend on them.
enum Id : std::uint8_t {
    kIn = 70,
    kOut,
    kCreate,
    kIsrIn,
    kIsrOut,
    kIdle,
    kTake,
    kBlock,
    kTaken,
    kGive,
    kGiven,
    kSuspend,
    kResume,
    kReady,
    kPend,
    kStart,
    kEnd,
    kLock,
    kInit,
    kSleep,
    kSlept,
    kYield,
    kAbort,
    kSuspendEnd,
    kExpire,
    kExpired,
    kNamed
};
inline constexpr std::uint32_t kMain = 0x1000, kWork = 0x2000, kRest = 0x3000, kSem = 0xABCDE;

inline CtfWriter Zephyr() {
    CtfWriter ctf(kZephyrHeader);
    ctf.Declare("thread_switched_in", kIn, kThread);
    ctf.Declare("thread_switched_out", kOut, kThread);
    ctf.Declare("thread_create", kCreate, kThread);
    ctf.Declare("thread_suspend", kSuspend, kThread);
    ctf.Declare("thread_resume", kResume, kThread);
    ctf.Declare("isr_enter", kIsrIn, "");
    ctf.Declare("isr_exit", kIsrOut, "");
    ctf.Declare("idle", kIdle, "");
    return ctf;
}

inline CtfWriter NewZephyr() {
    auto ctf = Zephyr();
    ctf.Declare("semaphore_take_enter", kTake, "uint32_t id; uint32_t timeout;");
    ctf.Declare("semaphore_take_blocking", kBlock, "uint32_t id; uint32_t timeout;");
    ctf.Declare("semaphore_take_exit", kTaken, "uint32_t id; uint32_t timeout; int32_t ret;");
    ctf.Declare("semaphore_give_enter", kGive, "uint32_t id;");
    ctf.Declare("semaphore_give_exit", kGiven, "uint32_t id;");
    ctf.Declare("semaphore_init", kInit, "uint32_t id; int32_t ret;");
    return ctf;
}

}  // namespace kvx::test::zephyr
