#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "core/ChartRaster.h"
#include "core/RandomTrace.h"
#include "traceview/model/KeptItems.h"
#include "traceview/model/ListSearch.h"

namespace kvx::test {

namespace {

ChartGeometry RandomGeometry(std::mt19937& random, Core& core) {
    const std::vector<std::int64_t>& time = core.service.Trace().time;
    ChartGeometry g;
    g.left = Draw(random, 0, 20);
    g.right = g.left + Draw(random, 1, 90);
    g.traceStart = static_cast<double>(time.front());
    g.traceEnd = static_cast<double>(core.service.end);
    g.scale = Draw(random, 0, 2) ? std::exp(Draw(random, 0, 300) / 60.0) : 1.0;
    const double span = g.traceEnd - g.traceStart;
    g.displayStart = g.traceStart;
    if (Draw(random, 0, 3)) g.displayStart += span * Draw(random, 0, 100) / 100.0;
    if (Draw(random, 0, 3) == 0) {
        const int at = Draw(random, 0, static_cast<int>(time.size()) - 1);
        g.displayStart = static_cast<double>(time[static_cast<std::size_t>(at)]);
    }
    g.displayEnd = g.displayStart + span / g.scale;
    const auto last = static_cast<double>(time[core.service.Decoded() - 1]);
    if (Draw(random, 0, 3) == 0 && last > g.displayStart) {
        g.scale = span / (last - g.displayStart);
        g.displayEnd = last;
    }
    g.lineHeight = Draw(random, 8, 20);
    g.charWidth = Draw(random, 0, 9);
    g.lineCount = core.data.contexts.GetCount();
    g.firstLine = Draw(random, 0, g.lineCount - 1);
    g.visibleLines = Draw(random, -1, g.lineCount + 1);
    g.clientHeight = std::max(0, (g.visibleLines + 1) * g.lineHeight + Draw(random, 0, 9));
    return g;
}

ChartItems Items(Core& core, const ChartGeometry& g, bool bulk, bool indexed) {
    core.service.bulk = bulk;
    core.service.indexed = indexed;
    core.service.Reload();
    KeptItems kept;
    return BuildChart(&core.service, g, core.data.engine, core.data.contexts, core.data.markers,
                      0.0, kept);
}

// The column form gives the picture and the tips of the full walk, whether or not the gaps of
// dashes and hatches show what is below, with few items a column.
void ExpectPictureOfTheWalk(Core& core, const ChartGeometry& g) {
    const ChartItems walk = Items(core, g, false, false);
    const ChartItems columns = Items(core, g, true, true);
    const ChartItems unindexed = Items(core, g, true, false);
    EXPECT_EQ(columns, unindexed);
    EXPECT_LE(columns.size(), walk.size());
    for (const bool opaque : {false, true}) {
        ChartRaster walked(g, opaque);
        walked.Draw(walk);
        for (const ChartItems* items : {&columns, &unindexed}) {
            ChartRaster drawn(g, opaque);
            drawn.Draw(*items);
            EXPECT_TRUE(drawn == walked)
                << "indexed " << (items == &columns) << " opaque " << opaque;
        }
    }
}

TEST(Chart, GivesThePictureOfTheWalkOnRandomTraces) {
    std::mt19937 random(5);
    for (int round = 0; round < 2500 && !testing::Test::HasFailure(); ++round) {
        RandomTraceShape shape;
        shape.contexts = Draw(random, 1, 7);
        shape.events = Draw(random, 1, Draw(random, 0, 4) ? 80 : 500);
        shape.longestStep = Draw(random, 0, 6);
        shape.firstTime = Draw(random, 1, 9);
        shape.hatchedOfTen = Draw(random, 0, 5);
        Core core(RandomTrace(random, shape), false);
        std::int64_t a = 0;
        core.service.AnalyzeRecords(0, Draw(random, 0, shape.events - 1), &a, &a, &a);
        core.service.end += Draw(random, 0, 40);
        core.service.MoveContext(shape.contexts - 1, 0);
        core.data.contexts.Load();
        SCOPED_TRACE(round);
        ExpectPictureOfTheWalk(core, RandomGeometry(random, core));
    }
}

// Many dispatches to a pixel, most of them between few lines: what makes the search jump.
TEST(Chart, GivesThePictureOfTheWalkOnDenseTraces) {
    std::mt19937 random(6);
    for (int round = 0; round < 150 && !testing::Test::HasFailure(); ++round) {
        ScriptedTrace trace;
        const int contexts = Draw(random, 2, 9);
        for (int c = 0; c < contexts; ++c) trace.AddTask(c + 1, "T");
        for (int hatched = Draw(random, 0, 2); hatched > 0; --hatched)
            trace.contexts[static_cast<std::size_t>(Draw(random, 0, contexts - 1))].hatched = 1;
        std::uint32_t running = 0;
        const int rare = Draw(random, 1, 400);
        for (int e = 0; e < 4000; ++e) {
            const int spread = Draw(random, 0, rare) ? std::min(contexts, 3) : contexts;
            const auto next = static_cast<std::uint32_t>(contexts - Draw(random, 1, spread));
            trace.Dispatch(1 + e, running, next);
            if (Draw(random, 0, 2) == 0) trace.Call(1 + e, next, Draw(random, 1, 13), {});
            running = next;
        }
        Core core(trace);
        SCOPED_TRACE(round);
        ChartGeometry g = RandomGeometry(random, core);
        g.right = g.left + Draw(random, 2, 20);
        ExpectPictureOfTheWalk(core, g);
    }
}

// An end time of 0 means open; what begins and ends at time 0 is not.
TEST(Chart, GivesThePictureOfTheWalkFromTimeZero) {
    std::mt19937 random(7);
    for (int round = 0; round < 1000 && !testing::Test::HasFailure(); ++round) {
        RandomTraceShape shape;
        shape.contexts = Draw(random, 1, 5);
        shape.events = Draw(random, 1, 60);
        shape.longestStep = Draw(random, 0, 3);
        shape.firstTime = 0;
        Core core(RandomTrace(random, shape));
        SCOPED_TRACE(round);
        ExpectPictureOfTheWalk(core, RandomGeometry(random, core));
    }
}

// A paint after nothing but a marker has moved reads nothing; after anything else it is that of a
// chart that keeps nothing.
TEST(Chart, IsKeptUntilWhatItShowsChanges) {
    std::mt19937 random(8);
    int kept = 0;
    for (int round = 0; round < 60 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        RandomTraceShape shape;
        shape.contexts = Draw(random, 2, 6);
        shape.events = 200;
        Core core(RandomTrace(random, shape), false);
        std::int64_t a = 0;
        core.service.AnalyzeRecords(0, 60, &a, &a, &a);
        core.data.contexts.Load();
        KeptItems items;
        ChartGeometry g = RandomGeometry(random, core);
        const auto draw = [&] {
            return BuildChart(&core.service, g, core.data.engine, core.data.contexts,
                              core.data.markers, 0.0, items);
        };
        for (int step = 0; step < 20; ++step) {
            const int change = Draw(random, 0, 5);
            if (change == 0) g = RandomGeometry(random, core);
            if (change == 1) core.service.AnalyzeRecords(0, 60 + 7 * step, &a, &a, &a);
            if (change == 2) core.service.MoveContext(shape.contexts - 1, 0);
            if (change == 3) core.service.Trace().contexts[0].hatched ^= 1;
            core.data.contexts.Load();
            const ChartItems drawn = draw();
            EXPECT_EQ(drawn, Items(core, g, true, true)) << "after change " << change;
            const auto reads = core.service.reads;
            EXPECT_EQ(draw(), drawn);
            kept += core.service.reads == reads;
        }
    }
    EXPECT_EQ(kept, 60 * 20);
}

// Columns that do not keep within what they say are left aside: the walk is drawn.
TEST(Chart, OfBrokenColumnsIsTheWalk) {
    std::mt19937 random(9);
    RandomTraceShape shape;
    shape.contexts = 4;
    shape.events = 200;
    Core core(RandomTrace(random, shape));
    const ChartGeometry g = RandomGeometry(random, core);
    const ChartItems walk = Items(core, g, false, false);
    static const std::uint32_t kLines[] = {0, 1, 2, 9};
    static const std::uint32_t kTwice[] = {0, 1, 2, 2};
    static const std::uint32_t kBeyond[] = {1, 5000};
    static const host::EventList kLists[] = {{}, {}, {}, {kBeyond, 2}};
    static const std::uint32_t kWrong[200] = {};
    static const host::EventListLevels kLevels[4] = {
        {{kWrong}}, {{kWrong}}, {{kWrong}}, {{kWrong}}};
    using Break = std::function<void(host::OSTraceColumns&)>;
    const Break breaks[] = {
        [](auto& c) { c.time = nullptr; },
        [](auto& c) { c.flags = nullptr; },
        [](auto& c) { c.lineOfContext = nullptr; },
        [](auto& c) { c.lineOfContext = kLines; },
        [](auto& c) { c.lineOfContext = kTwice; },
        [](auto& c) {
            c.dispatches = {kBeyond, 2};
        },
        [](auto& c) { c.dispatches.events = nullptr; },
        [](auto& c) {
            c.sysCalls = {kBeyond, 2};
        },
        [](auto& c) { c.stateEvents = kLists; },
        [](auto& c) { c.dispatchesTo = kLists; },
        [](auto& c) { c.sysCallsOf = kLists; },
        [](auto& c) { c.stateLevels = kLevels; },
        [](auto& c) { c.contextCount = 0; },
    };
    for (const Break& each : breaks) {
        core.service.breakColumns = each;
        EXPECT_EQ(Items(core, g, true, true), walk) << &each - breaks;
        core.data.markers.Rebuild(nullptr, true);  // the analyses read plainly too
    }
}

// The search of a list for many boundaries finds what a search for each would, with its levels and
// without, for boundaries that lie close and wide.
TEST(Chart, CountsEventsBeforeBoundaries) {
    std::mt19937 random(3);
    for (const int size : {0, 1, 15, 16, 17, 255, 256, 300, 4096, 5000, 70000}) {
        std::vector<std::uint32_t> events;
        for (std::uint32_t at = 0; std::ssize(events) < size;)
            events.push_back(at += static_cast<std::uint32_t>(Draw(random, 1, 9)));
        const host::EventList list = {events.data(), static_cast<std::uint32_t>(size)};
        const ListLevels levels({list});
        for (const int widest : {1, 40, 4000}) {
            std::vector<std::uint32_t> bounds;
            for (std::uint32_t at = static_cast<std::uint32_t>(Draw(random, 0, 6 * size));
                 bounds.size() < 300;)
                bounds.push_back(at += static_cast<std::uint32_t>(Draw(random, 0, widest)));
            std::vector<std::uint32_t> expected;
            for (const std::uint32_t bound : bounds)
                expected.push_back(static_cast<std::uint32_t>(
                    std::ranges::lower_bound(events, bound) - events.begin()));
            EXPECT_EQ(CountsBefore(list, *levels.data(), bounds), expected) << size;
            EXPECT_EQ(CountsBefore(list, {}, bounds), expected) << size;
        }
    }
}

TEST(Chart, MapsTimesToColumnsAndBack) {
    ChartGeometry g;
    g.left = 200;
    g.right = 801;
    g.traceEnd = 6000;
    g.scale = 1;
    g.displayEnd = 6000;
    EXPECT_EQ(g.X(3000), 500);
    g.scale = 2;
    g.displayStart = 1500;
    g.displayEnd = 4500;
    EXPECT_EQ(g.X(3000), 500);
    EXPECT_EQ(g.X(1499), 200);  // truncated toward zero
    EXPECT_DOUBLE_EQ(g.TimeAt(500), 3000);
    g.scale = 1e300;
    EXPECT_GT(g.X(3000), 1 << 20);
    EXPECT_LT(g.X(0), -(1 << 20));
    g.traceEnd = 0;
    EXPECT_EQ(g.X(1500), 200);
}

// Grid lines as two walks from the anchor draw them; the last one of a column stays.
std::map<int, std::int64_t> WalkedGrid(const ChartGeometry& g, double step, double anchor) {
    std::map<int, std::int64_t> lines;
    const auto draw = [&](std::int64_t n) {
        const int x = g.X(anchor + static_cast<double>(n) * step);
        if (x >= g.left && x <= g.right) lines[x] = n;
    };
    for (std::int64_t n = 0; anchor + static_cast<double>(n) * step >= g.displayStart; --n) draw(n);
    for (std::int64_t n = 0; anchor + static_cast<double>(n) * step <= g.displayEnd; ++n) draw(n);
    return lines;
}

TEST(Grid, HasAtMostOneLineAColumn) {
    std::mt19937 random(8);
    for (int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round) {
        ChartGeometry g;
        g.left = 10;
        g.right = 10 + Draw(random, 1, 60);
        g.traceEnd = 1000;
        g.scale = 1 + Draw(random, 0, 30) / 7.0;
        g.displayStart = Draw(random, 0, 900);
        g.displayEnd = g.displayStart + 1000 / g.scale;
        const double step = Draw(random, 1, 2000) / 13.0;
        const double anchor = Draw(random, -100, 1100);
        std::map<int, std::int64_t> built;
        for (const GridLine& line : BuildGrid(g, step, anchor)) {
            EXPECT_TRUE(built.emplace(line.x, line.number).second);
        }
        EXPECT_EQ(built, WalkedGrid(g, step, anchor)) << step << " from " << anchor;
    }
}

TEST(Grid, IsFastHoweverSmall) {
    ChartGeometry g;
    g.right = 1600;
    g.traceEnd = g.displayEnd = 1e15;
    g.scale = 1;
    EXPECT_EQ(BuildGrid(g, 1e-3, 5e14).size(), 1600u);
    EXPECT_TRUE(BuildGrid(g, 0.0, 5e14).empty());
    EXPECT_TRUE(BuildGrid(g, -1.0, 5e14).empty());
}

}  // namespace

}  // namespace kvx::test
