// Locks, and how long they were held and waited for.

#include "workbench/timing/LockTable.h"
#include "workbench/timing/TableCells.h"
#include "workbench/timing/TableForms.h"

namespace kvx::timing {
namespace {

const ObjectInfo& ObjectOf(const TableInput& input, const LockRow& row) {
    return input.model.Facts().AllObjects().Get(row.object);
}

std::optional<std::int64_t> HoldMax(const LockRow& row) {
    return row.holds > 0 ? std::optional(row.holdMax) : std::nullopt;
}

double HoldAvg(const LockRow& row) {
    return static_cast<double>(row.holdTotal) / static_cast<double>(row.holds);
}

std::optional<std::int64_t> WaitMaxAt(const LockRow& row) {
    return row.waitMax ? std::optional(row.waitMaxAt) : std::nullopt;
}

using enum ValueKind;
constexpr AnalysisColumn kColumns[] = {
    {"object", "Object", 10},
    {"kind", "Kind", 12},
    {"takes", "Takes", 8, Number},
    {"contended", "Contended", 9, Number},
    {"hold_min", "Hold (min)", 10, Time},
    {"hold_avg", "Hold (avg)", 10, Time},
    {"hold", "Hold (max)", 10, Time},
    {"longest_holder", "Longest holder", 16},
    {"wait_max", "Wait (max)", 10, Time},
    {"wait_max_at", "Wait max at", 20, Time},
};

constexpr Cells<LockRow> kCells[] = {
    {[](const TableInput& input, const LockRow& row) { return ObjectOf(input, row).text; }},
    {[](const TableInput& input, const LockRow& row) {
        return std::string(ObjectOf(input, row).KindName());
    }},
    {[](const TableInput&, const LockRow& row) { return std::to_string(row.takes); },
     [](const TableInput&, const LockRow& row) { return static_cast<std::int64_t>(row.takes); }},
    {[](const TableInput&, const LockRow& row) { return std::to_string(row.contended); },
     [](const TableInput&, const LockRow& row) {
         return static_cast<std::int64_t>(row.contended);
     }},
    {[](const TableInput& input, const LockRow& row) {
         return row.holds > 0 ? input.Time(row.holdMin) : std::string();
     },
     [](const TableInput&, const LockRow& row) {
         return row.holds > 0 ? row.holdMin : kNoSortNumber;
     }},
    {[](const TableInput& input, const LockRow& row) {
         return row.holds > 0 ? input.Time(static_cast<std::int64_t>(HoldAvg(row) + 0.5))
                              : std::string();
     },
     [](const TableInput&, const LockRow& row) {
         return row.holds > 0 ? SortNumberOf(HoldAvg(row)) : kNoSortNumber;
     }},
    {[](const TableInput& input, const LockRow& row) { return input.Time(HoldMax(row)); },
     [](const TableInput&, const LockRow& row) { return NumberOf(HoldMax(row)); }},
    {[](const TableInput& input, const LockRow& row) { return input.Name(row.longestHolder); }},
    {[](const TableInput& input, const LockRow& row) { return input.Time(row.waitMax); },
     [](const TableInput&, const LockRow& row) { return NumberOf(row.waitMax); }},
    {[](const TableInput& input, const LockRow& row) {
         return row.waitMax ? input.model.Recording().Clock().Format(row.waitMaxAt) : std::string();
     },
     [](const TableInput&, const LockRow& row) { return NumberOf(WaitMaxAt(row)); }},
};
static_assert(std::size(kCells) == std::size(kColumns));

class LocksTable final : public RowTable<LockRow> {
  public:
    explicit LocksTable(const TableInput& input) : RowTable(input, kLocksForm, kCells) {
        Walk walk = input.model.NewWalk();
        LockTable locks(walk, input.selection);
        walk.Add(locks);
        walk.Run();
        rows_ = locks.Rows();
    }

    std::optional<EventRef> PlaceOf(int row, int column) const override {
        const LockRow& r = At(row);
        constexpr int kWaits = 8;
        if (column >= kWaits && r.waitMax) return r.waitMaxEvent;
        if (r.holds > 0) return r.longestEvent;
        return std::nullopt;
    }

    Members Values(int row) const override {
        const LockRow& r = At(row);
        Value hold;
        if (r.holds > 0)
            hold = Members{{"min", r.holdMin}, {"avg", HoldAvg(r)}, {"max", r.holdMax}};
        return {{"object", ObjectOf(input_, r).text},
                {"kind", std::string(ObjectOf(input_, r).KindName())},
                {"inferred", input_.model.Locks()[r.object].inferred},
                {"takes", static_cast<std::int64_t>(r.takes)},
                {"contended", static_cast<std::int64_t>(r.contended)},
                {"hold", hold},
                {"longest_holder", ValueOfText(input_.Name(r.longestHolder))},
                {"wait_max", ValueOf(r.waitMax)},
                {"wait_max_at", ValueOf(WaitMaxAt(r))}};
    }
};

}  // namespace

const AnalysisForm kLocksForm = {"locks", "locks", "Locks", kColumns};

std::unique_ptr<Table> MakeLocksTable(const TableInput& input) {
    return std::make_unique<LocksTable>(input);
}

}  // namespace kvx::timing
