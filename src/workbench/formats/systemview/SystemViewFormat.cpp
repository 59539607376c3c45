// Opens SystemView recordings, of one file or of one a core.

#include "platform/base/Text.h"
#include "workbench/formats/Registry.h"
#include "workbench/formats/compressed/Decompress.h"
#include "workbench/formats/systemview/Container.h"
#include "workbench/formats/systemview/SystemViewRecording.h"

namespace kvx::formats {
namespace systemview {
namespace {

// What is wrong, if anything is.
std::optional<Error> AddFurther(const std::string& path, Loaded& loaded, IOpenProgress* progress) {
    auto content = ReadContent(path, progress);
    if (!content) return content.GetError();
    if (!Recognises(content->file.Text()))
        return Error{path + ": not a SystemView recording, as the first file is"};
    if (!content->cut.empty()) {
        loaded.losses.Add(service::Loss::DamagedTail);
        loaded.warnings.push_back(std::move(content->cut));
    }
    loaded.files.push_back(std::move(content->file));
    return std::nullopt;
}

// Files of one core each are numbered in their order.
Result<std::vector<Core>> CoresOf(Loaded& loaded) {
    std::vector<Core> cores;
    for (const MappedFile& file : loaded.files) {
        auto container = OpenContainer(file.Text());
        if (!container) return container.GetError();
        if (loaded.author.empty()) loaded.author = container->author;
        for (const auto core : container->missing) {
            loaded.losses.Add(service::Loss::CutRecord);
            loaded.warnings.push_back(
                FormatText("%s: the file ends before core %u begins", loaded.path.c_str(), core));
        }
        const bool several = loaded.files.size() > 1;
        for (const CorePart& part : container->cores) {
            const auto number = several ? static_cast<std::uint32_t>(cores.size()) : part.number;
            cores.push_back({number, part.bytes});
        }
    }
    return cores;
}

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& options,
                                        IOpenProgress* progress) {
    Loaded loaded;
    loaded.path = candidate.path;
    loaded.files.push_back(std::move(*candidate.file));
    for (const auto& path : options.moreFiles) {
        if (auto failure = AddFurther(path, loaded, progress)) return *failure;
    }
    auto cores = CoresOf(loaded);
    if (!cores) return Error{candidate.path + ": " + cores.GetError().message};
    loaded.stream = std::make_unique<Stream>();
    if (!loaded.stream->Load(std::move(*cores), loaded.losses, progress))
        return Error{candidate.path + ": opening was cancelled", true};
    if (loaded.stream->Count() == 0)
        return Error{candidate.path + ": a SystemView recording without a packet that can be read"};
    return std::unique_ptr<Recording>(
        std::make_unique<SystemViewRecording>(std::move(loaded), options));
}

}  // namespace
}  // namespace systemview

const Format kSystemView = {
    "SystemView recording",
    35,
    [](const Candidate& candidate) {
        return candidate.file && systemview::Recognises(candidate.Text());
    },
    systemview::Open,
    true,
    {"*.SVDat", "FreeRTOS, Zephyr, bare", "waits, objects, priorities, calls, handlers"}};

}  // namespace kvx::formats
