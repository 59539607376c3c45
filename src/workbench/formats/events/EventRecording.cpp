#include "workbench/formats/events/EventRecording.h"

#include "platform/base/Text.h"
#include "workbench/kernels/KnownKernels.h"
#include "workbench/service/Task.h"

namespace kvx::formats {

using service::ContextKind;
using service::Loss;
using service::Record;
using service::RecordKind;

EventRecording::EventRecording(std::string path, EventTrace trace, const EventDamage& damage)
    : path_(std::move(path)),
      trace_(std::move(trace)),
      clock_(trace_.unit),
      processors_(trace_.processors.begin(), trace_.processors.end()) {
    if (processors_.empty()) processors_.push_back(0);
    losses_ = trace_.losses;
    const bool endsEarly = trace_.leftOut > 0 || !damage.reason.empty();
    losses_.Add(Loss::DamagedTail, damage.streams + (endsEarly ? 1 : 0));
    warnings_ = damage.warnings;
    if (!damage.reason.empty())
        warnings_.push_back(
            FormatText("%s: damaged behind event %u: %s; what comes after is not "
                       "shown",
                       path_.c_str(), trace_.records.Count(), damage.reason.c_str()));
    if (!trace_.saysWhoRuns && losses_.Get(Loss::DamagedTail) == 0)
        warnings_.push_back(path_ + ": no event says which task runs (looked for " + LookedFor() +
                            "); no run is shown");
    if (trace_.contexts) contexts_ = trace_.contexts->Declared();
}

std::string EventRecording::LookedFor() const {
    return trace_.kernel ? std::string(trace_.kernel->SwitchEvents())
                         : kernels::KnownSwitchEvents();
}

std::string EventRecording::FormatName() const {
    return trace_.format +
           (trace_.kernel ? FormatText(" (%s)", std::string(trace_.kernel->Name()).c_str()) : "");
}

const service::Kernel& EventRecording::GetKernel() const {
    return trace_.kernel ? *trace_.kernel : service::UnknownKernel();
}

bool EventRecording::RecordsStates() const {
    return !trace_.kernel || trace_.kernel->RecordsStates();
}

void EventRecording::ReadPart(std::uint32_t first, std::span<Record> out) const {
    for (Record& record : out) record = At(first++);
}

Record EventRecording::At(std::uint32_t number) const {
    const auto& entry = trace_.records.At(number);
    const kernels::EventPlan& plan = trace_.plans[entry.plan];
    Record record;
    record.time = entry.time - trace_.origin;
    record.processor = entry.processor;
    record.kind = plan.kind;
    record.state = plan.state;
    record.waitCode = plan.waitCode;
    record.subject.kind = plan.subjectKind;
    record.name = plan.name;
    if (plan.kind == RecordKind::Comment) {
        record.processor = processors_.front();
        return record;
    }
    auto values = trace_.records.Values(number);
    if (plan.subject) record.subject = trace_.contexts->KeyOf({plan.subjectKind, values.Number()});
    if (plan.from) record.from = {ContextKind::Task, values.Number()};
    if (plan.fromState) {
        record.state = trace_.kernel->StateOf(values.Number());
        record.waitCode = service::kCodeSleeping;
    }
    if (plan.object) record.object = values.Number();
    if (plan.target) record.target = static_cast<std::uint32_t>(values.Number());
    if (plan.callName) {
        const auto name = values.Number();
        if (name < trace_.callNames.size()) record.name = trace_.callNames[name];
    }
    if (plan.priority) record.priority = static_cast<std::int32_t>(values.Number());
    return record;
}

std::string EventRecording::NameOf(std::uint32_t record) const {
    const auto parsed = At(record);
    const bool call = parsed.kind == RecordKind::Call || parsed.kind == RecordKind::InstantCall ||
                      parsed.kind == RecordKind::Return;
    return call ? std::string(parsed.name) : std::string();
}

std::string EventRecording::Detail(std::uint32_t record) const {
    const kernels::EventPlan& plan = trace_.plans[trace_.records.At(record).plan];
    auto values = trace_.records.Values(record);
    PackedOrder::Visit(plan, [&](const kernels::FieldRef&) { values.Number(); });
    std::string text;
    for (const auto& detail : plan.details) {
        if (!text.empty()) text += ", ";
        if (!detail.name.empty()) text.append(detail.name).append("=");
        switch (detail.form) {
            case kernels::EventField::Form::Unsigned:
                text += FormatText("%llu", static_cast<unsigned long long>(values.Number()));
                break;
            case kernels::EventField::Form::Hexadecimal:
                text += FormatText("0x%llX", static_cast<unsigned long long>(values.Number()));
                break;
            case kernels::EventField::Form::Signed:
                text += FormatText("%lld", static_cast<long long>(values.Signed()));
                break;
            case kernels::EventField::Form::Label:
            case kernels::EventField::Form::Text:
                text += values.Text();
                break;
        }
    }
    return text;
}

}  // namespace kvx::formats
