#pragma once
// Undoes at the end of a scope what was not finished in it.

#include <utility>

namespace kvx {

template <class Action>
class ScopeGuard {
  public:
    // The action must not throw.
    explicit ScopeGuard(Action action) : action_(std::move(action)) {}
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;
    ~ScopeGuard() {
        if (armed_) action_();
    }
    // All is done: the action is not wanted any more.
    void Dismiss() { armed_ = false; }

  private:
    Action action_;
    bool armed_ = true;
};

}  // namespace kvx
