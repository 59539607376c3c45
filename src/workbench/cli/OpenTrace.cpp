#include "workbench/cli/OpenTrace.h"

#include <CLI/CLI.hpp>

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

void AddTraceOptions(CLI::App& command, TraceOptions& options) {
    command.add_option("FILE", options.path, "Trace: a log, a CTF folder, or its metadata file")
        ->required();
    command.add_option("--cpu", options.processor, "Processor to show, where there are several");
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
    if (options.processor && !service->ShowProcessor(*options.processor)) {
        streams.error << "kvxostrace: " << options.path << ": there is no processor "
                      << *options.processor << " in it\n";
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
