#include "workbench/timing/CallFacts.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <queue>

#include "host/TraceCodes.h"

namespace kvx::timing {
namespace {

using host::StateCode;
using service::CallUse;

// "name=value" of "name=value, name=value".
std::string_view FirstParameter(std::string_view detail) {
    return detail.substr(0, std::min(detail.find(", "), detail.size()));
}

std::string_view ValueOf(std::string_view parameter) {
    const auto equals = parameter.find('=');
    return equals == std::string_view::npos ? parameter : parameter.substr(equals + 1);
}

std::optional<std::int64_t> FirstNumber(std::string_view detail) {
    const auto value = ValueOf(FirstParameter(detail));
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size()) return std::nullopt;
    return number;
}

// Such as are about an object.
bool IsObjectWait(std::uint8_t code) {
    return code >= host::Code(StateCode::EventFlag) && code <= host::kStateCodes;
}

// What a call of that use is about.
std::uint8_t ObjectKind(const service::CallInfo& info, CallUse use) {
    if (use == CallUse::Starts) return 0;
    if (info.waitCode) return info.waitCode;
    return info.cls == host::Code(host::CallClass::Mutexes) ? host::Code(StateCode::Mutex)
                                                            : host::Code(StateCode::Semaphore);
}

}  // namespace

std::string_view ObjectInfo::KindName() const {
    switch (static_cast<StateCode>(kind)) {
        case StateCode::EventFlag:
            return "event flag";
        case StateCode::Semaphore:
            return "semaphore";
        case StateCode::Mailbox:
            return "mailbox";
        case StateCode::DataQueue:
        case StateCode::VariableDataQueue:
            return "data queue";
        case StateCode::FixedPool:
        case StateCode::VariablePool:
            return "memory pool";
        case StateCode::MessageBuffer:
            return "message buffer";
        case StateCode::Mutex:
            return "mutex";
        default:
            return "task";
    }
}

ObjectId Objects::Intern(std::uint8_t kind, std::string_view parameter) {
    const auto [at, isNew] =
        ids_.try_emplace(std::string(1, static_cast<char>(kind)).append(parameter), Count());
    if (isNew) infos_.push_back({kind, std::string(ValueOf(parameter))});
    return at->second;
}

// Reads the texts of one timeline's calls in the order of their records, each return where it
// stands, since the lines of a log are cheap to read one behind the other.
class CallFacts::Reader {
  public:
    Reader(const service::DecodedRecording& decoded, std::uint32_t timeline, CallFacts& out)
        : decoded_(decoded),
          recording_(decoded.GetRecording()),
          events_(decoded.Timelines()[timeline]->events),
          timeline_(timeline),
          facts_(out.facts_[timeline]),
          out_(out) {}

    void Run() {
        for (const auto call : events_.Calls(events_.Count())) {
            const auto record = events_.RecordOf(call);
            ReadReturnsBefore(record);
            const auto fact = ReadCall(call, record);
            const auto returned = events_.ReturnRecord(call);
            if (returned != service::kNoRecord) returns_.push({returned, call, fact});
        }
        ReadReturnsBefore(service::kNoRecord);
    }

  private:
    static constexpr std::uint32_t kNoFact = 0xFFFFFFFFu;
    struct PendingReturn {
        std::uint32_t record;
        std::uint32_t call;
        std::uint32_t fact;
        bool operator>(const PendingReturn& other) const { return record > other.record; }
    };
    struct Meaning {
        bool known = false;
        CallUse use = CallUse::None;
        std::uint8_t kind = 0;
        bool isAbout = false;  // an object or a task
    };

    const Meaning& MeaningOf(std::uint32_t name) {
        if (name >= meanings_.size()) meanings_.resize(name + 1);
        Meaning& meaning = meanings_[name];
        if (meaning.known) return meaning;
        const auto& entry = decoded_.Names().Get(name);
        meaning.known = true;
        meaning.use = recording_.GetKernel().UseOf(entry.name);
        meaning.isAbout = meaning.use != CallUse::None || IsObjectWait(entry.info.waitCode);
        meaning.kind = ObjectKind(entry.info, meaning.use);
        return meaning;
    }

    // Answers the number of its fact.
    std::uint32_t ReadCall(std::uint32_t call, std::uint32_t record) {
        const Meaning& meaning = MeaningOf(events_.Call(call));
        if (!meaning.isAbout) return kNoFact;
        CallFact fact{call, kNoObject, meaning.use, Outcome::Open, false};
        const auto detail = recording_.Detail(record);
        if (!detail.empty())
            fact.object = out_.objects_.Intern(meaning.kind, FirstParameter(detail));
        facts_.push_back(fact);
        return static_cast<std::uint32_t>(facts_.size() - 1);
    }

