#include "workbench/desktop/picture/RenderCommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "workbench/cli/OpenTrace.h"
#include "workbench/cli/TimeArgument.h"
#include "workbench/desktop/picture/SavePicture.h"

namespace kvx::desktop {
namespace {

constexpr int kSmallest = 16;
constexpr int kLargest = 16384;

struct Options {
    cli::TraceOptions trace;
    std::string output;
    std::string size = "1600x900";
    std::string start;
    std::string end;
};

// "1600x900"; an empty size when it is none.
QSize SizeOf(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split('x');
    if (parts.size() != 2) return {};
    const QSize size(parts[0].toInt(), parts[1].toInt());
    const bool fits = size.width() >= kSmallest && size.height() >= kSmallest &&
                      size.width() <= kLargest && size.height() <= kLargest;
    return fits ? size : QSize();
}

// False: the message went to the error stream.
bool ReadTime(const std::string& text, const service::TraceClock& clock,
              const cli::Streams& streams, std::optional<std::int64_t>* out) {
    if (text.empty()) return true;
    const Result<std::int64_t> time = cli::ParseTime(text, clock);
    if (!time) {
        streams.error << "kvxostrace: " << time.GetError().message << "\n";
        return false;
    }
    *out = *time;
    return true;
}

// False: the message went to the error stream.
bool CheckRange(const PictureRequest& request, const service::Recording& recording,
                const cli::Streams& streams) {
    const std::int64_t start = request.start.value_or(recording.FirstTime());
    const std::int64_t end = request.end.value_or(recording.LastTime());
    const bool isWhole = !request.start && !request.end;
    if (isWhole || (start >= recording.FirstTime() && end <= recording.LastTime() && start < end)) {
        return true;
    }
    streams.error << "kvxostrace: " << start << " to " << end
                  << " is not a range of the trace, which goes from " << recording.FirstTime()
                  << " to " << recording.LastTime() << "\n";
    return false;
}

int Render(const Options& options, const cli::Streams& streams) {
    PictureRequest request;
    request.size = SizeOf(options.size);
    if (request.size.isEmpty()) {
        streams.error << "kvxostrace: '" << options.size << "' is not a size: write WIDTHxHEIGHT, "
                      << "each from " << kSmallest << " to " << kLargest << " pixels\n";
        return cli::kExitUsage;
    }
    int status = cli::kExitDone;
    std::unique_ptr<service::TraceService> trace = cli::OpenTrace(options.trace, streams, status);
    if (!trace) return status;
    const service::Recording& recording = *trace->GetRecording();
    if (!ReadTime(options.start, recording.Clock(), streams, &request.start) ||
        !ReadTime(options.end, recording.Clock(), streams, &request.end) ||
        !CheckRange(request, recording, streams)) {
        return cli::kExitUsage;
    }
    const auto losses = SavePicture(std::move(trace), request, options.output, streams);
    return losses ? cli::FinalStatus(options.trace, *losses, streams) : cli::kExitFailed;
}

}  // namespace

void AddRenderCommand(CLI::App& app, const cli::Streams& streams, int& status) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("render", "Make a picture of the OS Trace window");
    cli::AddTraceOptions(*command, options->trace);
    command
        ->add_option("-o,--output", options->output,
                     "Picture to write (PNG); - for standard output")
        ->required();
    command->add_option("--size", options->size, "Width and height in pixels")
        ->capture_default_str();
    command->add_option("--start", options->start,
                        "First time shown: a count, or a time such as 1.5ms");
    command->add_option("--end", options->end, "Last time shown");
    command->callback([options, &streams, &status] { status = Render(*options, streams); });
}

}  // namespace kvx::desktop
