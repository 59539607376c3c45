#include "workbench/simulation/LogLine.h"

#include <array>
#include <charconv>
#include <cstring>

namespace kvx::simulation {
namespace {

constexpr std::array<std::string_view, 5> kStates = {"DORMANT", "RUNNABLE", "WAITING", "SUSPENDED",
                                                     "WAITING-SUSPENDED"};
constexpr std::array<std::string_view, 4> kHandlers = {"int handler ", "isr ", "cyclic handler ",
                                                       "alarm handler "};

// Appends to a line.
class LineWriter {
  public:
    explicit LineWriter(char* to) : at_(to) {}

    char* End() const { return at_; }
    LineWriter& Text(std::string_view text) {
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
        return *this;
    }
    LineWriter& Number(std::int64_t number) {
        at_ = std::to_chars(at_, at_ + 24, number).ptr;
        return *this;
    }
    LineWriter& Value(std::string_view name, std::int32_t value) {
        Text(" ").Text(name).Text("=");
        if (!IsMessageAddress(name)) return Number(value);
        Text("0x");
        at_ = std::to_chars(at_, at_ + 8, static_cast<std::uint32_t>(value), 16).ptr;
        return *this;
    }

  private:
    char* at_;
};

void PutState(const TraceRecord& record, LineWriter& line) {
    line.Text("task ").Number(record.id).Text(" becomes ");
    line.Text(NameOf(record.state)).Text(".");
}

void PutHandler(std::string_view crossing, const TraceRecord& record, LineWriter& line) {
    line.Text(crossing).Text(kHandlers[static_cast<std::size_t>(record.handler)]);
    line.Number(record.id).Text(".");
}

void PutCall(const TraceRecord& record, LineWriter& line) {
    const Service& service = *record.service;
    line.Text("enter to ").Text(service.name);
    for (std::size_t i = 0; i < service.parameterCount; ++i)
        line.Value(service.parameters[i].name, record.values[i]).Text(".");
    if (service.parameterCount == 0) line.Text(".");
}

void PutReturn(const TraceRecord& record, LineWriter& line) {
    const Service& service = *record.service;
    line.Text("leave from ").Text(service.name).Value("ercd", record.values[0]).Text(".");
    if (record.values[0] >= 0 && !service.returned.empty())
        line.Value(service.returned, record.values[1]).Text(".");
}

void PutMessage(const TraceRecord& record, LineWriter& line) {
    if (record.id != 0) line.Text("applog str : ID ").Number(record.id).Text(" : ");
    const std::string_view text = record.text;
    const auto place = text.find("%d");
    line.Text(text.substr(0, place));
    if (place != std::string_view::npos) line.Number(record.values[0]).Text(text.substr(place + 2));
}

void PutRecord(const TraceRecord& record, LineWriter& line) {
    switch (record.kind) {
        case TraceKind::DispatchTo:
            line.Text("dispatch to task ").Number(record.id).Text(".");
            return;
        case TraceKind::DispatchFrom:
            line.Text("dispatch from task ").Number(record.id).Text(".");
            return;
        case TraceKind::TaskState:
            return PutState(record, line);
        case TraceKind::HandlerEnter:
            return PutHandler("enter to ", record, line);
        case TraceKind::HandlerLeave:
            return PutHandler("leave from ", record, line);
        case TraceKind::CallEnter:
            return PutCall(record, line);
        case TraceKind::CallLeave:
            return PutReturn(record, line);
        case TraceKind::Message:
            return PutMessage(record, line);
    }
}

}  // namespace

std::string_view NameOf(LoggedState state) {
    return kStates[static_cast<std::size_t>(state)];
}

char* PutLogLine(const TraceRecord& record, char* to) {
    LineWriter line(to);
    line.Text("[").Number(record.time).Text("] ");
    PutRecord(record, line);
    return line.Text("\n").End();
}

}  // namespace kvx::simulation
