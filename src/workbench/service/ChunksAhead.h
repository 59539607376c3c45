#pragma once
// Makes the chunks of a piece of work in any order, on threads of its own, and hands them out in
// theirs. Whoever takes them helps when the next one is not there yet.

#include <array>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

namespace kvx::service {

template <class Chunk>
class ChunksAhead {
  public:
    // Fills a chunk, which may be one that was used before. Called on several threads at once.
    using Make = std::function<void(std::uint32_t number, Chunk& chunk)>;

    // Chunks 0 to count - 1. threads: besides the caller's; may be 0.
    ChunksAhead(std::uint32_t count, unsigned threads, Make make)
        : count_(count), make_(std::move(make)) {
        for (unsigned i = 0; i < threads; ++i)
            threads_.emplace_back([this](const std::stop_token& stop) { Work(stop); });
    }
    ChunksAhead(const ChunksAhead&) = delete;
    ChunksAhead& operator=(const ChunksAhead&) = delete;

    // The chunk behind that of the last call, which is given back; there must be one. Throws what
    // making a chunk threw.
    const Chunk& Next() {
        std::unique_lock lock(mutex_);
        if (holds_) GiveBack();
        Slot& slot = SlotOf(taken_);
        while (!slot.isMade && IsRoom()) MakeNext(lock);
        changed_.wait(lock, [&] { return slot.isMade; });
        if (failure_) std::rethrow_exception(failure_);
        holds_ = true;
        return slot.chunk;
    }

  private:
    static constexpr std::uint32_t kAhead = 8;

    struct Slot {
        Chunk chunk;
        bool isMade = false;
    };
    Slot& SlotOf(std::uint32_t number) { return slots_[number % kAhead]; }
    bool IsRoom() const { return claimed_ < count_ && claimed_ < taken_ + kAhead; }

    void Work(const std::stop_token& stop) {
        std::unique_lock lock(mutex_);
        const auto isDue = [this] { return claimed_ == count_ || IsRoom(); };
        while (changed_.wait(lock, stop, isDue) && claimed_ < count_) MakeNext(lock);
    }

    // The next chunk that nobody has begun; there must be room for it.
    void MakeNext(std::unique_lock<std::mutex>& lock) {
        const auto number = claimed_++;
        lock.unlock();
        std::exception_ptr failure;
        try {
            make_(number, SlotOf(number).chunk);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        SlotOf(number).isMade = true;
        if (failure) failure_ = failure;
        changed_.notify_all();
    }

    void GiveBack() {
        SlotOf(taken_).isMade = false;
        ++taken_;
        holds_ = false;
        changed_.notify_all();
    }

    const std::uint32_t count_;
    const Make make_;

    std::mutex mutex_;
    std::condition_variable_any changed_;
    // Under the mutex. A chunk that is being made or was handed out is nobody else's.
    std::array<Slot, kAhead> slots_;
    std::uint32_t claimed_ = 0;   // chunks that somebody has begun to make
    std::uint32_t taken_ = 0;     // chunks that were given back
    bool holds_ = false;          // the next one is handed out
    std::exception_ptr failure_;  // of making a chunk; thrown at whoever goes on

    std::vector<std::jthread> threads_;
};

}  // namespace kvx::service
