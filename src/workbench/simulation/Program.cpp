#include "workbench/simulation/Program.h"

#include "workbench/simulation/SimulatedKernel.h"

namespace kvx::simulation {

bool Program::Resume(SimulatedKernel& kernel) {
    handle_.promise().kernel_ = &kernel;
    handle_.resume();
    return !handle_.done();
}

void ComputeAwaiter::await_suspend(std::coroutine_handle<>) const {
    kernel.Compute(microseconds);
}

void CallAwaiter::await_suspend(std::coroutine_handle<>) const {
    kernel.Issue(call);
}

CallResult CallAwaiter::await_resume() const {
    return kernel.Return(*call.service);
}

void RunHandlerAwaiter::await_suspend(std::coroutine_handle<>) const {
    kernel.Enter(handler);
}

}  // namespace kvx::simulation
