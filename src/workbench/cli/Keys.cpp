#include "workbench/cli/Keys.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "traceview/model/KeyBindings.h"

namespace kvx::cli {
namespace {

// The help page of the keys, but for its rows; the other pages stand in src/workbench/help.
constexpr char kPageStart[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Keys of the OS Trace window - KVX Workbench</title>
<link rel="stylesheet" href="help.css">
</head>
<body>
<nav>
<a href="index.html">Workbench</a>
<a href="ostrace.html">OS Trace</a>
<a href="osanalyze.html">OS Analyze</a>
<a href="workspaces.html">Workspaces and target</a>
<a href="keys.html" aria-current="page">Keys</a>
</nav>
<main>
<h1>Keys of the OS Trace window</h1>
<p>The chart must have the focus: click into it once.</p>
<table>
<tr><th>Key</th><th>What it does</th></tr>
)";
constexpr char kPageEnd[] = "</table>\n</main>\n</body>\n</html>\n";

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

void PrintTable(std::ostream& out) {
    out << "| key | what it does |\n|---|---|\n";
    for (const KeyBinding& binding : KeyBindings()) {
        out << "| " << binding.keyText << " | " << binding.meaning << " |\n";
    }
}

void PrintPage(std::ostream& out) {
    out << kPageStart;
    for (const KeyBinding& binding : KeyBindings()) {
        out << "<tr><td><kbd>" << Escape(binding.keyText) << "</kbd></td><td>"
            << Escape(binding.meaning) << "</td></tr>\n";
    }
    out << kPageEnd;
}

}  // namespace

void AddKeys(CLI::App& app, const Streams& streams, int& status) {
    const auto asPage = std::make_shared<bool>(false);
    CLI::App* const command =
        app.add_subcommand("keys", "The keys of the OS Trace window, as a Markdown table");
    command->add_flag("--html", *asPage, "Write the page of the help book instead");
    command->callback([asPage, &streams, &status] {
        if (*asPage) {
            PrintPage(streams.out);
        } else {
            PrintTable(streams.out);
        }
        status = kExitDone;
    });
}

}  // namespace kvx::cli
