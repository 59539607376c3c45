#include "workbench/simulation/LogWriter.h"

#include "workbench/simulation/LogLine.h"

namespace kvx::simulation {
namespace {
constexpr std::size_t kBlock = 256 * 1024;
}

LogWriter::LogWriter(IByteOutput& output, std::uint64_t lines)
    : output_(output), wanted_(lines), block_(kBlock + kLongestLine) {}

void LogWriter::Write(const TraceRecord& record) {
    if (Done()) return;
    char* const begin = block_.data() + used_;
    used_ += static_cast<std::size_t>(PutLogLine(record, begin) - begin);
    ++lines_;
    if (used_ >= kBlock) Flush();
}

bool LogWriter::Flush() {
    if (!failed_ && used_ > 0) failed_ = !output_.Write({block_.data(), used_});
    used_ = 0;
    return !failed_;
}

}  // namespace kvx::simulation
