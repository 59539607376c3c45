#include "workbench/ctf_reader/MessageWriter.h"

namespace kvx::ctf_reader {

namespace wire = formats::ctf::wire;
using Form = kernels::EventField::Form;

namespace {

bool IsType(const bt_field_class* cls, bt_field_class_type type) {
    return bt_field_class_type_is(bt_field_class_get_type(cls), type);
}

std::string NameWithoutDomain(const bt_event_class* cls) {
    const char* name = bt_event_class_get_name(cls);
    const std::string_view full = name ? name : "";
    return std::string(full.substr(full.rfind(':') + 1));
}

Form FormOf(const bt_field_class* cls) {
    if (IsType(cls, BT_FIELD_CLASS_TYPE_ENUMERATION)) return Form::Label;
    if (IsType(cls, BT_FIELD_CLASS_TYPE_BOOL)) return Form::Unsigned;
    if (!IsType(cls, BT_FIELD_CLASS_TYPE_INTEGER)) return Form::Text;
    const bool hex = bt_field_class_integer_get_preferred_display_base(cls) ==
                     BT_FIELD_CLASS_INTEGER_PREFERRED_DISPLAY_BASE_HEXADECIMAL;
    if (hex) return Form::Hexadecimal;
    return IsType(cls, BT_FIELD_CLASS_TYPE_SIGNED_INTEGER) ? Form::Signed : Form::Unsigned;
}

// Calls take with index, name and class of each member. What surrounds an event may have any amount
// of fields, of which only numbers can be asked for.
template <class Take>
void VisitMembers(const bt_field_class* structure, bool isPayload, Take take) {
    const auto count = structure ? bt_field_class_structure_get_member_count(structure) : 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto* member = bt_field_class_structure_borrow_member_by_index_const(structure, i);
        const auto* cls = bt_field_class_structure_member_borrow_field_class_const(member);
        if (isPayload || IsType(cls, BT_FIELD_CLASS_TYPE_INTEGER))
            take(static_cast<std::uint32_t>(i), bt_field_class_structure_member_get_name(member),
                 cls);
    }
}

const bt_field_class* PacketFieldsOf(const bt_stream_class* stream) {
    return bt_stream_class_supports_packets(stream)
               ? bt_stream_class_borrow_packet_context_field_class_const(stream)
               : nullptr;
}

}  // namespace

void MessageWriter::OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) {
    const Kind& kind = KindOf(bt_event_borrow_class_const(event), nanoseconds.has_value());
    out_.Number(kind.number);
    if (kind.hasPacket) out_.Number(StreamOf(bt_event_borrow_stream_const(event)));
    if (kind.hasTime) {
        const auto time = nanoseconds.value_or(latestTime_);
        out_.Signed(time - latestTime_);
        latestTime_ = time;
    }
    if (!kind.payload.empty()) Write(kind.payload, bt_event_borrow_payload_field_const(event));
    if (!kind.specific.empty())
        Write(kind.specific, bt_event_borrow_specific_context_field_const(event));
    if (!kind.common.empty()) Write(kind.common, bt_event_borrow_common_context_field_const(event));
    EndMessage();
}

void MessageWriter::OnPacket(const bt_packet* packet) {
    const auto* stream = bt_packet_borrow_stream_const(packet);
    const auto* fields = PacketFieldsOf(bt_stream_borrow_class_const(stream));
    if (!fields) return;
    std::vector<Field> members;
    VisitMembers(fields, false, [&](std::uint32_t index, const char*, const bt_field_class* cls) {
        members.push_back({index, FormOf(cls), SourceOf(cls)});
    });
    out_.Begin(wire::Message::Packet);
    out_.Number(StreamOf(stream));
    out_.Number(members.size());
    const auto* values = bt_packet_borrow_context_field_const(packet);
    for (const Field& field : members)
        out_.Number(
            NumberOf(bt_field_structure_borrow_member_field_by_index_const(values, field.index)));
    EndMessage();
}

void MessageWriter::OnDiscarded(Discarded what, std::uint64_t count) {
    out_.Begin(wire::Message::Discarded);
    out_.Number(static_cast<std::uint64_t>(what));
    out_.Number(count);
    EndMessage();
}

void MessageWriter::End(std::string_view reason) {
    out_.Begin(wire::Message::End);
    out_.Text(reason);
    out_.EndMessage();
    out_.Flush();
}

void MessageWriter::EndMessage() {
    if (out_.EndMessage()) onProgress_();
}

MessageWriter::Source MessageWriter::SourceOf(const bt_field_class* cls) {
    if (IsType(cls, BT_FIELD_CLASS_TYPE_ENUMERATION)) return Source::Label;
    if (IsType(cls, BT_FIELD_CLASS_TYPE_UNSIGNED_INTEGER)) return Source::Unsigned;
    if (IsType(cls, BT_FIELD_CLASS_TYPE_SIGNED_INTEGER)) return Source::Signed;
    if (IsType(cls, BT_FIELD_CLASS_TYPE_BOOL)) return Source::Bool;
    return IsType(cls, BT_FIELD_CLASS_TYPE_STRING) ? Source::String : Source::Other;
}

