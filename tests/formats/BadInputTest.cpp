// Files that are damaged, cut, empty or something else: one message that names the file, the place
// and the reason, or what can be read, with the loss counted.

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/TraceFiles.h"

namespace kvx::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

std::string MessageFor(const std::string& path, const std::string& resourceFile = {}) {
    const auto recording = formats::OpenRecording(path, {.resourceFile = resourceFile});
    return recording ? "opened" : recording.GetError().message;
}

TEST(BadInput, AResourceFileOfBracketsIsRefused) {
    const TempFolder folder;
    const auto log = folder.Write("a.log", "[1] dispatch to task 1.\n");
    const auto resources = folder.Write("deep.res", std::string(100'000, '['));
    EXPECT_EQ(MessageFor(log, resources), resources + ": no resource file: nested too deep");
}

TEST(BadInput, WhatIsNoTraceIsRefusedWithTheReason) {
    const TempFolder folder;
    const auto refuses = [&](const std::string& path, const char* reason) {
        EXPECT_THAT(MessageFor(path),
                    AllOf(StartsWith(path + ": "), HasSubstr(reason), Not(HasSubstr("\n"))));
    };
    refuses(folder.Path("missing.log"), "No such file");
    refuses(folder.Write("empty.log", ""), "empty");
    refuses(folder.Write("text.log", "Dear reader,\nthis is no log.\n[1] is a footnote? No.\n" +
                                         std::string(40, '\n') + std::string(20, 'x') +
                                         "\nmore\nand more\nand more\n"),
            "not a trace of a known format");
    refuses(folder.Write("blank.log", "\n \r\n\t\n"), "not a trace of a known format");
    refuses(folder.Write("zeros.log", std::string(100000, '\0')), "not a trace of a known format");
    std::filesystem::create_directory(folder.Path("folder"));
    refuses(folder.Path("folder"), "metadata");
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    refuses(folder.Path("pipe"), "not a file");
    refuses("/dev/null", "not a file");
}

TEST(BadInput, AFileWithoutReadPermission) {
    const TempFolder folder;
    const auto path = folder.Write("x.log", "[1] dispatch to task 1.\n");
    ASSERT_EQ(chmod(folder.Path("").c_str(), 0755), 0);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    // The administrator may read every file, and is somebody else meanwhile.
    constexpr uid_t kNobody = 65534;
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? kNobody : user), 0);
    const std::string message = MessageFor(path);
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_THAT(message, AllOf(StartsWith(path), HasSubstr("Permission denied")));
}

TEST(BadInput, ALogCutInTheMiddleOfALine) {
    const std::string log = "[1] dispatch to task 1.\n[25] enter to wai_sem semid=1.\n";
    for (auto length = log.find('\n') + 2; length < log.size(); ++length) {
        const auto cut = log.substr(0, length);
        EXPECT_THAT(LossesOfLog(cut),
                    cut.ends_with('.')
                        ? IsEmpty()
                        : testing::Matcher<std::vector<std::string>>(ElementsAre("cut_record 1")))
            << cut;
        EXPECT_THAT(EventsOfLog(cut), testing::SizeIs(cut.ends_with('.') ? 2 : 1)) << cut;
    }
    EXPECT_THAT(LossesOfLog(log), IsEmpty());
    EXPECT_THAT(LossesOfLog("[1] dispatch to task 1.\n[2] the application's own words"), IsEmpty());
}

// Reads all that the service has to say.
void LookAtEverything(service::TraceService& trace) {
    trace.Summarize();
    EXPECT_EQ(trace.Check(), "");
    std::uint32_t count = 0;
    trace.GetEventCount(&count);
    for (std::uint32_t event = 0; event < count; ++event) trace.EventDetail(event);
}

TEST(BadInput, ALogThatIsWrittenAnewWhileItIsOpen) {
    const TempFolder folder;
    std::string log;
    for (int i = 1; i < 5000; ++i) {
        log += FormatText("[%d] dispatch to task %d.\n", 20 * i, i % 9 + 1);
        log += FormatText("[%d] enter to wai_sem semid=%d.\n", 20 * i + 5, i);
    }
    std::string other = log;
    std::ranges::replace(other, '\n', ' ');
    const std::string wrongTimes(log.size(), '9');
    for (const std::string& now : {std::string(), log.substr(0, 9000), log.substr(0, 100000), other,
                                   wrongTimes, std::string(log.size(), '\n'), log + log}) {
        for (const bool decoded : {false, true}) {
            const auto path = folder.Write("x.log", log);
            const auto trace = Show(path);
            ASSERT_NE(trace, nullptr);
            if (decoded) LookAtEverything(*trace);
            folder.Write("x.log", now);
            LookAtEverything(*trace);
        }
    }
}

TEST(BadInput, BytesThatAreNoText) {
    constexpr char kLog[] =
        "[1] dispatch to task 1.\n[2] task\0 2 becomes\x01\n\xFF\xFE\0\x80\n[3] "
        "Gr\xC3\xBC\xC3\x9F\x65\n";
    EXPECT_THAT(LossesOfLog({kLog, sizeof(kLog) - 1}), ElementsAre("unreadable_records 2"));
}

TEST(BadInput, ResourceFiles) {
    const TempFolder folder;
    const auto log = folder.Write("x.log", "[1] dispatch to task 1.\n");
    // Lies beside the log and cannot be read: the log is shown without names, the loss is counted.
    for (const char* text :
         {"no JSON", "", "{\"Resources\": {\n\"A\": ", "[]", "{\"Resources\": 1}"}) {
        folder.Write("x.res", text);
        const auto trace = Show(log);
        ASSERT_TRUE(trace);
        EXPECT_THAT(CountersOf(trace->Summarize().losses),
                    ElementsAre("resource_file_unreadable 1"))
            << text;
        EXPECT_THAT(trace->GetRecording()->Warnings(),
                    ElementsAre(StartsWith(folder.Path("x.res"))))
            << text;
        EXPECT_THAT(Events(*trace), ElementsAre("1 run Unknown: task 1"));
    }
    // Asked for: an error.
    EXPECT_THAT(MessageFor(log, folder.Path("missing.res")),
                HasSubstr("missing.res: No such file"));
    EXPECT_THAT(MessageFor(log, folder.Write("bad.res", "{\n\n\"A\": x}")),
                HasSubstr("bad.res: line 3: no JSON"));
    // Strange, but readable.
    folder.Write(
        "x.res",
        "\xEF\xBB\xBF{,\"TimeScale\":\"ns\",,\"Resources\":{\"T\\\",1\":{\"Type\":\"Task\","
        "\"Attributes\":{\"id\":\"1\",},},\"Q\":7,\"H\":{\"Type\":\"Task\"},},}");
    const auto trace = Show(log);
    ASSERT_TRUE(trace);
    EXPECT_EQ(trace->GetRecording()->Clock().Unit(), service::TimeUnit::Nanoseconds);
    EXPECT_THAT(CountersOf(trace->Summarize().losses, true), ElementsAre("resource_file_mended 6"));
    EXPECT_THAT(Events(*trace), ElementsAre("1 run Unknown: T\",1"));
}

TEST(BadInput, CtfFolders) {
    const TempFolder folder;
    const auto refuses = [&](const std::string& name, std::string_view metadata,
                             const char* reason) {
        folder.Write(name + "/metadata", metadata);
        EXPECT_THAT(MessageFor(folder.Path(name)),
                    AllOf(StartsWith(folder.Path(name)), HasSubstr(reason), Not(HasSubstr("\n"))));
    };
    refuses("empty", "", "metadata: the file is empty");
    refuses("other", "{\"not\": \"metadata\"}", "not the metadata of a CTF 1.8 trace");
    refuses("version", "/* CTF 1.8 */\ntrace {\n major = 2;\n minor = 0;\n};\n",
            "line 3: CTF version 2.0");
    refuses("brackets", "/* CTF 1.8 */\n// }\ntrace {\n \"}\" };\n\n]\n",
            "line 6: unexpected \"]\"");
    refuses("open", "/* CTF 1.8 */\ntrace {\n major = 1; minor = 8;\n",
            "line 2: \"{\" is not closed");
    refuses("nonsense", "/* CTF 1.8 */\ntrace { major = 1; minor = 8; byte_order = up; };\n",
            "metadata: the library cannot make sense of it");
    constexpr std::string_view kGood =
        "/* CTF 1.8 */\ntypealias integer { size = 8; align = 8; signed = false; } := uint8_t;\n"
        "trace { major = 1; minor = 8; byte_order = le; };\n"
        "stream { event.header := struct { uint8_t id; }; };\nevent { name = tick; id = 1; };\n";
    refuses("no_streams", kGood, "the trace holds no events");
    folder.Write("empty_stream/channel0", "");
    refuses("empty_stream", kGood, "the trace holds no events");
    folder.Write("endless/channel0", "\x01\x01");
    refuses("endless",
            "/* CTF 1.8 */\ntrace { major = 1; minor = 8; byte_order = le; };\n"
            "stream { };\nevent { name = tick; id = 1; };\n",
            "take no room");
    folder.Write("damaged/channel0", "\x01\x01\xFF");
    folder.Write("damaged/metadata", kGood);
    const auto trace = Show(folder.Path("damaged"));
    ASSERT_TRUE(trace);
    const auto summary = trace->Summarize();
    EXPECT_EQ(summary.records, 2u);
    EXPECT_EQ(summary.timeUnit, "counts");
    EXPECT_THAT(CountersOf(summary.losses), ElementsAre("damaged_tail 1"));
    EXPECT_THAT(trace->GetRecording()->Warnings(),
                ElementsAre(HasSubstr("damaged behind event 2")));
    // Sequences in both contexts, and no events: the library ends its process.
    folder.Write("abort/channel0", std::string("\0\0\0", 3));
    refuses(
        "abort",
        "/* CTF 1.8 */\ntypealias integer { size = 8; align = 8; signed = false; } := uint8_t;\n"
        "trace { major = 1; minor = 8; byte_order = le; };\n"
        "stream { event.context := struct { uint8_t __n; uint8_t _x[__n]; };\n"
        "  packet.context := struct { uint8_t __m; uint8_t _y[__m]; }; };\n",
        "the CTF library gave up (Aborted), before the first event");
}

// A trace of two packets, in pieces that tests can damage.
class PacketTrace {
  public:
    std::string metadata =
        "/* CTF 1.8 */\ntypealias integer { size = 8; align = 8; signed = false; } := uint8_t;\n"
        "typealias integer { size = 32; align = 8; signed = false; } := uint32_t;\n"
        "trace { major = 1; minor = 8; byte_order = le;\n"
        "  packet.header := struct { uint32_t magic; uint32_t stream_id; }; };\n"
        "struct context { uint32_t content_size; uint32_t packet_size; };\n"
        "stream { id = 0; packet.context := struct context;\n"
        "  event.header := struct { uint8_t id; }; };\n"
        "event { name = \"tick\"; id = 7; stream_id = 0; };\n";
    std::uint32_t contentOfSecond = 8 * (kHead + 3);
    std::uint32_t sizeOfSecond = 8 * kPacket;
    std::uint64_t indexedOffset = kPacket;
    std::uint64_t indexedSize = 8 * kPacket;
    std::size_t cut = 0;  // bytes off the end of the stream
    bool hasIndex = true;

    // The metadata in packets of 64 bytes and what stands in front of each.
    std::string PackedMetadata() const {
        std::string packed;
        for (std::size_t at = 0; at < metadata.size(); at += 64) {
            const auto piece = metadata.substr(at, 64);
            const auto bits = static_cast<std::uint32_t>(8 * (37 + piece.size()));
            packed += "\x57\x1D\xD1\x75" + std::string(20, '\0') + Little(bits) + Little(bits) +
                      std::string("\0\0\0\1\x08", 5) + piece;
        }
        return packed;
    }
    std::string Write(const TempFolder& folder) const {
        auto stream = Packet(8 * (kHead + 3), 8 * kPacket) + Packet(contentOfSecond, sizeOfSecond);
        stream.resize(stream.size() - cut);
        folder.Write("trace/metadata", metadata);
        folder.Write("trace/channel0", stream);
        if (!hasIndex) return folder.Path("trace");
        folder.Write("trace/index/channel0.idx", "\xC1\xF1\xDC\xC1" + Big(1, 4) + Big(0, 4) +
                                                     Big(56, 4) + Entry(0, 8 * kPacket) +
                                                     Entry(indexedOffset, indexedSize));
        return folder.Path("trace");
    }

  private:
    static constexpr std::size_t kHead = 16;
    static constexpr std::size_t kPacket = 32;

    static std::string Big(std::uint64_t value, int bytes) {
        std::string text;
        for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(value >> 8 * i);
        return text;
    }
    static std::string Little(std::uint32_t value) {
        const auto big = Big(value, 4);
        return {big.rbegin(), big.rend()};
    }
    static std::string Packet(std::uint32_t content, std::uint32_t size) {
        auto packet =
            Little(0xC1FC1FC1) + std::string(4, '\0') + Little(content) + Little(size) + "\7\7\7";
        packet.resize(kPacket);
        return packet;
    }
    static std::string Entry(std::uint64_t offset, std::uint64_t size) {
        return Big(offset, 8) + Big(size, 8) + Big(8 * (kHead + 3), 8) + std::string(32, '\0');
    }
};

struct PacketCase {
    const char* what;
    void (*damage)(PacketTrace& trace);
    std::uint32_t records;
    std::uint64_t lost;
    const char* warning;  // empty: none
};

TEST(BadInput, DamagedCtfFilesAreKeptFromTheLibrary) {
    const PacketCase kCases[] = {
        {"nothing", [](PacketTrace&) {}, 6, 0, ""},
        {"content beyond the file",
         [](PacketTrace& t) { t.contentOfSecond = t.sizeOfSecond = 8000; }, 3, 1,
         "channel0: byte 32: the packet has 1000 bytes, but only 32 are left"},
        {"content beyond the file, without an index",
         [](PacketTrace& t) {
             t.contentOfSecond = t.sizeOfSecond = 8000;
             t.hasIndex = false;
         },
         3, 1, "channel0: byte 32: the packet has 1000 bytes, but only 32 are left"},
        {"content a byte beyond the file",
         [](PacketTrace& t) { t.contentOfSecond = t.sizeOfSecond = 8 * 33; }, 3, 1,
         "channel0: byte 32: the packet has 33 bytes, but only 32 are left"},
        {"packet beyond all files", [](PacketTrace& t) { t.sizeOfSecond = 0xFFFFFFF8; }, 3, 1,
         "channel0: byte 32: the packet says that it has 536870911 bytes"},
        {"more used than there is", [](PacketTrace& t) { t.sizeOfSecond = 64; }, 3, 1,
         "channel0: byte 32: the packet says that it has 64 bits"},
        {"header cut", [](PacketTrace& t) { t.cut = 21; }, 3, 1,
         "channel0: byte 32: the file ends in the header of a packet"},
        {"padding cut", [](PacketTrace& t) { t.cut = 9; }, 6, 0, ""},
        {"index", [](PacketTrace& t) { t.indexedOffset = 1u << 20; }, 6, 0,
         "index/channel0.idx: entry 2 does not agree"},
        {"index beyond the stream", [](PacketTrace& t) { t.indexedSize = 8 * 33; }, 6, 0,
         "index/channel0.idx: entry 2 does not agree"}};
    for (const auto& row : kCases) {
        PacketTrace packets;
        row.damage(packets);
        const TempFolder folder;
        const auto trace = Show(packets.Write(folder));
        ASSERT_TRUE(trace) << row.what;
        const auto summary = trace->Summarize();
        EXPECT_EQ(summary.records, row.records) << row.what;
        EXPECT_EQ(summary.losses.Get(service::Loss::DamagedTail), row.lost) << row.what;
        const auto& warnings = trace->GetRecording()->Warnings();
        const bool told = std::ranges::any_of(warnings, [&](const std::string& warning) {
            return warning.find(row.warning) != std::string::npos;
        });
        EXPECT_TRUE(told) << row.what << ": " << testing::PrintToString(warnings);
    }
}

TEST(BadInput, MetadataInPacketsCutAtAnyLength) {
    PacketTrace packets;
    const auto packed = packets.PackedMetadata();
    const TempFolder folder;
    packets.Write(folder);
    for (std::size_t length = 4; length < packed.size(); length += 3) {
        const auto path = folder.Write("trace/metadata", packed.substr(0, length));
        EXPECT_THAT(MessageFor(folder.Path("trace")),
                    AllOf(StartsWith(path + ": "), Not(HasSubstr("\n"))))
            << length;
    }
    folder.Write("trace/metadata", packed);
    EXPECT_EQ(Show(folder.Path("trace"))->Summarize().records, 6u);
    // The same by other names.
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path("trace"));
    for (const char* name : {".", "../trace/", "metadata"})
        EXPECT_EQ(Show(name)->Summarize().records, 6u) << name;
    folder.Write("trace/metadata",
                 "/* CTF 1.8 */\ntrace { major = 1; minor = 8; byte_order = up; };");
    for (const char* name : {".", "../trace/"})
        EXPECT_THAT(MessageFor(name), HasSubstr("metadata: the library cannot make sense of it"));
    std::filesystem::current_path(here);
}

