#include "workbench/cli/Formats.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>

#include "workbench/exports/Exporter.h"
#include "workbench/formats/Registry.h"

namespace kvx::cli {
namespace {

using formats::Format;
using Json = nlohmann::ordered_json;

constexpr int kNameWidth = 27;

void WriteText(std::ostream& out) {
    const auto line = [&](const char* title, const char* text) {
        if (*text) out << "    " << std::left << std::setw(9) << title << text << '\n';
    };
    out << "Read\n";
    for (const Format* format : formats::Formats()) {
        if (!format->facts.isRead) continue;
        out << "  " << format->name << '\n';
        line("files", format->facts.files);
        line("kernels", format->facts.kernels);
        line("tells", format->facts.tells);
    }
    out << "  Files may be compressed with gzip or zstd.\n\n"
           "Recognised, with a way out in the message\n";
    for (const Format* format : formats::Formats())
        if (!format->facts.isRead)
            out << "  " << std::left << std::setw(kNameWidth) << format->name << format->facts.files
                << '\n';
    out << "\nWritten by export\n";
    for (const auto* exporter : exports::Exporters())
        out << "  " << std::left << std::setw(kNameWidth) << exporter->name << exporter->description
            << " (*." << exporter->extension
            << (exporter->companionExtension ? std::string(", *.") + exporter->companionExtension
                                             : "")
            << ")\n";
}

void WriteJson(std::ostream& out) {
    Json json = {
        {"read", Json::array()}, {"recognised", Json::array()}, {"written", Json::array()}};
    for (const Format* format : formats::Formats()) {
        const auto& facts = format->facts;
        Json row = {{"name", format->name}, {"files", facts.files}};
        if (facts.isRead) {
            row["kernels"] = facts.kernels;
            row["tells"] = facts.tells;
        }
        json[facts.isRead ? "read" : "recognised"].push_back(row);
    }
    for (const auto* exporter : exports::Exporters())
        json["written"].push_back({{"name", exporter->name},
                                   {"description", exporter->description},
                                   {"extension", exporter->extension}});
    out << json.dump(2) << '\n';
}

}  // namespace

void AddFormats(CLI::App& app, const Streams& streams, int& status) {
    const auto json = std::make_shared<bool>(false);
    auto* command = app.add_subcommand(
        "formats", "List what can be read and written, and what each form of recording tells");
    command->add_flag("--json", *json, "Write JSON");
    command->callback([json, streams, &status] {
        if (*json)
            WriteJson(streams.out);
        else
            WriteText(streams.out);
        status = kExitDone;
    });
}

}  // namespace kvx::cli
