#include "workbench/simulation/Generate.h"

#include <filesystem>

#include "workbench/simulation/DriveController.h"
#include "workbench/simulation/FileOutput.h"
#include "workbench/simulation/LogWriter.h"
#include "workbench/simulation/ResourceWriter.h"

namespace kvx::simulation {
namespace {

constexpr std::uint64_t kLinesPerProgress = 1 << 16;
// Chosen by eye; any change to the application asks for another look.
constexpr GenerateOptions kDemonstration{.events = 1799, .seed = 12100};

// Takes no notice of what is recorded.
class NoSink : public ITraceSink {
  public:
    void Write(const TraceRecord&) override {}
};

std::string WriteResource(const std::string& path) {
    NoSink sink;
    const DriveController controller(sink, 0);
    return WriteFile(path, ResourceText(controller.GetKernel()));
}

}  // namespace

std::string ResourcePath(const std::string& logPath) {
    return std::filesystem::path(logPath).replace_extension(".res").string();
}

std::string GenerateLog(const GenerateOptions& options, IByteOutput& output,
                        IGenerateProgress* progress) {
    LogWriter writer(output, options.events);
    DriveController controller(writer, options.seed);
    std::uint64_t next = kLinesPerProgress;
    while (!writer.Done()) {
        controller.Step();
        if (!progress || writer.Lines() < next) continue;
        progress->Progress(writer.Lines(), options.events);
        next += kLinesPerProgress;
    }
    return writer.Flush() ? "" : output.Failure();
}

std::string GenerateFiles(const GenerateOptions& options, const std::string& path,
                          IGenerateProgress* progress) {
    const std::string resource = ResourcePath(path);
    if (resource == path)
        return path + ": this is the name of the resource file; give the log another ending";
    FileOutput file(path);
    if (!file.IsOpen()) return file.Failure();
    if (file.IsRegular())
        if (std::string failure = WriteResource(resource); !failure.empty()) return failure;
    if (std::string failure = GenerateLog(options, file, progress); !failure.empty())
        return failure;
    return file.Close() ? "" : file.Failure();
}

std::string WriteDemonstration(const std::string& path) {
    return GenerateFiles(kDemonstration, path);
}

}  // namespace kvx::simulation
