#include "workbench/cli/RecordingModel.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace kvx::cli {
namespace {

Result<timing::Rules> ReadRules(const std::string& path, const timing::Contexts& contexts,
                                const service::TraceClock& clock) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad())
        return Error{path + ": cannot be read: " + std::generic_category().message(errno)};
    return timing::ParseRules(text, path, contexts, clock);
}

}  // namespace

RecordingModel MakeModel(const service::DecodedRecording& decoded, const std::string& rulesPath,
                         const Streams& streams, int& status) {
    decoded.WaitForAll();
    RecordingModel made;
    const timing::Contexts contexts(decoded);
    if (!rulesPath.empty()) {
        auto rules = ReadRules(rulesPath, contexts, decoded.GetRecording().Clock());
        if (!rules) {
            streams.error << "kvxostrace: " << rules.GetError().message << '\n';
            status = kExitUsage;
            return made;
        }
        made.rules = std::move(*rules);
    }
    made.model = std::make_unique<timing::Model>(decoded, made.rules.EndsFor(contexts.Count()));
    return made;
}

std::optional<std::uint32_t> TimelineOf(const service::DecodedRecording& decoded,
                                        const ProcessorChoice& choice) {
    const auto& timelines = decoded.Timelines();
    for (std::uint32_t i = 0; i < timelines.size(); ++i)
        if (choice.Number() == timelines[i]->processor) return i;
    return std::nullopt;
}

}  // namespace kvx::cli
