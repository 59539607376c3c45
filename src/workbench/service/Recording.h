#pragma once
// An opened file: its records in order of time, its processors, its contexts as far as they are
// known beforehand. Readers implement it; whoever shows it owns it.

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "workbench/service/Kernel.h"
#include "workbench/service/Loss.h"
#include "workbench/service/Record.h"
#include "workbench/service/TraceClock.h"

namespace kvx::service {

// For contexts that are named without saying where they are; they have no line until they occur.
inline constexpr std::uint32_t kNoProcessor = kAnyProcessor - 1;

// A context that the file, or the resource file beside it, names beforehand.
struct DeclaredContext {
    ContextKey key;
    std::string name;
    std::uint32_t processor = kAnyProcessor;  // where it starts, kAnyProcessor or kNoProcessor
    bool hasState = false;                    // state is that at the start of the recording
    TaskState state = TaskState::Dormant;
    std::uint8_t waitCode = 0;            // state Waiting: the state code, where the cause is known
    std::int32_t priority = kNoPriority;  // tasks: base priority at the start
};

class Recording {
  public:
    virtual ~Recording() = default;

    virtual std::string Path() const = 0;
    // For people, for example "ITRON kernel text log".
    virtual std::string FormatName() const = 0;
    virtual const TraceClock& Clock() const = 0;
    // Ascending, never empty; {0} where the file knows only one and gives it no number.
    virtual const std::vector<std::uint32_t>& Processors() const = 0;
    virtual const std::vector<DeclaredContext>& Contexts() const = 0;
    // True: the file says that no task and no handler runs at the start on this processor.
    virtual bool StartsIdle(std::uint32_t /*processor*/) const { return false; }

    // What runs on this processor at the start: a task or the idle state, and the handlers nested
    // over it, innermost last. Empty: that is not known, unless StartsIdle says so.
    virtual std::vector<ContextKey> RunsAtStart(std::uint32_t /*processor*/) const { return {}; }

    // Records are numbered from 0 in order of non-decreasing time.
    virtual std::uint32_t RecordCount() const = 0;
    // How many the file holds; where one of its records does several things there are more of ours.
    virtual std::uint32_t CountInFile() const { return RecordCount(); }
    virtual std::int64_t FirstTime() const = 0;
    virtual std::int64_t LastTime() const = 0;
    // Reads records first, first + 1, ... into out, which ends within the recording. Reading on
    // from where the last call ended costs nothing extra.
    virtual void Read(std::uint32_t first, std::span<Record> out) = 0;
    // True: several threads may read records at the same time, with ReadPart.
    virtual bool IsReadInParts() const { return false; }
    // As Read. To read on from where another call ended costs a little.
    virtual void ReadPart(std::uint32_t /*first*/, std::span<Record> /*out*/) const {}
    // Parameters of a call or values that a call returned: "name=value, name=value". Empty: none.
    virtual std::string Detail(std::uint32_t record) const = 0;
    // The system call that the record issues or returns from; empty for other records.
    virtual std::string NameOf(std::uint32_t record) const = 0;
    virtual std::int64_t TimeOf(std::uint32_t record) const = 0;
    // What else is known of a context, for its tip: lines, separated by "\n". Empty: nothing.
    virtual std::string FactsOf(const ContextKey& /*context*/) const { return {}; }
    // The processor that the record speaks of.
    virtual std::uint32_t ProcessorOf(std::uint32_t /*record*/) const {
        return Processors().front();
    }
    // False: part of why tasks wait and become ready has to be concluded (Inference.h).
    virtual bool RecordsStates() const { return true; }
    // What was lost and noted while the file was opened.
    const LossCounters& Losses() const { return losses_; }
    // What people should be told of it, one sentence each.
    const std::vector<std::string>& Warnings() const { return warnings_; }
    // For whoever opens it: the file behind it went on, and that is not there.
    void NoteDamagedTail(std::string warning) {
        losses_.Add(Loss::DamagedTail);
        warnings_.push_back(std::move(warning));
    }

    // Whose calls the records speak of. Holds for the life of the program.
    virtual const Kernel& GetKernel() const { return UnknownKernel(); }
    // What is taken off the times of the file, so that they stay exact in floating point.
    virtual std::int64_t TimeOrigin() const { return 0; }
    // False: the records never say when a task becomes ready.
    virtual bool TellsReady() const { return true; }

  protected:
    LossCounters losses_;
    std::vector<std::string> warnings_;
};

}  // namespace kvx::service
