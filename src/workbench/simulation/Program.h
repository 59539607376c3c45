#pragma once
// The code of a task or a handler: a coroutine that computes and calls services of the kernel.
//
//     co_await Compute{300};                 // for so many microseconds
//     const auto got = co_await wai_sem(1);  // the call's result, when it has returned
//     co_await RunHandler{handler};          // a handler that runs inside this one
//
// A task's program that ends exits the task.

#include <coroutine>
#include <exception>
#include <utility>

#include "workbench/simulation/Service.h"

namespace kvx::simulation {

struct Handler;

struct Compute {
    std::int32_t microseconds;
};

struct RunHandler {
    const Handler& handler;
};

class Program {
  public:
    class promise_type;

    Program() = default;
    Program(Program&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Program& operator=(Program&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Program() {
        if (handle_) handle_.destroy();
    }

    // Goes on to the next co_await; false when the program has ended.
    bool Resume(SimulatedKernel& kernel);

  private:
    using Handle = std::coroutine_handle<promise_type>;
    explicit Program(Handle handle) : handle_(handle) {}

    Handle handle_;
};

struct ComputeAwaiter : std::suspend_always {
    SimulatedKernel& kernel;
    std::int32_t microseconds;
    void await_suspend(std::coroutine_handle<>) const;
};

struct CallAwaiter : std::suspend_always {
    SimulatedKernel& kernel;
    ServiceCall call;
    void await_suspend(std::coroutine_handle<>) const;
    CallResult await_resume() const;
};

struct RunHandlerAwaiter : std::suspend_always {
    SimulatedKernel& kernel;
    const Handler& handler;
    void await_suspend(std::coroutine_handle<>) const;
};

class Program::promise_type {
  public:
    Program get_return_object() { return Program(Handle::from_promise(*this)); }
    std::suspend_always initial_suspend() const noexcept { return {}; }
    std::suspend_always final_suspend() const noexcept { return {}; }
    void return_void() const {}
    [[noreturn]] void unhandled_exception() const { std::terminate(); }

    ComputeAwaiter await_transform(Compute compute) const {
        return {{}, *kernel_, compute.microseconds};
    }
    CallAwaiter await_transform(const ServiceCall& call) const { return {{}, *kernel_, call}; }
    RunHandlerAwaiter await_transform(RunHandler run) const { return {{}, *kernel_, run.handler}; }

  private:
    friend Program;
    SimulatedKernel* kernel_ = nullptr;  // known when the program is resumed
};

}  // namespace kvx::simulation
