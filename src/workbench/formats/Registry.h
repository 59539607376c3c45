#pragma once
// The formats that can be opened. A format looks at a file or folder and says whether it is its
// own; that of the highest priority that says so opens it.

#include <memory>
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

struct Format {
    const char* name;
    int priority;  // higher: the form is more particular
    bool (*recognises)(const Candidate& candidate);
    // May take the mapped file out of the candidate.
    Result<std::unique_ptr<Recording>> (*open)(Candidate& candidate, const OpenOptions& options,
                                               IOpenProgress* progress);
    bool takesSeveralFiles = false;  // one a processor
};

extern const Format kItronText;
extern const Format kItronStandard;
extern const Format kCtf;
extern const Format kFtrace;
extern const Format kTraceDat;
extern const Format kBtf;
extern const Format kThreadX;
extern const Format kSystemView;

}  // namespace kvx::formats
