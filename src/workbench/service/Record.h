#pragma once
// What a reader hands to the decoder: one record of the file as a small value. A reader says what
// the file says and nothing more; what it means is the decoder's business.

#include <compare>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace kvx::service {

inline constexpr std::uint32_t kAnyProcessor = 0xFFFFFFFFu;
// A priority that is not told. Which of two is more urgent says the kernel.
inline constexpr std::int32_t kNoPriority = std::numeric_limits<std::int32_t>::min();
inline constexpr std::uint32_t kNoRecord = 0xFFFFFFFFu;
// That with which the task began.
inline constexpr std::int32_t kInitialPriority = kNoPriority + 1;

enum class ContextKind : std::uint8_t {
    Task,
    Interrupt,
    Exception,
    ServiceRoutine,
    Cyclic,
    Alarm,
    Unknown
};

// Names a context as the file does. Task 0 is the idle state.
struct ContextKey {
    ContextKind kind = ContextKind::Unknown;
    std::uint64_t id = 0;
    friend auto operator<=>(const ContextKey&, const ContextKey&) = default;
};

enum class TaskState : std::uint8_t {
    Runnable,
    Dormant,
    Waiting,
    Suspended,
    WaitingSuspended,
    NonExistent,
    Unknown  // does not run; what it does instead is not recorded
};

enum class RecordKind : std::uint8_t {
    Comment,       // says nothing about the schedule
    Unreadable,    // could not be read
    DispatchTo,    // subject starts or goes on; id 0: idle
    Runs,          // the same, but nothing new where subject already runs
    Switch,        // from gives the processor up, is in state from now on, and subject runs
    DispatchFrom,  // subject gives the processor up, and what follows is not said; kind Unknown:
                   // whoever has it
    SwitchedOut,   // the same, and the record that says who follows is still to come
    State,         // subject (a task) is in state from now on
    Blocks,        // the running task's innermost open call has to wait
    Suspend,       // subject is suspended, whatever else it waits for
    Resume,        // ... and no longer
    Enter,         // subject (a handler) starts
    Leave,         // subject (a handler) ends; kind Unknown: the innermost one. from: the task that
                   // runs then, where that is told, kind Unknown where not
    Call,          // the running context issues the system call `name`
    InstantCall,   // the same, with nothing to follow
    Return,        // the system call `name` returns; empty: the innermost one
    Migrate,       // subject moves to processor `target`
    Begin,         // what is declared for the start holds from here on, on the processor
    Gap            // what comes next on the processor is lost: nothing that was known holds on
};

struct Record {
    std::int64_t time = 0;
    std::uint32_t processor = 0;
    RecordKind kind = RecordKind::Comment;
    TaskState state = TaskState::Runnable;
    std::uint8_t waitCode = 0;  // state Waiting: the state code, where the file gives the cause
    ContextKey subject;
    ContextKey from;  // Switch, Leave
    std::uint64_t object =
        0;  // calls: address or number of the kernel object, 0 where none is given
    std::uint32_t target = kAnyProcessor;  // State, Migrate: the processor that subject is now on
    // Base priority of subject (a task; of a call id 0: whoever issues it) from this record on.
    std::int32_t priority = kNoPriority;
    // State Waiting: the record of the call that waits, where the file tells it apart from the
    // calls that are open. It may come later.
    std::uint32_t cause = kNoRecord;
    std::string_view name;  // owned by the recording
};

}  // namespace kvx::service
