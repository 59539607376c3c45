#pragma once
// What a recording lost, and what is worth knowing of it, in words.

#include "platform/base/Types.h"
#include "workbench/service/TraceService.h"

namespace kvx::viewer {

// "1 loss", "2 notes"; empty: there is nothing to tell.
CString LossSummary(const service::TraceService& trace);
// The same one by one, with counts; empty: there is nothing to tell.
CString LossDetails(const service::TraceService& trace);

}  // namespace kvx::viewer
