#pragma once
// A recording made of what a test says.

#include <string>
#include <vector>

#include "workbench/service/Recording.h"

namespace kvx::test {

class TestRecording final : public service::Recording {
  public:
    explicit TestRecording(std::vector<std::uint32_t> processors = {0}, std::int64_t end = 200)
        : processors_(std::move(processors)) {
        for (std::int64_t time = 100; time < end; time += 10) {
            service::Record record;
            record.time = time;
            record.kind = service::RecordKind::DispatchTo;
            record.subject = {service::ContextKind::Task, static_cast<std::uint64_t>(time % 30)};
            record.processor = processors_.front();
            records_.push_back(record);
        }
    }

    std::string Path() const override { return "/somewhere/made-up.log"; }
    std::string FormatName() const override { return "made up"; }
    const service::TraceClock& Clock() const override { return clock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override { return contexts_; }
    std::uint32_t RecordCount() const override {
        return static_cast<std::uint32_t>(records_.size());
    }
    std::int64_t FirstTime() const override { return records_.front().time; }
    std::int64_t LastTime() const override { return records_.back().time; }
    void Read(std::uint32_t first, std::span<service::Record> out) override {
        for (std::size_t i = 0; i < out.size(); ++i) out[i] = records_.at(first + i);
    }
    std::string Detail(std::uint32_t) const override { return {}; }
    std::string NameOf(std::uint32_t) const override { return {}; }
    std::int64_t TimeOf(std::uint32_t record) const override { return records_.at(record).time; }

    void Lose(service::Loss loss, std::uint64_t count) { losses_.Add(loss, count); }
    void Warn(std::string warning) { warnings_.push_back(std::move(warning)); }

  private:
    std::vector<std::uint32_t> processors_;
    std::vector<service::DeclaredContext> contexts_;
    std::vector<service::Record> records_;
    service::TraceClock clock_{service::TimeUnit::Microseconds};
};

}  // namespace kvx::test
