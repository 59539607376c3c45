#include "workbench/formats/text/TextLog.h"

#include <algorithm>

#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats {

using service::Loss;
using service::Record;
using service::RecordKind;

Result<OpenedLog> OpenLog(const std::string& path, MappedFile file, const OpenOptions& options,
                          bool (*staysBehind)(std::string_view, std::string_view),
                          IOpenProgress* progress) {
    service::LossCounters losses;
    std::vector<std::string> warnings;
    auto resources = FindResourceFile(options.resourceFile, path, losses, warnings);
    if (!resources) return resources.GetError();
    bool cancelled = false;
    const LineRules rules{resources->timeRadix, staysBehind};
    auto index = BuildLineIndex(file.Text(), rules, progress, cancelled);
    if (cancelled) return Error{path + ": opening was cancelled", true};
    if (index.timedRecords == 0) return Error{path + ": no line begins with a time"};
    if (index.truncated) losses.Add(Loss::DamagedTail);
    return OpenedLog{path,   std::move(file),    std::move(*resources), std::move(index),
                     losses, std::move(warnings)};
}

TextLog::TextLog(OpenedLog log, const service::Kernel& kernel)
    : log_(std::move(log)), kernel_(kernel), clock_(log_.resources.timeUnit) {
    losses_ = log_.losses;
    warnings_ = std::move(log_.warnings);
    origin_ = service::OriginOf(log_.index.firstTime, log_.index.lastTime, clock_);
}

bool TextLog::StartsIdle(std::uint32_t processor) const {
    return std::ranges::any_of(log_.resources.idleAtStart, [&](std::uint32_t idle) {
        return idle == processor || idle == service::kAnyProcessor;
    });
}

std::vector<service::ContextKey> TextLog::RunsAtStart(std::uint32_t processor) const {
    const auto& running = log_.resources.running;
    auto at = running.find(processor);
    if (at == running.end()) at = running.find(service::kAnyProcessor);
    return at == running.end() ? std::vector<service::ContextKey>() : at->second;
}

void TextLog::Read(std::uint32_t first, std::span<Record> out) {
    if (out.empty()) return;
    reader_.Seek(first);
    for (Record& record : out) Parse(first++, reader_.Next(), record);
}

void TextLog::ReadPart(std::uint32_t first, std::span<Record> out) const {
    LineReader reader(log_.index);
    reader.Seek(first);
    for (Record& record : out) Parse(first++, reader.Next(), record);
}

void TextLog::Parse(std::uint32_t number, std::string_view line, Record& record) const {
    record = {};
    record.kind = RecordKind::Unreadable;
    record.processor = processors_.front();
    record.time = LastTime();
    if (const auto parsed = ParseTimedLine(line, log_.resources.timeRadix)) {
        record.time = parsed->time - origin_;
        if (parsed->processor) record.processor = *parsed->processor;
        ParseMessage(number, parsed->message, record);
    }
    // The cut line is counted as such; for the decoder it says nothing.
    const auto text = log_.file.Text();
    const bool last = line.data() + line.size() == text.data() + text.size();
    if (last && IsCut(line)) record.kind = RecordKind::Comment;
}

std::string TextLog::Detail(std::uint32_t record) const {
    const auto parsed = ParseTimedLine(LineOf(record), log_.resources.timeRadix);
    return parsed ? ParseDetail(parsed->message) : std::string();
}

std::string_view TextLog::LineOf(std::uint32_t record) const {
    const std::lock_guard guard(textMutex_);
    textReader_.Seek(record);
    return textReader_.Next();
}

Record TextLog::At(std::uint32_t record) const {
    Record parsed;
    Parse(record, LineOf(record), parsed);
    return parsed;
}

void TextLog::LookThrough(const char* lookedFor) {
    CountCutLine();
    if (!SaysAnything())
        warnings_.push_back(log_.path +
                            ": no line says anything of tasks or system calls (looked for " +
                            lookedFor + "); nothing is shown");
}

bool TextLog::SaysAnything() {
    LineReader reader(log_.index);
    Record record;
    for (std::uint32_t number = 0; number < log_.index.records; ++number) {
        Parse(number, reader.Next(), record);
        if (record.kind != RecordKind::Comment && record.kind != RecordKind::Unreadable)
            return true;
    }
    return false;
}

void TextLog::CountCutLine() {
    auto text = log_.file.Text();
    if (text.ends_with('\n') || text.ends_with('\r')) return;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (IsCut(text.substr(text.rfind('\n') + 1))) losses_.Add(Loss::CutRecord);
}

// Whether a line that the end of the file ends was not finished.
bool TextLog::IsCut(std::string_view line) const {
    if (IsBlank(line)) return false;
    const auto parsed = ParseTimedLine(line, log_.resources.timeRadix);
    return !parsed || !IsComplete(parsed->message);
}

}  // namespace kvx::formats
