#pragma once
// A growing array of objects that never move. One thread appends; others may read the objects below
// a size that they have seen.

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace kvx::service {

template <class T>
class StableVector {
  public:
    StableVector() = default;
    StableVector(const StableVector&) = delete;
    StableVector& operator=(const StableVector&) = delete;

    std::uint32_t size() const { return size_.load(std::memory_order_acquire); }
    const T& operator[](std::uint32_t i) const { return *Place(i); }
    T& operator[](std::uint32_t i) { return *Place(i); }

    // A new object as T makes it by itself.
    T& Append() { return Publish(Next()); }
    T& Append(T value) {
        T& next = Next();
        next = std::move(value);
        return Publish(next);
    }

  private:
    T& Next() {
        const auto i = size_.load(std::memory_order_relaxed);
        auto& chunk = chunks_[ChunkOf(i)];
        if (!chunk) chunk = std::make_unique<T[]>(std::size_t{kFirst} << ChunkOf(i));
        return *Place(i);
    }
    T& Publish(T& next) {
        size_.store(size_.load(std::memory_order_relaxed) + 1, std::memory_order_release);
        return next;
    }

    // Chunk n holds kFirst << n objects.
    static constexpr std::uint32_t kFirst = 32;
    static constexpr std::size_t ChunkOf(std::uint32_t i) {
        return static_cast<std::size_t>(std::bit_width(i / kFirst + 1) - 1);
    }
    T* Place(std::uint32_t i) const {
        const auto chunk = ChunkOf(i);
        return chunks_[chunk].get() + (i - ((std::uint32_t{kFirst} << chunk) - kFirst));
    }

    std::array<std::unique_ptr<T[]>, 27> chunks_;
    std::atomic<std::uint32_t> size_ = 0;
};

}  // namespace kvx::service
