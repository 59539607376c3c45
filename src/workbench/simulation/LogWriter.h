#pragma once
// Writes what the kernel records as the ITRON text log.

#include <vector>

#include "workbench/simulation/ByteOutput.h"
#include "workbench/simulation/TraceSink.h"

namespace kvx::simulation {

class LogWriter : public ITraceSink {
  public:
    // Writes at most so many lines; records beyond them are left out. output is borrowed.
    LogWriter(IByteOutput& output, std::uint64_t lines);

    void Write(const TraceRecord& record) override;
    // It has all its lines, or writing has failed.
    bool Done() const { return failed_ || lines_ == wanted_; }
    std::uint64_t Lines() const { return lines_; }
    // Writes what is still held back. False: that failed, or had failed before.
    bool Flush();

  private:
    IByteOutput& output_;
    const std::uint64_t wanted_;
    std::uint64_t lines_ = 0;
    std::vector<char> block_;
    std::size_t used_ = 0;
    bool failed_ = false;
};

}  // namespace kvx::simulation
