#pragma once
// The forms in which a decoded recording can be written for others. Each is one file here and one
// line in registry.cpp.

#include <cstdint>
#include <functional>
#include <ostream>
#include <span>
#include <string_view>
#include <vector>

#include "workbench/service/DecodedRecording.h"

namespace kvx::exports {

// What is written: the events of some processors in a range of time, both ends included.
struct ExportRequest {
    // Decoded as a whole; borrowed.
    const service::DecodedRecording& decoded;
    std::vector<const service::Timeline*> timelines;
    std::int64_t start = 0;  // counts
    std::int64_t end = 0;
    bool arrows = false;  // who makes ready whom, in forms that have arrows
    // Called now and then with a share of 0 to 1. False: stop. May be empty.
    std::function<bool(double share)> progress;
};

struct Exporter {
    const char* name;         // as on the command line
    const char* extension;    // of files, without the point
    const char* description;  // for people, without a full stop
    // The main file. False: progress stopped it.
    bool (*write)(const ExportRequest& request, std::ostream& out);
    // A second file beside it, and its extension; null: there is none.
    void (*writeCompanion)(const ExportRequest& request, std::ostream& out) = nullptr;
    const char* companionExtension = nullptr;
};

extern const Exporter kPerfetto;
extern const Exporter kBtf;
extern const Exporter kItron;
extern const Exporter kCsv;

// All of them, in the order in which people are shown them.
std::span<const Exporter* const> Exporters();
// Null: there is none of that name.
const Exporter* FindExporter(std::string_view name);

// The whole of a recording: all processors, all events.
ExportRequest WholeOf(const service::DecodedRecording& decoded);

}  // namespace kvx::exports
