#pragma once
// Opens a trace, decodes it for every processor, once at once and once in small pieces, and asks
// for texts. Anything inconsistent ends the program.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "workbench/formats/OpenRecording.h"
#include "workbench/service/TraceService.h"

namespace kvx::fuzz {

inline void Require(bool holds, const std::string& what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

inline void AskForTexts(service::TraceService& trace, std::uint32_t events) {
    constexpr std::uint32_t kMostAsked = 300;
    for (std::uint32_t event = 0; event < std::min(events, kMostAsked); ++event) {
        Bstr tip;
        Require(trace.GetEventTipText(event, tip.Receive()) == S_OK, "an event has no tip");
        trace.EventDetail(event);
    }
}

inline void DecodeAll(const std::string& path) {
    constexpr std::size_t kMostProcessors = 3;
    auto recording = formats::OpenRecording(path);
    if (!recording)
        return Require(!recording.GetError().message.empty(), "an error without a message");
    service::TraceService trace;
    trace.SetRecording(std::move(*recording));
    const auto processors = trace.GetRecording()->Processors();
    const auto records = trace.GetRecording()->RecordCount();
    for (std::size_t i = 0; i < std::min(processors.size(), kMostProcessors); ++i) {
        trace.ShowProcessor(processors[i]);
        const auto whole = trace.Summarize();
        Require(trace.Check().empty(), trace.Check());
        AskForTexts(trace, static_cast<std::uint32_t>(whole.Shown().events));
        trace.DiscardData();
        std::int64_t a = 0;
        std::int64_t b = 0;
        std::int64_t c = 0;
        for (std::uint32_t record = 0; record < records; record += 7)
            trace.AnalyzeRecords(static_cast<std::int32_t>(record),
                                 static_cast<std::int32_t>(std::min(record + 6, records - 1)), &a,
                                 &b, &c);
        Require(trace.Check().empty(), trace.Check());
        std::uint32_t events = 0;
        trace.GetEventCount(&events);
        Require(events == whole.Shown().events, "pieces give other events than the whole");
    }
}

}  // namespace kvx::fuzz
