#pragma once
// A trace of events that say what they are, read as a whole when it is opened.

#include <string>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/events/EventLoader.h"

namespace kvx::formats {

// What could not be read of a trace.
struct EventDamage {
    std::uint64_t streams = 0;          // cut or left out
    std::vector<std::string> warnings;  // for people, one sentence each
    std::string reason;                 // why reading ended early, if it did
};

class EventRecording final : public Recording {
  public:
    // trace must hold records.
    EventRecording(std::string path, EventTrace trace, const EventDamage& damage);

    std::string Path() const override { return path_; }
    std::string FormatName() const override;
    const service::TraceClock& Clock() const override { return clock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }
    bool StartsIdle(std::uint32_t processor) const override {
        return trace_.idleAtStart.contains(processor);
    }
    std::uint32_t RecordCount() const override { return trace_.records.Count(); }
    std::int64_t FirstTime() const override { return TimeOf(0); }
    std::int64_t LastTime() const override { return TimeOf(RecordCount() - 1); }
    void Read(std::uint32_t first, std::span<service::Record> out) override {
        ReadPart(first, out);
    }
    bool IsReadInParts() const override { return true; }
    void ReadPart(std::uint32_t first, std::span<service::Record> out) const override;
    std::string Detail(std::uint32_t record) const override;
    std::string NameOf(std::uint32_t record) const override;
    std::int64_t TimeOf(std::uint32_t record) const override {
        return trace_.records.At(record).time - trace_.origin;
    }
    std::uint32_t ProcessorOf(std::uint32_t record) const override { return At(record).processor; }
    bool RecordsStates() const override;
    bool TellsReady() const override { return trace_.tellsReady; }
    const service::Kernel& GetKernel() const override;
    std::int64_t TimeOrigin() const override { return trace_.origin; }

  private:
    service::Record At(std::uint32_t record) const;
    std::string LookedFor() const;

    std::string path_;
    EventTrace trace_;
    service::TraceClock clock_;
    std::vector<std::uint32_t> processors_;
    std::vector<service::DeclaredContext> contexts_;
};

}  // namespace kvx::formats
