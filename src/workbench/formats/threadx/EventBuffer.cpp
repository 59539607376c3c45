#include "workbench/formats/threadx/EventBuffer.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "platform/base/Text.h"

namespace kvx::formats::threadx {
namespace {

constexpr std::string_view kBig = "TXTB";
constexpr std::string_view kLittle = "BTXT";
constexpr std::uint32_t kHeaderBytes = 48;
constexpr std::uint32_t kEventBytes = 32;
constexpr std::uint32_t kObjectBytes = 16;  // without the name
// Offsets in an event.
constexpr std::uint32_t kContext = 0;
constexpr std::uint32_t kId = 8;
constexpr std::uint32_t kLongestName = 1024;
constexpr std::uint32_t kInvalid = 0xFFFFFFFFu;

// Offsets in the header.
enum : std::uint32_t {
    kMask = 4,
    kBase = 8,
    kRegistryBegin = 12,
    kNameSize = 16,  // two reserved bytes, then the size
    kRegistryEnd = 20,
    kRingBegin = 24,
    kRingEnd = 28,
    kOldest = 32,
};

}  // namespace

bool EventBuffer::Recognises(std::string_view bytes) {
    return bytes.starts_with(kBig) || bytes.starts_with(kLittle);
}

// Four bytes in the buffer's order; those beyond the end read as zeros.
std::uint32_t EventBuffer::Word(std::uint64_t offset) const {
    std::array<unsigned char, 4> bytes{};
    if (offset < bytes_.size()) {
        const auto there = std::min<std::uint64_t>(bytes.size(), bytes_.size() - offset);
        std::memcpy(bytes.data(), bytes_.data() + offset, there);
    }
    if (bigEndian_) std::ranges::reverse(bytes);
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

Result<EventBuffer> EventBuffer::Open(std::string_view bytes) {
    EventBuffer buffer;
    buffer.bytes_ = bytes;
    buffer.bigEndian_ = bytes.starts_with(kBig);
    if (bytes.size() < kHeaderBytes)
        return Error{FormatText("the file ends in its header, after %zu bytes of %u", bytes.size(),
                                kHeaderBytes)};
    buffer.mask_ = buffer.Word(kMask);
    buffer.base_ = buffer.Word(kBase);
    const auto sizes = buffer.Word(kNameSize);
    buffer.nameSize_ = buffer.bigEndian_ ? sizes & 0xFFFF : sizes >> 16;
    buffer.ReadObjects(buffer.Word(kRegistryBegin), buffer.Word(kRegistryEnd));
    const auto fault =
        buffer.ReadRing(buffer.Word(kRingBegin), buffer.Word(kRingEnd), buffer.Word(kOldest));
    if (fault) return *fault;
    return buffer;
}

void EventBuffer::ReadObjects(std::uint32_t begin, std::uint32_t end) {
    const std::uint64_t size = kObjectBytes + nameSize_;
    const auto limit = std::min<std::uint64_t>(std::uint32_t{end - base_}, bytes_.size());
    registryDamaged_ = nameSize_ > kLongestName || end < begin || begin - base_ < kHeaderBytes ||
                       std::uint32_t{end - base_} > bytes_.size();
    if (nameSize_ > kLongestName || begin - base_ < kHeaderBytes) return;
    for (std::uint64_t at = std::uint32_t{begin - base_}; at + size <= limit; at += size) {
        Object object;
        object.type = static_cast<std::uint8_t>(bytes_[at + 1]);
        if (object.type == 0) continue;
        object.pointer = Word(at + 4);
        object.parameters = {Word(at + 8), Word(at + 12)};
        const auto name = bytes_.substr(at + kObjectBytes, nameSize_);
        object.name = name.substr(0, name.find('\0'));
        objects_.push_back(std::move(object));
    }
}

std::optional<Error> EventBuffer::ReadRing(std::uint32_t begin, std::uint32_t end,
                                           std::uint32_t oldest) {
    ring_ = std::uint32_t{begin - base_};
    const std::uint32_t places = end > begin ? (end - begin) / kEventBytes : 0;
    if (ring_ < kHeaderBytes || places == 0)
        return Error{
            FormatText("the header is damaged: events from %08X to %08X, with the buffer "
                       "at %08X",
                       begin, end, base_)};
    if (ring_ + kEventBytes > bytes_.size()) return Error{"the file ends before the first event"};
    const auto there = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(places, (bytes_.size() - ring_) / kEventBytes));
    missing_ = places - there;
    orderDamaged_ = oldest < begin || oldest > end || (oldest - begin) % kEventBytes != 0;
    const std::uint32_t first = orderDamaged_ ? 0 : (oldest - begin) / kEventBytes % places;
    const auto take = [&](std::uint32_t from, std::uint32_t to) {
        for (auto slot = from; slot < to; ++slot) {
            const auto at = ring_ + std::uint64_t{slot} * kEventBytes;
            if (Word(at + kContext) != kIdle && Word(at + kId) != kInvalid) slots_.push_back(slot);
        }
    };
    take(first, there);
    if (missing_ > 0 && !slots_.empty() && first > 0) gaps_.push_back(Count());
    take(0, std::min(first, there));
    if (slots_.empty()) return Error{"the buffer holds no events"};
    return std::nullopt;
}

// The words of a place, all at once: this is what takes the time of reading.
Event EventBuffer::EventAt(std::uint32_t slot) const {
    std::array<std::uint32_t, kEventBytes / 4> words{};
    const auto at = ring_ + std::uint64_t{slot} * kEventBytes;
    if (at + kEventBytes <= bytes_.size())
        std::memcpy(words.data(), bytes_.data() + at, kEventBytes);
    if (bigEndian_ == (std::endian::native == std::endian::little))
        for (auto& word : words) word = __builtin_bswap32(word);
    Event event{words[0], words[1], words[2], words[3], {words[4], words[5], words[6], words[7]}};
    if (event.id != kInvalid) event.id &= 0xFFFF;
    return event;
}

bool EventBuffer::IsBehindGap(std::uint32_t event) const {
    return std::ranges::find(gaps_, event) != gaps_.end();
}

std::vector<Event> EventBuffer::Events() const {
    std::vector<Event> events;
    events.reserve(Count());
    for (const auto slot : slots_) events.push_back(EventAt(slot));
    return events;
}

std::vector<std::uint64_t> EventBuffer::Ticks(std::span<const Event> events) const {
    const std::uint32_t mask = mask_ == 0 ? 0xFFFFFFFFu : mask_;
    const auto stamp = [&](std::size_t event) { return events[event].stamp & mask; };
    std::size_t up = 0;
    std::size_t down = 0;
    for (std::size_t i = 1; i < events.size(); ++i) {
        up += stamp(i) > stamp(i - 1);
        down += stamp(i) < stamp(i - 1);
    }
    std::vector<std::uint64_t> ticks(events.size());
    for (std::size_t i = 1; i < events.size(); ++i) {
        const auto step = up > down ? stamp(i) - stamp(i - 1) : stamp(i - 1) - stamp(i);
        ticks[i] = ticks[i - 1] + (step & mask);
    }
    return ticks;
}

}  // namespace kvx::formats::threadx
