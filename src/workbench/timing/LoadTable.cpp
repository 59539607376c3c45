// Who had the processors, slice by slice.

#include <algorithm>

#include "workbench/timing/Load.h"
#include "workbench/timing/TableCells.h"
#include "workbench/timing/TableForms.h"

namespace kvx::timing {
namespace {

std::string TimeOf(const TableInput& input, std::int64_t time) {
    return input.model.Recording().Clock().Format(time);
}

// The busiest first.
std::string ContextsText(const TableInput& input, const LoadSlice& slice) {
    auto shares = slice.shares;
    std::ranges::stable_sort(shares, std::ranges::greater(),
                             [](const auto& each) { return each.second; });
    std::string text;
    for (const auto& [context, share] : shares)
        text += (text.empty() ? "" : "; ") + input.Name(context) + " " + ShareText(share);
    return text;
}

using enum ValueKind;
constexpr AnalysisColumn kColumns[] = {
    {"start", "Start", 20, Time},       {"end", "End", 20, Time},     {"idle", "Idle", 9, Share},
    {"handlers", "Handlers", 9, Share}, {"contexts", "Contexts", 60},
};

constexpr Cells<LoadSlice> kCells[] = {
    {[](const TableInput& input, const LoadSlice& row) { return TimeOf(input, row.start); },
     [](const TableInput&, const LoadSlice& row) { return row.start; }},
    {[](const TableInput& input, const LoadSlice& row) { return TimeOf(input, row.end); },
     [](const TableInput&, const LoadSlice& row) { return row.end; }},
    {[](const TableInput&, const LoadSlice& row) { return ShareText(row.idle); },
     [](const TableInput&, const LoadSlice& row) { return SortNumberOf(row.idle); }},
    {[](const TableInput&, const LoadSlice& row) { return ShareText(row.handlers); },
     [](const TableInput&, const LoadSlice& row) { return SortNumberOf(row.handlers); }},
    {[](const TableInput& input, const LoadSlice& row) { return ContextsText(input, row); }},
};
static_assert(std::size(kCells) == std::size(kColumns));

class LoadTable final : public RowTable<LoadSlice> {
  public:
    explicit LoadTable(const TableInput& input) : RowTable(input, kLoadForm, kCells) {
        const Load load(input.model, input.selection);
        rows_ = load.Slices(input.every);
        for (auto& slice : rows_)
            std::erase_if(slice.shares, [&](const auto& share) { return !input.Has(share.first); });
        peak_ = load.Peak(input.window);
    }

    std::optional<EventRef> PlaceOf(int, int) const override { return std::nullopt; }

    Members Values(int row) const override {
        const LoadSlice& r = At(row);
        std::vector<Members> contexts;
        for (const auto& [context, share] : r.shares)
            contexts.push_back({{"context", input_.Name(context)}, {"share", share}});
        return {{"start", r.start},
                {"end", r.end},
                {"idle", r.idle},
                {"handlers", r.handlers},
                {"contexts", std::move(contexts)}};
    }

    Members Summary() const override {
        return {
            {"peak", Members{{"start", peak_.start}, {"end", peak_.end}, {"load", peak_.load}}}};
    }

  private:
    LoadPeak peak_;
};

}  // namespace

const AnalysisForm kLoadForm = {"load", "load", "Load", kColumns};

std::unique_ptr<Table> MakeLoadTable(const TableInput& input) {
    return std::make_unique<LoadTable>(input);
}

}  // namespace kvx::timing
