#pragma once
// Recordings that tests export and open again.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "formats/TraceFiles.h"
#include "workbench/exports/Exporter.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/service/EventTexts.h"

namespace kvx::test {

// What an export writes of the range; the whole where none is given.
inline std::string Exported(service::TraceService& trace, const char* form,
                            std::optional<std::pair<std::int64_t, std::int64_t>> range = {},
                            bool arrows = false) {
    trace.Decoded()->WaitForAll();
    auto request = exports::WholeOf(*trace.Decoded());
    if (range) std::tie(request.start, request.end) = *range;
    request.arrows = arrows;
    std::ostringstream out;
    EXPECT_TRUE(exports::FindExporter(form)->write(request, out));
    return out.str();
}

// The events of all processors as lines, times multiplied, in a range of counts.
inline std::vector<std::string> AllEvents(
    const service::DecodedRecording& decoded, bool withCalls = true, std::int64_t factor = 1,
    std::optional<std::pair<std::int64_t, std::int64_t>> range = {}) {
    decoded.WaitForAll();
    std::vector<std::string> lines;
    for (const auto& timeline : decoded.Timelines()) {
        const auto& events = timeline->events;
        EXPECT_EQ(events.Check(), "");
        const service::EventTexts texts(decoded, *timeline);
        for (std::uint32_t e = 0; e < events.Count(); ++e) {
            const bool outside =
                range && (events.Time(e) < range->first || events.Time(e) > range->second);
            if (outside || (!withCalls && events.Kind(e) == kEventSysCall)) continue;
            lines.push_back(FormatText("%u %lld %s %s: %s", timeline->processor,
                                       static_cast<long long>(factor * events.Time(e)),
                                       service::EventKindName(events.Kind(e)),
                                       timeline->contexts.DisplayName(events.Context(e)).c_str(),
                                       texts.Detail(e).c_str()));
        }
    }
    return lines;
}

}  // namespace kvx::test
