// Tasks and handlers with the figures of their jobs.

#include "workbench/timing/JobFigures.h"
#include "workbench/timing/Load.h"
#include "workbench/timing/TableCells.h"
#include "workbench/timing/TableForms.h"

namespace kvx::timing {
namespace {

struct Row {
    ContextId context = kNobody;
    JobFigures figures;
    std::optional<Statistics> slack;
    double load = 0;
};

using Field = std::int64_t Statistics::*;

template <Figure figure, Field field>
std::optional<std::int64_t> Of(const Row& row) {
    const auto& statistics = row.figures.Of(figure);
    return statistics ? std::optional((*statistics).*field) : std::nullopt;
}

template <Figure figure, Field field>
constexpr Cells<Row> TimeCells() {
    return {
        [](const TableInput& input, const Row& row) { return input.Time(Of<figure, field>(row)); },
        [](const TableInput&, const Row& row) { return NumberOf(Of<figure, field>(row)); }};
}

template <Figure figure>
constexpr Cells<Row> AverageCells() {
    return {[](const TableInput& input, const Row& row) {
                const auto& statistics = row.figures.Of(figure);
                return statistics ? input.Time(static_cast<std::int64_t>(statistics->avg + 0.5))
                                  : std::string();
            },
            [](const TableInput&, const Row& row) {
                const auto& statistics = row.figures.Of(figure);
                return statistics ? SortNumberOf(statistics->avg) : kNoSortNumber;
            }};
}

using enum ValueKind;
constexpr AnalysisColumn kColumns[] = {
    {"task", "Task", 16},
    {"number", "Number", 7, Number},
    {"type", "Type", 10},
    {"jobs", "Jobs", 8, Number},
    {"cut_jobs", "Cut", 5, Number},
    {"period", "Period (avg)", 12, Time},
    {"jitter", "Jitter", 10, Time},
    {"ipt", "IPT (max)", 10, Time},
    {"cet", "CET (avg)", 10, Time},
    {"cet_max", "CET (max)", 10, Time},
    {"get", "GET (max)", 10, Time},
    {"rt_median", "RT (median)", 11, Time},
    {"rt_p99", "RT (p99)", 10, Time},
    {"rt", "RT (max)", 10, Time},
    {"slack", "Slack (min)", 11, Time},
    {"blocked", "Blocked (max)", 13, Time},
    {"preemptions", "Preemptions (max)", 17, Number},
    {"load", "Load", 9, Share},
    {"nesting", "Nesting", 7, Number},
};

std::string Count(std::int64_t count) {
    return std::to_string(count);
}

constexpr Cells<Row> kCells[] = {
    {[](const TableInput& input, const Row& row) { return input.Name(row.context); }},
    {[](const TableInput& input, const Row& row) {
         return Count(input.model.AllContexts().Get(row.context).number);
     },
     [](const TableInput& input, const Row& row) {
         return std::int64_t{input.model.AllContexts().Get(row.context).number};
     }},
    {[](const TableInput& input, const Row& row) {
        return std::string(input.model.AllContexts().Get(row.context).TypeName());
    }},
    {[](const TableInput&, const Row& row) { return std::to_string(row.figures.jobs); },
     [](const TableInput&, const Row& row) { return static_cast<std::int64_t>(row.figures.jobs); }},
    {[](const TableInput&, const Row& row) { return std::to_string(row.figures.cutJobs); },
     [](const TableInput&, const Row& row) {
         return static_cast<std::int64_t>(row.figures.cutJobs);
     }},
    AverageCells<Figure::Period>(),
    {[](const TableInput& input, const Row& row) { return input.Time(row.figures.jitter); },
     [](const TableInput&, const Row& row) { return NumberOf(row.figures.jitter); }},
    TimeCells<Figure::Ipt, &Statistics::max>(),
    AverageCells<Figure::Cet>(),
    TimeCells<Figure::Cet, &Statistics::max>(),
    TimeCells<Figure::Get, &Statistics::max>(),
    TimeCells<Figure::Rt, &Statistics::median>(),
    TimeCells<Figure::Rt, &Statistics::p99>(),
    TimeCells<Figure::Rt, &Statistics::max>(),
    {[](const TableInput& input, const Row& row) {
         return row.slack ? input.Time(row.slack->min) : std::string();
     },
     [](const TableInput&, const Row& row) { return row.slack ? row.slack->min : kNoSortNumber; }},
    TimeCells<Figure::Blocked, &Statistics::max>(),
    {[](const TableInput&, const Row& row) {
         const auto most = Of<Figure::Preemptions, &Statistics::max>(row);
         return most ? Count(*most) : std::string();
     },
     [](const TableInput&, const Row& row) {
         return NumberOf(Of<Figure::Preemptions, &Statistics::max>(row));
     }},
    {[](const TableInput&, const Row& row) { return ShareText(row.load); },
     [](const TableInput&, const Row& row) { return SortNumberOf(row.load); }},
    {[](const TableInput& input, const Row& row) {
         const bool handler = input.model.AllContexts().Get(row.context).IsHandler();
         return handler ? std::to_string(row.figures.nesting) : std::string();
     },
     [](const TableInput&, const Row& row) {
         return static_cast<std::int64_t>(row.figures.nesting);
     }},
};
static_assert(std::size(kCells) == std::size(kColumns));

// Where the column has a job of its own, the one with the maximum.
Figure FigureOfColumn(int column) {
    const std::string_view key = column < 0 || column >= static_cast<int>(std::size(kColumns))
                                     ? "rt"
                                     : kColumns[static_cast<std::size_t>(column)].key;
    if (key.starts_with("period") || key == "jitter") return Figure::Period;
    if (key.starts_with("ipt")) return Figure::Ipt;
    if (key.starts_with("cet")) return Figure::Cet;
    if (key.starts_with("get")) return Figure::Get;
    if (key.starts_with("blocked")) return Figure::Blocked;
    if (key.starts_with("preemptions")) return Figure::Preemptions;
    return Figure::Rt;
}

class TimingTable final : public RowTable<Row> {
  public:
    explicit TimingTable(const TableInput& input) : RowTable(input, kTimingForm, kCells) {
        const Load load(input.model, input.selection);
        for (ContextId id = 0; id < input.model.AllContexts().Count(); ++id) {
            const auto& info = input.model.AllContexts().Get(id);
            if (!input.Has(id) || !(info.IsTask() || info.IsHandler())) continue;
            Row row{id, FiguresOf(input.model, input.selection, id), {}, load.ShareOf(id)};
            if (const auto deadline = input.rules.DeadlineOf(id)) row.slack = Slack(id, *deadline);
            rows_.push_back(std::move(row));
        }
    }

