#include "workbench/formats/systemview/Survey.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace kvx::formats::systemview {
namespace {

constexpr std::uint32_t kOnDelayedList = 4;
constexpr std::size_t kMostIds = 0x8000;
// Events of a module of which no description came, as far as they are believed.
constexpr std::uint32_t kUndescribed = 512;

}  // namespace

void Surveyor::See(const Item& item) {
    if (item.isGap && item.packet.id != kOverflow) return;
    const Packet& packet = item.packet;
    PacketCursor values(packet.values);
    const auto delay = std::exchange(lastDelay_, 0);
    switch (packet.id) {
        case kOverflow:
            return SeeOverflow(values.Number());
        case kTaskStartExec:
        case kTaskStartReady:
        case kTaskCreate:
        case kTaskTerminate:
            return SeeTask(values.Number());
        case kTaskStopReady:
            SeeTask(values.Number());
            if (values.Number() != kOnDelayedList) return;
            survey_.delays34 += delay == 34;
            survey_.delays35 += delay == 35;
            return;
        case kTaskInfo: {
            const auto id = values.Number();
            SeeTask(id);
            TaskFacts& task = survey_.tasks[id];
            const auto priority = static_cast<std::int32_t>(values.Number());
            if (!task.priority) task.priority = priority;
            task.name = values.Text();
            return;
        }
        case kStackInfo: {
            const auto id = values.Number();
            SeeTask(id);
            const auto base = values.Number();
            const auto size = values.Number();
            survey_.tasks[id].stack = {base, size, values.Number()};
            return;
        }
        case kTimerEnter:
            survey_.timers.insert(values.Number());
            return;
        case kSystemDescription:
            return SeeSystem(values.Text());
        case kModuleDescription: {
            const auto number = values.Number();
            const auto first = values.Number();
            if (survey_.modules.size() < kMostIds)
                survey_.modules.push_back({number, first, std::string(values.Text())});
            return;
        }
        case kInit: {
            if (std::exchange(hasInit_, true) || survey_.frequency != 0) return;
            survey_.frequency = values.Number();
            values.Number();
            survey_.ramBase = values.Number();
            survey_.shift = values.Number();
            return;
        }
        case kNameResource: {
            const auto id = values.Number();
            survey_.resources[id] = values.Text();
            return;
        }
        case kEndCall: {
            const auto id = values.Number();
            if (id >= kMostIds) return;
            if (survey_.ended.size() <= id) survey_.ended.resize(id + 1);
            survey_.ended[id] = true;
            return;
        }
        default:
            if (packet.id >= kFirstCall) SeeCall(packet);
    }
}

void Surveyor::SeeCall(const Packet& packet) {
    if (survey_.used.size() <= packet.id) survey_.used.resize(packet.id + 1);
    survey_.used[packet.id] = true;
    if (packet.id != 34 && packet.id != 35) return;
    PacketCursor values(packet.values);
    values.Number();
    if (values.AtEnd() && values.Failed() == PacketCursor::Failure::None) lastDelay_ = packet.id;
}

void Surveyor::SeeTask(std::uint32_t id) {
    const auto number = survey_.tasks.size() + 1;
    const auto [at, isNew] = survey_.tasks.try_emplace(id);
    if (isNew) at->second.number = number;
}

// "N=Application,D=Device,O=FreeRTOS" or "I#15=SysTick,I#16=UART"
void Surveyor::SeeSystem(std::string_view text) {
    while (!text.empty()) {
        const auto part = text.substr(0, text.find(','));
        text.remove_prefix(std::min(part.size() + 1, text.size()));
        const auto equals = part.find('=');
        if (equals == std::string_view::npos) continue;
        const auto value = part.substr(equals + 1);
        if (equals == 1) {
            survey_.system[part.front()] = value;
        } else if (part.starts_with("I#")) {
            std::uint32_t number = 0;
            const auto parsed = std::from_chars(part.data() + 2, part.data() + equals, number);
            if (parsed.ec == std::errc()) survey_.interrupts[number] = value;
        }
    }
}

// The number counts on from the start of the recording; where it falls it begins anew.
void Surveyor::SeeOverflow(std::uint32_t dropped) {
    survey_.lost += dropped >= dropped_ ? dropped - dropped_ : dropped;
    dropped_ = dropped;
}

bool Surveyor::KnowsModuleOf(std::uint32_t id) const {
    if (id < kFirstOfModules + kUndescribed) return true;
    for (const Module& module : survey_.modules)
        if (id >= module.firstId && id - module.firstId < kUndescribed) return true;
    return false;
}

}  // namespace kvx::formats::systemview
