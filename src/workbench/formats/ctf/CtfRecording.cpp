#include "workbench/formats/ctf/CtfRecording.h"

#include "platform/Text.h"
#include "workbench/service/Task.h"

namespace kvx::formats::ctf {

using service::ContextKey;
using service::ContextKind;
using service::Loss;
using service::Record;
using service::RecordKind;
using service::TaskState;

namespace {

constexpr std::int64_t kDay = std::int64_t{86400} * 1000000000;

// Of a Linux task state the lowest bits hold in every version: 1 and 2 sleep, 4 and 8 are stopped,
// 16 and up are dead. Bits above say how it sleeps, or that the task was preempted.
TaskState LinuxState(std::uint64_t state) {
    if (state & 0x03) return TaskState::Waiting;
    if (state & 0x0C) return TaskState::Suspended;
    return state & 0xF0 ? TaskState::Dormant : TaskState::Runnable;
}

}  // namespace

CtfRecording::CtfRecording(std::string path, Trace trace, const std::string& damage)
    : path_(std::move(path)),
      trace_(std::move(trace)),
      clock_(trace_.hasClock ? service::TimeUnit::Nanoseconds : service::TimeUnit::Counts),
      processors_(trace_.processors.begin(), trace_.processors.end()) {
    if (processors_.empty()) processors_.push_back(0);
    // Times since 1970 lose their last digits in floating point: whole days are taken off.
    const auto first = trace_.records.At(0).time;
    if (trace_.hasClock && first > kDay) origin_ = first / kDay * kDay;
    losses_.Add(Loss::DiscardedRecords, trace_.discarded);
    losses_.Add(Loss::DamagedTail, trace_.leftOut > 0 || !damage.empty() ? 1 : 0);
    if (!damage.empty())
        warnings_.push_back(FormatText("%s: damaged behind event %u: %s", path_.c_str(),
                                       trace_.records.Count(), damage.c_str()));
    if (trace_.kernel == Kernel::Zephyr)
        DeclareThreads();
    else
        DeclareLinux();
}

std::string CtfRecording::FormatName() const {
    switch (trace_.kernel) {
        case Kernel::Zephyr:
            return "CTF (Zephyr)";
        case Kernel::Linux:
            return "CTF (Linux)";
        case Kernel::Other:
            break;
    }
    return "CTF";
}

bool CtfRecording::RecordsStates() const {
    return trace_.kernel != Kernel::Zephyr || trace_.recordsStates;
}

void CtfRecording::DeclareThreads() {
    for (std::size_t i = 0; i < trace_.threads.size(); ++i) {
        const Thread& thread = trace_.threads[i];
        service::DeclaredContext context;
        context.key = ThreadKey(i + 1);
        if (context.key.id == 0) continue;
        context.name = thread.name;
        if (context.name.empty())
            context.name =
                FormatText("thread %llX", static_cast<unsigned long long>(thread.address));
        contexts_.push_back(std::move(context));
    }
    contexts_.push_back({{ContextKind::Interrupt, 0}, "ISR"});
}

// A task gets its line when it comes to the processor that is shown.
void CtfRecording::DeclareLinux() {
    for (const auto& [id, name] : trace_.tasks)
        contexts_.push_back({{ContextKind::Task, id}, name, service::kNoProcessor});
    for (const auto& [key, name] : trace_.handlers)
        contexts_.push_back({key, name, service::kNoProcessor});
}

// Threads are numbered from 1; the idle thread is the idle state.
ContextKey CtfRecording::ThreadKey(std::uint64_t number) const {
    if (number == 0 || number > trace_.threads.size()) return {ContextKind::Task, 0};
    const Thread& thread = trace_.threads[number - 1];
    return {ContextKind::Task, thread.isIdle || thread.name.starts_with("idle") ? 0 : number};
}

void CtfRecording::Read(std::uint32_t first, std::span<Record> out) {
    for (Record& record : out) record = At(first++);
}

Record CtfRecording::At(std::uint32_t number) const {
    const auto& entry = trace_.records.At(number);
    const Plan& plan = trace_.plans[entry.plan];
    Record record;
    record.time = entry.time - origin_;
    record.processor = entry.processor;
    record.kind = plan.kind;
    record.state = plan.state;
    record.subject.kind = plan.subjectKind;
    record.name = plan.name;
    if (plan.kind == RecordKind::Comment) {
        record.processor = processors_.front();
        return record;
    }
    const bool zephyr = plan.kernel == Kernel::Zephyr;
    auto values = trace_.records.Values(number);
    if (plan.subject) {
        const auto id = values.Number();
        record.subject = zephyr ? ThreadKey(id) : ContextKey{plan.subjectKind, id};
    }
    if (plan.from) record.from = {ContextKind::Task, values.Number()};
    if (plan.fromState) {
        record.state = LinuxState(values.Number());
        record.waitCode = service::kCodeSleeping;
    }
    if (plan.object) record.object = values.Number();
    if (plan.target) record.target = static_cast<std::uint32_t>(values.Number());
    if (plan.callName) {
        const auto name = values.Number();
        if (name < trace_.callNames.size()) record.name = trace_.callNames[name];
    }
    return record;
}

std::string CtfRecording::NameOf(std::uint32_t record) const {
    const auto parsed = At(record);
    const bool call = parsed.kind == RecordKind::Call || parsed.kind == RecordKind::InstantCall ||
                      parsed.kind == RecordKind::Return;
    return call ? std::string(parsed.name) : std::string();
}

std::string CtfRecording::Detail(std::uint32_t record) const {
    const Plan& plan = trace_.plans[trace_.records.At(record).plan];
    auto values = trace_.records.Values(record);
    PackedOrder::Visit(plan, [&](const FieldPlace&) { values.Number(); });
    std::string text;
    for (const auto& detail : plan.details) {
        text.append(text.empty() ? "" : ", ").append(detail.name).append("=");
        switch (detail.form) {
            case DetailField::Form::Unsigned:
                text += FormatText("%llu", static_cast<unsigned long long>(values.Number()));
                break;
            case DetailField::Form::Hexadecimal:
                text += FormatText("0x%llX", static_cast<unsigned long long>(values.Number()));
                break;
            case DetailField::Form::Signed:
                text += FormatText("%lld", static_cast<long long>(values.Signed()));
                break;
            case DetailField::Form::Text:
                text += values.Text();
                break;
        }
    }
    return text;
}

}  // namespace kvx::formats::ctf
