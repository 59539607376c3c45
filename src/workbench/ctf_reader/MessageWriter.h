#pragma once
// Writes the library's events as messages (formats/ctf/Wire.h).

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/ctf_reader/BlockWriter.h"
#include "workbench/ctf_reader/Fields.h"
#include "workbench/ctf_reader/Graph.h"
#include "workbench/kernels/EventShape.h"

namespace kvx::ctf_reader {

class MessageWriter final : public IMessages {
  public:
    // out is borrowed. onProgress is called now and then, when something was written.
    MessageWriter(BlockWriter& out, void (*onProgress)()) : out_(out), onProgress_(onProgress) {}

    void OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) override;
    void OnPacket(const bt_packet* packet) override;
    void OnDiscarded(Discarded what, std::uint64_t count) override;
    // reason: why reading ended early; empty: it did not. Nothing comes after it.
    void End(std::string_view reason);

  private:
    // How the value of a field is got from the library.
    enum class Source : std::uint8_t { Unsigned, Signed, Bool, Label, String, Other };
    struct Field {
        std::uint32_t index = 0;
        kernels::EventField::Form form;
        Source source;
    };
    struct Kind {
        std::uint64_t number = 0;
        bool hasTime = false;
        bool hasPacket = false;
        std::vector<Field> payload, specific, common;
    };

    static Source SourceOf(const bt_field_class* cls);
    const Kind& KindOf(const bt_event_class* cls, bool hasTime);
    const Kind& AddKind(const bt_event_class* cls, bool hasTime);
    std::uint64_t NamesOf(const bt_stream_class* cls);
    std::uint64_t StreamOf(const bt_stream* stream);
    void EndMessage();
    void Write(const std::vector<Field>& fields, const bt_field* structure);
    void Write(const Field& field, const bt_field* value);
    void WriteNothing(const Field& field);

    BlockWriter& out_;
    void (*onProgress_)();
    std::unordered_map<const bt_event_class*, Kind> kinds_;
    std::unordered_map<const bt_stream_class*, std::uint64_t> names_;
    std::unordered_map<const bt_stream*, std::uint64_t> streams_;
    // The kinds that came lately, by a part of the address of their class.
    struct Recent {
        const bt_event_class* cls = nullptr;
        const Kind* kind = nullptr;
    };
    std::array<Recent, 64> recent_;
    const bt_stream* latestStream_ = nullptr;
    std::uint64_t latestStreamNumber_ = 0;
    std::int64_t latestTime_ = 0;
};

}  // namespace kvx::ctf_reader
