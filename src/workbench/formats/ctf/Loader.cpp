#include "workbench/formats/ctf/Loader.h"

#include <algorithm>

#include "platform/Text.h"

namespace kvx::formats::ctf {

using service::ContextKey;
using service::ContextKind;
using service::RecordKind;

namespace {
constexpr std::size_t kMostPlans = 0xFFFF;
}

// Without a clock the place in the recording stands for the time.
bool Loader::OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) {
    endless_ = trace_.records.Count() + trace_.leftOut >= bytes_;
    if (endless_) return false;
    if (!nanoseconds && trace_.records.Count() == 0) trace_.hasClock = false;
    if (!trace_.hasClock) nanoseconds = trace_.records.Count();
    latest_ = trace_.records.Count() == 0 ? *nanoseconds
                                          : std::max(latest_, nanoseconds.value_or(latest_));
    const auto number = PlanOf(event);
    const Plan& plan = trace_.plans[number];
    const auto cpu = static_cast<std::uint16_t>(NumberOf(FieldOf(event, plan.processor)));
    if (plan.kind != RecordKind::Comment) trace_.processors.insert(cpu);
    if (!trace_.records.Add(latest_, number, cpu)) {
        ++trace_.leftOut;
        return true;
    }
    LearnNames(event, plan);
    Pack(event, plan);
    return true;
}

bool Loader::OnBatch() {
    return !progress_ || progress_->Progress(trace_.records.Count(), 0);
}

std::uint16_t Loader::PlanOf(const bt_event* event) {
    const auto* cls = bt_event_borrow_class_const(event);
    if (const auto at = plans_.find(cls); at != plans_.end()) return at->second;
    if (trace_.plans.size() == kMostPlans) return 0;
    const auto number = static_cast<std::uint16_t>(trace_.plans.size());
    const Plan& plan = trace_.plans.emplace_back(MakePlan(EventShape(cls)));
    plans_.emplace(cls, number);
    if (plan.kernel != Kernel::Other) trace_.kernel = plan.kernel;
    if (plan.recordsStates) trace_.recordsStates = true;
    return number;
}

void Loader::Pack(const bt_event* event, const Plan& plan) {
    if (plan.kind == RecordKind::Comment) return;
    const bool zephyr = plan.kernel == Kernel::Zephyr;
    PackedOrder::Visit(plan, [&](const FieldPlace& place) {
        const bool isThread =
            &place == &plan.subject || (&place == &plan.object && plan.objectIsThread);
        auto value = NumberOf(FieldOf(event, place));
        if (zephyr && isThread) value = ThreadNumber(value);
        if (&place == &plan.callName) value = CallName(event, place);
        trace_.records.AddNumber(value);
    });
    PackDetails(event, plan);
}

void Loader::PackDetails(const bt_event* event, const Plan& plan) {
    for (const auto& detail : plan.details) {
        const auto* field = FieldOf(event, detail.place);
        switch (detail.form) {
            case DetailField::Form::Unsigned:
            case DetailField::Form::Hexadecimal:
                trace_.records.AddNumber(NumberOf(field));
                break;
            case DetailField::Form::Signed:
                trace_.records.AddSigned(static_cast<std::int64_t>(NumberOf(field)));
                break;
            case DetailField::Form::Text:
                trace_.records.AddText(TextOf(field));
                break;
        }
    }
}

void Loader::LearnNames(const bt_event* event, const Plan& plan) {
    if (plan.kernel == Kernel::Zephyr && plan.kind == RecordKind::Runs && running_ > 0)
        trace_.threads[running_ - 1].isIdle = true;
    if (!plan.subject) return;
    const auto id = NumberOf(FieldOf(event, plan.subject));
    const auto name = NameOf(FieldOf(event, plan.subjectName));
    if (plan.kernel == Kernel::Zephyr) {
        const auto number = ThreadNumber(id);
        if (plan.kind == RecordKind::DispatchTo) running_ = number;
        if (!name.empty() && name != "unknown") trace_.threads[number - 1].name = name;
        return;
    }
    if (plan.subjectKind != ContextKind::Task) {
        auto& known = trace_.handlers[{plan.subjectKind, id}];
        if (!name.empty())
            known = FormatText("irq %llu %.*s", static_cast<unsigned long long>(id),
                               static_cast<int>(name.size()), name.data());
        return;
    }
    if (id != 0 && !name.empty()) trace_.tasks[id] = name;
    const auto from = NumberOf(FieldOf(event, plan.from));
    const auto fromName = NameOf(FieldOf(event, plan.fromName));
    if (from != 0 && !fromName.empty()) trace_.tasks[from] = fromName;
}

std::uint64_t Loader::ThreadNumber(std::uint64_t address) {
    const auto [at, isNew] = threadNumbers_.try_emplace(address, trace_.threads.size() + 1);
    if (isNew) trace_.threads.push_back({address, {}, false});
    return at->second;
}

std::uint64_t Loader::CallName(const bt_event* event, FieldPlace place) {
    const auto* field = FieldOf(event, place);
    std::string name(NameOf(field));
    std::ranges::transform(name, name.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    if (name.empty())
        name = FormatText("syscall_%llu", static_cast<unsigned long long>(NumberOf(field)));
    const auto [at, isNew] = callNumbers_.try_emplace(name, trace_.callNames.size());
    if (isNew) trace_.callNames.push_back(name);
    return at->second;
}

}  // namespace kvx::formats::ctf
