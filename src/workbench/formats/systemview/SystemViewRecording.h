#pragma once
// A SystemView recording. Its packets are looked through once when it is opened, and read from the
// file whenever they are needed.

#include <memory>
#include <string>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/TickClock.h"
#include "workbench/formats/systemview/CallForms.h"
#include "workbench/formats/systemview/Stream.h"
#include "workbench/formats/systemview/ValueTexts.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats::systemview {

// What a recording is made from.
struct Loaded {
    std::string path;
    std::string author;
    std::vector<MappedFile> files;  // the stream reads their bytes
    std::unique_ptr<Stream> stream;
    service::LossCounters losses;       // so far
    std::vector<std::string> warnings;  // so far
};

class SystemViewRecording final : public Recording {
  public:
    // stream must hold records.
    SystemViewRecording(Loaded loaded, const OpenOptions& options);

    std::string Path() const override { return loaded_.path; }
    std::string FormatName() const override;
    const service::TraceClock& Clock() const override { return traceClock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }
    std::uint32_t RecordCount() const override { return loaded_.stream->Count(); }
    std::int64_t FirstTime() const override { return firstTime_; }
    std::int64_t LastTime() const override { return clock_.Time(loaded_.stream->LastTicks()); }
    void Read(std::uint32_t first, std::span<service::Record> out) override;
    bool IsReadInParts() const override { return true; }
    void ReadPart(std::uint32_t first, std::span<service::Record> out) const override;
    std::string Detail(std::uint32_t record) const override;
    std::string NameOf(std::uint32_t record) const override;
    std::int64_t TimeOf(std::uint32_t record) const override;
    std::string FactsOf(const service::ContextKey& context) const override;
    const service::Kernel& GetKernel() const override { return kernel_; }

  private:
    void Declare();
    void Fill(const Merger& at, service::Record& record) const;
    void FillCall(const Packet& packet, service::Record& record) const;
    void FillTaskRecord(const Packet& packet, service::Record& record) const;
    service::ContextKey TaskKey(std::uint32_t id) const;

    Loaded loaded_;
    const Survey& facts_;
    const kernels::SystemViewKernel& kernel_;
    TickClock clock_;
    service::TraceClock traceClock_;
    CallForms forms_;
    ValueTexts texts_;
    std::vector<bool> setsPriority_;  // by call
    std::vector<std::uint32_t> processors_;
    std::vector<service::DeclaredContext> contexts_;
    std::int64_t firstTime_ = 0;
    Stream::Walk walk_;
    mutable Stream::Walk textWalk_;  // of texts, which are often asked for in order
};

}  // namespace kvx::formats::systemview
