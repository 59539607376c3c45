#pragma once
// A trace as the analyses of a sub-command take it: decoded as a whole, a range of it marked.

#include <cstdint>
#include <optional>
#include <string>

#include "trace/TraceData.h"
#include "workbench/service/TraceService.h"

namespace kvx::cli {

// Decodes the whole trace, unless it has no records.
void DecodeAll(COSTraceData& data, IViewSender& view);

inline constexpr const char* kNoEventInRange = "there is no event in the range";

// Marks from the first event at or behind start to the last one at or before end, in counts;
// without a start from the first event on, without an end to the end of the recording. Answers what
// is wrong with that; empty: nothing.
std::string MarkRange(COSTraceData& data, service::TraceService& service,
                      std::optional<std::int64_t> start, std::optional<std::int64_t> end);

}  // namespace kvx::cli
