#include "workbench/cli/OpenTrace.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

namespace kvx::cli {
namespace {

class TerminalProgress final : public formats::IOpenProgress {
  public:
    explicit TerminalProgress(std::ostream& out) : out_(out) {}
    ~TerminalProgress() override {
        if (shown_) out_ << "\r\033[K" << std::flush;
    }

    bool Progress(std::uint64_t done, std::uint64_t total) override {
        const auto percent = total ? done * 100 / total : 0;
        if (total ? shown_ && percent == last_ : done < last_ + kStep) return true;
        shown_ = true;
        last_ = total ? percent : done;
        out_ << "\rReading... " << last_ << (total ? " %" : " records") << std::flush;
        return true;
    }

  private:
    static constexpr std::uint64_t kStep = 100000;
    std::ostream& out_;
    std::uint64_t last_ = 0;
    bool shown_ = false;
};

}  // namespace

std::optional<ProcessorChoice> ProcessorChoice::Parse(const std::string& text) {
    ProcessorChoice choice;
    choice.all_ = text == "all";
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    if (parsed.ec == std::errc() && parsed.ptr == end) choice.number_ = number;
    if (!choice.IsGiven()) return std::nullopt;
    return choice;
}

void AddOpenOptions(CLI::App& command, formats::OpenOptions& options) {
    command.add_option("--res", options.resourceFile,
                       "Resource file of a log (else the one of the log's name with .res)");
    command
        .add_option("--calls", options.calls,
                    "SystemView of FreeRTOS: whose numbers its calls have, espressif or segger "
                    "(else what the recording shows; other formats name their calls)")
        ->check([](const std::string& text) {
            const auto known = formats::CallNumberings();
            return std::ranges::find(known, text) != known.end()
                       ? std::string()
                       : "takes espressif or segger, not '" + text + "'";
        });
    command
        .add_option("--descriptions", options.descriptions,
                    "SystemView: folder of the files that describe calls (SYSVIEW_FreeRTOS.txt); "
                    "else they are looked for beside the recording and in the user's data folder")
        ->check(CLI::ExistingDirectory);
    command.add_option_function<std::string>(
        "--frequency",
        [&options](const std::string& text) {
            const auto frequency = formats::ParseFrequency(text);
            if (!frequency)
                throw CLI::ValidationError("--frequency",
                                           "takes a frequency such as 1MHz, not '" + text + "'");
            options.frequency = *frequency;
        },
        "ThreadX, and SystemView where it does not tell: ticks of the counter a second, such as "
        "1MHz (else times are counts; other formats tell their times)");
}

void AddTraceOptions(CLI::App& command, TraceOptions& options) {
    command
        .add_option_function<std::vector<std::string>>(
            "FILE",
            [&options](const std::vector<std::string>& files) {
                options.path = files.front();
                options.open.moreFiles.assign(files.begin() + 1, files.end());
            },
            "Trace: a file, a CTF folder, or its metadata file; of SystemView also several files, "
            "one a processor")
        ->required();
    AddReadingOptions(command, options);
}

void AddReadingOptions(CLI::App& command, TraceOptions& options) {
    AddOpenOptions(command, options.open);
    command.add_option_function<std::string>(
        "--cpu",
        [&options](const std::string& text) {
            const auto choice = ProcessorChoice::Parse(text);
            if (!choice) throw CLI::ValidationError("--cpu", "takes a number or all");
            options.processors = *choice;
        },
        "Processor to show, where there are several: a number, or all");
    command.add_flag("--strict", options.strict, "Exit with 4 where something was lost");
}

std::unique_ptr<service::TraceService> OpenTrace(const TraceOptions& options,
                                                 const Streams& streams, int& status) {
    Result<std::unique_ptr<service::Recording>> recording = Error{};
    {
        TerminalProgress progress(streams.error);
        recording = formats::OpenRecording(options.path, options.open,
                                           streams.terminal ? &progress : nullptr);
    }
    if (!recording) {
        streams.error << "kvxostrace: " << recording.GetError().message << '\n';
        status = kExitUnreadable;
        return nullptr;
    }
    for (const auto& warning : (*recording)->Warnings())
        streams.error << "kvxostrace: " << warning << '\n';
    auto service = std::make_unique<service::TraceService>();
    service->SetRecording(std::move(*recording));
    const auto number = options.processors.Number();
    if (number && !service->ShowProcessor(*number)) {
        streams.error << "kvxostrace: " << options.path << ": there is no processor " << *number
                      << " in it\n";
        status = kExitUsage;
        return nullptr;
    }
    return service;
}

int FinalStatus(const TraceOptions& options, const service::LossCounters& losses,
                const Streams& streams) {
    streams.out.flush();
    if (!streams.out) {
        streams.error << "kvxostrace: the output cannot be written\n";
        return kExitFailed;
    }
    return options.strict && losses.TotalLosses() > 0 ? kExitLosses : kExitDone;
}

}  // namespace kvx::cli
