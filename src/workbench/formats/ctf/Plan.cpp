#include "workbench/formats/ctf/Plan.h"

#include <algorithm>

namespace kvx::formats::ctf {
namespace {

bool IsType(const bt_field_class* cls, bt_field_class_type type) {
    return bt_field_class_type_is(bt_field_class_get_type(cls), type);
}

std::string NameWithoutDomain(const bt_event_class* cls) {
    const char* name = bt_event_class_get_name(cls);
    const std::string_view full = name ? name : "";
    return std::string(full.substr(full.rfind(':') + 1));
}

DetailField::Form FormOf(const std::string& name, const bt_field_class* cls) {
    if (!IsType(cls, BT_FIELD_CLASS_TYPE_INTEGER) || IsType(cls, BT_FIELD_CLASS_TYPE_ENUMERATION))
        return DetailField::Form::Text;
    const bool hex = bt_field_class_integer_get_preferred_display_base(cls) ==
                     BT_FIELD_CLASS_INTEGER_PREFERRED_DISPLAY_BASE_HEXADECIMAL;
    if (hex || name == "id" || name == "thread_id") return DetailField::Form::Hexadecimal;
    return IsType(cls, BT_FIELD_CLASS_TYPE_SIGNED_INTEGER) ? DetailField::Form::Signed
                                                           : DetailField::Form::Unsigned;
}

}  // namespace

EventShape::EventShape(const bt_event_class* cls) : name_(NameWithoutDomain(cls)) {
    const auto* stream = bt_event_class_borrow_stream_class_const(cls);
    AddMembers(Scope::Payload, bt_event_class_borrow_payload_field_class_const(cls));
    AddMembers(Scope::Specific, bt_event_class_borrow_specific_context_field_class_const(cls));
    AddMembers(Scope::Common,
               bt_stream_class_borrow_event_common_context_field_class_const(stream));
    if (bt_stream_class_supports_packets(stream))
        AddMembers(Scope::Packet, bt_stream_class_borrow_packet_context_field_class_const(stream));
    LookAtSiblings(stream);
}

void EventShape::AddMembers(Scope scope, const bt_field_class* structure) {
    if (!structure) return;
    const auto count = bt_field_class_structure_get_member_count(structure);
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto* member = bt_field_class_structure_borrow_member_by_index_const(structure, i);
        members_.push_back({bt_field_class_structure_member_get_name(member),
                            {scope, static_cast<std::uint32_t>(i)},
                            bt_field_class_structure_member_borrow_field_class_const(member)});
    }
}

// Which kernel wrote the trace shows from the events that it has.
void EventShape::LookAtSiblings(const bt_stream_class* cls) {
    const auto count = bt_stream_class_get_event_class_count(cls);
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto* sibling = bt_stream_class_borrow_event_class_by_index_const(cls, i);
        const auto name = NameWithoutDomain(sibling);
        if (name == "thread_switched_in") kernel_ = Kernel::Zephyr;
        if (name == "sched_switch") kernel_ = Kernel::Linux;
        if (name == "end_call") endsCallsAlike_ = true;
    }
}

FieldPlace EventShape::Find(std::initializer_list<std::string_view> names) const {
    for (const auto name : names) {
        const auto at = std::ranges::find(members_, name, &Member::name);
        if (at != members_.end()) return at->place;
    }
    return {};
}

std::vector<DetailField> EventShape::Details() const {
    std::vector<DetailField> details;
    for (const auto& member : members_)
        if (member.place.scope == Scope::Payload)
            details.push_back({member.name, member.place, FormOf(member.name, member.cls)});
    return details;
}

Plan MakePlan(const EventShape& shape) {
    Plan plan;
    plan.kernel = shape.GetKernel();
    const bool known = plan.kernel == Kernel::Zephyr  ? PlanZephyr(shape, plan)
                       : plan.kernel == Kernel::Linux ? PlanLinux(shape, plan)
                                                      : false;
    if (!known) {
        const auto kernel = plan.kernel;
        plan = Plan();
        plan.kernel = kernel;
    }
    plan.processor = shape.Find({"cpu_id", "perf_cpu"});
    return plan;
}

}  // namespace kvx::formats::ctf
