#include "workbench/timing/LockTracker.h"

#include <algorithm>

#include "host/TraceCodes.h"

namespace kvx::timing {

LockTracker::LockTracker(const Objects& objects, const LockSet* locks) : states_(objects.Count()) {
    for (ObjectId object = 0; object < objects.Count(); ++object) {
        const auto kind = objects.Get(object).kind;
        State& state = states_[object];
        state.mutex = kind == host::Code(host::StateCode::Mutex);
        state.tracked = locks ? (*locks)[object].isLock
                              : state.mutex || kind == host::Code(host::StateCode::Semaphore);
        if (locks && (*locks)[object].atStart != kNobody) Take(object, (*locks)[object].atStart);
    }
}

ContextId LockTracker::Take(ObjectId object, ContextId by) {
    State& state = states_[object];
    const auto before = state.holder;
    state.depth = state.mutex && before == by ? state.depth + 1 : 1;
    state.holder = by;
    if (state.mutex && before == kNobody) heldMutexes_.push_back(object);
    return before;
}

ContextId LockTracker::Give(ObjectId object, ContextId by) {
    State& state = states_[object];
    const auto before = state.holder;
    if (before == kNobody) return before;
    if (state.mutex && before != by) return before;
    if (--state.depth == 0) Free(object);
    return before;
}

void LockTracker::Free(ObjectId object) {
    states_[object].holder = kNobody;
    states_[object].depth = 0;
    if (states_[object].mutex) std::erase(heldMutexes_, object);
}

void LockTracker::FreeAll() {
    for (ObjectId object = 0; object < states_.size(); ++object) Free(object);
    later_ = {};
}

std::vector<ObjectId> LockTracker::MutexesOf(ContextId task) const {
    std::vector<ObjectId> mutexes;
    for (const auto object : heldMutexes_)
        if (states_[object].holder == task) mutexes.push_back(object);
    return mutexes;
}

}  // namespace kvx::timing
