#pragma once
// A ThreadX event buffer. Its events are followed once when it is opened.

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/TickClock.h"
#include "workbench/formats/text/MappedFile.h"
#include "workbench/formats/threadx/Steps.h"

namespace kvx::formats::threadx {

class ThreadXRecording final : public Recording {
  public:
    // buffer reads the file's bytes. frequency: see OpenOptions.
    ThreadXRecording(std::string path, MappedFile file, EventBuffer buffer,
                     std::uint64_t frequency);

    std::string Path() const override { return path_; }
    std::string FormatName() const override { return "ThreadX event buffer"; }
    const service::TraceClock& Clock() const override { return clock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }
    std::uint32_t RecordCount() const override { return static_cast<std::uint32_t>(steps_.size()); }
    std::uint32_t CountInFile() const override { return buffer_.Count(); }
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
        return times_[steps_[record].event];
    }
    std::string FactsOf(const service::ContextKey& context) const override;
    const service::Kernel& GetKernel() const override;

  private:
    service::Record At(std::uint32_t record) const;
    void FillCall(const Event& event, service::Record& record) const;
    void NumberThreads(std::span<const Event> events);
    void NoteDamage();
    std::uint64_t NumberOf(std::uint32_t thread) const;
    std::string_view CallName(std::uint32_t id) const;
    std::string ObjectText(std::uint32_t pointer) const;
    std::string ValueText(char form, std::uint32_t value) const;

    std::string path_;
    MappedFile file_;
    EventBuffer buffer_;
    std::vector<Step> steps_;
    std::vector<std::int64_t> times_;  // by event
    service::TraceClock clock_;
    std::vector<std::uint32_t> processors_{0};
    std::vector<service::DeclaredContext> contexts_;
    std::unordered_map<std::uint32_t, std::uint64_t> threads_;  // number by pointer, from 1
    std::unordered_map<std::uint32_t, const Object*> objects_;  // by pointer
    std::map<std::uint32_t, std::string> otherCalls_;           // names made up, by event
};

}  // namespace kvx::formats::threadx
