#pragma once
// The model of jobs of a recording, with the rules that a sub-command is given.

#include <memory>
#include <string>

#include "workbench/cli/OpenTrace.h"
#include "workbench/timing/Model.h"
#include "workbench/timing/Rules.h"

namespace kvx::cli {

struct RecordingModel {
    timing::Rules rules;
    std::unique_ptr<timing::Model> model;
};

// rulesPath: empty: no rules. Null model: why is written to the error stream, and status is set.
// Borrows the recording.
RecordingModel MakeModel(const service::DecodedRecording& decoded, const std::string& rulesPath,
                         const Streams& streams, int& status);

// The timeline of the processor that is chosen; none: all of them.
std::optional<std::uint32_t> TimelineOf(const service::DecodedRecording& decoded,
                                        const ProcessorChoice& choice);

}  // namespace kvx::cli
