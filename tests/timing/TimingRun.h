#pragma once
// Runs sub-commands on logs that a test writes.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "formats/TraceFiles.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::test {

class TimingRun {
  public:
    // priorities: of tasks 1, 2, ...; empty: the recording tells none.
    explicit TimingRun(std::string_view log, const std::vector<int>& priorities = {}) {
        path_ = folder_.Write("x.log", log);
        if (priorities.empty()) return;
        nlohmann::json resources = nlohmann::json::object();
        for (std::size_t i = 0; i < priorities.size(); ++i)
            resources["T" + std::to_string(i + 1)] = {
                {"Type", "Task"}, {"Attributes", {{"id", i + 1}, {"pri", priorities[i]}}}};
        folder_.Write("x.res",
                      nlohmann::json({{"TimeScale", "us"}, {"Resources", resources}}).dump());
    }

    const std::string& Path() const { return path_; }
    std::string Write(const std::string& name, std::string_view text) const {
        return folder_.Write(name, text);
    }
    // The arguments behind the name of the log. Keeps what was written.
    int Run(const std::string& command, std::vector<std::string> arguments = {}) {
        out_.str("");
        error_.str("");
        arguments.insert(arguments.begin(), {"kvxostrace", command, path_});
        std::vector<const char*> all;
        for (const auto& argument : arguments) all.push_back(argument.c_str());
        return cli::RunSubCommand(static_cast<int>(all.size()), all.data(), {out_, error_});
    }
    std::string Out() const { return out_.str(); }
    std::string Error() const { return error_.str(); }

    nlohmann::json Json(const std::string& command, std::vector<std::string> arguments = {}) {
        arguments.emplace_back("--json");
        const int status = Run(command, std::move(arguments));
        EXPECT_TRUE(status == cli::kExitDone || status == cli::kExitViolated) << error_.str();
        return nlohmann::json::parse(out_.str(), nullptr, false);
    }
    // The rows of a table.
    nlohmann::json Table(const std::string& name, std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), {"--table", name});
        return Json("analyze", std::move(arguments))[name];
    }
    nlohmann::json Jobs(const std::string& task) { return Table("jobs", {"--task", task}); }

  private:
    TempFolder folder_;
    std::string path_;
    std::ostringstream out_;
    std::ostringstream error_;
};

}  // namespace kvx::test
