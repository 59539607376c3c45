// Recordings that gzip or zstd has compressed: every format, cut and damaged ones.

#include <gmock/gmock.h>
#include <zlib.h>
#include <zstd.h>

#include "formats/Damage.h"
#include "formats/TraceFiles.h"

namespace kvx::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

std::string Gzip(std::string_view text) {
    z_stream stream = {};
    deflateInit2(&stream, 6, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    std::string out(text.size() + 1000, '\0');
    std::string in(text);
    stream.next_in = reinterpret_cast<Bytef*>(in.data());
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

std::string Zstd(std::string_view text) {
    std::string out(ZSTD_compressBound(text.size()), '\0');
    out.resize(ZSTD_compress(out.data(), out.size(), text.data(), text.size(), 3));
    return out;
}

std::string Log(int lines = 399) {
    std::string log;
    for (int i = 1; i <= lines; ++i)
        log += FormatText("[%d] dispatch to task %d.\n", 10 * i, i * i % 7 + 1);
    return log;
}

TEST(Compressed, ReadsWhatStandsInIt) {
    const auto log = Log();
    const auto expected = EventsOfLog(log);
    const auto half = log.find('\n', log.size() / 2) + 1;
    for (const auto& bytes :
         {Gzip(log), Zstd(log), Gzip(log.substr(0, half)) + Gzip(log.substr(half)),
          Zstd(log.substr(0, half)) + Zstd(log.substr(half)), Gzip(log) + std::string(512, '\0')})
        EXPECT_EQ(EventsOfLog(bytes), expected);
    // A resource file has the name of the compressed log.
    const TempFolder folder;
    folder.Write("x.res", "{\"Resources\":{\"A\":{\"Type\":\"Task\",\"Attributes\":{\"id\":1}}}}");
    const auto trace = Show(folder.Write("x.log.gz", Gzip("[1] dispatch to task 1.\n")));
    ASSERT_TRUE(trace);
    trace->Summarize();
    EXPECT_EQ(trace->EventDetail(0), "A");
}

// What stands before a cut is shown; damage that may begin anywhere is not.
TEST(Compressed, CutOrDamagedItSaysWhere) {
    const TempFolder folder;
    const auto log = Log();
    bool isPart = false;
    for (auto bytes : {Gzip(log), Zstd(log)}) {
        std::uint32_t shown = 0;
        for (std::size_t length = 4; length < bytes.size(); length += 7) {
            const auto path = folder.Write("x.log.gz", std::string_view(bytes).substr(0, length));
            const auto says = AllOf(StartsWith(path + ": "), HasSubstr("end too early, at byte"));
            const auto recording = formats::OpenRecording(path);
            if (!recording) {
                EXPECT_THAT(recording.GetError().message, says);
                continue;
            }
            EXPECT_THAT((*recording)->Warnings(), testing::Contains(says));
            EXPECT_EQ((*recording)->Losses().Get(service::Loss::DamagedTail), 1u);
            EXPECT_GE((*recording)->RecordCount(), shown);
            shown = (*recording)->RecordCount();
            isPart = isPart || (shown > 30 && shown < 399);
        }
        bytes[bytes.size() - 2] ^= 1;
        const auto damaged = formats::OpenRecording(folder.Write("y.log.gz", bytes));
        ASSERT_FALSE(damaged);
        EXPECT_THAT(damaged.GetError().message, AllOf(HasSubstr("at byte"), HasSubstr("-dc")));
    }
    EXPECT_TRUE(isPart) << "of gzip; zstd has blocks that this log does not fill";
    EXPECT_THAT(formats::OpenRecording(folder.Write("e.gz", Gzip(""))).GetError().message,
                HasSubstr("the file is empty"));
}

TEST(Compressed, DamageIsAnsweredAtEveryLengthAndEveryByte) {
    for (const auto& bytes : {Gzip(Log(60)), Zstd(Log(60))})
        ExpectAnswersToDamage("x.log.gz", bytes);
}

TEST(Compressed, OpeningCanBeCancelled) {
    class Stop final : public formats::IOpenProgress {
        bool Progress(std::uint64_t, std::uint64_t) override { return false; }
    };
    const TempFolder folder;
    Stop stop;
    const auto recording = formats::OpenRecording(folder.Write("x.gz", Gzip(Log())), {}, &stop);
    ASSERT_FALSE(recording);
    EXPECT_TRUE(recording.GetError().cancelled);
}

}  // namespace
}  // namespace kvx::test
