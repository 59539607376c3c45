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

// cut: why the file's end is missing; empty where it is not. A recording that cannot be opened for
// that is told of the same way.
Result<std::unique_ptr<Recording>> WithoutTail(Result<std::unique_ptr<Recording>> recording,
                                               const std::string& cut) {
    if (cut.empty()) return recording;
    if (!recording) return recording.GetError().cancelled ? recording.GetError() : Error{cut};
    (*recording)->NoteDamagedTail(cut);
    return recording;
}

Result<std::unique_ptr<Recording>> Open(const std::string& path, const OpenOptions& options,
                                        IOpenProgress* progress) {
    Candidate candidate{path, nullptr};
    std::error_code error;
    const bool folder = std::filesystem::is_directory(path, error);
    std::optional<FileContent> content;
    std::string cut;
    if (!folder) {
        auto read = ReadContent(path, progress);
        if (!read) return read.GetError();
        cut = std::move(read->cut);
        if (read->file.Text().empty())
            return Error{cut.empty() ? path + ": the file is empty" : cut};
        content = std::move(*read);
        candidate.file = &content->file;
    }
    const Format* found = nullptr;
    for (const auto* format : kFormats)
        if ((!found || format->priority > found->priority) && format->recognises(candidate))
            found = format;
    if (found && !options.moreFiles.empty() && !found->takesSeveralFiles)
        return Error{options.moreFiles.front() + ": a second file: " + path + " (" + found->name +
                     ") is a recording by itself"};
    if (found) return WithoutTail(found->open(candidate, options, progress), cut);
    if (folder) std::filesystem::directory_iterator(path, error);
    if (folder && error) return Error{path + ": " + error.message()};
    if (folder) return Error{path + ": the folder holds no CTF trace (no file \"metadata\" in it)"};
    if (!cut.empty()) return Error{cut};
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
