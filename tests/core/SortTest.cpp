#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>

#include "analyze/model/SortKeys.h"
#include "core/CoreFixture.h"
#include "core/RandomTrace.h"
#include "platform/base/Text.h"

namespace kvx::test {

namespace {

CString Printed(const char* format, ...) {
    std::vector<char> buffer(4096);
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return buffer.data();
}

// The order that comparing the keys as texts gives.
std::vector<std::uint32_t> TextOrder(const std::vector<CString>& keys, bool ascending) {
    std::vector<std::uint32_t> order(keys.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        const int compared = std::strcmp(keys[a].c_str(), keys[b].c_str());
        return ascending ? compared < 0 : compared > 0;
    });
    return order;
}

TEST(SortKeys, FollowTheBytesOfTheTexts) {
    std::mt19937_64 random(1);
    for (int round = 0; round < 400; ++round) {
        SortKeys keys;
        std::vector<CString> texts;
        for (std::uint64_t i = random() % 200; i > 0; --i) {
            CString text(random() % 30, 'a');
            for (char& c : text) c = static_cast<char>(random() % 4 ? 'a' : random() % 255 + 1);
            texts.push_back(text);
            keys.Add(text);
        }
        EXPECT_EQ(keys.Order(), TextOrder(texts, true));
    }
}

TEST(SortNumber, OfDoublesIsInTheirOrder) {
    std::mt19937_64 random(2);
    for (int round = 0; round < 20000; ++round) {
        const auto draw = [&] { return static_cast<std::int64_t>(random()) >> (random() % 64); };
        const std::int64_t a = draw();
        const double x = static_cast<double>(a) / 1000.0;
        const double y = static_cast<double>(round % 9 ? draw() : a) / (round % 2 ? 1000.0 : 1e9);
        EXPECT_EQ(SortNumberOf(x) < SortNumberOf(y), x < y) << x << " " << y;
        EXPECT_GT(SortNumberOf(x), kNoSortNumber);
    }
    EXPECT_EQ(SortNumberOf(0.0), SortNumberOf(-0.0));
}

// Tasks and handlers with numbers of every length, some of which run, wait and call.
ScriptedTrace Mixed(std::mt19937& random) {
    ScriptedTrace trace;
    CString longName = "Ö";
    longName.append(300, 'n');
    for (const int number : {1, 12, 999, 1000, 12345, -3, 1000000}) {
        trace.AddTask(number, number % 2 ? longName : std::to_string(number));
        trace.AddHandler(number, "h", static_cast<std::uint32_t>(number));
    }
    trace.AddIdle();
    trace.AddUnknown();
    std::uint32_t running = 0;
    for (int e = 0, t = 10; e < 400; ++e) {
        const auto next = static_cast<std::uint32_t>(Draw(random, 0, 15));
        t += Draw(random, 0, 1) ? 1 : Draw(random, 0, 2000);
        if (e % 3 == 0) trace.State(t, next, 1);
        if (e % 3 == 1) trace.Dispatch(t, running, next);
        if (e % 3 == 2)
            trace.Call(t, running, 1,
                       {std::string(static_cast<std::size_t>(Draw(random, 0, 3)) * 90, 'x') + "y",
                        "id=" + std::to_string(Draw(random, -5, 30)), "ß"});
        if (e % 3 == 1) running = next;
    }
    return trace;
}

// Right-aligned, however large: the order of such texts is that of the numbers, from -1000 on.
CString Number(std::int64_t value) {
    return Printed("%24lld", static_cast<long long>(value) + 1000);
}

CString RunTimeKey(const Core& core, int line, int column) {
    const CContextMng& contexts = core.data.contexts;
    const CRunTime& r = *core.data.runTime.Find(static_cast<std::uint32_t>(line));
    const int type = contexts.GetType(line);
    const int number = contexts.GetNumber(line);
    const auto count = [](double d) { return static_cast<long long>(d); };
    switch (column) {
        case 0:
            return type == 1 ? Number(number) : "";
        case 1:
            return type == 1 ? Number(contexts.GetTableAddress(line)) : "";
        case 2:
            return type == 2 && number ? Number(number) : "";
        case 3:
            return CString(Utf8Prefix(Printed(" %s", contexts.GetShownName(line).c_str()), 255));
        case 4:
            return Number(r.Num);
        case 5:
            return Number(count(r.Max));
        case 6:
            return Number(count(r.Min));
        case 7:
            return Number(count(r.Avg));
        case 8:
            return Number(count(r.Total));
        default:
            return Printed("%40.30f", r.Ratio);
    }
}

CString RdyToRunKey(const Core& core, int position, int column) {
    const CRdyToRun& r = *core.data.rdyToRun.Record(position);
    const int line = static_cast<int>(r.context);
    const auto count = [](double d) { return static_cast<long long>(d); };
    switch (column) {
        case 0:
            return Number(core.data.contexts.GetNumber(line));
        case 1:
            return CString(Utf8Prefix(core.data.contexts.GetShownName(line), 255));
        case 2:
            return Number(r.Num);
        case 3:
            return Number(count(r.Max));
        case 4:
            return Number(count(r.Min));
        default:
            return Number(count(r.Avg));
    }
}

CString SysCallKey(Core& core, std::uint32_t history, int column) {
    std::int32_t number = 0;
    std::int64_t time = 0;
    Bstr text;
    core.service.GetHistoryNumber(history, &number);
    core.service.GetHistoryTime(history, &time);
    if (column == 0) return Number(number);
    if (column == 4) return Number(time);
    if (column == 1) core.service.GetHistoryName(history, text.Receive());
    if (column == 2) core.service.GetHistoryParameter(history, text.Receive());
    if (column == 3) core.service.GetHistoryReturnParameter(history, text.Receive());
    return CString(Utf8Prefix(text.Utf8(), 255));
}

// Sorts a table by random columns and follows it with the texts of the keys.
template <class Table, class RowOf, class KeyOf>
void ExpectTextOrder(std::mt19937& random, Table& table, int columns, RowOf rowOf, KeyOf keyOf) {
    for (int click = 0; click < 40; ++click) {
        std::vector<std::uint32_t> rows;
        std::vector<CString> keys;
        const int column = Draw(random, 0, columns - 1);
        for (int k = 0; k < table.RowCount(); ++k) {
            rows.push_back(static_cast<std::uint32_t>(rowOf(k)));
            keys.push_back(keyOf(rows.back(), column));
        }
        const bool ascending = table.ColumnState(column) != kSortedAscending;
        table.Sort(column, 0);
        EXPECT_EQ(table.ColumnState(column), ascending ? kSortedAscending : kSortedDescending);
        EXPECT_EQ(table.SortColumn(), column);
        const auto order = TextOrder(keys, ascending);
        for (int k = 0; k < table.RowCount(); ++k) {
            EXPECT_EQ(static_cast<std::uint32_t>(rowOf(k)),
                      rows[order[static_cast<std::size_t>(k)]])
                << "column " << column;
        }
    }
}

TEST(Tables, SortByTheTextsOfTheirKeys) {
    std::mt19937 random(12);
    Core core(Mixed(random));
    core.SetRange(3, core.service.Decoded() - 5);
    COSTraceData& data = core.data;
    ExpectTextOrder(
        random, data.runTime, CRunTimeAnalysis::kColumns,
        [&](int k) { return data.runTime.Row(k); },
        [&](std::uint32_t row, int column) {
            return RunTimeKey(core, static_cast<int>(row), column);
        });
    ExpectTextOrder(
        random, data.rdyToRun, CRdyToRunAnalysis::kColumns,
        [&](int k) { return data.rdyToRun.Row(k); },
        [&](std::uint32_t row, int column) {
            return RdyToRunKey(core, static_cast<int>(row), column);
        });
    ASSERT_GT(data.sysCalls.RowCount(), 100);
    ExpectTextOrder(
        random, data.sysCalls, COSSysCallList::kColumns,
        [&](int k) { return data.sysCalls.RowHistoryIndex(k); },
        [&](std::uint32_t row, int column) { return SysCallKey(core, row, column); });
    for (int k = 0; k < data.sysCalls.RowCount(); ++k)
        EXPECT_EQ(data.sysCalls.FindRow(data.sysCalls.RowHistoryIndex(k)), k);
    EXPECT_EQ(data.sysCalls.FindRow(*data.sysCalls.Entry(0) - 1), -1);
    EXPECT_EQ(data.sysCalls.FindRow(*data.sysCalls.Entry(data.sysCalls.EntryCount() - 1) + 1), -1);
}

// In pieces of no length at all, and without reading a text a second time.
TEST(Tables, CallsAreSortedInPiecesAndTheirTextsReadOnce) {
    std::mt19937 random(14);
    Core core(Mixed(random));
    core.SetRange(3, 250);
    COSSysCallList& calls = core.data.sysCalls;
    calls.Sort(COSSysCallList::Time, 0);
    calls.Sort(COSSysCallList::Parameter, 0);
    core.service.reads = 0;
    calls.Sort(COSSysCallList::Name, 0);
    EXPECT_EQ(core.service.reads, 0u);  // nothing is read before somebody looks
    int pieces = 0;
    while (!calls.SortFor(std::chrono::milliseconds(-1)) && ++pieces < 100) {
        calls.SortFor(std::chrono::milliseconds(1));
    }
    EXPECT_GT(pieces, 0);
    const std::uint64_t read = core.service.reads;
    EXPECT_GE(read, static_cast<std::uint64_t>(calls.EntryCount()));
    for (const std::uint32_t end : {240u, 260u}) {
        const auto time = static_cast<double>(core.service.Trace().time[end]);
        core.data.markers.MoveEndIntoDisplay(nullptr, time);
        core.service.reads = 0;
        calls.FindRow(*calls.Entry(0));
        EXPECT_LT(core.service.reads, 30u) << end;
        CString before;
        for (int k = 0; k < calls.RowCount(); ++k) {
            const CString name = SysCallKey(core, calls.RowHistoryIndex(k), 1);
            EXPECT_LE(before, name);
            before = name;
        }
    }
}

TEST(Tables, RepeatOrForgetTheirSortWhenRebuilt) {
    std::mt19937 random(13);
    Core core(Mixed(random));
    core.SetRange(3, 300);
    COSTraceData& data = core.data;
    const auto sortAll = [&] {
        data.runTime.Sort(CRunTimeAnalysis::Total, 0);
        data.rdyToRun.Sort(CRdyToRunAnalysis::Num, 0);
        data.sysCalls.Sort(COSSysCallList::Time, 0);
    };
    sortAll();
    sortAll();  // descending now
    core.data.markers.Rebuild(nullptr, true);
    EXPECT_EQ(data.runTime.ColumnState(CRunTimeAnalysis::Total), kSortedDescending);
    for (int k = 1; k < data.runTime.RowCount(); ++k)
        EXPECT_GE(data.runTime.Find(static_cast<std::uint32_t>(data.runTime.Row(k - 1)))->Total,
                  data.runTime.Find(static_cast<std::uint32_t>(data.runTime.Row(k)))->Total);
    for (int k = 1; k < data.rdyToRun.RowCount(); ++k)
        EXPECT_GE(data.rdyToRun.Record(data.rdyToRun.Row(k - 1))->Num,
                  data.rdyToRun.Record(data.rdyToRun.Row(k))->Num);
    EXPECT_GT(data.sysCalls.RowHistoryIndex(0), data.sysCalls.RowHistoryIndex(1));

    core.data.markers.Rebuild(nullptr, false);
    EXPECT_EQ(data.runTime.SortColumn(), -1);
    EXPECT_EQ(data.rdyToRun.SortColumn(), -1);
    EXPECT_EQ(data.sysCalls.SortColumn(), -1);
    for (int k = 0; k < data.runTime.RowCount(); ++k) EXPECT_EQ(data.runTime.Row(k), k);
    EXPECT_LT(data.sysCalls.RowHistoryIndex(0), data.sysCalls.RowHistoryIndex(1));
    data.runTime.Sort(CRunTimeAnalysis::Num, 1);  // nothing to repeat
    EXPECT_EQ(data.runTime.SortColumn(), -1);
}

}  // namespace

}  // namespace kvx::test
