// Finds the traces of a folder and opens them.

#include <algorithm>
#include <filesystem>

#include "workbench/formats/Registry.h"
#include "workbench/formats/ctf/LibraryRun.h"
#include "workbench/formats/ctf/Metadata.h"
#include "workbench/formats/events/EventLoader.h"
#include "workbench/formats/events/EventRecording.h"

namespace kvx::formats {
namespace ctf {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMetadata = "metadata";
constexpr int kDeepest = 6;
constexpr int kMostEntries = 20000;  // looked at: a folder of traces is not a whole disk

// The folders with a file "metadata" in and below a folder, in order of name.
std::vector<std::string> FindTraces(const std::string& path) {
    std::vector<std::string> folders;
    std::error_code error;
    if (fs::exists(fs::path(path) / kMetadata, error)) return {path};
    auto at = fs::recursive_directory_iterator(path, fs::directory_options::skip_permission_denied,
                                               error);
    for (int entries = 0;
         entries < kMostEntries && !error && at != fs::recursive_directory_iterator();
         ++entries, at.increment(error)) {
        if (at.depth() >= kDeepest) at.disable_recursion_pending();
        if (at->path().filename() == kMetadata && at->is_regular_file(error))
            folders.push_back(at->path().parent_path().string());
    }
    std::ranges::sort(folders);
    return folders;
}

bool Recognises(const Candidate& candidate) {
    if (candidate.file) return LooksLikeMetadata(candidate.Text());
    return !FindTraces(candidate.path).empty();
}

std::string WhyNothing(const std::string& path, const std::vector<std::string>& folders,
                       const std::vector<CheckedTrace>& traces, const RunResult& result) {
    if (!result.started) return path + ": " + result.reason;
    // The library keeps to itself what it does not like about metadata.
    for (std::size_t i = 0; i < traces.size(); ++i)
        if (result.reason == "Cannot create trace for `" + traces[i].folder + "`")
            return folders[i] +
                   "/metadata: the library cannot make sense of it, and does not say where";
    const bool empty = std::ranges::all_of(
        traces, [](const CheckedTrace& trace) { return trace.streamBytes == 0; });
    if (result.reason.empty() || (empty && result.gaveUp))
        return path + ": the trace holds no events";
    return path + ": " + result.reason + ", before the first event";
}

// Times since 1970 lose their last digits in floating point: whole days are taken off.
void TakeDaysOff(EventTrace& trace) {
    constexpr std::int64_t kDay = std::int64_t{86400} * 1000000000;
    const auto first = trace.records.At(0).time;
    if (trace.unit == service::TimeUnit::Nanoseconds && first > kDay)
        trace.origin = first / kDay * kDay;
}

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& /*options*/,
                                        IOpenProgress* progress) {
    const auto path =
        candidate.file ? fs::path(candidate.path).parent_path().string() : candidate.path;
    const auto folders = FindTraces(path.empty() ? "." : path);
    if (folders.empty())
        return Error{candidate.path + ": metadata of a CTF trace, but not called \"metadata\""};
    std::vector<CheckedTrace> traces;
    EventDamage damage;
    std::uint64_t bytes = 0;
    for (const auto& folder : folders) {
        auto checked = CheckTrace(folder);
        if (!checked) return checked.GetError();
        bytes += checked->streamBytes;
        damage.streams += checked->damagedStreams;
        damage.warnings.insert(damage.warnings.end(), checked->warnings.begin(),
                               checked->warnings.end());
        traces.push_back(std::move(*checked));
    }
    if (bytes == 0 && !damage.warnings.empty()) return Error{damage.warnings.front()};
    EventTrace trace;
    trace.format = "CTF";
    EventLoader loader(trace, bytes, progress);
    if (progress && progress->WantsBeginning()) {
        loader.onBeginning = [&](EventTrace beginning) {
            TakeDaysOff(beginning);
            EventDamage unread;
            unread.warnings = {"This is the beginning alone; the rest is still being read."};
            progress->Beginning(
                std::make_unique<EventRecording>(candidate.path, std::move(beginning), unread));
        };
    }
    auto result = RunLibrary(traces, bytes, loader);
    if (loader.IsEndless())
        return Error{candidate.path + ": the metadata describes events that take no room"};
    if (result.stopped) return Error{candidate.path + ": opening was cancelled", true};
    if (trace.records.Count() == 0)
        return Error{WhyNothing(candidate.path, folders, traces, result)};
    loader.Finish();
    TakeDaysOff(trace);
    damage.reason = std::move(result.reason);
    return std::unique_ptr<Recording>(
        std::make_unique<EventRecording>(candidate.path, std::move(trace), damage));
}

}  // namespace
}  // namespace ctf

const Format kCtf = {"CTF 1.8",
                     30,
                     ctf::Recognises,
                     ctf::Open,
                     false,
                     {"a folder with the file metadata", "Zephyr, Linux (LTTng, perf)",
                      "waits, objects, priorities, calls, handlers"}};

}  // namespace kvx::formats