TEST(BadInput, CancellingIsNoFault) {
    class Stop final : public formats::IOpenProgress {
        bool Progress(std::uint64_t, std::uint64_t) override { return false; }
    };
    const TempFolder folder;
    std::string log;
    for (int i = 0; i < 100000; ++i) log += "[" + std::to_string(i) + "] dispatch to task 1.\n";
    Stop stop;
    for (const auto& path : {folder.Write("x.log", log), PacketTrace().Write(folder)}) {
        const auto recording = formats::OpenRecording(path, {}, &stop);
        ASSERT_FALSE(recording);
        EXPECT_TRUE(recording.GetError().cancelled);
    }
}

TEST(BadInput, ALogOfWhichNothingIsKnownSaysSo) {
    const auto warningsOf = [](std::string_view log) {
        const TempFolder folder;
        return Show(folder.Write("x.log", log))->GetRecording()->Warnings();
    };
    EXPECT_THAT(warningsOf("[1] a log\n[2] of somebody else\n"),
                ElementsAre(HasSubstr("looked for \"dispatch to task\"")));
    EXPECT_THAT(warningsOf("[1]A.b=c\n[2]A.d(e)\n"),
                ElementsAre(HasSubstr("looked for \"TASK.dispatch()\"")));
    EXPECT_THAT(warningsOf("[1] a log\n[2] dispatch to task 1.\n"), IsEmpty());
}

}  // namespace
}  // namespace kvx::test
