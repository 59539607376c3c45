// All jobs, one behind the other.

#include "workbench/timing/TableCells.h"
#include "workbench/timing/TableForms.h"

namespace kvx::timing {
namespace {

// The job itself is made when it is asked for: there may be millions.
struct Row {
    ContextId context = kNobody;
    std::uint32_t index = 0;
};

Job JobOf(const TableInput& input, const Row& row) {
    return *input.model.JobIn(input.selection, row.context, row.index);
}

using Member = std::optional<std::int64_t> (*)(const Job&);

template <Member member>
constexpr Cells<Row> TimeCells() {
    return {[](const TableInput& input, const Row& row) {
                return input.Time(member(JobOf(input, row)));
            },
            [](const TableInput& input, const Row& row) {
                return NumberOf(member(JobOf(input, row)));
            }};
}

template <Member member>
constexpr Cells<Row> MomentCells() {
    return {[](const TableInput& input, const Row& row) {
                const auto time = member(JobOf(input, row));
                return time ? input.model.Recording().Clock().Format(*time) : std::string();
            },
            [](const TableInput& input, const Row& row) {
                return NumberOf(member(JobOf(input, row)));
            }};
}

std::string EndName(const Job& job) {
    return job.endsIn == kEndUnknown ? std::string() : std::string(CauseName(job.endsIn));
}

std::string StarterName(const TableInput& input, const Job& job) {
    if (job.startedBy.context == kNobody) return {};
    auto text = input.Name(job.startedBy.context);
    const auto call = input.model.CallName(job.startedBy.call);
    return call.empty() ? text : text + " " + call;
}

using enum ValueKind;
constexpr AnalysisColumn kColumns[] = {
    {"task", "Task", 16},
    {"number", "Number", 7, Number},
    {"job", "Job", 7, Number},
    {"activation", "Activation", 20, Time},
    {"start", "Start", 20, Time},
    {"end", "End", 20, Time},
    {"rt", "RT", 10, Time},
    {"ipt", "IPT", 10, Time},
    {"cet", "CET", 10, Time},
    {"ready", "Ready", 10, Time},
    {"blocked", "Blocked", 10, Time},
    {"suspended", "Suspended", 10, Time},
    {"preemptions", "Preemptions", 11, Number},
    {"ends_in", "Ends in", 11},
    {"started_by", "Started by", 24},
    {"cut", "Cut", 4},
};

constexpr Cells<Row> kCells[] = {
    {[](const TableInput& input, const Row& row) { return input.Name(row.context); }},
    {[](const TableInput& input, const Row& row) {
         return std::to_string(input.model.AllContexts().Get(row.context).number);
     },
     [](const TableInput& input, const Row& row) {
         return std::int64_t{input.model.AllContexts().Get(row.context).number};
     }},
    {[](const TableInput&, const Row& row) { return std::to_string(row.index + 1); },
     [](const TableInput&, const Row& row) { return std::int64_t{row.index} + 1; }},
    MomentCells<[](const Job& job) { return job.activation; }>(),
    MomentCells<[](const Job& job) { return job.start; }>(),
    MomentCells<[](const Job& job) { return job.end; }>(),
    TimeCells<[](const Job& job) { return job.Response(); }>(),
    TimeCells<[](const Job& job) { return job.Pending(); }>(),
    TimeCells<[](const Job& job) { return job.cet; }>(),
    TimeCells<[](const Job& job) { return job.ready; }>(),
    TimeCells<[](const Job& job) { return job.Blocked(); }>(),
    TimeCells<[](const Job& job) { return job.suspended; }>(),
    {[](const TableInput& input, const Row& row) {
         const auto count = JobOf(input, row).preemptions;
         return count ? std::to_string(*count) : std::string();
     },
     [](const TableInput& input, const Row& row) {
         return NumberOf(JobOf(input, row).preemptions);
     }},
    {[](const TableInput& input, const Row& row) { return EndName(JobOf(input, row)); }},
    {[](const TableInput& input, const Row& row) { return StarterName(input, JobOf(input, row)); }},
    {[](const TableInput& input, const Row& row) {
        return std::string(JobOf(input, row).cut ? "cut" : "");
    }},
};
static_assert(std::size(kCells) == std::size(kColumns));

class JobsTable final : public RowTable<Row> {
  public:
    explicit JobsTable(const TableInput& input) : RowTable(input, kJobsForm, kCells) {
        for (ContextId id = 0; id < input.model.AllContexts().Count(); ++id) {
            if (!input.Has(id)) continue;
            const auto count = static_cast<std::uint32_t>(input.model.AllJobs().CountOf(id));
            for (std::uint32_t i = 0; i < count; ++i)
                if (input.model.JobIn(input.selection, id, i)) rows_.push_back({id, i});
        }
    }

    std::optional<EventRef> PlaceOf(int row, int) const override {
        return JobOf(input_, At(row)).event;
    }

    Members Values(int row) const override {
        const Row& r = At(row);
        const Job job = JobOf(input_, r);
        Value starter;
        if (job.startedBy.context != kNobody)
            starter = Members{{"context", input_.Name(job.startedBy.context)},
                              {"call", ValueOfText(input_.model.CallName(job.startedBy.call))}};
        return {{"task", input_.Name(r.context)},
                {"number", std::int64_t{input_.model.AllContexts().Get(r.context).number}},
                {"job", std::int64_t{job.number}},
                {"activation", ValueOf(job.activation)},
                {"start", ValueOf(job.start)},
                {"end", ValueOf(job.end)},
                {"rt", ValueOf(job.Response())},
                {"ipt", ValueOf(job.Pending())},
                {"cet", ValueOf(job.cet)},
                {"ready", ValueOf(job.ready)},
                {"blocked", ValueOf(job.Blocked())},
                {"suspended", ValueOf(job.suspended)},
                {"preemptions", ValueOf(job.preemptions)},
                {"ends_in", ValueOfText(EndName(job))},
                {"started_by", starter},
                {"cut", job.cut}};
    }
};

}  // namespace

const AnalysisForm kJobsForm = {"jobs", "jobs", "Jobs", kColumns};

std::unique_ptr<Table> MakeJobsTable(const TableInput& input) {
    return std::make_unique<JobsTable>(input);
}

}  // namespace kvx::timing
