#include "workbench/cli/GenerateCommand.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <charconv>
#include <limits>
#include <memory>
#include <system_error>

#include "workbench/simulation/Generate.h"

namespace kvx::cli {
namespace {

constexpr std::string_view kStandardOutput = "-";

class StreamOutput : public simulation::IByteOutput {
  public:
    explicit StreamOutput(std::ostream& out) : out_(out) {}
    bool Write(std::string_view bytes) override {
        errno = 0;
        out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
        if (!out_) error_ = errno;
        return static_cast<bool>(out_);
    }
    std::string Failure() const override {
        return "standard output: " +
               (error_ ? std::generic_category().message(error_) : "cannot be written");
    }

  private:
    std::ostream& out_;
    int error_ = 0;
};

// One line that is written over and over.
class TerminalProgress : public simulation::IGenerateProgress {
  public:
    explicit TerminalProgress(std::ostream& terminal) : terminal_(terminal) {}
    ~TerminalProgress() override {
        if (percent_ >= 0) terminal_ << "\r\x1b[K" << std::flush;
    }
    void Progress(std::uint64_t done, std::uint64_t total) override {
        const int percent =
            static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total));
        if (percent == percent_) return;
        percent_ = percent;
        terminal_ << "\rGenerating: " << percent << " %" << std::flush;
    }

  private:
    std::ostream& terminal_;
    int percent_ = -1;
};

// A whole number that fits, at least that large: the parser would take the nearest that fits.
CLI::Validator WholeNumber(std::uint64_t least) {
    const auto check = [least](const std::string& text) -> std::string {
        std::uint64_t number = 0;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        if (error == std::errc() && stop == end && number >= least) return {};
        return "'" + text + "' is not a whole number from " + std::to_string(least) + " to " +
               std::to_string(std::numeric_limits<std::uint64_t>::max());
    };
    return CLI::Validator(check, "");
}

struct Options {
    simulation::GenerateOptions generate;
    std::string output;
};

std::string Run(const Options& options, const Streams& streams) {
    std::unique_ptr<TerminalProgress> progress;
    if (streams.terminal) progress = std::make_unique<TerminalProgress>(streams.error);
    if (options.output != kStandardOutput)
        return simulation::GenerateFiles(options.generate, options.output, progress.get());
    StreamOutput output(streams.out);
    return simulation::GenerateLog(options.generate, output, progress.get());
}

int Generate(const Options& options, const Streams& streams) {
    const std::string failure = Run(options, streams);
    if (failure.empty()) return kExitDone;
    streams.error << "kvxostrace: " << failure << "\n";
    return kExitFailed;
}

}  // namespace

void AddGenerate(CLI::App& app, const Streams& streams, int& status) {
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand(
        "generate",
        "Write a log of a simulated kernel: an ITRON text log, and beside it the resource file "
        "with the names (.res)");
    command
        ->add_option("--events", options->generate.events,
                     "Events to write, one a line; the log has exactly as many lines")
        ->required()
        ->check(WholeNumber(1));
    command
        ->add_option("--seed", options->generate.seed,
                     "Start of the random numbers; the same seed gives the same bytes")
        ->check(WholeNumber(0))
        ->capture_default_str();
    command
        ->add_option("-o,--output", options->output,
                     "Log to write; - for standard output, then without a resource file")
        ->required();
    command->callback([options, &streams, &status] { status = Generate(*options, streams); });
}

}  // namespace kvx::cli
