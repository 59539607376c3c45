#include "workbench/formats/btf/BtfReader.h"

#include <algorithm>
#include <array>
#include <utility>

#include "workbench/formats/text/LineCursor.h"
#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats::btf {

using service::Loss;

namespace {

constexpr std::string_view kSystem = "SYS";  // source of what does not come from a core
constexpr std::uint64_t kProgressStep = std::uint64_t{1} << 20;
constexpr int kLinesAhead = 64;

bool IsTask(std::string_view type) {
    return type == "T";
}

bool IsInterrupt(std::string_view type) {
    return type == "I" || type == "ISR";
}

bool Runs(std::string_view event) {
    return event == "start" || event == "resume" || event == "run" || event == "poll_parking";
}

bool Stops(std::string_view event) {
    return event == "preempt" || event == "wait" || event == "park" || event == "terminate" ||
           event == "interrupt_suspended";
}

std::string_view FirstWord(std::string_view text) {
    return text.substr(0, text.find(' '));
}

std::string_view LineAt(std::string_view text, std::size_t begin, std::size_t& next) {
    const auto end = std::min(text.find('\n', begin), text.size());
    next = end + 1;
    auto line = text.substr(begin, end - begin);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// "create pri:4".
std::int64_t PriorityIn(std::string_view note) {
    constexpr std::string_view kKey = "pri:";
    const auto at = note.find(kKey);
    if (at == std::string_view::npos) return -1;
    return LineCursor(note.substr(at + kKey.size())).AcceptNumber<std::int32_t>().value_or(-1);
}

}  // namespace

bool BtfReader::ReadAll(IOpenProgress* progress) {
    std::uint64_t shown = 0;
    for (std::size_t begin = 0; begin < text_.size(); begin = next_) {
        const auto line = LineAt(text_, begin, next_);
        if (line.starts_with('#'))
            header_.Add(line);
        else if (!IsBlank(line))
            OnLine(line, next_ > text_.size());
        if (begin < shown + kProgressStep) continue;
        shown = begin;
        if (progress && !progress->Progress(begin, text_.size())) return false;
    }
    return true;
}

std::optional<Columns> BtfReader::Columned(std::string_view line) const {
    auto columns = SplitColumns(line);
    if (!columns) return std::nullopt;
    columns->type = header_.Type(columns->type);
    columns->source = header_.Entity(columns->source);
    columns->target = header_.Entity(columns->target);
    return columns;
}

void BtfReader::OnLine(std::string_view line, bool isLast) {
    const auto columns = Columned(line);
    if (!columns || !IsEntityType(columns->type) ||
        __builtin_mul_overflow(columns->time, header_.NanosecondsPerCount(), &time_)) {
        trace_.losses.Add(isLast ? Loss::CutRecord : Loss::UnreadableRecords);
        return;
    }
    if (IsTask(columns->type)) return OnTask(*columns);
    if (IsInterrupt(columns->type)) return OnInterrupt(*columns);
    if (columns->type == "R") return OnRunnable(*columns);
    if (columns->type == "SEM" || columns->type == "SPINLOCK") return OnSemaphore(*columns);
    if (columns->type == "STI" && isDialect_) return OnStimulus(*columns);
    if (columns->type == "C" && columns->event == "idle") LearnIdle(*columns);
    TellNothing();
}

// A core that idles before anything else is said of it.
void BtfReader::LearnIdle(const Columns& line) {
    const auto core = processes_.Core(line.target);
    if (cores_.try_emplace(core).second) trace_.idleAtStart.insert(core);
}

void BtfReader::OnTask(Columns line) {
    Process& task = processes_.Task(line.target);
    if (isDialect_ && line.note.starts_with("create"))
        return Tell("create", {CoreOf(line, task), &task, nullptr, {}, {}, PriorityIn(line.note)});
    const bool isPlaced = TakePlace(line, task);
    if (line.event == "activate" || line.event == "release" || line.event == "release_parking")
        return OnActivate(line, isPlaced, task);
    if (Runs(line.event)) return OnRun(line, task);
    if (Stops(line.event) && line.source == kSystem) return OnSystem(line, isPlaced, task);
    if (Stops(line.event)) return OnStop(line, task);
    constexpr std::string_view kTo = "to ";
    if (line.event == "fullmigration" && line.note.starts_with(kTo)) {
        task.core = processes_.Core(line.note.substr(kTo.size()));
        return Tell("migrate", {task.core, &task});
    }
    TellNothing();
}

// A second instance becomes ready when the first one has ended: the task has one line.
void BtfReader::OnActivate(const Columns& line, bool isPlaced, Process& task) {
    if (line.event == "activate") {
        task.living.emplace_back(line.targetInstance);
        if (task.living.size() > 1) return TellNothing();
    }
    if (!isPlaced && !task.hasRun) task.core = FirstCoreOf(line);
    Tell("becomes RDY", {task.core, &task});
}

// Where a task that is activated for the first time runs first, if that is among the next lines.
std::uint16_t BtfReader::FirstCoreOf(const Columns& line) {
    constexpr int kLinesToFirstRun = 16384;
    auto at = next_;
    for (int i = 0; i < kLinesToFirstRun && at < text_.size(); ++i) {
        const auto next = Columned(LineAt(text_, at, at));
        if (next && IsTask(next->type) && Runs(next->event) && next->target == line.target)
            return processes_.Core(next->source);
    }
    return processes_.LowestCore();
}

void BtfReader::OnRun(const Columns& line, Process& task) {
    task.core = CoreOf(line, task);
    task.hasRun = task.runs = true;
    if (task.living.empty()) task.living.emplace_back(line.targetInstance);
    cores_[task.core] = {};
    if (line.event == "run" || line.event == "resume") task.waitsFor.clear();
    Tell("run", {task.core, &task});
}

// Our own files say in the note where a task is that does not run: "WAI (SEM) on Core_1". Takes
// that off the note.
bool BtfReader::TakePlace(Columns& line, Process& task) {
    constexpr std::string_view kOn = "on ";
    const auto at = line.note.rfind(kOn);
    const bool stands = at == 0 || (at != std::string_view::npos && line.note[at - 1] == ' ');
    if (!stands || (line.source != kSystem && line.event != "activate")) return false;
    task.core = processes_.Core(line.note.substr(at + kOn.size()));
    line.note = line.note.substr(0, at > 0 ? at - 1 : 0);
    return true;
}

// A state that comes from no core: of a task that does not run, or gives its core up later.
void BtfReader::OnSystem(const Columns& line, bool isPlaced, Process& task) {
    if (line.event == "terminate") std::erase(task.living, line.targetInstance);
    if (!isPlaced && !task.hasRun) task.core = FirstCoreOf(line);
    Tell("becomes " + StateAfter(line, task), {task.core, &task});
}

void BtfReader::OnStop(const Columns& line, Process& task) {
    const auto core = CoreOf(line, task);
    if (isDialect_) return Tell("stop unknown", {core, &task});
    const auto successor = SuccessorOn(line, core);
    if (line.event == "terminate") std::erase(task.living, line.targetInstance);
    const Process* const next = successor.task.empty() ? nullptr : &processes_.Task(successor.task);
    const bool ran = std::exchange(task.runs, false);
    const bool interrupted = cores_[core].interrupted == line.target;
    if (line.event == "preempt" && successor.isInterrupt && line.note.empty()) {
        cores_[core].interrupted = line.target;
        return Tell("interrupted", {core, &task});
    }
    const auto state = StateAfter(line, task);
    if (ran || interrupted || !task.hasRun) return Tell("stop " + state, {core, &task, next});
    // What does not run has nothing to give up.
    Tell("becomes " + state, {task.core, &task});
}

// As the windows write it. Our own files say it in the note.
std::string BtfReader::StateAfter(const Columns& line, const Process& task) {
    if (line.event == "terminate") return task.living.empty() ? "DMT" : "RDY";
    if (line.note == "unknown" || line.note.starts_with("WAI (") || line.note.starts_with("RDY+"))
        return std::string(line.note);
    if (line.event != "wait" && line.event != "park") return "RDY";
    if (!task.waitsFor.empty()) return "WAI (SEM)";
    return line.event == "wait" ? "WAI (FLG)" : "WAI";
}

// Interrupts are handlers: what they interrupt goes on below them, or is preempted by who comes
// after.
void BtfReader::OnInterrupt(const Columns& line) {
    Process& interrupt = processes_.Interrupt(line.target);
    if (line.event == "start") {
        interrupt.core = CoreOf(line, interrupt);
        ++cores_[interrupt.core].depth;
        return Tell("enter", {interrupt.core, &interrupt});
    }
    if (line.event != "terminate") return TellNothing();
    const auto core = interrupt.core;
    Tell("leave", {core, &interrupt});
    ResumeInterrupted(line, core);
}

// The interrupted task does not go on at once: it has lost the core.
void BtfReader::ResumeInterrupted(const Columns& line, std::uint16_t core) {
    auto& [interrupted, depth] = cores_[core];
    if (depth > 0) --depth;
    if (interrupted.empty() || depth > 0) return;
    const auto successor = SuccessorOn(line, core);
    if (successor.isInterrupt || !successor.task.empty()) return;
    Tell("stop RDY", {core, &processes_.Task(interrupted)});
    processes_.Task(interrupted).runs = false;
    interrupted.clear();
}

void BtfReader::OnRunnable(const Columns& line) {
    const Process* const by = processes_.Find(line.source);
    const bool start = line.event == "start";
    if (!by || (!start && line.event != "terminate")) return TellNothing();
    Tell(start ? "call" : "return", {by->core, nullptr, nullptr, line.target});
}

void BtfReader::OnSemaphore(const Columns& line) {
    constexpr std::string_view kRequest = "requestsemaphore";
    Process* const by = processes_.Find(line.source);
    if (!by) return TellNothing();
    if (line.event == "waiting") by->waitsFor = line.target;
    if (line.event == "assigned") by->waitsFor.clear();
    if (line.event == kRequest)
        return Tell("call", {by->core, nullptr, nullptr, kRequest, line.target});
    if (line.event == "released") return Tell("return", {by->core, nullptr, nullptr, kRequest});
    TellNothing();
}

// "sem,0,trigger,take 0x80019d90" of a core is a call of what runs there.
void BtfReader::OnStimulus(const Columns& line) {
    const auto verb = FirstWord(line.note);
    const bool named = !verb.empty() && verb.front() >= 'a' && verb.front() <= 'z';
    buffer_ = line.target;
    if (named) buffer_.append("_").append(verb);
    const auto detail =
        named ? line.note.substr(std::min(verb.size() + 1, line.note.size())) : line.note;
    Tell("instant", {processes_.Core(line.source), nullptr, nullptr, buffer_, detail});
}

std::uint16_t BtfReader::CoreOf(const Columns& line, const Process& process) {
    const auto prefixed = SplitPrefix(line.target);
    if (!prefixed) return line.source.empty() ? process.core : processes_.Core(line.source);
    return static_cast<std::uint16_t>(prefixed->core);
}

// Looks at the lines of the same time that follow.
BtfReader::Successor BtfReader::SuccessorOn(const Columns& line, std::uint16_t core) const {
    auto at = next_;
    for (int i = 0; i < kLinesAhead && at < text_.size(); ++i) {
        const auto next = Columned(LineAt(text_, at, at));
        if (!next || next->time != line.time) break;
        if (next->type == "C" && next->event == "idle" && processes_.IsCore(next->target, core))
            break;
        if (!Runs(next->event) || !processes_.IsCore(next->source, core)) continue;
        if (IsTask(next->type)) return {false, next->target};
        if (IsInterrupt(next->type) && next->event == "start") return {true, {}};
    }
    return {};
}

std::uint32_t BtfReader::KindOf(std::string_view kind) {
    using Form = kernels::EventField::Form;
    const auto at = kinds_.find(kind);
    if (at != kinds_.end()) return at->second;
    kernels::EventShape shape;
    shape.name = kind;
    shape.fields = {{"core", Form::Unsigned, false}};
    if (kind == "call" || kind == "return" || kind == "instant") {
        shape.fields.push_back({"call", Form::Label, false});
        shape.fields.push_back({"", Form::Text});
    } else {
        shape.fields.push_back({"process", Form::Unsigned, false});
        shape.fields.push_back({"name", Form::Text, false});
        shape.fields.push_back({"next", Form::Unsigned, false});
        shape.fields.push_back({"next_name", Form::Text, false});
        if (kind == "create") shape.fields.push_back({"priority", Form::Signed, false});
    }
    const auto number = static_cast<std::uint32_t>(kinds_.size());
    kinds_.emplace(kind, number);
    loader_.OnKind(shape, {});
    return number;
}

void BtfReader::Tell(std::string_view kind, const Told& told) {
    if (kind != "nothing") cores_.try_emplace(told.core);
    const auto number = KindOf(kind);
    std::array<EventValue, 6> values;
    values[0].number = told.core;
    if (told.process) {
        values[1].number = told.process->number;
        values[2].text = told.process->name;
        if (told.next) {
            values[3].number = told.next->number;
            values[4].text = told.next->name;
        }
        values[5].number = static_cast<std::uint64_t>(told.priority);
    } else {
        values[1].text = told.call;
        values[2].text = told.detail;
    }
    loader_.OnEvent(number, time_, values);
}

}  // namespace kvx::formats::btf
