// The index of formats: one line each.

#include <array>
#include <exception>
#include <filesystem>
#include <optional>

#include "workbench/formats/Registry.h"
#include "workbench/formats/compressed/Decompress.h"

namespace kvx::formats {
namespace {

constexpr std::array kFormats = {
    &kItronText,   &kItronStandard, &kThreadX,     &kSystemView, &kBtf,      &kFtrace,
    &kTraceDat,    &kCtf,           &kCtf2,        &kCtfStream,  &kPerfData, &kPerfetto,
    &kTraceEvents, &kTraceRecorder, &kTracealyzer, &kVcd,
};

Result<std::unique_ptr<Recording>> Open(const std::string& path, const OpenOptions& options,
                                        IOpenProgress* progress) {
    Candidate candidate{path, nullptr};
    std::error_code error;
    const bool folder = std::filesystem::is_directory(path, error);
    std::optional<MappedFile> file;
    if (!folder) {
        auto mapped = MapFile(path);
        if (!mapped) return mapped.GetError();
        if (IsCompressed(mapped->Text())) {
            mapped = Decompress(path, mapped->Text(), progress);
            if (!mapped) return mapped.GetError();
        }
        if (mapped->Text().empty()) return Error{path + ": the file is empty"};
        file = std::move(*mapped);
        candidate.file = &*file;
    }
    const Format* found = nullptr;
    for (const auto* format : kFormats)
        if ((!found || format->priority > found->priority) && format->recognises(candidate))
            found = format;
    if (found && !options.moreFiles.empty() && !found->takesSeveralFiles)
        return Error{options.moreFiles.front() + ": a second file: " + path + " (" + found->name +
                     ") is a recording by itself"};
    if (found) return found->open(candidate, options, progress);
    if (folder) std::filesystem::directory_iterator(path, error);
    if (folder && error) return Error{path + ": " + error.message()};
    if (folder) return Error{path + ": the folder holds no CTF trace (no file \"metadata\" in it)"};
    return Error{path + ": not a trace of a known format (\"kvxostrace formats\" lists them)"};
}

}  // namespace

std::span<const Format* const> Formats() {
    return kFormats;
}

std::string Candidate::ContentPath() const {
    const auto memory = file ? file->MemoryPath() : std::string();
    return memory.empty() ? std::filesystem::absolute(path).string() : memory;
}

Result<std::unique_ptr<Recording>> OpenRecording(const std::string& path,
                                                 const OpenOptions& options,
                                                 IOpenProgress* progress) {
    try {
        return Open(path, options, progress);
    } catch (const std::exception& error) {
        return Error{path + ": " + error.what()};
    }
}

}  // namespace kvx::formats
