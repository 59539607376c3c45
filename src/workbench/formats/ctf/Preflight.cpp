#include "workbench/formats/ctf/Preflight.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>

#include "platform/base/Text.h"
#include "platform/os/Environment.h"
#include "workbench/formats/ctf/Metadata.h"
#include "workbench/formats/ctf/PacketLayout.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats::ctf {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kPacketMagic = 0xC1FC1FC1;
constexpr std::uint32_t kIndexMagic = 0xC1F1DCC1;
constexpr std::size_t kIndexHead = 16;
constexpr std::size_t kLeastIndexEntry = 24;  // offset, packet size, content size
constexpr std::uint64_t kMostPadding = std::uint64_t{16} << 20;
constexpr std::uint64_t kLargestCopy = std::uint64_t{256} << 20;

using Count = unsigned long long;

// What is wrong with a file, and from which byte on.
struct Fault {
    std::uint64_t byte = 0;
    std::string reason;
};

std::optional<Fault> CheckPacket(std::string_view rest, std::uint64_t byte,
                                 const PacketLayout& layout, std::uint64_t& size) {
    size = rest.size();
    if (layout.magic) {
        const auto magic = layout.Read(*layout.magic, rest);
        if (!magic || *magic != kPacketMagic)
            return Fault{byte, "no packet begins here, though one should"};
    }
    const auto id = layout.streamId ? layout.Read(*layout.streamId, rest).value_or(0) : 0;
    const auto context = layout.contexts.find(id);
    if (context == layout.contexts.end()) {
        if (layout.contexts.empty()) return std::nullopt;
        return Fault{byte, FormatText("the packet is of stream %llu, which the metadata does not "
                                      "describe",
                                      static_cast<Count>(id))};
    }
    const auto& [contentField, packetField] = context->second;
    const auto packet = packetField ? layout.Read(*packetField, rest) : std::nullopt;
    const auto content = contentField ? layout.Read(*contentField, rest) : packet;
    if ((packetField && !packet) || (contentField && !content))
        return Fault{byte, "the file ends in the header of a packet"};
    if (!packet && !content) return std::nullopt;
    const auto left = static_cast<std::uint64_t>(rest.size());
    const auto head = std::max(packetField ? packetField->at + packetField->size : 0,
                               contentField ? contentField->at + contentField->size : 0);
    const auto contentBits = content.value_or(*packet);
    if (contentBits < head || (packet && contentBits > *packet) || (packet && *packet % 8 != 0))
        return Fault{byte, FormatText("the packet says that it has %llu bits, %llu of them used",
                                      static_cast<Count>(packet.value_or(0)),
                                      static_cast<Count>(contentBits))};
    if (contentBits / 8 + (contentBits % 8 != 0) > left)
        return Fault{byte,
                     FormatText("the packet has %llu bytes, but only %llu are left",
                                static_cast<Count>(contentBits / 8), static_cast<Count>(left))};
    if (!packet) return std::nullopt;
    size = *packet / 8;
    if (size <= left || size - left <= kMostPadding) return std::nullopt;
    return Fault{byte, FormatText("the packet says that it has %llu bytes, but only %llu are left",
                                  static_cast<Count>(size), static_cast<Count>(left))};
}

// size: that of all its good packets, which may reach beyond the file.
std::optional<Fault> CheckStream(std::string_view bytes, const PacketLayout& layout,
                                 std::uint64_t& size) {
    size = 0;
    for (std::uint64_t packet = 0; size < bytes.size(); size += packet)
        if (auto fault = CheckPacket(bytes.substr(size), size, layout, packet)) return fault;
    return std::nullopt;
}

