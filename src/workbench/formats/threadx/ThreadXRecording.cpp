#include "workbench/formats/threadx/ThreadXRecording.h"

#include <algorithm>

#include "platform/base/Text.h"
#include "workbench/formats/Registry.h"
#include "workbench/kernels/threadx/ThreadX.h"

namespace kvx::formats::threadx {

using namespace kernels::threadx;
using service::ContextKind;
using service::Loss;
using service::Record;
using service::RecordKind;

namespace {

constexpr std::uint32_t kPriorityBits = 0x3FF;
constexpr std::size_t kMostIds = 0x10000;
constexpr std::uint32_t kWaitForever = 0xFFFFFFFFu;

// What is built on the kernel has numbers of its own; so has the application.
std::string MadeUpName(std::uint32_t id) {
    const auto* whose = id >= 1025  ? "user"
                        : id >= 600 ? "USBX"
                        : id >= 300 ? "NetX"
                        : id >= 200 ? "FileX"
                                    : "ThreadX";
    return FormatText("%s event %u", whose, id);
}

}  // namespace

ThreadXRecording::ThreadXRecording(std::string path, MappedFile file, EventBuffer buffer,
                                   std::uint64_t frequency)
    : path_(std::move(path)),
      file_(std::move(file)),
      buffer_(std::move(buffer)),
      clock_(TickClock(frequency).Clock()) {
    const TickClock clock(frequency);
    const auto events = buffer_.Events();
    steps_ = StepsOf(buffer_, events);
    times_.reserve(events.size());
    for (const auto ticks : buffer_.Ticks(events)) times_.push_back(clock.Time(ticks));
    for (const Object& object : buffer_.Objects()) objects_[object.pointer] = &object;
    NumberThreads(events);
    NoteDamage();
}

// Those of the registry in its order, then others as they occur. What a thread was given priority
// by inheritance is more urgent than its own: the least urgent number that it is seen with is its
// own.
void ThreadXRecording::NumberThreads(std::span<const Event> events) {
    std::unordered_map<std::uint32_t, std::int32_t> priorities;
    std::uint32_t last = kIdle;  // the same one comes many times in a row
    const auto meet = [&](std::uint32_t thread) {
        if (!IsThread(thread) || thread == last) return;
        last = thread;
        threads_.try_emplace(thread, threads_.size() + 1);
    };
    for (const Object& object : buffer_.Objects())
        if (object.type == kThreadObject) meet(object.pointer);
    std::vector<bool> met(kMostIds);
    bool changed = false;
    std::uint32_t same = kIdle;  // the last thread of which the priority was taken
    std::int32_t known = 0;
    for (const Event& event : events) {
        meet(event.context);
        if (event.id == kResume || event.id == kSuspend) meet(event.info[0]);
        if (event.id == kSuspend || event.id == kResume) meet(event.info[3]);
        if (event.context == kInInterrupt) meet(event.priority);
        changed |= event.id == kPriorityChange;
        if (event.id < met.size() && !met[event.id]) {
            met[event.id] = true;
            if (!FindCall(event.id)) otherCalls_.try_emplace(event.id, MadeUpName(event.id));
        }
        if (!IsThread(event.context) || changed) continue;
        const auto priority = static_cast<std::int32_t>(event.priority & kPriorityBits);
        if (event.context == same && priority <= known) continue;
        auto& most = priorities.try_emplace(event.context, priority).first->second;
        known = most = std::max(most, priority);
        same = event.context;
    }
    for (const auto& [thread, number] : threads_) {
        service::DeclaredContext context;
        context.key = {ContextKind::Task, number};
        context.name = ObjectText(thread);
        if (const auto at = priorities.find(thread); at != priorities.end())
            context.priority = at->second;
        contexts_.push_back(std::move(context));
    }
    std::ranges::sort(contexts_, {}, &service::DeclaredContext::key);
    service::DeclaredContext interrupt;
    interrupt.key = {ContextKind::Interrupt, 0};
    interrupt.name = "Interrupt";
    interrupt.processor = service::kNoProcessor;
    contexts_.push_back(std::move(interrupt));
}

void ThreadXRecording::NoteDamage() {
    losses_.Add(Loss::UnreadableRecords, buffer_.Missing());
    if (buffer_.Missing() > 0)
        warnings_.push_back(
            FormatText("%s: the file ends before the buffer does: %u of its places "
                       "are missing",
                       path_.c_str(), buffer_.Missing()));
    if (buffer_.IsOrderDamaged()) {
        losses_.Add(Loss::UnreadableRecords);
        warnings_.push_back(path_ +
                            ": the header does not say which event is the oldest; they are shown "
                            "in the order of the buffer");
    }
    if (buffer_.IsRegistryDamaged()) {
        losses_.Add(Loss::UnreadableRecords);
        warnings_.push_back(path_ +
                            ": the registry of names is damaged; objects without a name "
                            "are shown by their addresses");
    }
}

const service::Kernel& ThreadXRecording::GetKernel() const {
    return Kernel();
}

void ThreadXRecording::ReadPart(std::uint32_t first, std::span<Record> out) const {
    for (Record& record : out) record = At(first++);
}

std::uint64_t ThreadXRecording::NumberOf(std::uint32_t thread) const {
    const auto at = threads_.find(thread);
    return at == threads_.end() ? 0 : at->second;
}

Record ThreadXRecording::At(std::uint32_t number) const {
    const Step& step = steps_[number];
    const Event event = buffer_.At(step.source);
    Record record;
    record.time = times_[step.event];
    record.subject = {ContextKind::Task, NumberOf(step.who)};
    switch (step.kind) {
        case Step::Kind::Nothing:
            break;
        case Step::Kind::Gap:
            record.kind = RecordKind::Gap;
            break;
        case Step::Kind::Runs:
            record.kind = RecordKind::Runs;
            break;
        case Step::Kind::Enter:
            record.kind = RecordKind::Enter;
            record.subject = {ContextKind::Interrupt, step.who};
            break;
        case Step::Kind::Leave:
            record.kind = RecordKind::Leave;
            record.subject = {};
            if (step.who != kInInterrupt) record.from = {ContextKind::Task, NumberOf(step.who)};
            break;
        case Step::Kind::Switch:
            record.from = {ContextKind::Task, NumberOf(event.info[0])};
            [[fallthrough]];
        case Step::Kind::State: {
            record.kind = step.kind == Step::Kind::State ? RecordKind::State : RecordKind::Switch;
            if (event.id == kResume) break;
            const auto state = StateOf(event.info[1]);
            record.state = state.state;
            record.waitCode = state.waitCode;
            record.cause = step.cause;
            break;
        }
        case Step::Kind::Call:
            FillCall(event, record);
            break;
    }
    return record;
}

void ThreadXRecording::FillCall(const Event& event, Record& record) const {
    record.kind = RecordKind::InstantCall;
    record.name = CallName(event.id);
    record.object = event.info[0];
    record.subject = {};
    if (event.id != kPriorityChange && event.id != kThreadCreate) return;
    record.subject = {ContextKind::Task, NumberOf(event.info[0])};
    if (record.subject.id != 0) record.priority = static_cast<std::int32_t>(event.info[1]);
}

std::string_view ThreadXRecording::CallName(std::uint32_t id) const {
    if (const auto call = FindCall(id)) return call->name;
    const auto at = otherCalls_.find(id);
    return at == otherCalls_.end() ? std::string_view("ThreadX event") : at->second;
}

std::string ThreadXRecording::NameOf(std::uint32_t record) const {
    const Step& step = steps_[record];
    return step.kind == Step::Kind::Call ? std::string(CallName(buffer_.At(step.source).id))
                                         : std::string();
}

std::string ThreadXRecording::ObjectText(std::uint32_t pointer) const {
    const auto at = objects_.find(pointer);
    const bool named = at != objects_.end() && !at->second->name.empty();
    return named ? at->second->name : FormatText("0x%08X", pointer);
}

std::string ThreadXRecording::ValueText(char form, std::uint32_t value) const {
    if (form == 'o') return value == 0 ? "none" : ObjectText(value);
    if (form == 'w' && value == kWaitForever) return "forever";
    return FormatText(form == 'x' ? "0x%X" : "%u", value);
}

std::string ThreadXRecording::Detail(std::uint32_t record) const {
    const Step& step = steps_[record];
    const Event event = buffer_.At(step.source);
    if (step.kind == Step::Kind::State || step.kind == Step::Kind::Switch)
        return event.id == kSuspend ? std::string(StateOf(event.info[1]).name) : std::string();
    if (step.kind != Step::Kind::Call) return {};
    const auto call = FindCall(event.id);
    std::string_view values = call ? call->values : "i1:x i2:x i3:x i4:x";
    std::string text;
    for (std::size_t i = 0; i < event.info.size() && !values.empty(); ++i) {
        const auto value = values.substr(0, values.find(' '));
        values.remove_prefix(std::min(value.size() + 1, values.size()));
        const auto colon = value.find(':');
        if (colon == 0) continue;
        text.append(text.empty() ? "" : ", ")
            .append(value.substr(0, colon))
            .append("=")
            .append(ValueText(value.back(), event.info[i]));
    }
    return text;
}

std::string ThreadXRecording::FactsOf(const service::ContextKey& context) const {
    if (context.kind != ContextKind::Task || context.id == 0) return {};
    std::string text;
    for (const auto& declared : contexts_)
        if (declared.key == context && declared.priority != service::kNoPriority)
            text = FormatText("Priority: %d", declared.priority);
    for (const Object& object : buffer_.Objects()) {
        if (object.type != kThreadObject || NumberOf(object.pointer) != context.id) continue;
        text += FormatText("%sStack: %u bytes at 0x%08X", text.empty() ? "" : "\n",
                           object.parameters[1], object.parameters[0]);
    }
    return text;
}

namespace {

Result<std::unique_ptr<Recording>> Open(Candidate& candidate, const OpenOptions& options,
                                        IOpenProgress* /*progress*/) {
    auto buffer = EventBuffer::Open(candidate.Text());
    if (!buffer) return Error{candidate.path + ": " + buffer.GetError().message};
    return std::unique_ptr<Recording>(std::make_unique<ThreadXRecording>(
        candidate.path, std::move(*candidate.file), std::move(*buffer), options.frequency));
}

}  // namespace
}  // namespace kvx::formats::threadx

namespace kvx::formats {

const Format kThreadX = {
    "ThreadX event buffer",
    40,
    [](const Candidate& candidate) { return threadx::EventBuffer::Recognises(candidate.Text()); },
    threadx::Open,
    false,
    {"*.trx", "ThreadX", "waits, objects, priorities, calls, handlers"}};

}  // namespace kvx::formats
