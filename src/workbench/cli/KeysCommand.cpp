#include "workbench/cli/KeysCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <utility>

#include "host/CommandIds.h"
#include "traceview/model/KeyLines.h"

namespace kvx::cli {
namespace {

// The help page of the keys, but for its rows; the other pages stand in src/workbench/help.
constexpr char kPageStart[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Keys - KVX Workbench</title>
<link rel="stylesheet" href="help.css">
</head>
<body>
<nav>
<a href="index.html">Workbench</a>
<a href="ostrace.html">OS Trace</a>
<a href="osanalyze.html">OS Analyze</a>
<a href="timing.html">Findings and timing</a>
<a href="workspaces.html">Workspaces and target</a>
<a href="keys.html" aria-current="page">Keys</a>
</nav>
<main>
<h1>Keys</h1>
<p>The window must have the focus: click into it once.</p>
)";
constexpr char kPageEnd[] = "</main>\n</body>\n</html>\n";

struct WindowKeys {
    const char* window;
    std::vector<KeyLine> lines;
};

std::vector<WindowKeys> AllKeys() {
    return {{"OS Trace window", TraceKeyLines()},
            {"OS Analyze window", AcceleratorLines(ids::kMenuOSAnalyze)}};
}

std::string Escape(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<') {
            escaped += "&lt;";
        } else if (c == '&') {
            escaped += "&amp;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

void PrintTables(std::ostream& out) {
    const char* before = "";
    for (const WindowKeys& keys : AllKeys()) {
        out << std::exchange(before, "\n") << "## " << keys.window
            << "\n\n| key | what it does |\n|---|---|\n";
        for (const KeyLine& line : keys.lines) {
            out << "| " << line.keyText << " | " << line.meaning << " |\n";
        }
    }
}

void PrintPage(std::ostream& out) {
    out << kPageStart;
    for (const WindowKeys& keys : AllKeys()) {
        out << "<h2>" << keys.window
            << "</h2>\n<table>\n<tr><th>Key</th><th>What it does</th></tr>\n";
        for (const KeyLine& line : keys.lines) {
            out << "<tr><td><kbd>" << Escape(line.keyText) << "</kbd></td><td>"
                << Escape(line.meaning) << "</td></tr>\n";
        }
        out << "</table>\n";
    }
    out << kPageEnd;
}

}  // namespace

void AddKeys(CLI::App& app, const Streams& streams, int& status) {
    const auto asPage = std::make_shared<bool>(false);
    CLI::App* const command =
        app.add_subcommand("keys", "The keys of the windows, as Markdown tables");
    command->add_flag("--html", *asPage, "Write the page of the help book instead");
    command->callback([asPage, &streams, &status] {
        if (*asPage) {
            PrintPage(streams.out);
        } else {
            PrintTables(streams.out);
        }
        status = kExitDone;
    });
}

}  // namespace kvx::cli
