#include "workbench/formats/itron_standard/StandardRecording.h"

#include <algorithm>
#include <set>

#include "workbench/formats/Registry.h"
#include "workbench/formats/itron_standard/Statement.h"
#include "workbench/formats/text/LogProbe.h"
#include "workbench/formats/text/TimedLine.h"
#include "workbench/kernels/itron/Itron.h"

namespace kvx::formats::itron_standard {

using service::ContextKind;
using service::Record;
using service::RecordKind;

namespace {

constexpr std::string_view kCurrentContext = "CurrentContext";

bool SpeaksOfHandler(const Statement& statement) {
    return !statement.isAttribute && (statement.verb == "enter" || statement.verb == "leave");
}

bool SpeaksOfTask(const Statement& statement) {
    Record record;
    Interpret(statement, false, record);
    return record.kind == RecordKind::DispatchTo || record.kind == RecordKind::State ||
           record.kind == RecordKind::Suspend || record.kind == RecordKind::Resume;
}

}  // namespace

StandardRecording::StandardRecording(OpenedLog log)
    : TextLog(std::move(log), kernels::itron::Kernel()), objects_(log_.resources) {
    MeetObjects();
    contexts_ = objects_.Declared(log_.resources);
    NoteProcessors();
    // The lines do not say which processor wrote them: with several, steps back are no more than
    // their interleaving.
    if (processors_.size() == 1) losses_.Add(service::Loss::TimeStepsBack, log_.index.stepsBack);
    LookThrough("\"TASK.dispatch()\", \"TASK.state=\", \"TASK.enterSVC()\"");
}

void StandardRecording::MeetObjects() {
    LineReader reader(log_.index);
    for (std::uint32_t number = 0; number < log_.index.records; ++number) {
        const auto parsed = ParseTimedLine(reader.Next(), log_.resources.timeRadix);
        const auto statement = parsed ? ParseStatement(parsed->message) : std::nullopt;
        if (!statement || statement->object.starts_with(kCurrentContext)) continue;
        const bool handler = SpeaksOfHandler(*statement);
        if (handler || SpeaksOfTask(*statement)) objects_.Meet(statement->object, handler);
        Record record;
        Interpret(*statement, false, record);
        if (record.kind == RecordKind::Migrate && objects_.Find(statement->object))
            objects_.Meet(statement->object, false).moves.emplace_back(number, record.target);
    }
}

void StandardRecording::NoteProcessors() {
    std::set<std::uint32_t> processors;
    for (const auto& context : contexts_)
        if (context.processor != service::kAnyProcessor) processors.insert(context.processor);
    processors_.assign(processors.begin(), processors.end());
    if (processors_.empty()) processors_.push_back(0);
}

void StandardRecording::ParseMessage(std::uint32_t number, std::string_view message,
                                     Record& record) const {
    const auto statement = ParseStatement(message);
    if (!statement) return;
    record.kind = RecordKind::Comment;
    const Object* object = objects_.Find(statement->object);
    if (!object) return;
    Interpret(*statement, object->key.kind != ContextKind::Task, record);
    record.subject = object->key;
    const auto processor = object->ProcessorAt(number);
    if (processor != service::kAnyProcessor) record.processor = processor;
}

std::string StandardRecording::ParseDetail(std::string_view message) const {
    const auto statement = ParseStatement(message);
    if (!statement) return {};
    return ParseArguments(ParseServiceCall(statement->arguments).arguments);
}

bool StandardRecording::IsComplete(std::string_view message) const {
    const auto statement = ParseStatement(message);
    if (!statement) return false;
    Record record;
    Interpret(*statement, false, record);
    return record.kind != RecordKind::Unreadable;
}

}  // namespace kvx::formats::itron_standard

namespace kvx::formats {

const Format kItronStandard = {
    "ITRON standard-format log",
    20,
    [](const Candidate& candidate) {
        return LooksLikeLog(candidate.Text(), [](std::string_view message) {
            return itron_standard::ParseStatement(message).has_value();
        });
    },
    [](Candidate& candidate, const OpenOptions& options,
       IOpenProgress* progress) -> Result<std::unique_ptr<Recording>> {
        auto log = OpenLog(candidate.path, std::move(*candidate.file), options,
                           itron_standard::ReturnStaysBehindCall, progress);
        if (!log) return log.GetError();
        return std::unique_ptr<Recording>(
            std::make_unique<itron_standard::StandardRecording>(std::move(*log)));
    },
    false,
    {"*.log, with *.res", "ITRON kernels", "waits, objects, priorities, calls, handlers"}};

}  // namespace kvx::formats
