#pragma once
// A value, or the one message that says why there is none.

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace kvx {

struct Error {
    std::string message;     // for people: which file, where, why
    bool cancelled = false;  // the user stopped it; message is then not meant to be shown
};

template <class T>
class Result {
  public:
    Result(T value) : content_(std::move(value)) {}
    Result(Error error) : content_(std::move(error)) {}

    explicit operator bool() const { return content_.index() == 0; }
    T& operator*() { return std::get<0>(content_); }
    const T& operator*() const { return std::get<0>(content_); }
    T* operator->() { return &std::get<0>(content_); }
    const T* operator->() const { return &std::get<0>(content_); }
    const Error& GetError() const { return std::get<1>(content_); }

  private:
    std::variant<T, Error> content_;
};

}  // namespace kvx
