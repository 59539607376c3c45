#include "workbench/formats/threadx/NextContexts.h"

#include <algorithm>

#include "workbench/kernels/threadx/ThreadX.h"

namespace kvx::formats::threadx {
namespace {

using namespace kernels::threadx;

// How far a thread that an interrupt resumed is looked for.
constexpr std::size_t kFarthest = 4096;

class Follower {
  public:
    explicit Follower(std::span<const Event> events)
        : events_(events), next_(events.size()), threadAfter_(events.size()) {
        auto after = events.size();
        for (auto i = events.size(); i-- > 0;) {
            threadAfter_[i] = static_cast<std::uint32_t>(after);
            if (IsThread(events[i].context)) after = i;
        }
    }

    std::vector<std::uint32_t> Run() {
        for (i_ = 0; i_ < events_.size(); ++i_) {
            const Event& event = events_[i_];
            if (IsThread(event.context)) {
                current_ = event.context;
                nested_ = 0;
                next_[i_] = current_ = AfterThread(event);
            } else {
                OnInterrupt(event);
            }
        }
        return std::move(next_);
    }

  private:
    const Event* Following() const { return i_ + 1 < events_.size() ? &events_[i_ + 1] : nullptr; }
    // The next event of a thread; null: there is none.
    const Event* FollowingThread() const {
        const auto at = threadAfter_[i_];
        return at < events_.size() ? &events_[at] : nullptr;
    }

    std::uint32_t AfterThread(const Event& event) const {
        switch (event.id) {
            case kSuspend: {
                const Event* next = Following();
                const bool goesOn =
                    event.context == event.info[0] && next && next->context == event.info[0];
                return goesOn ? event.context : event.info[3];
            }
            case kResume: {
                if (event.info[3] != 0) return event.info[3];
                const Event* next = FollowingThread();
                return next && next->context == event.info[0] ? event.info[0] : event.context;
            }
            case kRelinquish:
                return event.info[1] != 0 ? event.info[1] : AfterRelinquish(event);
            default: {
                const Event* next = Following();
                return next && IsThread(next->context) ? next->context : event.context;
            }
        }
    }

    // The thread of the next event, unless what lies between made it the next one.
    std::uint32_t AfterRelinquish(const Event& event) const {
        const Event* next = FollowingThread();
        if (!next) return event.context;
        const auto between = events_.subspan(i_ + 1, threadAfter_[i_] - i_ - 1);
        const bool moved = std::ranges::any_of(between, [&](const Event& other) {
            return (other.id == kResume || other.id == kSuspend) && other.info[0] == next->context;
        });
        return moved ? event.context : next->context;
    }

    void OnInterrupt(const Event& event) {
        const bool interrupted = event.context == kInInterrupt && IsThread(event.priority);
        if (interrupted && i_ > 1 && events_[i_ - 1].context != kInInterrupt)
            next_[i_ - 1] = current_ = event.priority;
        if (event.id == kInterruptEnter) ++nested_;
        if (event.id == kInterruptExit && nested_ > 0) --nested_;
        if (event.id == kSuspend) current_ = event.info[3];
        if (event.id == kTimeSlice) current_ = event.info[0];
        if (event.id == kResume) current_ = AfterResume(event);
        next_[i_] = nested_ > 0 ? event.context : BehindInterrupts();
    }

    std::uint32_t AfterResume(const Event& event) const {
        if (event.info[3] != 0) return event.info[3];
        const auto end = std::min(events_.size(), i_ + kFarthest);
        for (auto at = i_ + 1; at < end; ++at) {
            const auto context = events_[at].context;
            if (context == current_ || context == event.info[0]) return context;
        }
        return current_;
    }

    std::uint32_t BehindInterrupts() const {
        const Event* next = Following();
        if (!next) return current_;
        if (next->context != kInInterrupt || next->id == kResume) return next->context;
        return next->priority != 0 ? next->priority : current_;
    }

    const std::span<const Event> events_;
    std::vector<std::uint32_t> next_;
    std::vector<std::uint32_t> threadAfter_;
    std::size_t i_ = 0;
    std::uint32_t current_ = kIdle;
    std::uint32_t nested_ = 0;
};

}  // namespace

std::vector<std::uint32_t> NextContexts(std::span<const Event> events) {
    return Follower(events).Run();
}

}  // namespace kvx::formats::threadx
