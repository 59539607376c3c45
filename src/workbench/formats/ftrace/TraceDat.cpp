// trace.dat, the kernel's own binary form as trace-cmd keeps it. Its text comes from the
// distribution's trace-cmd, which runs as a program of its own.

#include <cstring>

#include "platform/base/Text.h"
#include "platform/os/ChildProcess.h"
#include "platform/os/Environment.h"
#include "workbench/formats/Registry.h"
#include "workbench/formats/events/EventRecording.h"
#include "workbench/formats/ftrace/TextReader.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"

namespace kvx::formats {
namespace ftrace {
namespace {

constexpr std::string_view kMagic = "\x17\x08\x44tracing";
constexpr const char* kProgram = "trace-cmd";
constexpr std::size_t kBlock = std::size_t{256} << 10;
// A file of this size without an event is no small recording: something went wrong.
constexpr std::size_t kLarge = std::size_t{1} << 20;
// Far more than the program needs; for files that get the better of it.
constexpr std::uint64_t kBytesASecond = std::uint64_t{2} << 20;
constexpr int kAttempts = 4;
constexpr std::uint64_t kLeastSeconds = 20;
constexpr std::uint64_t kLeastMemory = std::uint64_t{2} << 30;

bool Recognises(const Candidate& candidate) {
    return candidate.file && candidate.Text().starts_with(kMagic);
}

// Hands the lines of the program's output on as they come.
class LinePump {
  public:
    LinePump(os::ChildProcess& process, TextReader& reader) : process_(process), reader_(reader) {}

    // One turn. False: the reader wants no more.
    bool Turn() {
        if (buffer_.size() < end_ + kBlock) buffer_.resize(end_ + kBlock);
        const auto begin = end_;
        end_ += process_.Read(std::span(buffer_).subspan(end_, kBlock));
        const std::string_view all(buffer_.data(), end_);
        if (process_.AtEnd()) return reader_.Add(all, true);
        const auto feed = all.rfind('\n');
        if (feed == std::string_view::npos || feed < begin) return true;
        if (!reader_.Add(all.substr(0, feed + 1), false)) return false;
        end_ -= feed + 1;
        std::memmove(buffer_.data(), buffer_.data() + feed + 1, end_);
        return true;
    }

  private:
    os::ChildProcess& process_;
    TextReader& reader_;
    std::vector<char> buffer_;
    std::size_t end_ = 0;
};

std::string FirstLine(const std::string& text) {
    const auto begin = std::min(text.find_first_not_of(" \t\n"), text.size());
    return text.substr(begin, text.find('\n', begin) - begin);
}

// Why the program ended as it did, for people.
std::string Reason(const os::ChildProcess::End& end, const std::string& errors) {
    const auto said = FirstLine(errors);
    if (end.signal != 0) return FormatText("trace-cmd gave up (%s)", end.SignalText().c_str());
    if (!said.empty()) return "trace-cmd says: " + said;
    return FormatText("trace-cmd gave up (status %d)", end.status);
}

// What one run of the program gave.
struct Run {
    EventTrace trace;
    EventDamage damage;
    std::string complaint;  // why there is no event
    bool isCancelled = false;
};

Result<Run> RunProgram(const Candidate& candidate, const std::string& program, bool mayLackUnit,
                       IOpenProgress* progress) {
    const auto size = candidate.Text().size();
    std::string reason;
    auto process = os::ChildProcess::Start(
        {program, "report", "-N", "-t", "-i", candidate.ContentPath()}, reason);
    if (!process) return Error{reason};
    process->Limit(kLeastSeconds + size / kBytesASecond, kLeastMemory + 2 * size);
    Run run;
    run.trace.format = "trace.dat";
    run.trace.kernel = &kernels::linux_kernel::Kernel();
    EventLoader loader(run.trace, UINT64_MAX, nullptr);
    TextReader reader(run.trace, loader);
    LinePump pump(*process, reader);
    while (!process->AtEnd() && pump.Turn()) {
        run.isCancelled = progress && !progress->Progress(run.trace.records.Count(), 0);
        const bool lacksUnit = run.trace.unit == service::TimeUnit::Counts;
        if (run.isCancelled || (lacksUnit && !mayLackUnit)) return run;
    }
    loader.Finish();
    const auto end = process->Wait();
    run.damage.warnings = reader.Warnings(candidate.path);
    if (end) run.damage.reason = Reason(end, process->Errors());
    if (end || !process->Errors().empty()) run.complaint = Reason(end, process->Errors());
    return run;
}

std::string WhyEmpty(const Run& run, std::size_t size) {
    if (!run.complaint.empty()) return run.complaint;
    if (size < kLarge) return "the trace holds no events";
    return FormatText(
        "trace-cmd finds no event in %zu bytes; the file may be damaged, or written by "
        "a version that it does not read",
        size);
}

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& /*options*/,
                                        IOpenProgress* progress) {
    const auto& path = candidate.path;
    const auto program = os::FindInstalledProgram(kProgram);
    if (program.empty())
        return Error{path +
                     ": a trace.dat, which the program \"trace-cmd\" reads for this one; it is not "
                     "installed here"};
    // Now and then trace-cmd 3.1.6 leaves the unit of times out for no reason in the file.
    for (int attempt = 1;; ++attempt) {
        auto run = RunProgram(candidate, program, attempt == kAttempts, progress);
        if (!run) return run.GetError();
        if (run->isCancelled) return Error{path + ": opening was cancelled", true};
        if (run->trace.unit == service::TimeUnit::Counts && attempt < kAttempts) continue;
        if (run->trace.records.Count() == 0)
            return Error{path + ": " + WhyEmpty(*run, candidate.Text().size())};
        return std::unique_ptr<Recording>(
            std::make_unique<EventRecording>(path, std::move(run->trace), run->damage));
    }
}

}  // namespace
}  // namespace ftrace

const Format kTraceDat = {
    "trace.dat",
    40,
    ftrace::Recognises,
    ftrace::Open,
    false,
    {"trace.dat", "Linux (with the program trace-cmd)", "waits, priorities, calls, handlers"}};

}  // namespace kvx::formats
