#pragma once
// Traces that tests write, open and look at.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Text.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/service/TraceService.h"

namespace kvx::test {

// A folder of its own for one test, removed with its content.
class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kvx-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    TempFolder(const TempFolder&) = delete;
    ~TempFolder() { std::filesystem::remove_all(path_); }

    std::string Path(const std::string& name) const { return (path_ / name).string(); }
    std::string Write(const std::string& name, std::string_view content) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::ofstream(Path(name), std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
        return Path(name);
    }

  private:
    std::filesystem::path path_;
};

// Folder of recordings of real kernels; empty where it is absent.
inline std::string RealTraces() {
    const char* source = std::getenv("KVX_SOURCE_DIR");
    if (!source) return {};
    const auto folder = std::filesystem::path(source) / "../shared/traces";
    return std::filesystem::exists(folder) ? folder.lexically_normal().string() : std::string();
}

// A service that shows the trace at path. Ends the test where it cannot be opened.
inline std::unique_ptr<service::TraceService> Show(const std::string& path,
                                                   const std::string& resourceFile = {}) {
    auto recording = formats::OpenRecording(path, {.resourceFile = resourceFile});
    if (!recording) {
        ADD_FAILURE() << recording.GetError().message;
        return nullptr;
    }
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::move(*recording));
    return trace;
}

// The event as a line: time, kind, context, detail.
inline std::string EventLine(service::TraceService& trace, std::uint32_t event) {
    static const char* const kKinds[] = {"?", "run", "state", "call"};
    std::int32_t kind = 0;
    std::int64_t time = 0;
    std::int32_t line = 0;
    trace.GetEventKind(event, &kind);
    trace.GetEventTime(event, &time);
    trace.GetEventContext(event, &line);
    return FormatText("%lld %s %s: %s", static_cast<long long>(time), kKinds[kind],
                      trace.LineName(line).c_str(), trace.EventDetail(event).c_str());
}

// All events decoded so far, which must be consistent.
inline std::vector<std::string> Events(service::TraceService& trace) {
    EXPECT_EQ(trace.Check(), "");
    std::uint32_t count = 0;
    trace.GetEventCount(&count);
    std::vector<std::string> lines;
    for (std::uint32_t event = 0; event < count; ++event) lines.push_back(EventLine(trace, event));
    return lines;
}

// The events of a text log, decoded at once.
inline std::vector<std::string> EventsOfLog(std::string_view log, std::string_view resources = {},
                                            std::uint32_t processor = 0) {
    const TempFolder folder;
    if (!resources.empty()) folder.Write("x.res", resources);
    const auto trace = Show(folder.Write("x.log", log));
    if (!trace) return {};
    EXPECT_TRUE(processor == 0 || trace->ShowProcessor(processor));
    trace->Summarize();
    return Events(*trace);
}

// What a log loses, by name and count; notes left out unless asked for.
inline std::vector<std::string> CountersOf(const service::LossCounters& losses,
                                           bool notes = false) {
    std::vector<std::string> lines;
    for (int i = 0; i < static_cast<int>(service::Loss::Count); ++i) {
        const auto loss = static_cast<service::Loss>(i);
        const auto& info = service::GetLossInfo(loss);
        if (losses.Get(loss) > 0 && (notes || info.isLoss))
            lines.push_back(FormatText("%s %llu", std::string(info.name).c_str(),
                                       static_cast<unsigned long long>(losses.Get(loss))));
    }
    return lines;
}

inline std::vector<std::string> LossesOfLog(std::string_view log, bool notes = false) {
    const TempFolder folder;
    const auto trace = Show(folder.Write("x.log", log));
    if (!trace) return {};
    return CountersOf(trace->Summarize().losses, notes);
}

}  // namespace kvx::test
