// The drive controller's serial line. It interrupts when sixteen bytes have come; the words for
// the first and the last ones of a frame are marked.

#include "workbench/simulation/DriveController.h"
#include "workbench/simulation/DriveIds.h"
#include "workbench/simulation/SystemServices.h"
#include "workbench/simulation/TaskServices.h"

namespace kvx::simulation {
namespace {

constexpr std::int32_t kFrameStart = 0x02000000;
constexpr std::int32_t kFrameEnd = 0x03000000;
constexpr std::int32_t kMark = 0x7F000000;
constexpr std::int32_t kFrameTimeout = 10;  // milliseconds
constexpr Time kBytesTime = 1389;           // sixteen bytes at 115200 bits a second
constexpr std::int32_t kReplyText = 0x20003400;

}  // namespace

Program DriveController::ReceiveFrames() {
    for (;;) {
        const CallResult word = co_await rcv_dtq(kDtqUart);
        if (word.ercd != E_OK) {
            co_await psnd_mbf(kMbfLog, kLogText, 32);  // a frame without an end
            continue;
        }
        co_await ComputeFor(20, 45);
        if ((word.value & kMark) == kFrameStart) co_await sta_alm(kAlmFrame, kFrameTimeout);
        if ((word.value & kMark) != kFrameEnd) continue;
        co_await stp_alm(kAlmFrame);
        const CallResult block = co_await tget_mpf(kMpfFrame, 10);
        if (block.ercd != E_OK) continue;
        co_await ComputeFor(50, 90);
        co_await snd_mbx(kMbxCommand, block.value);
    }
}

Program DriveController::ExecuteCommands() {
    for (;;) {
        const CallResult message = co_await rcv_mbx(kMbxCommand);
        co_await ComputeFor(600, 1400);
        if (Once(3)) {
            co_await loc_mtx(kMtxFlash);
            co_await ComputeFor(100, 200);
            co_await dly_tsk(Between(6, 12));  // a sector is erased
            co_await unl_mtx(kMtxFlash);
        }
        co_await rel_mpf(kMpfFrame, message.value);
        const std::int32_t size = Between(48, 96);
        const CallResult reply = co_await get_mpl(kMplBuffer, size);
        co_await ComputeFor(60, 140);
        co_await snd_mbf(kMbfReply, reply.value, size);
        co_await rel_mpl(kMplBuffer, reply.value);
        co_await psnd_mbf(kMbfLog, kLogText, Between(12, 40));
    }
}

Program DriveController::SendReplies() {
    for (;;) {
        const CallResult reply = co_await rcv_mbf(kMbfReply, kReplyText);
        co_await ComputeFor(20, 40);
        kernel_.RaiseAfter(kIntUartTx, reply.ercd * kBytesTime / 16);
        co_await wai_sem(kSemTxDone);
    }
}

Program DriveController::OnUartReceived() {
    co_await ComputeFor(2, 5);
    co_await ipsnd_dtq(kDtqUart, NextUartWord());
}

Program DriveController::OnUartSent() {
    co_await ComputeFor(2, 4);
    co_await isig_sem(kSemTxDone);
}

Program DriveController::OnFrameTimeout() {
    co_await irel_wai(kCommRx);
}

// The word that has come; also says when the next one comes. Once in a while a frame breaks off.
std::int32_t DriveController::NextUartWord() {
    std::int32_t mark = 0;
    if (wordsLeft_ == 0) {
        mark = kFrameStart;
        wordsLeft_ = Between(3, 5);
        if (framesLeft_ == 0) framesLeft_ = Between(3, 8);
    }
    if (--wordsLeft_ == 0) {
        mark = kFrameEnd;
        --framesLeft_;
    }
    if (mark == 0 && Once(24)) wordsLeft_ = framesLeft_ = 0;
    Time gap = kBytesTime;
    if (wordsLeft_ == 0) gap = framesLeft_ == 0 ? Between(30000, 60000) : Between(300, 900);
    kernel_.RaiseAfter(kIntUartRx, gap);
    return mark | Between(0, 0xFFFFFF);
}

}  // namespace kvx::simulation
