#include "workbench/timing/WaitTable.h"

#include <algorithm>

namespace kvx::timing {

void WaitTable::OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                       const TaskStatus& now, const Releaser& by) {
    const bool waited = before.doing == Doing::Waits;
    const bool waits = now.doing == Doing::Waits;
    const bool goesOn = waited && waits && before.wait == now.wait;
    Open& open = open_[task];
    // A task that runs straight out of a wait was ready before, for a time that is not told.
    const bool told =
        waited && !goesOn && open.seen && now.doing != Doing::Runs && now.doing != Doing::Unknown;
    if (told && selection_.Has(open.since, moment.time) && selection_.HasTimeline(open.timeline)) {
        const auto time = moment.time - open.since;
        WaitRow& row = rows_[{task, before.wait.cause, before.wait.object}];
        row.count += 1;
        row.total += time;
        if (row.count == 1 || time > row.max) {
            row.max = time;
            row.maxAt = open.since;
            row.maxEvent = open.event;
        }
        const auto same = [&](const ReleaseCount& release) {
            return release.context == by.context && release.call == by.call;
        };
        const auto at = std::ranges::find_if(row.releasedBy, same);
        if (at == row.releasedBy.end())
            row.releasedBy.push_back({by.context, by.call, 1});
        else
            ++at->count;
    }
    if (waits && !goesOn) open = {moment.time, moment.at, now.timeline, !now.beganUnseen};
}

std::vector<WaitRow> WaitTable::Rows() const {
    std::vector<WaitRow> rows;
    for (const auto& [key, row] : rows_) {
        rows.push_back(row);
        std::tie(rows.back().task, rows.back().cause, rows.back().object) = key;
        std::ranges::stable_sort(rows.back().releasedBy, std::ranges::greater(),
                                 &ReleaseCount::count);
    }
    return rows;
}

}  // namespace kvx::timing
