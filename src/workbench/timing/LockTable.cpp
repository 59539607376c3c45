#include "workbench/timing/LockTable.h"

#include <algorithm>

namespace kvx::timing {

LockTable::LockTable(const Walk& walk, const Selection& selection)
    : walk_(walk),
      selection_(selection),
      rows_(walk.From().facts.AllObjects().Count()),
      held_(rows_.size()),
      waits_(walk.From().contexts.Count()) {
    for (ObjectId object = 0; object < rows_.size(); ++object) rows_[object].object = object;
}

void LockTable::OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                       const TaskStatus& now, const Releaser&) {
    const bool waited = before.doing == Doing::Waits;
    const bool goesOn = waited && now.doing == Doing::Waits && before.wait == now.wait;
    Begin& begin = waits_[task];
    if (waited && !goesOn && walk_.IsLock(before.wait.object)) {
        LockRow& row = rows_[before.wait.object];
        const bool here = selection_.HasTimeline(begin.timeline);
        const bool in = selection_.Has(moment.time, moment.time);
        if (here && in && before.wait.takes && before.wait.succeeds) ++row.contended;
        const auto time = moment.time - begin.time;
        const bool told = begin.seen && now.doing != Doing::Runs && now.doing != Doing::Unknown;
        if (told && here && selection_.Has(begin.time, moment.time) &&
            time > row.waitMax.value_or(-1)) {
            row.waitMax = time;
            row.waitMaxAt = begin.time;
            row.waitMaxEvent = begin.event;
        }
    }
    if (now.doing == Doing::Waits && !goesOn)
        begin = {moment.time, moment.at, now.timeline, !now.beganUnseen};
}

void LockTable::OnTake(const Moment& moment, ObjectId object, ContextId by, ContextId before) {
    const auto timeline = walk_.StatusOf(by).timeline;
    if (selection_.Has(moment.time, moment.time) && selection_.HasTimeline(timeline))
        ++rows_[object].takes;
    if (before == by) return;
    held_[object] = {moment.time, moment.at, timeline, true};
}

void LockTable::OnGive(const Moment& moment, ObjectId object, ContextId, ContextId before) {
    Begin& begin = held_[object];
    if (before == kNobody || walk_.HolderOf(object) != kNobody || !begin.seen) return;
    begin.seen = false;
    if (!selection_.Has(begin.time, moment.time) || !selection_.HasTimeline(begin.timeline)) return;
    LockRow& row = rows_[object];
    const auto time = moment.time - begin.time;
    row.holdMin = row.holds == 0 ? time : std::min(row.holdMin, time);
    row.holdTotal += time;
    if (row.holds == 0 || time > row.holdMax) {
        row.holdMax = time;
        row.longestHolder = before;
        row.longestEvent = begin.event;
    }
    ++row.holds;
}

std::vector<LockRow> LockTable::Rows() const {
    std::vector<LockRow> rows;
    for (const auto& row : rows_)
        if (row.takes > 0 || row.holds > 0 || row.waitMax) rows.push_back(row);
    return rows;
}

}  // namespace kvx::timing
