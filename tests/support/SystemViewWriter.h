#pragma once
// Writes the packets of SystemView recordings, one core at a time.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kvx::test {

class SystemViewWriter {
  public:
    // A sync, the start of recording, and the frequency of its ticks.
    explicit SystemViewWriter(std::uint32_t frequency = 1000000, std::uint32_t firstDelta = 77) {
        bytes_.append(10, '\0');
        Packet(10, {}, firstDelta);
        Packet(24, {frequency, frequency, 0x20000000u, 2}, 0);
    }

    SystemViewWriter& Packet(std::uint32_t id, std::initializer_list<std::uint32_t> values,
                             std::uint32_t delta = 1) {
        std::string payload;
        for (const auto value : values) Number(payload, value);
        return Put(id, payload, delta);
    }
    // Numbers, then a text.
    SystemViewWriter& Named(std::uint32_t id, std::initializer_list<std::uint32_t> values,
                            std::string_view text, std::uint32_t delta = 0) {
        std::string payload;
        for (const auto value : values) Number(payload, value);
        payload += static_cast<char>(text.size());
        payload += text;
        return Put(id, payload, delta);
    }
    SystemViewWriter& Raw(std::string_view bytes) {
        bytes_ += bytes;
        return *this;
    }

    SystemViewWriter& System(std::string_view text) { return Named(14, {}, text); }
    SystemViewWriter& Task(std::uint32_t id, std::uint32_t priority, std::string_view name) {
        return Named(9, {id, priority}, name);
    }
    SystemViewWriter& Run(std::uint32_t task, std::uint32_t delta = 1) {
        return Packet(4, {task}, delta);
    }
    SystemViewWriter& Idle(std::uint32_t delta = 1) { return Packet(17, {}, delta); }
    SystemViewWriter& Ready(std::uint32_t task, std::uint32_t delta = 1) {
        return Packet(6, {task}, delta);
    }
    SystemViewWriter& Stop(std::uint32_t task, std::uint32_t cause, std::uint32_t delta = 1) {
        return Packet(7, {task, cause}, delta);
    }
    SystemViewWriter& Lost(std::uint32_t dropped, std::uint32_t delta = 1) {
        return Packet(1, {dropped}, delta);
    }

    const std::string& Bytes() const { return bytes_; }

  private:
    static void Number(std::string& out, std::uint32_t value) {
        for (; value >= 0x80; value >>= 7) out += static_cast<char>(value | 0x80);
        out += static_cast<char>(value);
    }
    static void Short(std::string& out, std::uint32_t value) {
        if (value >= 0x80) out += static_cast<char>(value | 0x80);
        out += static_cast<char>(value >= 0x80 ? value >> 7 : value);
    }
    SystemViewWriter& Put(std::uint32_t id, const std::string& payload, std::uint32_t delta) {
        Short(bytes_, id);
        if (id >= 24) Short(bytes_, static_cast<std::uint32_t>(payload.size()));
        bytes_ += payload;
        Number(bytes_, delta);
        return *this;
    }

    std::string bytes_;
};

}  // namespace kvx::test
