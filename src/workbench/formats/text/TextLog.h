#pragma once
// What all text logs of timed lines share: the mapped file, its index, its resource file.

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/text/LineIndex.h"
#include "workbench/formats/text/LineReader.h"
#include "workbench/formats/text/MappedFile.h"
#include "workbench/formats/text/ResourceFile.h"

namespace kvx::formats {

// A text log that is open and indexed.
struct OpenedLog {
    std::string path;
    MappedFile file;
    ResourceFile resources;
    LineIndex index;
    service::LossCounters losses;       // so far
    std::vector<std::string> warnings;  // so far
};

// staysBehind: see LineRules.
Result<OpenedLog> OpenLog(const std::string& path, MappedFile file, const OpenOptions& options,
                          bool (*staysBehind)(std::string_view, std::string_view),
                          IOpenProgress* progress);

class TextLog : public Recording {
  public:
    std::string Path() const override { return log_.path; }
    const service::TraceClock& Clock() const override { return clock_; }
    const std::vector<std::uint32_t>& Processors() const override { return processors_; }
    const std::vector<service::DeclaredContext>& Contexts() const override {
        return log_.resources.contexts;
    }
    bool StartsIdle(std::uint32_t processor) const override;
    std::vector<service::ContextKey> RunsAtStart(std::uint32_t processor) const override;
    std::uint32_t RecordCount() const override { return log_.index.records; }
    std::int64_t FirstTime() const override { return log_.index.firstTime - origin_; }
    std::int64_t LastTime() const override { return log_.index.lastTime - origin_; }
    void Read(std::uint32_t first, std::span<service::Record> out) override;
    bool IsReadInParts() const override { return true; }
    void ReadPart(std::uint32_t first, std::span<service::Record> out) const override;
    std::string Detail(std::uint32_t record) const override;
    std::string NameOf(std::uint32_t record) const override { return std::string(At(record).name); }
    std::int64_t TimeOf(std::uint32_t record) const override { return At(record).time; }
    std::uint32_t ProcessorOf(std::uint32_t record) const override { return At(record).processor; }
    const service::Kernel& GetKernel() const override { return kernel_; }
    std::int64_t TimeOrigin() const override { return origin_; }

  protected:
    // kernel: whose log it is; borrowed.
    TextLog(OpenedLog log, const service::Kernel& kernel);

    // What stands behind the time of a record. Comes with time and processor set.
    virtual void ParseMessage(std::uint32_t number, std::string_view message,
                              service::Record& record) const = 0;
    virtual std::string ParseDetail(std::string_view message) const = 0;
    // False: the message may be the beginning of a longer one.
    virtual bool IsComplete(std::string_view message) const = 0;
    // For the end of construction: counts the last line if the end of the file cuts it, and warns
    // if no line says anything of the schedule. lookedFor: how such lines begin, for people.
    void LookThrough(const char* lookedFor);

    OpenedLog log_;
    const service::Kernel& kernel_;
    service::TraceClock clock_;
    std::int64_t origin_ = 0;  // subtracted from all times
    std::vector<std::uint32_t> processors_;

  private:
    void Parse(std::uint32_t number, std::string_view line, service::Record& record) const;
    // By any thread.
    std::string_view LineOf(std::uint32_t record) const;
    service::Record At(std::uint32_t record) const;
    bool IsCut(std::string_view line) const;
    void CountCutLine();
    bool SaysAnything();

    LineReader reader_{log_.index};
    mutable std::mutex textMutex_;
    mutable LineReader textReader_{log_.index};  // of texts, which are often asked for in order
};

}  // namespace kvx::formats
