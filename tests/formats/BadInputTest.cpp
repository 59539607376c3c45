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
    const auto recording = formats::OpenRecording(path, {resourceFile});
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
}

TEST(BadInput, CancellingIsNoFault) {
    class Stop final : public formats::IOpenProgress {
        bool Progress(std::uint64_t, std::uint64_t) override { return false; }
    };
    const TempFolder folder;
    std::string log;
    for (int i = 0; i < 100000; ++i) log += "[" + std::to_string(i) + "] dispatch to task 1.\n";
    Stop stop;
    const auto recording = formats::OpenRecording(folder.Write("x.log", log), {}, &stop);
    ASSERT_FALSE(recording);
    EXPECT_TRUE(recording.GetError().cancelled);
}

}  // namespace
}  // namespace kvx::test