    void ReadReturnsBefore(std::uint32_t record) {
        for (; !returns_.empty() && returns_.top().record < record; returns_.pop())
            ReadReturn(returns_.top());
    }

    void ReadReturn(const PendingReturn& pending) {
        const auto number = FirstNumber(recording_.Detail(pending.record));
        std::string error = number ? recording_.GetKernel().ErrorName(*number) : std::string();
        if (pending.fact != kNoFact)
            facts_[pending.fact].outcome = error.empty() ? Outcome::Succeeded : Outcome::Failed;
        if (error.empty()) return;
        auto& names = out_.errorNames_;
        const auto at = std::ranges::find(names, error);
        const auto name = static_cast<std::uint32_t>(at - names.begin());
        if (at == names.end()) names.push_back(std::move(error));
        out_.errors_.push_back({pending.call, timeline_, name});
    }

    const service::DecodedRecording& decoded_;
    const service::Recording& recording_;
    const service::EventStore& events_;
    const std::uint32_t timeline_;
    std::vector<CallFact>& facts_;
    CallFacts& out_;
    std::vector<Meaning> meanings_;  // by number of the call's name
    std::priority_queue<PendingReturn, std::vector<PendingReturn>, std::greater<>> returns_;
};

CallFacts::CallFacts(const service::DecodedRecording& decoded)
    : facts_(decoded.Timelines().size()) {
    decoded.WaitForAll();
    for (std::uint32_t timeline = 0; timeline < facts_.size(); ++timeline) {
        Reader(decoded, timeline, *this).Run();
        MarkWaits(decoded, timeline);
    }
    std::ranges::sort(
        errors_, {}, [](const CallError& error) { return std::pair(error.timeline, error.event); });
}

const CallFact* CallFacts::Find(std::uint32_t timeline, std::uint32_t event) const {
    const auto& facts = facts_[timeline];
    const auto at = std::ranges::lower_bound(facts, event, {}, &CallFact::event);
    return at == facts.end() || at->event != event ? nullptr : &*at;
}

std::string_view CallFacts::ErrorOf(std::uint32_t timeline, std::uint32_t event) const {
    const auto key = [](const CallError& error) { return std::pair(error.timeline, error.event); };
    const auto at = std::ranges::lower_bound(errors_, std::pair(timeline, event), {}, key);
    const bool found = at != errors_.end() && key(*at) == std::pair(timeline, event);
    return found ? std::string_view(errorNames_[at->name]) : std::string_view();
}

// A task may have been moved while it waited: the call is then on another timeline.
void CallFacts::MarkWaits(const service::DecodedRecording& decoded, std::uint32_t timeline) {
    const auto& events = decoded.Timelines()[timeline]->events;
    for (std::uint32_t event = 0; event < events.Count(); ++event) {
        if (events.Kind(event) != 2 || !IsObjectWait(events.Code(event))) continue;
        if (events.RecordOf(event) == service::kNoRecord) continue;
        const auto call = FindCallOfRecord(events, events.RecordOf(event), event);
        const auto* fact = call == host::kOpenEnd ? nullptr : Find(timeline, call);
        if (fact)
            facts_[timeline][static_cast<std::size_t>(fact - facts_[timeline].data())].waits = true;
    }
}

std::size_t CallFacts::Bytes() const {
    std::size_t bytes = errors_.capacity() * sizeof(CallError);
    for (const auto& facts : facts_) bytes += facts.capacity() * sizeof(CallFact);
    return bytes;
}

std::uint32_t FindCallOfRecord(const service::EventStore& events, std::uint32_t record,
                               std::uint32_t end) {
    const auto calls = events.Calls(end);
    const auto recordOf = [&](std::uint32_t call) { return events.RecordOf(call); };
    // Mostly one of the last few.
    constexpr std::ptrdiff_t kNear = 8;
    const auto near = calls.end() - std::min<std::ptrdiff_t>(kNear, calls.end() - calls.begin());
    auto begin = calls.begin();
    if (near != calls.end() && recordOf(*near) <= record) begin = near;
    const auto at = std::ranges::lower_bound(begin, calls.end(), record, {}, recordOf);
    return at == calls.end() || recordOf(*at) != record ? host::kOpenEnd : *at;
}

}  // namespace kvx::timing
