#pragma once
// Writes the trace buffer of a ThreadX kernel, in either byte order, with a counter that counts up
// or down, and the oldest event anywhere in the ring.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvx::test {

class ThreadXWriter {
  public:
    static constexpr std::uint32_t kInterrupt = 0xFFFFFFFFu;
    enum Type : std::uint8_t { Thread = 1, Queue = 3, Semaphore = 4, Mutex = 5 };

    bool bigEndian = false;
    bool countsDown = false;
    std::uint32_t mask = 0xFFFF;  // 0: all 32 bits
    std::uint32_t emptyPlaces = 1;
    std::uint32_t oldestAt = 0;  // place of the ring

    // Answers its pointer.
    std::uint32_t Object(Type type, std::string_view name) {
        objects_.push_back({type, std::string(name)});
        return 0x20000000u + 0x100u * static_cast<std::uint32_t>(objects_.size());
    }
    void Event(std::uint32_t time, std::uint32_t context, std::uint32_t id,
               std::array<std::uint32_t, 4> info = {}, std::uint32_t priority = 8) {
        events_.push_back({context, priority, id, time, info});
    }

    std::string Bytes() const {
        const auto places = static_cast<std::uint32_t>(events_.size()) + emptyPlaces;
        const auto registry = kBase + 48;
        const auto ring = registry + static_cast<std::uint32_t>(objects_.size()) * kObjectBytes;
        std::string out(bigEndian ? "TXTB" : "BTXT");
        for (const auto word : {mask, kBase, registry}) Put(out, word, 4);
        Put(out, 0, 2);
        Put(out, kNameBytes, 2);
        for (const auto word :
             {ring, ring, ring + 32 * places, ring + 32 * (oldestAt % places), 0u, 0u, 0u})
            Put(out, word, 4);
        for (std::size_t i = 0; i < objects_.size(); ++i) PutObject(out, i);
        for (std::uint32_t place = 0; place < places; ++place)
            PutEvent(out, (place + places - oldestAt % places) % places);
        return out;
    }

  private:
    static constexpr std::uint32_t kBase = 0x20001000u;
    static constexpr std::uint32_t kNameBytes = 16;
    static constexpr std::uint32_t kObjectBytes = 16 + kNameBytes;
    struct Named {
        Type type;
        std::string name;
    };
    struct Recorded {
        std::uint32_t context, priority, id, time;
        std::array<std::uint32_t, 4> info;
    };

    void Put(std::string& out, std::uint32_t value, unsigned bytes) const {
        for (unsigned i = 0; i < bytes; ++i)
            out += static_cast<char>(value >> 8 * (bigEndian ? bytes - 1 - i : i) & 0xFF);
    }
    void PutObject(std::string& out, std::size_t i) const {
        Put(out, 0, 1);
        Put(out, objects_[i].type, 1);
        Put(out, 0, 2);
        Put(out, 0x20000100u + 0x100u * static_cast<std::uint32_t>(i), 4);
        Put(out, 0x20008000u, 4);
        Put(out, 1024, 4);
        auto name = objects_[i].name;
        name.resize(kNameBytes);
        out += name;
    }
    void PutEvent(std::string& out, std::size_t i) const {
        if (i >= events_.size()) return out.append(32, '\0'), void();
        const Recorded& event = events_[i];
        const auto all = mask == 0 ? 0xFFFFFFFFu : mask;
        for (const auto word : {event.context, event.priority, event.id,
                                (countsDown ? 0u - event.time : event.time) & all})
            Put(out, word, 4);
        for (const auto word : event.info) Put(out, word, 4);
    }

    std::vector<Named> objects_;
    std::vector<Recorded> events_;
};

}  // namespace kvx::test
