// The programs that read for this one exist for other systems only: none is found here, and none
// is started.

#include "platform/os/ChildProcess.h"

#include <utility>

namespace kvx::os {

std::optional<ChildProcess> ChildProcess::Start(std::vector<std::string> command,
                                                std::string& reason) {
    reason = command.front() + ": is not run on this system";
    return std::nullopt;
}

std::string ChildProcess::End::SignalText() const {
    return {};
}

bool ChildProcess::End::IsOutOfTime() const {
    return false;
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)), atEnd_(other.atEnd_) {}

ChildProcess::~ChildProcess() = default;

void ChildProcess::Limit(std::uint64_t, std::uint64_t) {}

std::size_t ChildProcess::Read(std::span<char>) {
    atEnd_ = true;
    return 0;
}

ChildProcess::End ChildProcess::Wait() {
    return {};
}

}  // namespace kvx::os
