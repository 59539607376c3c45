#pragma once
// A growing array of plain values that never holds two copies of itself for long: growth goes
// through realloc, which moves large blocks by remapping their pages. Room that was reserved and
// not yet written costs no memory.

#include <cstddef>
#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>

namespace kvx::service {

template <class T>
class Column {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    Column() = default;
    Column(const Column&) = delete;
    Column& operator=(const Column&) = delete;
    Column(Column&& other) noexcept { Swap(other); }
    Column& operator=(Column&& other) noexcept {
        Swap(other);
        return *this;
    }
    ~Column() { std::free(data_); }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const T* data() const { return data_; }
    const T* begin() const { return data_; }
    const T* end() const { return data_ + size_; }
    T& operator[](std::size_t i) { return data_[i]; }
    const T& operator[](std::size_t i) const { return data_[i]; }
    const T& back() const { return data_[size_ - 1]; }

    void push_back(T value) {
        if (size_ == capacity_) Grow(capacity_ < 16 ? 16 : capacity_ + capacity_ / 2);
        data_[size_++] = value;
    }
    void reserve(std::size_t capacity) {
        if (capacity > capacity_) Grow(capacity);
    }
    // Frees the memory.
    void Clear() { Column().Swap(*this); }
    std::size_t Bytes() const { return size_ * sizeof(T); }

  private:
    void Grow(std::size_t capacity) {
        void* grown = std::realloc(data_, capacity * sizeof(T));
        if (!grown) throw std::bad_alloc();
        data_ = static_cast<T*>(grown);
        capacity_ = capacity;
    }
    void Swap(Column& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace kvx::service