std::uint64_t BigEndian(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

// Empty: the index tells the same of the stream's packets as their sizes do.
std::string FindIndexFault(std::string_view index, std::uint64_t streamSize) {
    if (index.size() < kIndexHead || BigEndian(index, 0, 4) != kIndexMagic) return "no index";
    const auto length = static_cast<std::size_t>(BigEndian(index, 12, 4));
    if (length < kLeastIndexEntry || (index.size() - kIndexHead) % length != 0)
        return "the file ends in an entry";
    std::uint64_t expected = 0;
    for (auto at = kIndexHead; at < index.size(); at += length) {
        const auto entry = static_cast<Count>((at - kIndexHead) / length + 1);
        const auto packet = BigEndian(index, at + 8, 8);
        if (BigEndian(index, at, 8) != expected || packet == 0 || packet % 8 != 0 ||
            BigEndian(index, at + 16, 8) > packet || packet / 8 > streamSize - expected)
            return FormatText("entry %llu does not agree with the stream", entry);
        expected += packet / 8;
    }
    return {};
}

bool Write(const fs::path& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return out.good();
}

class Check {
  public:
    explicit Check(const std::string& folder) : folder_(folder) {
        auto whole = fs::absolute(folder).lexically_normal();
        if (!whole.has_filename()) whole = whole.parent_path();
        whole_ = whole;
    }

    Result<CheckedTrace> Run() {
        const auto path = Name("metadata");
        const auto metadata = MapFile(path);
        if (!metadata) return metadata.GetError();
        if (metadata->Text().empty()) return Error{path + ": the file is empty"};
        if (!LooksLikeMetadata(metadata->Text()))
            return Error{path + ": not the metadata of a CTF 1.8 trace"};
        const auto text = MetadataText(metadata->Text());
        if (!text) return Error{path + ": " + text.GetError().message};
        if (const auto fault = FindMetadataFault(*text); !fault.empty())
            return Error{path + ": " + fault};
        layout_ = FindPacketLayout(WithoutCommentsAndStrings(*text));
        std::error_code error;
        for (auto at = fs::directory_iterator(whole_, error);
             !error && at != fs::directory_iterator(); at.increment(error))
            if (at->is_regular_file(error)) files_.push_back(at->path().filename().string());
        std::ranges::sort(files_);
        for (const auto& file : files_)
            if (file != "metadata" && !file.starts_with('.')) CheckFile(file);
        trace_.folder = whole_.string();
        if ((needsShadow_ || !changed_.empty()) && !FillShadow())
            return Error{folder_ + ": a copy without what is damaged cannot be made"};
        return std::move(trace_);
    }

  private:
    // A stream that the library sees in another size: without what is damaged, or with the padding
    // of its last packet, which no event lies in.
    struct Changed {
        std::string file;
        std::uint64_t bytes = 0;
    };

    std::string Name(const std::string& file) const { return (fs::path(folder_) / file).string(); }

    void CheckFile(const std::string& file) {
        const auto stream = MapFile((whole_ / file).string());
        if (!stream || stream->Text().empty()) return;
        const auto bytes = stream->Text();
        std::uint64_t size = 0;
        auto fault = CheckStream(bytes, layout_, size);
        if (fault && size > kLargestCopy) fault->byte = size = 0;
        if (size != bytes.size()) changed_.push_back({file, size});
        if (fault) {
            ++trace_.damagedStreams;
            trace_.warnings.push_back(FormatText(
                "%s: byte %llu: %s; %s", Name(file).c_str(), static_cast<Count>(fault->byte),
                fault->reason.c_str(),
                fault->byte == 0 ? "the file is left out" : "the file is shown up to there"));
        }
        trace_.streamBytes += std::min<std::uint64_t>(size, bytes.size());
        CheckIndex(file, bytes.size(), size != bytes.size());
    }

    void CheckIndex(const std::string& file, std::uint64_t size, bool isChanged) {
        const auto name = "index/" + file + ".idx";
        std::error_code error;
        if (!fs::exists(whole_ / name, error)) return;
        const auto index = MapFile((whole_ / name).string());
        const auto fault =
            index ? FindIndexFault(index->Text(), size) : std::string("it cannot be read");
        if (fault.empty() && !isChanged) return goodIndexes_.push_back(name);
        needsShadow_ = true;
        if (!fault.empty())
            trace_.warnings.push_back(Name(name) + ": " + fault +
                                      "; the recording is read without this index");
    }

    bool FillShadow() {
        if (!trace_.shadow.Make()) return false;
        const auto& shadow = trace_.shadow.Path();
        trace_.folder = shadow.string();
        std::error_code error;
        fs::create_directory(shadow / "index", error);
        for (const auto& name : goodIndexes_)
            fs::create_symlink(whole_ / name, shadow / name, error);
        for (const auto& file : files_) {
            const auto changed = std::ranges::find(changed_, file, &Changed::file);
            if (changed == changed_.end()) {
                fs::create_symlink(whole_ / file, shadow / file, error);
            } else if (changed->bytes > 0) {
                const auto stream = MapFile((whole_ / file).string());
                if (!stream || !Write(shadow / file, stream->Text().substr(0, changed->bytes)))
                    return false;
                fs::resize_file(shadow / file, changed->bytes, error);
            }
            if (error) return false;
        }
        return true;
    }

    const std::string folder_;  // as it was given, for people
    fs::path whole_;
    PacketLayout layout_;
    CheckedTrace trace_;
    std::vector<std::string> files_;
    std::vector<std::string> goodIndexes_;
    std::vector<Changed> changed_;
    bool needsShadow_ = false;
};

}  // namespace

bool Shadow::Make() {
    path_ = os::MakeTemporaryFolder();
    return !path_.empty();
}

Shadow::~Shadow() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
}

Result<CheckedTrace> CheckTrace(const std::string& folder) {
    return Check(folder).Run();
}

}  // namespace kvx::formats::ctf
