#pragma once
// A flag that is set for the length of a scope, however the scope is left.

namespace kvx {

class ScopedFlag {
  public:
    explicit ScopedFlag(bool& flag) : flag_(flag) { flag_ = true; }
    ~ScopedFlag() { flag_ = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

  private:
    bool& flag_;
};

}  // namespace kvx
