#include "workbench/picture/RenderCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>

#include "workbench/picture/TablePicture.h"
#include "workbench/picture/TracePicture.h"
#include "workbench/picture/WritePicture.h"
#include "workbench/service/TimeArgument.h"

namespace kvx::picture {
namespace {

constexpr int kSmallest = 16;
constexpr int kLargest = 16384;
constexpr SIZE kUsual = {1600, 900};

// "1600x900"; none when it is no size.
std::optional<SIZE> SizeOf(std::string_view text) {
    const auto number = [](std::string_view digits) {
        int value = 0;
        const char* const end = digits.data() + digits.size();
        const auto [at, error] = std::from_chars(digits.data(), end, value);
        const bool fits = at == end && error == std::errc();
        return fits && value >= kSmallest && value <= kLargest ? value : 0;
    };
    const std::size_t x = text.find('x');
    if (x == std::string_view::npos) return std::nullopt;
    const SIZE size = {number(text.substr(0, x)), number(text.substr(x + 1))};
    return size.cx && size.cy ? std::optional(size) : std::nullopt;
}

// False: the message went to the error stream.
bool ReadTime(const std::string& text, const service::TraceClock& clock,
              const cli::Streams& streams, std::optional<std::int64_t>* out) {
    if (text.empty()) return true;
    const Result<std::int64_t> time = service::ParseTime(text, clock);
    if (!time) {
        streams.error << "kvxostrace: " << time.GetError().message << "\n";
        return false;
    }
    *out = *time;
    return true;
}

// False: the message went to the error stream.
bool CheckRange(const PictureRange& request, const service::Recording& recording,
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

std::vector<std::string> TableNames() {
    std::vector<std::string> names;
    for (const AnalysisForm* const form : COSTraceData::kForms) names.emplace_back(form->name);
    return names;
}

EAnalysis TableOf(const std::string& name) {
    const auto names = TableNames();
    return static_cast<EAnalysis>(std::ranges::find(names, name) - names.begin());
}

// Null: failure says why.
std::unique_ptr<PicturePage> LayOutPage(const RenderOptions& options,
                                        service::TraceService& service, const PictureRange& range,
                                        const cli::Streams& streams, std::string* failure) {
    const auto size = SizeOf(options.size);
    if (options.table.empty()) {
        auto trace = std::make_unique<TracePicture>(service, streams);
        *failure = trace->LayOut(size.value_or(kUsual), range);
        return trace;
    }
    auto table = std::make_unique<TablePicture>(service, streams, TableOf(options.table));
    *failure = table->LayOut(size, {kLargest, kLargest}, range);
    return table;
}

}  // namespace

int RunRender(const RenderOptions& options, const cli::Streams& streams) {
    if (!options.size.empty() && !SizeOf(options.size)) {
        streams.error << "kvxostrace: '" << options.size << "' is not a size: write WIDTHxHEIGHT, "
                      << "each from " << kSmallest << " to " << kLargest << " pixels\n";
        return cli::kExitUsage;
    }
    int status = cli::kExitDone;
    const auto service = cli::OpenTrace(options.trace, streams, status);
    if (!service) return status;
    const service::Recording& recording = *service->GetRecording();
    PictureRange range;
    if (!ReadTime(options.start, recording.Clock(), streams, &range.start) ||
        !ReadTime(options.end, recording.Clock(), streams, &range.end) ||
        !CheckRange(range, recording, streams)) {
        return cli::kExitUsage;
    }
    const Offscreen offscreen;
    std::string failure;
    const auto page = LayOutPage(options, *service, range, streams, &failure);
    if (failure.empty()) {
        const std::string bytes =
            IsSvgName(options.output) ? page->Svg() : EncodePng(*page, options.dpi);
        failure = WritePicture(bytes, options.output, streams.out);
    }
    if (failure.empty()) return cli::FinalStatus(options.trace, service->Losses(), streams);
    streams.error << "kvxostrace: " << failure << "\n";
    return cli::kExitFailed;
}

void AddRenderCommand(CLI::App& app, const cli::Streams& streams, int& status) {
    auto options = std::make_shared<RenderOptions>();
    CLI::App* command = app.add_subcommand(
        "render", "Make a picture of the OS Trace window, or of a table of the OS Analyze window");
    cli::AddTraceOptions(*command, options->trace);
    command
        ->add_option("-o,--output", options->output,
                     "Picture to write, PNG or by its name (.svg) SVG; - for standard output (PNG)")
        ->required();
    command->add_option("--table", options->table, "Table to show instead of the chart")
        ->check(CLI::IsMember(TableNames()));
    command->add_option("--size", options->size,
                        "Width and height in pixels; 1600x900 for the chart, the whole of a table");
    command->add_option("--start", options->start,
                        "First time shown: a count, or a time such as 1.5ms");
    command->add_option("--end", options->end, "Last time shown");
    command
        ->add_option("--dpi", options->dpi,
                     "Pixels an inch of a PNG: at 192 each pixel of the size becomes two by two")
        ->check(CLI::Range(24, 960))
        ->capture_default_str();
    command->callback([options, &streams, &status] {
        if (IsSvgName(options->output) && options->dpi != RenderOptions().dpi)
            throw CLI::ValidationError("--dpi", "is for PNG: an SVG has no pixels");
        status = RunRender(*options, streams);
    });
}

}  // namespace kvx::picture