    std::optional<EventRef> PlaceOf(int row, int column) const override {
        const Row& r = At(row);
        const auto worst = r.figures.worst[static_cast<std::size_t>(FigureOfColumn(column))];
        if (!worst) return std::nullopt;
        return input_.model.AllJobs().At(r.context, *worst).event;
    }

    Members Values(int row) const override {
        const Row& r = At(row);
        const auto& info = input_.model.AllContexts().Get(r.context);
        const auto& f = r.figures;
        const auto of = [&](Figure figure) { return ValueOf(f.Of(figure)); };
        Value period;
        if (const auto& p = f.Of(Figure::Period))
            period = Members{{"min", p->min}, {"avg", p->avg}, {"max", p->max}};
        return {
            {"task", input_.Name(r.context)},
            {"number", std::int64_t{info.number}},
            {"type", std::string(info.TypeName())},
            {"jobs", static_cast<std::int64_t>(f.jobs)},
            {"cut_jobs", static_cast<std::int64_t>(f.cutJobs)},
            {"period", period},
            {"jitter", ValueOf(f.jitter)},
            {"ipt", of(Figure::Ipt)},
            {"cet", of(Figure::Cet)},
            {"get", of(Figure::Get)},
            {"rt", of(Figure::Rt)},
            {"slack", ValueOf(r.slack)},
            {"blocked", of(Figure::Blocked)},
            {"preemptions", of(Figure::Preemptions)},
            {"load", r.load},
            {"nesting", info.IsHandler() ? Value(static_cast<std::int64_t>(f.nesting)) : Value()}};
    }

  private:
    std::optional<Statistics> Slack(ContextId context, std::int64_t deadline) const {
        std::vector<std::int64_t> values;
        for (std::size_t i = 0; i < input_.model.AllJobs().CountOf(context); ++i) {
            const auto job = input_.model.JobIn(input_.selection, context, i);
            if (job && !job->cut) values.push_back(deadline - *job->Response());
        }
        return StatisticsOf(values);
    }
};

}  // namespace

const AnalysisForm kTimingForm = {"timing", "timing", "Timing", kColumns};

std::unique_ptr<Table> MakeTimingTable(const TableInput& input) {
    return std::make_unique<TimingTable>(input);
}

}  // namespace kvx::timing
