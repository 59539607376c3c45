#include "workbench/cli/OpenTrace.h"

#include <CLI/CLI.hpp>
#include <charconv>

#include "workbench/formats/OpenRecording.h"

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

void AddTraceOptions(CLI::App& command, TraceOptions& options) {
    command.add_option("FILE", options.path, "Trace: a log, a CTF folder, or its metadata file")
        ->required();
    command.add_option_function<std::string>(
        "--cpu",
        [&options](const std::string& text) {
            const auto choice = ProcessorChoice::Parse(text);
            if (!choice) throw CLI::ValidationError("--cpu", "takes a number or all");
            options.processors = *choice;
        },
        "Processor to show, where there are several: a number, or all");
    command.add_option("--res", options.resourceFile,
                       "Resource file of a log (else the one of the log's name with .res)");
    command.add_flag("--strict", options.strict, "Exit with 4 where something was lost");
}

std::unique_ptr<service::TraceService> OpenTrace(const TraceOptions& options,
                                                 const Streams& streams, int& status) {
    Result<std::unique_ptr<service::Recording>> recording = Error{};
    {
        TerminalProgress progress(streams.error);
        recording = formats::OpenRecording(options.path, {options.resourceFile},
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
