#pragma once
// A growing array of plain values that never moves: pointers into it stay good while it grows.
//
// One thread appends. Another may read what was appended before a count was published to it.

#include <cstddef>
#include <stdexcept>
#include <type_traits>

#include "platform/os/ReservedMemory.h"

namespace kvx::service {

template <class T>
class Column {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    // most: values that ever fit; room that nothing was written to costs no memory.
    explicit Column(std::size_t most)
        : memory_(most * sizeof(T)), data_(static_cast<T*>(memory_.Data())), most_(most) {}

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const T* data() const { return data_; }
    T* data() { return data_; }
    T& operator[](std::size_t i) { return data_[i]; }
    const T& operator[](std::size_t i) const { return data_[i]; }
    const T& back() const { return data_[size_ - 1]; }

    void push_back(T value) {
        if (size_ == most_) throw std::length_error("more values than there is room for");
        data_[size_++] = value;
    }
    std::size_t Bytes() const { return size_ * sizeof(T); }

  private:
    os::ReservedMemory memory_;
    T* data_;
    std::size_t most_;
    std::size_t size_ = 0;
};

}  // namespace kvx::service
