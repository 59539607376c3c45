#include "workbench/ctf_reader/Fields.h"

#include "platform/base/Text.h"

namespace kvx::ctf_reader {
namespace {

constexpr std::uint64_t kMostElements = 16;  // of an array that are written out
constexpr int kDeepest = 8;

bool IsType(const bt_field* field, bt_field_class_type type) {
    return bt_field_class_type_is(bt_field_get_class_type(field), type);
}

std::string_view LabelOf(const bt_field* field) {
    bt_field_class_enumeration_mapping_label_array labels = nullptr;
    std::uint64_t count = 0;
    if (IsType(field, BT_FIELD_CLASS_TYPE_UNSIGNED_ENUMERATION))
        bt_field_enumeration_unsigned_get_mapping_labels(field, &labels, &count);
    else if (IsType(field, BT_FIELD_CLASS_TYPE_SIGNED_ENUMERATION))
        bt_field_enumeration_signed_get_mapping_labels(field, &labels, &count);
    return count > 0 ? labels[0] : std::string_view();
}

std::string IntegerText(const bt_field* field) {
    const auto* cls = bt_field_borrow_class_const(field);
    const bool hex = bt_field_class_integer_get_preferred_display_base(cls) ==
                     BT_FIELD_CLASS_INTEGER_PREFERRED_DISPLAY_BASE_HEXADECIMAL;
    if (IsType(field, BT_FIELD_CLASS_TYPE_SIGNED_INTEGER) && !hex)
        return FormatText("%lld", static_cast<long long>(bt_field_integer_signed_get_value(field)));
    return FormatText(hex ? "0x%llX" : "%llu", static_cast<unsigned long long>(NumberOf(field)));
}

std::string Render(const bt_field* field, int depth);

std::string RenderMembers(const bt_field* field, std::uint64_t count, int depth) {
    std::string text;
    const bool isStructure = IsType(field, BT_FIELD_CLASS_TYPE_STRUCTURE);
    for (std::uint64_t i = 0; i < count; ++i) {
        if (i > 0) text += ", ";
        if (i == kMostElements) return text + "...";
        text += Render(isStructure ? bt_field_structure_borrow_member_field_by_index_const(field, i)
                                   : bt_field_array_borrow_element_field_by_index_const(field, i),
                       depth + 1);
    }
    return text;
}

std::string Render(const bt_field* field, int depth) {
    if (!field || depth > kDeepest) return {};
    if (const auto name = NameOf(field); !name.empty()) return std::string(name);
    if (IsType(field, BT_FIELD_CLASS_TYPE_INTEGER)) return IntegerText(field);
    if (IsType(field, BT_FIELD_CLASS_TYPE_BOOL))
        return bt_field_bool_get_value(field) ? "true" : "false";
    if (IsType(field, BT_FIELD_CLASS_TYPE_DOUBLE_PRECISION_REAL))
        return FormatText("%g", bt_field_real_double_precision_get_value(field));
    if (IsType(field, BT_FIELD_CLASS_TYPE_SINGLE_PRECISION_REAL))
        return FormatText("%g",
                          static_cast<double>(bt_field_real_single_precision_get_value(field)));
    if (IsType(field, BT_FIELD_CLASS_TYPE_OPTION))
        return Render(bt_field_option_borrow_field_const(field), depth + 1);
    if (IsType(field, BT_FIELD_CLASS_TYPE_VARIANT))
        return Render(bt_field_variant_borrow_selected_option_field_const(field), depth + 1);
    if (IsType(field, BT_FIELD_CLASS_TYPE_ARRAY))
        return "[" + RenderMembers(field, bt_field_array_get_length(field), depth) + "]";
    if (IsType(field, BT_FIELD_CLASS_TYPE_STRUCTURE)) {
        const auto* cls = bt_field_borrow_class_const(field);
        return "{" + RenderMembers(field, bt_field_class_structure_get_member_count(cls), depth) +
               "}";
    }
    return {};
}

}  // namespace

std::uint64_t NumberOf(const bt_field* field) {
    if (!field) return 0;
    if (IsType(field, BT_FIELD_CLASS_TYPE_UNSIGNED_INTEGER))
        return bt_field_integer_unsigned_get_value(field);
    if (IsType(field, BT_FIELD_CLASS_TYPE_SIGNED_INTEGER))
        return static_cast<std::uint64_t>(bt_field_integer_signed_get_value(field));
    if (IsType(field, BT_FIELD_CLASS_TYPE_BOOL)) return bt_field_bool_get_value(field) ? 1 : 0;
    return 0;
}

std::string_view NameOf(const bt_field* field) {
    if (!field) return {};
    if (IsType(field, BT_FIELD_CLASS_TYPE_STRING)) return bt_field_string_get_value(field);
    return LabelOf(field);
}

std::string TextOf(const bt_field* field) {
    return Render(field, 0);
}

}  // namespace kvx::ctf_reader
