// Text that the kernel or its tools write of ftrace's recordings, bare or in an HTML page.

#include "workbench/formats/Registry.h"
#include "workbench/formats/events/EventRecording.h"
#include "workbench/formats/ftrace/Page.h"
#include "workbench/formats/ftrace/TextReader.h"
#include "workbench/formats/text/TimedLine.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"
#include "workbench/kernels/nuttx/Nuttx.h"

namespace kvx::formats {
namespace ftrace {
namespace {

constexpr std::size_t kProbed = std::size_t{256} << 10;
constexpr std::size_t kSlice = std::size_t{1} << 20;

// What the first lines of a text look like.
struct Probe {
    std::size_t lines = 0;  // without those of the header
    std::size_t events = 0;
    std::size_t relative = 0;
    bool hasHeader = false;
    bool isPadded = true;

    bool Fits() const { return events > 0 && events * 4 >= lines; }
    bool IsRelative() const { return events == 0 && relative > 0 && relative * 4 >= lines; }
};

Probe Look(std::string_view text) {
    Probe probe;
    text = text.substr(0, kProbed);
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with("# tracer:")) probe.hasHeader = true;
        if (line.starts_with('#') || IsBlank(line)) continue;
        ++probe.lines;
        if (const auto parsed = ParseLine(line)) {
            if (++probe.events == 1) probe.isPadded = parsed->isPadded;
        } else if (IsRelativeLine(line)) {
            ++probe.relative;
        }
    }
    return probe;
}

bool Recognises(const Candidate& candidate) {
    if (!candidate.file) return false;
    const auto text = candidate.Text();
    if (IsPage(text)) return true;
    const auto probe = Look(text);
    return probe.Fits() || probe.IsRelative() || (probe.hasHeader && probe.lines == 0);
}

// False: progress stopped it.
bool ReadAll(std::string_view text, TextReader& reader, IOpenProgress* progress) {
    for (std::size_t begin = 0; begin < text.size();) {
        const auto feed = text.find('\n', std::min(begin + kSlice, text.size()));
        const auto end = feed == std::string_view::npos ? text.size() : feed + 1;
        if (!reader.Add(text.substr(begin, end - begin), end == text.size())) return true;
        begin = end;
        if (progress && !progress->Progress(begin, text.size())) return false;
    }
    return true;
}

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& /*options*/,
                                        IOpenProgress* progress) {
    const auto& path = candidate.path;
    const auto text = IsPage(candidate.Text()) ? TextOfPage(candidate.Text()) : candidate.Text();
    const auto probe = Look(text);
    if (probe.IsRelative())
        return Error{path +
                     ": ftrace's latency format, whose times are relative; record with the "
                     "trace option \"latency-format\" off"};
    EventTrace trace;
    trace.format = "ftrace text";
    trace.kernel = probe.isPadded ? &kernels::linux_kernel::Kernel() : &kernels::nuttx::Kernel();
    EventLoader loader(trace, text.size(), progress);
    TextReader reader(trace, loader);
    if (!ReadAll(text, reader, progress)) return Error{path + ": opening was cancelled", true};
    if (trace.records.Count() == 0) return Error{path + ": ftrace text without an event"};
    loader.Finish();
    return std::unique_ptr<Recording>(std::make_unique<EventRecording>(
        path, std::move(trace), EventDamage{0, reader.Warnings(path), {}}));
}

}  // namespace
}  // namespace ftrace

const Format kFtrace = {
    "ftrace text",
    20,
    ftrace::Recognises,
    ftrace::Open,
    false,
    {"trace, trace.txt, trace.html", "Linux, NuttX", "waits, priorities, calls, handlers"}};

}  // namespace kvx::formats
