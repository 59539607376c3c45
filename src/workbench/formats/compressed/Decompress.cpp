#include "workbench/formats/compressed/Decompress.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/base/Text.h"
#include "platform/os/Environment.h"
#include "platform/os/MemoryFile.h"
#include "workbench/formats/compressed/Decompressor.h"

namespace kvx::formats {
namespace {

using compressed::IDecompressor;
using compressed::Kind;

constexpr std::array kKinds = {&compressed::kGzip, &compressed::kZstd};
constexpr std::size_t kBlock = std::size_t{1} << 20;

const Kind* KindOf(std::string_view bytes) {
    const auto at = std::ranges::find_if(
        kKinds, [&](const Kind* kind) { return bytes.starts_with(kind->magic); });
    return at == kKinds.end() ? nullptr : *at;
}

// More than this is not decompressed: the machine would come to a halt.
std::uint64_t MostBytes() {
    return os::PhysicalMemory() / 4 * 3;
}

Result<FileContent> Decompress(const std::string& path, const Kind& kind, std::string_view bytes,
                               IOpenProgress* progress) {
    std::string cut;
    if (!kind.open)
        return Error{path + ": compressed by " + kind.name +
                     ", which this program is built without; decompress it first"};
    const auto stream = kind.open();
    os::MemoryFile file;
    std::vector<char> block(kBlock);
    auto rest = bytes;
    auto step = IDecompressor::Step::GoOn;
    const auto most = MostBytes();
    // Behind the last member zeros may follow, as they do on a tape.
    while (!(step == IDecompressor::Step::End &&
             rest.find_first_not_of('\0') == std::string_view::npos)) {
        std::size_t made = 0;
        const auto before = rest.size();
        step = stream->Take(rest, block, made);
        if (step == IDecompressor::Step::Damaged)
            return Error{path + FormatText(": %s data that are damaged at byte %zu; what comes "
                                           "before can be had with \"%s -dc\"",
                                           kind.name, bytes.size() - rest.size(), kind.name)};
        if (!file.Append({block.data(), made}) || file.Size() > most)
            return Error{path + ": decompressed it does not fit into memory"};
        if (step == IDecompressor::Step::GoOn && made == 0 && rest.size() == before) {
            cut = path + FormatText(
                             ": %s data that end too early, at byte %zu; what comes after "
                             "is not shown",
                             kind.name, bytes.size() - rest.size());
            break;
        }
        if (progress && !progress->Progress(bytes.size() - rest.size(), bytes.size()))
            return Error{path + ": opening was cancelled", true};
    }
    std::string reason;
    auto map = file.Map(reason);
    if (!map) return Error{path + ": " + reason};
    return FileContent{std::move(*map), std::move(cut)};
}

}  // namespace

Result<FileContent> ReadContent(const std::string& path, IOpenProgress* progress) {
    auto file = MapFile(path);
    if (!file) return file.GetError();
    const Kind* const kind = KindOf(file->Text());
    if (kind) return Decompress(path, *kind, file->Text(), progress);
    return FileContent{std::move(*file), {}};
}

}  // namespace kvx::formats
