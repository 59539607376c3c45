// What is recognised but not read is named, with a way out.

#include <gmock/gmock.h>

#include "formats/TraceFiles.h"

namespace kvx::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(Refused, IsNamedWithAWayOut) {
    const TempFolder folder;
    const auto refuses = [&](const std::string& name, std::string_view bytes, const char* what,
                             const char* way) {
        const auto path = folder.Write(name, bytes);
        const auto recording = formats::OpenRecording(path);
        ASSERT_FALSE(recording) << name;
        EXPECT_THAT(recording.GetError().message, AllOf(StartsWith(path + ": "), HasSubstr(what),
                                                        HasSubstr(way), Not(HasSubstr("\n"))));
    };
    refuses("perf.data", "PERFILE2\x68", "perf", "perf data convert --to-ctf");
    refuses("a.pftrace", std::string("\x0A\x02xy\x0A\x83\x00zzz\x0A\x01q\x0A\x01q", 17), "Perfetto",
            "traceconv");
    refuses("a.json", "{\"traceEvents\": [{\"ph\": \"X\"}]}", "JSON", "open the recording");
    refuses("a.psf", std::string_view("\0FSP\x0A\0", 6), "TraceRecorder", "SystemView");
    refuses("b.psf", std::string_view("PSF\0\x0A\0", 6), "TraceRecorder", "CTF");
    refuses("a.bin", "dump \x01\x02\x03\x04\x71\x72\x73\x74\xF1\xF2\xF3\xF4 rest", "Tracealyzer",
            "SystemView");
    refuses("a.vcd", "$date today $end\n$enddefinitions $end\n#0\n", "VCD", "waveforms");
    constexpr std::string_view kCtf2 = "\x1E{\"type\":\"preamble\",\"version\":2}\n";
    refuses("two/metadata", kCtf2, "CTF 2", "ctf-version");
    EXPECT_THAT(formats::OpenRecording(folder.Path("two")).GetError().message, HasSubstr("CTF 2"));
    folder.Write("one/metadata", "/* CTF 1.8 */\n");
    refuses("one/channel0", std::string_view("\x05\0\0\0", 4), "stream of a CTF trace",
            folder.Path("one").c_str());
    refuses("alone", "\xC1\x1F\xFC\xC1 and more", "stream of a CTF trace", "open its folder");
}

// Only what records each processor by itself is opened in several files.
TEST(Refused, TwoLogsAreNotOneRecording) {
    const TempFolder folder;
    formats::OpenOptions options;
    options.moreFiles = {folder.Write("b.log", "[2]B.dispatch()\n")};
    for (const char* line : {"[1]A.dispatch()\n", "[1] dispatch to task 1.\n"})
        EXPECT_FALSE(formats::OpenRecording(folder.Write("a.log", line), options)) << line;
}

}  // namespace
}  // namespace kvx::test
