// BTF, the trace format of timing tools for OSEK and AUTOSAR systems.

#include "workbench/formats/Registry.h"
#include "workbench/formats/btf/BtfReader.h"
#include "workbench/formats/events/EventRecording.h"
#include "workbench/formats/text/TimedLine.h"
#include "workbench/kernels/osek/Osek.h"

namespace kvx::formats {
namespace btf {
namespace {

constexpr std::size_t kProbed = std::size_t{64} << 10;

struct Probe {
    std::size_t lines = 0;  // without those of the header
    std::size_t fitting = 0;
    bool hasHeader = false;
    bool isDialect = false;

    bool Fits() const { return lines == 0 ? hasHeader : fitting > 0 && fitting * 4 >= lines; }
};

Probe Look(std::string_view text) {
    Probe probe;
    Header header;
    text = text.substr(0, kProbed);
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('#')) {
            header.Add(line);
            if (line.starts_with("#timeScale") || line.starts_with("#version"))
                probe.hasHeader = true;
            continue;
        }
        if (IsBlank(line)) continue;
        ++probe.lines;
        const auto columns = SplitColumns(line);
        if (!columns || !IsEntityType(header.Type(columns->type))) continue;
        ++probe.fitting;
        if (header.Type(columns->type) == "T" && SplitPrefix(columns->target))
            probe.isDialect = true;
    }
    return probe;
}

bool Recognises(const Candidate& candidate) {
    return candidate.file && Look(candidate.Text()).Fits();
}

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& /*options*/,
                                        IOpenProgress* progress) {
    const auto& path = candidate.path;
    const bool dialect = Look(candidate.Text()).isDialect;
    EventTrace trace;
    trace.format = "BTF";
    trace.kernel = dialect ? &kernels::osek::FreeRtos() : &kernels::osek::Kernel();
    EventLoader loader(trace, candidate.Text().size(), nullptr);
    BtfReader reader(candidate.Text(), dialect, trace, loader);
    if (!reader.ReadAll(progress)) return Error{path + ": opening was cancelled", true};
    if (trace.records.Count() == 0) return Error{path + ": a BTF file without an event"};
    loader.Finish();
    return std::unique_ptr<Recording>(
        std::make_unique<EventRecording>(path, std::move(trace), EventDamage()));
}

}  // namespace
}  // namespace btf

const Format kBtf = {"BTF 2.x",
                     25,
                     btf::Recognises,
                     btf::Open,
                     false,
                     {"*.btf", "OSEK, AUTOSAR, FreeRTOS (its BTF writer: runs and calls only)",
                      "waits, objects, calls, handlers"}};

}  // namespace kvx::formats
