#include "workbench/formats/ctf/EventSource.h"

namespace kvx::formats::ctf {

using kernels::EventField;
using kernels::EventNames;
using kernels::EventShape;
using Form = EventField::Form;

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

// Calls take with place, name and class of each field of the event. What surrounds an event may
// have any amount of fields, of which only numbers can be asked for.
template <class Take>
void VisitFields(const bt_event_class* cls, Take take) {
    const auto members = [&](Scope scope, const bt_field_class* structure) {
        const auto count = structure ? bt_field_class_structure_get_member_count(structure) : 0;
        for (std::uint64_t i = 0; i < count; ++i) {
            const auto* member =
                bt_field_class_structure_borrow_member_by_index_const(structure, i);
            const auto* field = bt_field_class_structure_member_borrow_field_class_const(member);
            const bool isPayload = scope == Scope::Payload;
            if (isPayload || IsType(field, BT_FIELD_CLASS_TYPE_INTEGER))
                take(FieldPlace{scope, static_cast<std::uint32_t>(i)},
                     bt_field_class_structure_member_get_name(member), field);
        }
    };
    const auto* stream = bt_event_class_borrow_stream_class_const(cls);
    members(Scope::Payload, bt_event_class_borrow_payload_field_class_const(cls));
    members(Scope::Specific, bt_event_class_borrow_specific_context_field_class_const(cls));
    members(Scope::Common, bt_stream_class_borrow_event_common_context_field_class_const(stream));
    if (bt_stream_class_supports_packets(stream))
        members(Scope::Packet, bt_stream_class_borrow_packet_context_field_class_const(stream));
}

EventNames NamesIn(const bt_stream_class* cls) {
    EventNames names;
    const auto count = bt_stream_class_get_event_class_count(cls);
    for (std::uint64_t i = 0; i < count; ++i)
        names.insert(NameWithoutDomain(bt_stream_class_borrow_event_class_by_index_const(cls, i)));
    return names;
}

}  // namespace

bool EventSource::OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) {
    const Kind& kind = KindOf(bt_event_borrow_class_const(event));
    values_.clear();
    texts_.clear();
    for (const Field& field : kind.fields) Take(field, FieldOf(event, field.place));
    return sink_.OnEvent(kind.number, nanoseconds, values_);
}

const EventSource::Kind& EventSource::KindOf(const bt_event_class* cls) {
    if (cls == latestClass_) return *latest_;
    const auto [at, isNew] = kinds_.try_emplace(cls);
    Kind& kind = at->second;
    latestClass_ = cls;
    latest_ = &kind;
    if (!isNew) return kind;
    kind.number = static_cast<std::uint32_t>(kinds_.size() - 1);
    EventShape shape;
    shape.name = NameWithoutDomain(cls);
    VisitFields(cls, [&](FieldPlace place, const char* name, const bt_field_class* field) {
        kind.fields.push_back({place, FormOf(field)});
        shape.fields.push_back({name, FormOf(field), place.scope == Scope::Payload});
    });
    sink_.OnKind(shape, NamesIn(bt_event_class_borrow_stream_class_const(cls)));
    return kind;
}

void EventSource::Take(const Field& field, const bt_field* from) {
    switch (field.form) {
        case Form::Unsigned:
        case Form::Hexadecimal:
        case Form::Signed:
            values_.push_back({NumberOf(from), {}});
            return;
        case Form::Label:
            values_.push_back({NumberOf(from), NameOf(from)});
            return;
        case Form::Text:
            break;
    }
    const auto name = NameOf(from);
    values_.push_back({0, name.empty() ? texts_.emplace_back(TextOf(from)) : name});
}

}  // namespace kvx::formats::ctf
