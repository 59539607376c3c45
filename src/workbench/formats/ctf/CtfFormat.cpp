// Finds the traces of a folder and opens them.

#include <algorithm>
#include <filesystem>

#include "workbench/formats/Registry.h"
#include "workbench/formats/ctf/CtfRecording.h"
#include "workbench/formats/ctf/EventSource.h"
#include "workbench/formats/ctf/Metadata.h"

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

// Why the metadata of one of the folders cannot be read; empty: it looks well.
std::string FindFault(const std::vector<std::string>& folders) {
    for (const auto& folder : folders) {
        const auto path = (fs::path(folder) / kMetadata).string();
        const auto file = MappedFile::Open(path);
        if (!file) return file.GetError().message;
        if (file->Text().empty()) return path + ": the file is empty";
        if (!LooksLikeMetadata(file->Text())) return path + ": not the metadata of a CTF 1.8 trace";
        if (const auto fault = FindMetadataFault(file->Text()); !fault.empty())
            return path + ": " + fault;
    }
    return {};
}

// Bytes of the files of the folders, streams and others.
std::uint64_t SizeOf(const std::vector<std::string>& folders) {
    std::uint64_t bytes = 0;
    std::error_code error;
    for (const auto& folder : folders)
        for (auto at = fs::directory_iterator(folder, error);
             !error && at != fs::directory_iterator(); at.increment(error))
            if (at->is_regular_file(error) && at->path().filename() != kMetadata)
                bytes += at->file_size(error);
    return bytes;
}

std::string WhyNothing(const std::string& path, const std::vector<std::string>& folders,
                       const RunResult& result) {
    if (result.end == RunEnd::Complete) return path + ": the trace holds no events";
    // The library then keeps to itself what it does not like.
    for (const auto& folder : folders)
        if (result.reason == "Cannot create trace for `" + folder + "`")
            return folder +
                   "/metadata: the library cannot make sense of it, and does not say where";
    return path + ": " + result.reason;
}

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& /*options*/,
                                        IOpenProgress* progress) {
    const auto path =
        candidate.file ? fs::path(candidate.path).parent_path().string() : candidate.path;
    const auto folders = FindTraces(path.empty() ? "." : path);
    if (folders.empty())
        return Error{candidate.path + ": metadata of a CTF trace, but not called \"metadata\""};
    if (const auto fault = FindFault(folders); !fault.empty()) return Error{fault};
    Trace trace;
    Loader loader(trace, SizeOf(folders), progress);
    EventSource source(loader);
    const auto result = RunGraph(folders, source);
    if (loader.IsEndless())
        return Error{candidate.path + ": the metadata describes events that take no room"};
    if (result.end == RunEnd::Stopped)
        return Error{candidate.path + ": opening was cancelled", true};
    if (trace.records.Count() == 0) return Error{WhyNothing(candidate.path, folders, result)};
    return std::unique_ptr<Recording>(
        std::make_unique<CtfRecording>(candidate.path, std::move(trace), result.reason));
}

}  // namespace
}  // namespace ctf

const Format kCtf = {"CTF", 30, ctf::Recognises, ctf::Open};

}  // namespace kvx::formats
