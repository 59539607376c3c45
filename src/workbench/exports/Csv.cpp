// The events as comma-separated values (RFC 4180), with the columns of `kvxostrace events`.

#include "workbench/exports/EventWalk.h"
#include "workbench/service/EventTexts.h"

namespace kvx::exports {
namespace {

// A field in quotes where it needs them.
void WriteField(std::ostream& out, const std::string& text) {
    if (text.find_first_of("\",\r\n") == std::string::npos) {
        out << text;
        return;
    }
    out << '"';
    for (const char c : text) {
        if (c == '"') out << '"';
        out << c;
    }
    out << '"';
}

bool Write(const ExportRequest& request, std::ostream& out) {
    out << "event,time,kind,context,detail,cpu\r\n";
    std::uint64_t number = 0;
    return EventWalk(request).Run([&](const Event& event) {
        const service::Timeline& timeline = *event.timeline;
        const service::EventStore& events = timeline.events;
        out << number++ << ',' << events.Time(event.number) << ','
            << service::EventKindName(events.Kind(event.number)) << ',';
        WriteField(out, timeline.contexts.DisplayName(events.Context(event.number)));
        out << ',';
        WriteField(out, service::EventTexts(request.decoded, timeline).Detail(event.number));
        out << ',' << timeline.processor << "\r\n";
    });
}

}  // namespace

const Exporter kCsv = {"csv", "csv", "Events as comma-separated values", Write};

}  // namespace kvx::exports