const MessageWriter::Kind& MessageWriter::KindOf(const bt_event_class* cls, bool hasTime) {
    constexpr auto kShift = 6;  // classes are larger than that
    auto& recent = recent_[(reinterpret_cast<std::uintptr_t>(cls) >> kShift) % recent_.size()];
    if (recent.cls != cls) {
        const auto at = kinds_.find(cls);
        recent = {cls, at == kinds_.end() ? &AddKind(cls, hasTime) : &at->second};
    }
    return *recent.kind;
}

const MessageWriter::Kind& MessageWriter::AddKind(const bt_event_class* cls, bool hasTime) {
    Kind& kind = kinds_[cls];
    const auto* stream = bt_event_class_borrow_stream_class_const(cls);
    const auto names = NamesOf(stream);
    kind.number = wire::kFirstKind + kinds_.size() - 1;
    kind.hasTime = hasTime;
    struct Told {
        const char* name;
        Form form;
        wire::Place place;
    };
    std::vector<Told> told;
    const auto add = [&](const bt_field_class* fields, wire::Place place, std::vector<Field>* to) {
        const bool isPayload = place == wire::Place::Payload;
        VisitMembers(fields, isPayload,
                     [&](std::uint32_t index, const char* name, const bt_field_class* member) {
                         told.push_back({name, FormOf(member), place});
                         if (to) to->push_back({index, FormOf(member), SourceOf(member)});
                     });
    };
    add(bt_event_class_borrow_payload_field_class_const(cls), wire::Place::Payload, &kind.payload);
    add(bt_event_class_borrow_specific_context_field_class_const(cls), wire::Place::Around,
        &kind.specific);
    add(bt_stream_class_borrow_event_common_context_field_class_const(stream), wire::Place::Around,
        &kind.common);
    const auto before = told.size();
    add(PacketFieldsOf(stream), wire::Place::Packet, nullptr);
    kind.hasPacket = told.size() > before;
    out_.Begin(wire::Message::Kind);
    out_.Text(NameWithoutDomain(cls));
    out_.Number(names);
    out_.Number(hasTime ? 1 : 0);
    out_.Number(told.size());
    for (const Told& field : told) {
        out_.Text(field.name);
        out_.Number(static_cast<std::uint64_t>(field.form));
        out_.Number(static_cast<std::uint64_t>(field.place));
    }
    EndMessage();
    return kind;
}

std::uint64_t MessageWriter::NamesOf(const bt_stream_class* cls) {
    const auto [at, isNew] = names_.try_emplace(cls, names_.size());
    if (!isNew) return at->second;
    const auto count = bt_stream_class_get_event_class_count(cls);
    out_.Begin(wire::Message::Names);
    out_.Number(count);
    for (std::uint64_t i = 0; i < count; ++i)
        out_.Text(NameWithoutDomain(bt_stream_class_borrow_event_class_by_index_const(cls, i)));
    EndMessage();
    return at->second;
}

std::uint64_t MessageWriter::StreamOf(const bt_stream* stream) {
    if (stream != latestStream_) {
        latestStream_ = stream;
        latestStreamNumber_ = streams_.try_emplace(stream, streams_.size()).first->second;
    }
    return latestStreamNumber_;
}

void MessageWriter::Write(const std::vector<Field>& fields, const bt_field* structure) {
    for (const Field& field : fields)
        Write(field, structure ? bt_field_structure_borrow_member_field_by_index_const(structure,
                                                                                       field.index)
                               : nullptr);
}

void MessageWriter::Write(const Field& field, const bt_field* value) {
    if (!value) return WriteNothing(field);
    switch (field.source) {
        case Source::Unsigned:
            return out_.Number(bt_field_integer_unsigned_get_value(value));
        case Source::Signed:
            // Hexadecimal ones are written as their bits.
            if (field.form == Form::Signed)
                return out_.Signed(bt_field_integer_signed_get_value(value));
            return out_.Number(
                static_cast<std::uint64_t>(bt_field_integer_signed_get_value(value)));
        case Source::Bool:
            return out_.Number(bt_field_bool_get_value(value) ? 1 : 0);
        case Source::Label:
            out_.Number(NumberOf(value));
            return out_.Text(NameOf(value));
        case Source::String:
            return out_.Text({bt_field_string_get_value(value), bt_field_string_get_length(value)});
        case Source::Other:
            return out_.Text(TextOf(value));
    }
}

void MessageWriter::WriteNothing(const Field& field) {
    out_.Number(0);
    if (field.form == Form::Label) out_.Number(0);
}

}  // namespace kvx::ctf_reader
