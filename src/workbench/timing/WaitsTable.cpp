// Waits by task, cause and object.

#include "workbench/timing/TableCells.h"
#include "workbench/timing/TableForms.h"
#include "workbench/timing/WaitTable.h"

namespace kvx::timing {
namespace {

std::string ObjectText(const TableInput& input, ObjectId object) {
    return object == kNoObject ? std::string() : input.model.Facts().AllObjects().Get(object).text;
}

std::string ReleaserText(const TableInput& input, const ReleaseCount& release) {
    if (release.context == kNobody) return {};
    const auto call = input.model.CallName(release.call);
    return input.Name(release.context) + (call.empty() ? "" : " " + call);
}

std::string ReleasersText(const TableInput& input, const WaitRow& row) {
    std::string text;
    for (const auto& release : row.releasedBy) {
        const auto who = ReleaserText(input, release);
        if (!who.empty())
            text += (text.empty() ? "" : "; ") + who + " (" + std::to_string(release.count) + ")";
    }
    return text;
}

using enum ValueKind;
constexpr AnalysisColumn kColumns[] = {
    {"task", "Task", 16},
    {"cause", "Cause", 11},
    {"object", "Object", 10},
    {"count", "Count", 8, Number},
    {"total", "Total", 10, Time},
    {"avg", "Avg", 10, Time},
    {"max", "Max", 10, Time},
    {"max_at", "Max at", 20, Time},
    {"released_by", "Released by", 40},
};

constexpr Cells<WaitRow> kCells[] = {
    {[](const TableInput& input, const WaitRow& row) { return input.Name(row.task); }},
    {[](const TableInput&, const WaitRow& row) { return std::string(CauseName(row.cause)); }},
    {[](const TableInput& input, const WaitRow& row) { return ObjectText(input, row.object); }},
    {[](const TableInput&, const WaitRow& row) { return std::to_string(row.count); },
     [](const TableInput&, const WaitRow& row) { return static_cast<std::int64_t>(row.count); }},
    {[](const TableInput& input, const WaitRow& row) { return input.Time(row.total); },
     [](const TableInput&, const WaitRow& row) { return row.total; }},
    {[](const TableInput& input, const WaitRow& row) {
         return input.Time(static_cast<std::int64_t>(row.Avg() + 0.5));
     },
     [](const TableInput&, const WaitRow& row) { return SortNumberOf(row.Avg()); }},
    {[](const TableInput& input, const WaitRow& row) { return input.Time(row.max); },
     [](const TableInput&, const WaitRow& row) { return row.max; }},
    {[](const TableInput& input, const WaitRow& row) {
         return input.model.Recording().Clock().Format(row.maxAt);
     },
     [](const TableInput&, const WaitRow& row) { return row.maxAt; }},
    {[](const TableInput& input, const WaitRow& row) { return ReleasersText(input, row); }},
};
static_assert(std::size(kCells) == std::size(kColumns));

class WaitsTable final : public RowTable<WaitRow> {
  public:
    explicit WaitsTable(const TableInput& input) : RowTable(input, kWaitsForm, kCells) {
        WaitTable waits(input.selection, input.model.AllContexts().Count());
        Walk walk = input.model.NewWalk();
        walk.Add(waits);
        walk.Run();
        for (auto& row : waits.Rows())
            if (input.Has(row.task)) rows_.push_back(std::move(row));
    }

    std::optional<EventRef> PlaceOf(int row, int) const override { return At(row).maxEvent; }

    Members Values(int row) const override {
        const WaitRow& r = At(row);
        std::vector<Members> releasers;
        for (const auto& release : r.releasedBy)
            releasers.push_back({{"context", ValueOfText(input_.Name(release.context))},
                                 {"call", ValueOfText(input_.model.CallName(release.call))},
                                 {"count", static_cast<std::int64_t>(release.count)}});
        return {{"task", input_.Name(r.task)},
                {"cause", std::string(CauseName(r.cause))},
                {"object", ValueOfText(ObjectText(input_, r.object))},
                {"count", static_cast<std::int64_t>(r.count)},
                {"total", r.total},
                {"avg", r.Avg()},
                {"max", r.max},
                {"max_at", r.maxAt},
                {"released_by", std::move(releasers)}};
    }
};

}  // namespace

const AnalysisForm kWaitsForm = {"waits", "waits", "Waits", kColumns};

std::unique_ptr<Table> MakeWaitsTable(const TableInput& input) {
    return std::make_unique<WaitsTable>(input);
}

}  // namespace kvx::timing
