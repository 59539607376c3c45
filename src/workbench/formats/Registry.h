#pragma once
// The formats that can be opened. A format looks at a file or folder and says whether it is its
// own; that of the highest priority that says so opens it.

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats {

// What a format looks at. For a folder, file is null.
struct Candidate {
    std::string path;
    MappedFile* file = nullptr;

    std::string_view Text() const { return file ? file->Text() : std::string_view(); }
    // Where another program finds the file's content, decompressed.
    std::string ContentPath() const;
};

// What people are told of a format.
struct FormatFacts {
    const char* files = "";    // names that its files usually have
    const char* kernels = "";  // whose recordings they are
    // Of: waits, objects, priorities, calls, handlers; separated by commas.
    const char* tells = "";
    bool isRead = true;  // false: it is recognised, and the message names a way out
};

struct Format {
    const char* name;
    int priority;  // higher: the form is more particular
    bool (*recognises)(const Candidate& candidate);
    // May take the mapped file out of the candidate.
    Result<std::unique_ptr<Recording>> (*open)(Candidate& candidate, const OpenOptions& options,
                                               IOpenProgress* progress);
    bool takesSeveralFiles = false;  // one a processor
    FormatFacts facts = {};
};

extern const Format kItronText;
extern const Format kItronStandard;
extern const Format kCtf;
extern const Format kFtrace;
extern const Format kTraceDat;
extern const Format kBtf;
extern const Format kThreadX;
extern const Format kSystemView;
// Recognised, but not read.
extern const Format kCtf2;
extern const Format kCtfStream;
extern const Format kPerfData;
extern const Format kPerfetto;
extern const Format kTraceEvents;
extern const Format kTraceRecorder;
extern const Format kTracealyzer;
extern const Format kVcd;

// All of them.
std::span<const Format* const> Formats();

}  // namespace kvx::formats
