// Forms of recordings that are recognised and not read: what each is, and how to come to something
// that is.

#include <filesystem>
#include <fstream>

#include "workbench/formats/Registry.h"
#include "workbench/formats/ctf/Metadata.h"
#include "workbench/formats/events/ByteCursor.h"
#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats {
namespace refused {
namespace {

namespace fs = std::filesystem;
using Answer = Result<std::unique_ptr<Recording>>;

constexpr int kParticular = 100;
constexpr std::size_t kProbed = std::size_t{1} << 20;
constexpr char kRecordSeparator = '\x1E';

std::string BeginningOf(const fs::path& path) {
    std::string bytes(256, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

fs::path FolderOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path();
    return folder.empty() ? fs::path(".") : folder;
}

// Metadata of CTF 2 are objects of JSON, each behind a separator.
bool IsCtf2(const Candidate& candidate) {
    const auto bytes = candidate.file ? std::string(candidate.Text().substr(0, 256))
                                      : BeginningOf(fs::path(candidate.path) / "metadata");
    return bytes.starts_with(kRecordSeparator) && bytes.find("preamble") != std::string::npos;
}

// A file beside the metadata of a CTF trace, or one that begins like a packet of one.
bool IsCtfStream(const Candidate& candidate) {
    constexpr std::string_view kMagic = "\xC1\x1F\xFC\xC1";
    if (!candidate.file) return false;
    if (candidate.Text().starts_with(kMagic)) return true;
    const auto metadata = FolderOf(candidate.path) / "metadata";
    std::error_code error;
    if (!fs::is_regular_file(metadata, error) || fs::equivalent(metadata, candidate.path, error))
        return false;
    const auto bytes = BeginningOf(metadata);
    return ctf::LooksLikeMetadata(bytes) && candidate.Text().find('\0') != std::string_view::npos;
}

bool IsPerfData(const Candidate& candidate) {
    return candidate.Text().starts_with("PERFILE2") || candidate.Text().starts_with("2ELIFREP");
}

// A row of packets: field 1, and their length.
bool IsPerfetto(const Candidate& candidate) {
    constexpr char kPacket = '\x0A';
    constexpr int kPackets = 4;
    auto rest = candidate.Text();
    for (int i = 0; i < kPackets; ++i) {
        if (rest.empty()) return i > 1;
        if (rest.front() != kPacket) return false;
        rest.remove_prefix(1);
        std::uint64_t length = 0;
        std::size_t bytes = 0;
        while (bytes < rest.size() && bytes < 5 && (rest[bytes] & 0x80) != 0) ++bytes;
        if (bytes == rest.size() || bytes == 5) return false;
        length = ByteCursor(rest.substr(0, bytes + 1)).Number();
        rest.remove_prefix(bytes + 1);
        if (length == 0 || length > rest.size()) return false;
        rest.remove_prefix(length);
    }
    return true;
}

bool IsTraceEvents(const Candidate& candidate) {
    const auto text = candidate.Text().substr(0, 4096);
    const auto first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && (text[first] == '{' || text[first] == '[') &&
           (Contains(text, "\"traceEvents\"") ||
            (Contains(text, "\"ph\"") && Contains(text, "\"pid\"")));
}

bool IsTraceRecorder(const Candidate& candidate) {
    return candidate.Text().starts_with(std::string_view("\0FSP", 4)) ||
           candidate.Text().starts_with(std::string_view("PSF\0", 4));
}

// A memory dump with the marks between which the recorder keeps its data.
bool IsTracealyzer(const Candidate& candidate) {
    constexpr std::string_view kStart = "\x01\x02\x03\x04\x71\x72\x73\x74\xF1\xF2\xF3\xF4";
    return Contains(candidate.Text().substr(0, kProbed), kStart);
}

bool IsVcd(const Candidate& candidate) {
    const auto text = candidate.Text().substr(0, kProbed);
    const auto first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '$' &&
           Contains(text, "$enddefinitions");
}

template <const char* what>
Answer Refuse(Candidate& candidate, const OpenOptions& /*options*/, IOpenProgress* /*progress*/) {
    return Error{candidate.path + ": " + what};
}

constexpr char kCtf2Advice[] =
    "a CTF 2 recording, and CTF 1.8 is what is read; convert it with Babeltrace 2.1: babeltrace2 "
    "IN "
    "--component=sink.ctf.fs --params='path=\"OUT\",ctf-version=\"1\"', or record with CTF 1.8";
constexpr char kPerfDataAdvice[] =
    "a recording of perf; convert it with \"perf data convert --to-ctf OUT\" and open the folder "
    "OUT, or open the text of \"perf script\"";
constexpr char kPerfettoAdvice[] =
    "a recording of Perfetto; convert it with \"traceconv systrace IN OUT\" and open OUT";
constexpr char kTraceEventsAdvice[] =
    "trace events as JSON, which hold no states of tasks; ui.perfetto.dev and chrome://tracing "
    "show "
    "them; open the recording that they were made from";
constexpr char kTraceRecorderAdvice[] =
    "a stream of TraceRecorder (.psf), whose form changes with its version; record with SystemView "
    "or as CTF instead";
constexpr char kTracealyzerAdvice[] =
    "a snapshot for Tracealyzer, whose form changes with its version; record with SystemView or as "
    "CTF instead";
constexpr char kVcdAdvice[] =
    "a value change dump (VCD): signals, and no tasks; a viewer of waveforms shows it";

Answer RefuseStream(Candidate& candidate, const OpenOptions& /*options*/,
                    IOpenProgress* /*progress*/) {
    return Error{candidate.path + ": one stream of a CTF trace; open its folder " +
                 FolderOf(candidate.path).string()};
}

constexpr FormatFacts Facts(const char* files) {
    return {files, "", "", false};
}

}  // namespace
}  // namespace refused

const Format kCtf2 = {"CTF 2",         refused::kParticular,
                      refused::IsCtf2, refused::Refuse<refused::kCtf2Advice>,
                      false,           refused::Facts("a folder with the file metadata")};
const Format kCtfStream = {"CTF stream",          2,     refused::IsCtfStream,
                           refused::RefuseStream, false, refused::Facts("a file of a CTF folder")};
const Format kPerfData = {"perf.data",
                          refused::kParticular,
                          refused::IsPerfData,
                          refused::Refuse<refused::kPerfDataAdvice>,
                          false,
                          refused::Facts("perf.data")};
const Format kPerfetto = {"Perfetto",
                          1,
                          refused::IsPerfetto,
                          refused::Refuse<refused::kPerfettoAdvice>,
                          false,
                          refused::Facts("*.perfetto-trace, *.pftrace")};
const Format kTraceEvents = {"Trace-event JSON",
                             1,
                             refused::IsTraceEvents,
                             refused::Refuse<refused::kTraceEventsAdvice>,
                             false,
                             refused::Facts("*.json")};
const Format kTraceRecorder = {"TraceRecorder stream",
                               refused::kParticular,
                               refused::IsTraceRecorder,
                               refused::Refuse<refused::kTraceRecorderAdvice>,
                               false,
                               refused::Facts("*.psf")};
const Format kTracealyzer = {"Tracealyzer snapshot",
                             1,
                             refused::IsTracealyzer,
                             refused::Refuse<refused::kTracealyzerAdvice>,
                             false,
                             refused::Facts("*.bin, *.hex")};
const Format kVcd = {"VCD",          refused::kParticular,
                     refused::IsVcd, refused::Refuse<refused::kVcdAdvice>,
                     false,          refused::Facts("*.vcd")};

}  // namespace kvx::formats
