#include "workbench/formats/systemview/SystemViewRecording.h"

#include <algorithm>

#include "platform/base/Text.h"

namespace kvx::formats::systemview {

using service::ContextKey;
using service::ContextKind;
using service::Record;
using service::RecordKind;
using service::TaskState;

namespace {

// Fill levels beyond that are none: a port may tell a difference that is negative.
constexpr std::uint32_t kMostStack = 0x7FFFFFFF;

constexpr std::string_view kPrintName = "print";
constexpr std::string_view kMarkName = "marker";

const kernels::SystemViewKernel& KernelOf(const Survey& facts, const std::string& author) {
    const auto name = facts.system.find('O');
    if (name == facts.system.end() && author.find("Espressif") != std::string::npos)
        return kernels::FindSystemViewKernel("FreeRTOS");
    return kernels::FindSystemViewKernel(name == facts.system.end() ? "" : name->second);
}

// The numbering of FreeRTOS's calls that a recording shows: by who wrote it, else by which of the
// two numbers a delay has. Empty: it shows none.
std::string_view ShownNumbering(const Survey& facts, const std::string& author) {
    const auto core = facts.system.find('C');
    if (author.find("Espressif") != std::string::npos) return "espressif";
    if (core != facts.system.end() && core->second == "xtensa") return "espressif";
    if (facts.delays34 > 0 && facts.delays35 == 0) return "espressif";
    return facts.delays35 > 0 && facts.delays34 == 0 ? "segger" : "";
}

}  // namespace

SystemViewRecording::SystemViewRecording(Loaded loaded, const OpenOptions& options)
    : loaded_(std::move(loaded)),
      facts_(loaded_.stream->Facts()),
      kernel_(KernelOf(facts_, loaded_.author)),
      clock_(facts_.frequency ? facts_.frequency : options.frequency),
      traceClock_(clock_.Clock()),
      forms_(facts_, kernel_, loaded_.path, options, ShownNumbering(facts_, loaded_.author)),
      texts_(facts_, forms_),
      walk_(*loaded_.stream),
      textWalk_(*loaded_.stream) {
    for (const Core& core : loaded_.stream->Cores()) processors_.push_back(core.number);
    setsPriority_.resize(facts_.used.size());
    for (std::uint32_t id = kFirstCall; id < facts_.used.size(); ++id)
        setsPriority_[id] = kernel_.SetsPriority(forms_.NameOf(id));
    losses_ = loaded_.losses;
    warnings_ = std::move(loaded_.warnings);
    warnings_.insert(warnings_.end(), forms_.Warnings().begin(), forms_.Warnings().end());
    firstTime_ = TimeOf(0);
    Declare();
}

std::string SystemViewRecording::FormatName() const {
    return FormatText("SystemView recording (%s)", std::string(kernel_.Name()).c_str());
}

void SystemViewRecording::Declare() {
    const bool alone = processors_.size() == 1;
    const auto anywhere = alone ? service::kAnyProcessor : service::kNoProcessor;
    for (const auto& [id, task] : facts_.tasks) {
        service::DeclaredContext context{TaskKey(id), texts_.TaskName(id), anywhere};
        if (task.priority) context.priority = *task.priority;
        contexts_.push_back(std::move(context));
    }
    for (const auto& [number, name] : facts_.interrupts)
        contexts_.push_back({{ContextKind::Interrupt, number}, name, service::kNoProcessor});
    for (const auto id : facts_.timers)
        contexts_.push_back({{ContextKind::Cyclic, id},
                             FormatText("timer 0x%08X", facts_.AddressOf(id)),
                             service::kNoProcessor});
    std::ranges::sort(contexts_, {}, &service::DeclaredContext::key);
}

ContextKey SystemViewRecording::TaskKey(std::uint32_t id) const {
    const auto at = facts_.tasks.find(id);
    return {ContextKind::Task, at == facts_.tasks.end() ? 0 : at->second.number};
}

void SystemViewRecording::Read(std::uint32_t first, std::span<Record> out) {
    for (Record& record : out) Fill(walk_.To(first++), record);
}

void SystemViewRecording::ReadPart(std::uint32_t first, std::span<Record> out) const {
    Stream::Walk walk(*loaded_.stream);
    for (Record& record : out) Fill(walk.To(first++), record);
}

void SystemViewRecording::Fill(const Merger& at, Record& record) const {
    record = {};
    record.time = clock_.Time(at.Ticks());
    record.processor = processors_[at.CoreIndex()];
    if (at.Current().isGap) {
        record.kind = RecordKind::Gap;
        return;
    }
    const Packet& packet = at.Current().packet;
    switch (packet.id) {
        case kIsrEnter:
            record.kind = RecordKind::Enter;
            record.subject = {ContextKind::Interrupt, PacketCursor(packet.values).Number()};
            return;
        case kTimerEnter:
            record.kind = RecordKind::Enter;
            record.subject = {ContextKind::Cyclic, PacketCursor(packet.values).Number()};
            return;
        case kIsrExit:
        case kIsrToScheduler:
        case kTimerExit:
            record.kind = RecordKind::Leave;
            return;
        case kIdle:
            record.kind = RecordKind::Runs;
            record.subject = {ContextKind::Task, 0};
            return;
        case kTaskStopExec:
            record.kind = RecordKind::DispatchFrom;
            return;
        case kMarkStart:
        case kMarkStop:
        case kExtended:
            record.kind = RecordKind::InstantCall;
            record.name = kMarkName;
            return;
        case kPrint:
            record.kind = RecordKind::InstantCall;
            record.name = kPrintName;
            return;
        default:
            if (packet.id >= kFirstCall || packet.id == kEndCall) return FillCall(packet, record);
            FillTaskRecord(packet, record);
    }
}

void SystemViewRecording::FillTaskRecord(const Packet& packet, Record& record) const {
    PacketCursor values(packet.values);
    switch (packet.id) {
        case kTaskStartExec:
            record.kind = RecordKind::Runs;
            break;
        case kTaskStartReady:
            record.kind = RecordKind::State;
            break;
        case kTaskStopReady:
            record.kind = RecordKind::State;
            record.state = TaskState::Waiting;
            break;
        case kTaskTerminate:
            record.kind = RecordKind::State;
            record.state = TaskState::Dormant;
            break;
        default:
            return;
    }
    record.subject = TaskKey(values.Number());
}

// Whose end is never recorded, is an instant.
void SystemViewRecording::FillCall(const Packet& packet, Record& record) const {
    PacketCursor values(packet.values);
    if (packet.id == kEndCall) {
        const auto id = values.Number();
        record.kind = kernel_.RecordsReturns() ? RecordKind::Return : RecordKind::Comment;
        record.name = forms_.NameOf(id);
        return;
    }
    const bool ends = packet.id < facts_.ended.size() && facts_.ended[packet.id];
    record.kind = ends && kernel_.RecordsReturns() ? RecordKind::Call : RecordKind::InstantCall;
    record.name = forms_.NameOf(packet.id);
    const auto object = values.Number();
    record.object = object;
    if (packet.id >= setsPriority_.size() || !setsPriority_[packet.id]) return;
    record.subject = object == 0 ? ContextKey{ContextKind::Task, 0} : TaskKey(object);
    record.priority = static_cast<std::int32_t>(values.Number());
}

std::int64_t SystemViewRecording::TimeOf(std::uint32_t record) const {
    return clock_.Time(textWalk_.To(record).Ticks());
}

std::string SystemViewRecording::NameOf(std::uint32_t record) const {
    Record filled;
    Fill(textWalk_.To(record), filled);
    return std::string(filled.name);
}

std::string SystemViewRecording::Detail(std::uint32_t record) const {
    const Item& item = textWalk_.To(record).Current();
    const Packet& packet = item.packet;
    if (item.isGap) return {};
    switch (packet.id) {
        case kMarkStart:
            return FormatText("start=%u", PacketCursor(packet.values).Number());
        case kMarkStop:
            return FormatText("stop=%u", PacketCursor(packet.values).Number());
        case kExtended:
            return texts_.Extended(packet);
        case kPrint:
            return texts_.Print(packet);
        case kTaskStopReady:
            return texts_.StopCause(packet);
        case kEndCall:
            return texts_.Result(packet);
        default:
            return packet.id >= kFirstCall ? texts_.Parameters(packet) : std::string();
    }
}

std::string SystemViewRecording::FactsOf(const ContextKey& context) const {
    if (context.kind != ContextKind::Task || context.id == 0) return {};
    for (const auto& [id, task] : facts_.tasks) {
        if (task.number != context.id) continue;
        auto text = FormatText("Task control block: 0x%08X", facts_.AddressOf(id));
        if (task.priority) text = FormatText("Priority: %d\n", *task.priority) + text;
        if (!task.stack) return text;
        const auto& [base, size, used] = *task.stack;
        text += FormatText("\nStack at 0x%08X", base);
        if (size != 0 && size < kMostStack)
            text += FormatText(", reported size %u (some ports report the fill)", size);
        if (used != 0 && used < kMostStack) text += FormatText(", used %u", used);
        return text;
    }
    return {};
}

}  // namespace kvx::formats::systemview
