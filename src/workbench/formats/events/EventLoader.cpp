#include "workbench/formats/events/EventLoader.h"

#include <algorithm>
#include <utility>

#include "platform/base/Text.h"
#include "workbench/kernels/KnownKernels.h"

namespace kvx::formats {

using kernels::EventField;
using kernels::EventPlan;
using service::ContextKey;
using service::ContextKind;
using service::RecordKind;

namespace {
constexpr std::size_t kMostPlans = 0xFFFF;
}

EventLoader::EventLoader(EventTrace& trace, std::uint64_t bytes, IOpenProgress* progress)
    : trace_(trace), bytes_(bytes), progress_(progress), kernelIsGiven_(trace.kernel) {
    if (trace_.kernel) trace_.contexts.emplace(*trace_.kernel);
    trace_.plans.emplace_back();  // for kinds beyond what can be numbered: comments
    trace_.plans.emplace_back().kind = RecordKind::Gap;
}

void EventLoader::OnKind(const kernels::EventShape& shape, const kernels::EventNames& all) {
    if (!trace_.kernel) {
        trace_.kernel = kernels::FindKernel(all);
        if (trace_.kernel) trace_.contexts.emplace(*trace_.kernel);
    }
    if (trace_.plans.size() == kMostPlans) return planOfKind_.push_back(0);
    planOfKind_.push_back(static_cast<std::uint16_t>(trace_.plans.size()));
    EventPlan plan;
    const bool known = trace_.kernel && (kernelIsGiven_ || trace_.kernel->Recognises(all)) &&
                       trace_.kernel->Plan(shape, all, plan);
    trace_.plans.push_back(known ? plan : EventPlan());
    if (known && plan.tellsReady) trace_.tellsReady = true;
}

// Without a clock the place in the recording stands for the time.
bool EventLoader::OnEvent(std::uint32_t kind, std::optional<std::int64_t> time,
                          std::span<const EventValue> values) {
    endless_ = trace_.records.Count() + trace_.leftOut >= bytes_;
    if (endless_) return false;
    if (!time && trace_.records.Count() == 0) {
        trace_.unit = service::TimeUnit::Counts;
        isNumbered_ = true;
    }
    if (isNumbered_) time = trace_.records.Count();
    latest_ = time.value_or(latest_);
    values_ = values;
    auto number = planOfKind_[kind];
    if (const auto field = trace_.plans[number].condition; field && ValueOf(field).number == 0)
        number = 0;
    const EventPlan& plan = trace_.plans[number];
    const auto cpu = static_cast<std::uint16_t>(ValueOf(plan.processor).number);
    if (plan.kind != RecordKind::Comment) NoteProcessor(cpu);
    if (plan.kind == RecordKind::DispatchTo || plan.kind == RecordKind::Switch ||
        plan.kind == RecordKind::Runs)
        trace_.saysWhoRuns = true;
    if (!trace_.records.Add(latest_, number, cpu)) {
        ++trace_.leftOut;
        return true;
    }
    if (plan.subject || plan.kind == RecordKind::Runs) LearnNames(plan);
    if (plan.kind != RecordKind::Comment) Pack(plan);
    return true;
}

void EventLoader::NoteProcessor(std::uint16_t processor) {
    if (seenProcessors_[processor]) return;
    seenProcessors_[processor] = true;
    trace_.processors.insert(processor);
}

void EventLoader::OnDiscarded(Discarded what, std::uint64_t count) {
    trace_.losses.Add(what == Discarded::Events ? service::Loss::DiscardedRecords
                                                : service::Loss::DiscardedPackets,
                      count);
}

void EventLoader::AddGap(std::uint16_t processor) {
    constexpr std::uint16_t kGapPlan = 1;
    NoteProcessor(processor);
    if (!trace_.records.Add(latest_, kGapPlan, processor)) ++trace_.leftOut;
}

bool EventLoader::OnBatch() {
    if (onBeginning && trace_.records.Count() >= kBeginning) {
        EventTrace beginning = trace_;
        PutInOrder(beginning);
        std::exchange(onBeginning, nullptr)(std::move(beginning));
    }
    return !progress_ || progress_->Progress(trace_.records.Count(), 0);
}

void EventLoader::PutInOrder(EventTrace& trace) {
    trace.losses.Add(service::Loss::TimeStepsBack, trace.records.PutInOrder());
}

EventValue EventLoader::ValueOf(kernels::FieldRef field) const {
    const auto index = static_cast<std::size_t>(field.index);
    return field && index < values_.size() ? values_[index] : EventValue();
}

void EventLoader::Pack(const EventPlan& plan) {
    PackedOrder::Visit(plan, [&](const kernels::FieldRef& field) {
        const EventValue value = ValueOf(field);
        auto number = value.number;
        if (&field == &plan.subject) number = trace_.contexts->NumberOf(plan.subjectKind, number);
        if (&field == &plan.object && plan.objectIsTask)
            number = trace_.contexts->NumberOf(ContextKind::Task, number);
        if (&field == &plan.callName) number = CallName(value, plan.keepsCase);
        trace_.records.AddNumber(number);
    });
    PackDetails(plan);
}

void EventLoader::PackDetails(const EventPlan& plan) {
    for (const auto& detail : plan.details) {
        const EventValue value = ValueOf(detail.field);
        switch (detail.form) {
            case EventField::Form::Unsigned:
            case EventField::Form::Hexadecimal:
                trace_.records.AddNumber(value.number);
                break;
            case EventField::Form::Signed:
                trace_.records.AddSigned(static_cast<std::int64_t>(value.number));
                break;
            case EventField::Form::Label:
                if (value.text.empty()) {
                    trace_.records.AddText(std::to_string(value.number));
                    break;
                }
                [[fallthrough]];
            case EventField::Form::Text:
                trace_.records.AddText(value.text);
                break;
        }
    }
}

void EventLoader::LearnNames(const EventPlan& plan) {
    if (plan.kind == RecordKind::Runs && running_ > 0) trace_.contexts->LearnIdle(running_);
    if (!plan.subject) return;
    const auto number = trace_.contexts->NumberOf(plan.subjectKind, ValueOf(plan.subject).number);
    if (plan.kind == RecordKind::DispatchTo) running_ = number;
    trace_.contexts->Learn({plan.subjectKind, number}, ValueOf(plan.subjectName).text);
    if (plan.fromName)
        trace_.contexts->Learn({ContextKind::Task, ValueOf(plan.from).number},
                               ValueOf(plan.fromName).text);
}

std::uint64_t EventLoader::CallName(const EventValue& value, bool keepsCase) {
    if (!value.text.empty()) return CallNamed(value.text, keepsCase);
    const auto [at, isNew] = numberedCalls_.try_emplace(value.number);
    if (isNew)
        at->second = CallNamed(
            FormatText("syscall_%llu", static_cast<unsigned long long>(value.number)), keepsCase);
    return at->second;
}

std::uint64_t EventLoader::CallNamed(std::string_view told, bool keepsCase) {
    std::string name(told);
    if (!keepsCase)
        std::ranges::transform(name, name.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        });
    const auto [at, isNew] = callNumbers_.try_emplace(name, trace_.callNames.size());
    if (isNew) trace_.callNames.push_back(name);
    return at->second;
}

}  // namespace kvx::formats
