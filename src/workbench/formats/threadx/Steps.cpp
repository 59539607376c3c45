#include "workbench/formats/threadx/Steps.h"

#include "workbench/formats/threadx/NextContexts.h"
#include "workbench/kernels/threadx/ThreadX.h"

namespace kvx::formats::threadx {
namespace {

using namespace kernels::threadx;
using Kind = Step::Kind;

constexpr std::uint32_t kNoEvent = 0xFFFFFFFFu;
constexpr std::uint32_t kFirstOfMiddleware = 200;

class Builder {
  public:
    Builder(const EventBuffer& buffer, std::span<const Event> events)
        : buffer_(buffer), events_(events), next_(NextContexts(events)) {
        steps_.reserve(events.size());
    }

    std::vector<Step> Run() {
        for (i_ = 0; i_ < events_.size(); ++i_) {
            const auto before = steps_.size();
            if (buffer_.IsBehindGap(i_)) OnGap();
            const Event& event = events_[i_];
            if (IsThread(event.context))
                OnThread(event);
            else if (event.context == kInInterrupt)
                OnInterrupt(event);
            else
                Act(event);
            if (steps_.size() == before) Add(Kind::Nothing, 0);
        }
        return std::move(steps_);
    }

  private:
    void Add(Kind kind, std::uint32_t who) { steps_.push_back({i_, i_, who, kNoStep, kind}); }

    void OnGap() {
        Add(Kind::Gap, 0);
        shown_ = kNoEvent;
        entered_ = 0;
        suspended_ = kNoEvent;
        call_ = kNoStep;
    }

    void OnThread(const Event& event) {
        if (entered_ > 0 || shown_ != event.context) RunNext(event.context);
        entered_ = 0;
        if (event.id == kSuspend && event.info[0] == event.context)
            suspended_ = i_;
        else
            Act(event);
        const auto next = next_[i_];
        if (next != event.context && (IsThread(next) || next == kIdle)) RunNext(next);
    }

    // An event of an interrupt that was not entered is all that there is of it.
    void OnInterrupt(const Event& event) {
        if (event.id == kInterruptEnter) {
            Add(Kind::Enter, event.info[1]);
            ++entered_;
        } else if (event.id == kInterruptExit) {
            Leave();
        } else {
            if (entered_ == 0) Add(Kind::Enter, 0);
            Act(event);
            if (entered_ == 0) Leave();
        }
    }

    void Leave() {
        if (entered_ > 0) --entered_;
        const auto next = next_[i_];
        const bool told = entered_ == 0 && (IsThread(next) || next == kIdle);
        if (told && suspended_ != kNoEvent) {
            Add(Kind::Leave, kInInterrupt);
            return RunNext(next);
        }
        Add(Kind::Leave, told ? next : kInInterrupt);
        if (!told) return;
        shown_ = next;
        call_ = kNoStep;
    }

    void Act(const Event& event) {
        switch (event.id) {
            case kResume:
            case kSuspend:
                return Add(Kind::State, event.info[0]);
            case kInterruptEnter:
            case kInterruptExit:
            case kTimeSlice:
            case kRunning:
                return;
            default:
                call_ = static_cast<std::uint32_t>(steps_.size());
                return Add(Kind::Call, 0);
        }
    }

    // A thread that has been suspended stops running only here: it may have gone on to record the
    // call that suspends it.
    void RunNext(std::uint32_t next) {
        if (suspended_ != kNoEvent && events_[suspended_].context == shown_) {
            steps_.push_back({i_, suspended_, next, CauseOf(events_[suspended_]), Kind::Switch});
        } else {
            Add(Kind::Runs, next);
        }
        suspended_ = kNoEvent;
        call_ = kNoStep;
        shown_ = next;
    }

    // The last call of the thread, if it is one that waits so.
    std::uint32_t CauseOf(const Event& suspension) const {
        if (call_ == kNoStep || events_[steps_[call_].event].context != suspension.context)
            return kNoStep;
        const auto id = events_[steps_[call_].event].id;
        const auto call = FindCall(id);
        const auto wait = StateOf(suspension.info[1]).waitCode;
        if (!call) return wait != 0 && id >= kFirstOfMiddleware ? call_ : kNoStep;
        return wait != 0 && Kernel().FindCall(call->name).waitCode == wait ? call_ : kNoStep;
    }

    const EventBuffer& buffer_;
    const std::span<const Event> events_;
    const std::vector<std::uint32_t> next_;
    std::vector<Step> steps_;
    std::uint32_t i_ = 0;
    std::uint32_t shown_ = kNoEvent;      // the thread that runs below interrupts, or kIdle
    std::uint32_t entered_ = 0;           // interrupts
    std::uint32_t suspended_ = kNoEvent;  // event that suspended the one shown
    std::uint32_t call_ = kNoStep;        // last call of the one shown
};

}  // namespace

std::vector<Step> StepsOf(const EventBuffer& buffer, std::span<const Event> events) {
    return Builder(buffer, events).Run();
}

}  // namespace kvx::formats::threadx
