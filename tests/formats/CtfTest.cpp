// CTF traces whatever the kernel: how fields are shown, and what comes before the rest is read.

#include "formats/ZephyrTrace.h"

namespace kvx::test {
namespace {

using namespace zephyr;
using testing::ElementsAre;

// Times of a day long after 1970, two processors, a task that moves.
// Values in values are shown down to the eighth below the field, whichever way they are nested.
TEST(Ctf, FieldsAreShownAsDeepAsPeopleRead) {
    const auto shown = [](int depth, const std::string& open, const std::string& close) {
        auto ctf = Zephyr();
        std::string fields = "enum : uint8_t { a = 0 } tag; ";
        for (int i = 0; i < depth; ++i) fields += open + " { ";
        fields += "uint32_t a;";
        for (int i = 0; i < depth; ++i) fields += close;
        fields.erase(fields.size() - 2) += "v;";
        ctf.Declare("named_event", kNamed, fields.c_str());
        ctf.Event(10, kIn).Put(kMain).Name("main");
        ctf.Event(11, kNamed).Put(std::uint8_t{0}).Put(7u);
        return EventsOf(ctf, {}).at(1);
    };
    EXPECT_EQ(shown(1, "variant <tag>", "} a;"), "11 call main: named_event(tag=a, v=7)");
    EXPECT_EQ(shown(8, "variant <tag>", "} a;"), "11 call main: named_event(tag=a, v=7)");
    EXPECT_EQ(shown(9, "variant <tag>", "} a;"), "11 call main: named_event(tag=a, v=)");
    EXPECT_EQ(shown(2, "struct", "} a;"), "11 call main: named_event(tag=a, v={{7}})");
    EXPECT_EQ(shown(9, "struct", "} a;"), "11 call main: named_event(tag=a, v={{{{{{{{{}}}}}}}}})");
}

class KeepBeginning final : public formats::IOpenProgress {
  public:
    bool Progress(std::uint64_t, std::uint64_t) override { return true; }
    bool WantsBeginning() const override { return true; }
    void Beginning(std::unique_ptr<formats::Recording> recording) override {
        ++count;
        beginning = std::move(recording);
    }
    std::unique_ptr<formats::Recording> beginning;
    int count = 0;
};

// It is a recording in itself, and the same as far as it goes.
TEST(Ctf, TheBeginningOfALongTraceIsHandedOverBeforeTheRest) {
    auto ctf = NewZephyr();
    for (std::uint32_t time = 10; time < 300000; time += 10) {
        const bool back = time % 20 != 0;
        ctf.Event(time, kOut).Put(back ? kWork : kMain).Name(back ? "work" : "main");
        ctf.Event(time, kIn).Put(back ? kMain : kWork).Name(back ? "main" : "work");
    }
    const TempFolder folder;
    const auto path = ctf.Write(folder);
    KeepBeginning progress;
    auto whole = formats::OpenRecording(path, {}, &progress);
    ASSERT_TRUE(whole) << whole.GetError().message;
    ASSERT_EQ(progress.count, 1);
    service::TraceService all;
    service::TraceService first;
    all.SetRecording(std::move(*whole));
    first.SetRecording(std::move(progress.beginning));
    EXPECT_THAT(first.GetRecording()->Warnings(), ElementsAre(testing::HasSubstr("beginning")));
    first.Summarize();
    all.Summarize();
    const auto events = Events(first);
    const auto wholeEvents = Events(all);
    EXPECT_GE(first.GetRecording()->RecordCount(), 20000u);
    ASSERT_LT(events.size(), wholeEvents.size());
    ASSERT_GT(events.size(), 1000u);
    EXPECT_TRUE(std::equal(events.begin(), events.end(), wholeEvents.begin()));
}

}  // namespace
}  // namespace kvx::test
