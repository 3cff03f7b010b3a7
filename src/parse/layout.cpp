// layout.cpp - class layout: the place of every member, size and alignment of the class.
// Rule:    positions are a byte and a bit below a byte; every step that moves tests the size limit,
//          and the limit is reported once a class.
// Entry:   do_class_layout, alignment_of_field_full.
// See:     C99 6.7.2.1; which rules hold is told by the target's values and the pack state.
#include "parse/layout_private.h"

#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/attribute.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

static bool in_gnu_mode()
{
  return gcc_mode || gpp_mode;
}

//---------------------------------------------------------------------------------------------
// Positions.

a_target_size size_limit()
{
  return targ_max_class_object_size ? targ_max_class_object_size : targ_size_t_max;
}

static void report_size_error(a_layout *layout)
{
  if (layout->size_error_reported) return;
  layout->size_error_reported = true;
  pos_error(C_dialect == 2 ? ec_class_too_large : ec_struct_too_large, error_position);
}

// The limit was passed: the position stays there.
static void clamp(a_layout *layout)
{
  report_size_error(layout);
  layout->next_byte = size_limit();
  layout->next_bit = 0;
}

void add_bytes(a_layout *layout, a_target_size bytes)
{
  if (bytes > size_limit() || layout->next_byte > size_limit() - bytes) {
    clamp(layout);
  } else {
    layout->next_byte += bytes;
  }
}

static void add_bits(a_layout *layout, a_target_size bits)
{
  a_target_size total = layout->next_bit + bits;
  layout->next_bit = (unsigned)(total % targ_char_bit);
  add_bytes(layout, total / targ_char_bit);
}

void round_to_byte(a_layout *layout)
{
  if (layout->next_bit == 0) return;
  layout->next_bit = 0;
  add_bytes(layout, 1);
}

bool align_position(a_layout *layout, a_target_alignment alignment)
{
  round_to_byte(layout);
  a_target_size position = layout->next_byte;
  if (!align(&position, alignment) || position > size_limit()) {
    clamp(layout);
    return false;
  }
  layout->next_byte = position;
  return true;
}

void raise_alignment(a_layout *layout, a_target_alignment alignment)
{
  if (alignment > layout->class_alignment) layout->class_alignment = alignment;
}

// Ends the Microsoft unit: what is left of it is padding.
static void close_unit(a_layout *layout)
{
  if (layout->unit_type == nullptr) return;
  layout->unit_type = nullptr;
  add_bits(layout, layout->unit_bits_left);
  layout->unit_bits_left = 0;
}

//---------------------------------------------------------------------------------------------
// Alignment of a field.

static a_type *class_of_field(a_field *field)
{
  return parent_class_of(&field->source_corresp);
}

static a_target_alignment pack_limit_of(a_field *field)
{
  a_type *class_type = class_of_field(field);
  return class_type ? as_class(class_type).max_member_alignment : 0;
}

// gpp_mode: the limit doesn't reach classes that aren't plain data.
static bool is_unlimited_class(a_field *field, a_target_alignment natural, a_target_alignment limit)
{
  if (!gpp_mode || gnu_version < 30400 || field->is_packed_field) return false;
  if (limit == 0 || limit >= natural) return false;
  a_type *type = skip_typerefs(skip_array_types(field->type));
  if (!is_class_struct_union_type(type) || as_class(type).is_packed) return false;
  a_symbol *symbol = type->source_corresp.assoc_symbol;
  return symbol && !class_supplement_of_symbol(symbol)->is_pod;
}

static a_target_alignment declared_alignment_of(a_field *field, a_target_alignment natural)
{
  a_type *class_type = class_of_field(field);
  a_target_alignment limit = pack_limit_of(field);
  if (in_gnu_mode() && limit != 0) {
    if (natural > limit) natural = limit;
    if (field->declared_alignment > limit) field->declared_alignment = limit;
  }
  bool class_is_packed = class_type && as_class(class_type).is_packed;
  if (in_gnu_mode() && field->declared_alignment < natural && !field->is_packed_field &&
      !class_is_packed) {
    pos_warning(ec_alignment_reduction_ignored, field->source_corresp.decl_position);
    field->declared_alignment = natural;
  }
  return field->declared_alignment;
}

uint32_t alignment_of_field_full(a_field *field, bool for_bit_field)
{
  a_target_alignment natural = f_alignment_of_type(field->type);
  a_target_alignment limit = pack_limit_of(field);
  bool unlimited = is_unlimited_class(field, natural, limit);
  if (unlimited && !for_bit_field) {
    pos_warning(ec_no_packing_of_non_POD_field, field->source_corresp.decl_position);
  }
  if (field->is_packed_field && for_bit_field && gnu_version < 30400) return 1;
  if (field->declared_alignment) return declared_alignment_of(field, natural);
  if (field->is_packed_field) return 1;
  bool zero_width = field->is_bit_field && field->bit_size == 0;
  bool in_union = class_of_field(field) && class_of_field(field)->kind == tk_union;
  if (emulate_gnu_abi_bugs && zero_width && !in_union) return natural;
  if (unlimited) return natural;
  if (limit == 0 || limit >= natural) return natural;
  if (in_gnu_mode() && emulate_gnu_abi_bugs && gnu_abi_version < 30300 &&
      targ_bit_field_container_size < 0 && in_union) {
    return natural;
  }
  return limit;
}

//---------------------------------------------------------------------------------------------
// Ordinary fields.

// No empty class inside the field may lie on another one of its type.
static void keep_empty_classes_apart(a_layout *layout, a_field *field, a_target_alignment alignment)
{
  while (field_conflicts(layout, field->type, layout->next_byte) &&
         layout->next_byte < size_limit()) {
    add_bytes(layout, alignment);
  }
  note_field_place(layout, field->type, layout->next_byte);
}

static void place_ordinary_field(a_layout *layout, a_field *field)
{
  close_unit(layout);
  round_to_byte(layout);
  a_target_alignment alignment = alignment_of_field_full(field, false);
  raise_alignment(layout, alignment);
  align_position(layout, alignment);
  if (C_dialect == 2 && !layout->is_union) keep_empty_classes_apart(layout, field, alignment);
  field->offset = layout->next_byte;
  field->bit_offset = 0;
  a_target_size size = skip_typerefs(field->type)->size;
  // GNU: raising a member's alignment leaves its size, so that the next one may follow directly.
  if (!in_gnu_mode()) align(&size, alignment);
  add_bytes(layout, size);
}

//---------------------------------------------------------------------------------------------
// Bit-fields: the container.

struct a_container {
  a_target_size size; // bytes
  a_target_alignment alignment;
  a_type *type; // the integer type of that size, null if there is none
};

static a_container container_of_kind(an_integer_kind kind)
{
  a_type *type = integer_type(kind);
  return {type->size, f_alignment_of_type(type), type};
}

// Bits from the position to the end of the unit of `size` bytes in which it lies.
static a_target_size bits_to_end_of_unit(const a_layout *layout, a_target_size size)
{
  a_target_size in_unit = size ? layout->next_byte % size : 0;
  return (size - in_unit) * targ_char_bit - layout->next_bit;
}

// The smallest of the integer types in which the field fits at this place.
static a_container smallest_container(const a_layout *layout, const a_field *field)
{
  static const an_integer_kind kinds[] = {ik_short, ik_int, ik_long, ik_long_long};
  // No other type can stand for _Bool in the generated C, so it has units of its own.
  if (is_bool_type(field->type)) return container_of_kind(ik_signed_char);
  for (an_integer_kind kind : kinds) {
    if (kind == ik_long_long && targ_max_bit_field_size <= targ_precisionof_long) break;
    // Only a field that is declared so wide may lie across the units of the others.
    if (kind == ik_long_long && size_of_type(field->type) < container_of_kind(kind).size) break;
    a_container container = container_of_kind(kind);
    if (container.size * targ_char_bit > targ_max_bit_field_size) break;
    if (bits_to_end_of_unit(layout, container.size) >= field->bit_size) return container;
  }
  if (field->bit_size <= targ_char_bit) return container_of_kind(ik_signed_char);
  for (an_integer_kind kind : kinds) {
    a_container container = container_of_kind(kind);
    if (container.size * targ_char_bit >= field->bit_size) return container;
  }
  return container_of_kind(ik_long_long);
}

static a_container fixed_container()
{
  a_target_size size = (a_target_size)targ_bit_field_container_size;
  if (size == 1) return container_of_kind(ik_signed_char);
  static const an_integer_kind kinds[] = {ik_short, ik_int, ik_long, ik_long_long};
  for (an_integer_kind kind : kinds) {
    if (integer_type(kind)->size == size) return container_of_kind(kind);
  }
  return {size, (a_target_alignment)size, nullptr};
}

// The container of a field that was written wider than its type.
static a_container wide_container(a_layout *layout, a_field *field)
{
  static const an_integer_kind kinds[] = {ik_short, ik_int, ik_long, ik_long_long};
  for (an_integer_kind kind : kinds) {
    a_container container = container_of_kind(kind);
    if (container.size * targ_char_bit < field->declared_width && kind != ik_long_long) continue;
    raise_alignment(layout, container.alignment);
    return container;
  }
  return container_of_kind(ik_long_long);
}

static a_container container_of(a_layout *layout, a_field *field)
{
  a_container container;
  if (field->declared_width != 0 && field->declared_width != field->bit_size) {
    container = wide_container(layout, field);
  } else if (targ_bit_field_container_size > 0) {
    container = fixed_container();
  } else if (targ_bit_field_container_size == 0) {
    container.type = integer_type(int_kind_of_type(field->type));
    container.size = skip_typerefs(field->type)->size;
    container.alignment = alignment_of_field_full(field, false);
    if (emulate_gnu_abi_bugs && container.size < field->declared_alignment) {
      container.size = field->declared_alignment;
    }
  } else {
    container = smallest_container(layout, field);
  }
  field->allocation_type = container.type;
  if (field->declared_alignment) {
    container.alignment = declared_alignment_of(field, container.alignment);
  } else if (field->is_packed_field) {
    container.alignment = 1;
  }
  return container;
}

static a_target_alignment limited(const a_layout *layout, a_target_alignment alignment)
{
  a_target_alignment limit = as_class(layout->class_type).max_member_alignment;
  if (!targ_user_control_of_struct_packing_affects_bit_fields || limit == 0) return alignment;
  if (in_gnu_mode() && emulate_gnu_abi_bugs && gnu_abi_version < 30300 && layout->is_union &&
      targ_bit_field_container_size < 0) {
    return alignment;
  }
  return alignment < limit ? alignment : limit;
}

// Whether the field says anything about the alignment of the class.
static bool affects_class_alignment(const a_layout *layout, const a_field *field)
{
  if (field->bit_size == 0 && !targ_zero_width_bit_field_affects_struct_alignment) return false;
  if (layout->is_union && !targ_bit_field_affects_union_alignment) return false;
  bool unnamed = field->source_corresp.name == nullptr;
  return !unnamed || targ_unnamed_bit_field_affects_struct_alignment;
}

//---------------------------------------------------------------------------------------------
// Bit-fields: the place.

static void place_zero_width(a_layout *layout, a_field *field)
{
  a_target_alignment alignment;
  if (targ_microsoft_bit_field_allocation && layout->unit_type == nullptr) {
    alignment = 1;
  } else if (targ_zero_width_bit_field_alignment > 0) {
    alignment = (a_target_alignment)targ_zero_width_bit_field_alignment;
  } else if (targ_zero_width_bit_field_alignment == 0) {
    alignment = 1;
  } else {
    alignment = f_alignment_of_type(field->type);
  }
  close_unit(layout);
  round_to_byte(layout);
  align_position(layout, alignment);
  field->offset = layout->next_byte;
  field->bit_offset = 0;
  if (!affects_class_alignment(layout, field)) return;
  // GNU: a zero-width field aligns the class by its type whatever the pack value is.
  raise_alignment(layout, in_gnu_mode() ? alignment : limited(layout, alignment));
}

// The Microsoft rule: fields share a unit while their types are of one size and there is room.
static void place_microsoft(a_layout *layout, a_field *field)
{
  a_type *type = skip_typerefs(field->type);
  bool same_unit = layout->unit_type && layout->unit_type->size == type->size &&
                   layout->unit_bits_left >= field->bit_size;
  if (!same_unit) {
    close_unit(layout);
    a_target_alignment alignment = limited(layout, alignment_of_field_full(field, true));
    raise_alignment(layout, alignment);
    align_position(layout, alignment);
    layout->unit_type = type;
    layout->unit_bits_left = (unsigned)(type->size * targ_char_bit);
  }
  layout->unit_bits_left -= field->bit_size;
}

// GNU: with a pack value in force nothing keeps a field from crossing units, and its type says how
// the class is aligned even where the field is packed.
static bool place_under_pack(a_layout *layout, a_field *field)
{
  a_target_alignment pack = as_class(layout->class_type).max_member_alignment;
  if (!in_gnu_mode() || pack == 0 || field->declared_alignment) return false;
  a_target_alignment alignment = f_alignment_of_type(field->type);
  if (alignment > pack) alignment = pack;
  if (affects_class_alignment(layout, field)) raise_alignment(layout, alignment);
  return true;
}

static void place_in_container(a_layout *layout, a_field *field)
{
  if (place_under_pack(layout, field)) return;
  a_container container = container_of(layout, field);
  container.alignment = limited(layout, container.alignment);
  bool packed = field->is_packed_field && field->declared_alignment == 0;
  bool crosses = bits_to_end_of_unit(layout, container.size) < field->bit_size;
  // The bits of packed fields follow each other without regard to units.
  if (!packed && (field->declared_alignment || crosses)) {
    align_position(layout, container.alignment);
  }
  if (affects_class_alignment(layout, field)) raise_alignment(layout, container.alignment);
}

static void check_packed_span(a_field *field)
{
  if (!field->is_packed_field || field->bit_offset + field->bit_size < 65) return;
  pos_st_error(ec_attribute_does_not_apply, field->source_corresp.decl_position, "packed");
}

static void place_bit_field(a_layout *layout, a_field *field)
{
  if (field->bit_size == 0) {
    place_zero_width(layout, field);
    return;
  }
  if (targ_microsoft_bit_field_allocation) {
    place_microsoft(layout, field);
  } else {
    place_in_container(layout, field);
  }
  field->offset = layout->next_byte;
  field->bit_offset = (unsigned char)layout->next_bit;
  bool padded =
      targ_pad_bit_fields_larger_than_base_type && field->declared_width > field->bit_size;
  add_bits(layout, padded ? field->declared_width : field->bit_size);
  check_packed_span(field);
}

//---------------------------------------------------------------------------------------------
// Fields in order.

static void keep_union_end(a_layout *layout)
{
  bool larger = layout->next_byte > layout->union_byte ||
                (layout->next_byte == layout->union_byte && layout->next_bit > layout->union_bit);
  if (!larger) return;
  layout->union_byte = layout->next_byte;
  layout->union_bit = layout->next_bit;
}

static void place_field(a_layout *layout, a_field *field)
{
  set_type_size(field->type);
  if (layout->is_union) {
    layout->next_byte = 0;
    layout->next_bit = 0;
  }
  if (is_error_type(field->type)) {
    field->offset = layout->next_byte;
  } else if (field->is_bit_field) {
    place_bit_field(layout, field);
  } else {
    place_ordinary_field(layout, field);
  }
  field->layout_done = true;
  if (field == as_class(layout->class_type).first_field) check_tail_padding(layout, field->offset);
  if (layout->is_union) {
    close_unit(layout);
    keep_union_end(layout);
  }
}

static void place_fields(a_layout *layout)
{
  for (a_field *field = as_class(layout->class_type).first_field; field; field = field->next) {
    place_field(layout, field);
  }
  close_unit(layout);
  if (layout->is_union) {
    layout->next_byte = layout->union_byte;
    layout->next_bit = layout->union_bit;
  }
}

//---------------------------------------------------------------------------------------------
// The class.

static bool is_zero_width(const a_field *field)
{
  return field->is_bit_field && field->bit_size == 0;
}

bool is_empty_class_type(a_type *type)
{
  type = skip_typerefs(type);
  return is_class_struct_union_type(type) && as_class(type).is_empty_class;
}

static void find_emptiness(a_type *class_type)
{
  a_class_type_part &part = as_class(class_type);
  part.is_empty_class = C_dialect == 2 || gcc_mode;
  for (a_field *field = part.first_field; field; field = field->next) {
    if (is_zero_width(field)) continue;
    set_type_size(field->type);
    if (C_dialect != 2 && skip_typerefs(field->type)->size == 0) continue;
    if (gpp_mode && is_incomplete_array_type(field->type)) continue;
    part.is_empty_class = false;
  }
  if (part.has_virtual_functions || part.has_virtual_bases) part.is_empty_class = false;
  a_base_class *base = part.class_supplement->base_classes;
  for (; base != nullptr; base = base->next) {
    if (!is_empty_class_type(base->type)) part.is_empty_class = false;
  }
}

// An alignment declared for the class (step by step with what its members need).
static void apply_declared_alignment(a_layout *layout, a_target_alignment declared)
{
  if (declared == 0) return;
  a_type *type = layout->class_type;
  if (declared < layout->class_alignment) {
    a_source_position position = type->source_corresp.decl_position;
    if (!in_gnu_mode()) {
      pos_error(ec_invalid_alignment_reducing_attr, position);
      return;
    }
    if (!as_class(type).is_packed) {
      pos_warning(ec_alignment_reduction_ignored, position);
      return;
    }
  }
  layout->class_alignment = declared;
}

// Size 0 stands in GNU C; in g++ only for arrays and classes without size.
static bool size_zero_stands(a_type *class_type)
{
  if (gcc_mode) return true;
  if (!gpp_mode) return false;
  a_field *field = as_class(class_type).first_field;
  if (field == nullptr || class_supplement_of(class_type)->base_classes != nullptr) return false;
  for (; field; field = field->next) {
    a_type *type = skip_typerefs(field->type);
    bool array_or_class = type->kind == tk_array || is_class_struct_union_type(type);
    if (type->size != 0 || !array_or_class) return false;
  }
  return true;
}

static bool is_plain_data(a_type *class_type)
{
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  return C_dialect != 2 || symbol == nullptr || class_supplement_of_symbol(symbol)->is_pod;
}

static void set_class_size(a_layout *layout)
{
  a_type *type = layout->class_type;
  a_class_type_supplement *supplement = class_supplement_of(type);
  align_position(layout, layout->class_alignment);
  check_base_offsets(layout);
  type->size = layout->next_byte;
  type->alignment = layout->class_alignment;
  if (type->size == 0 && !size_zero_stands(type)) type->size = 1;
  bool has_own_size =
      as_class(type).has_virtual_bases || (targ_reuse_tail_padding && !is_plain_data(type));
  if (!has_own_size) {
    supplement->nonvirtual_size = type->size;
    supplement->nonvirtual_alignment = type->alignment;
  }
  if (type->size == 0 && in_gnu_mode()) return;
  if (type->size >= type->alignment) return;
  type->size = type->alignment;
  supplement->nonvirtual_size = supplement->nonvirtual_alignment;
}

bool check_transparent_union(a_type *type, a_source_position position)
{
  type = skip_typerefs(type);
  if (type->kind != tk_union) {
    pos_warning(ec_transparent_type_is_not_union, position);
    return false;
  }
  a_field *first = as_class(type).first_field;
  if (first == nullptr) {
    pos_warning(ec_transparent_attribute_ignored, position);
    return false;
  }
  if (is_floating_type(first->type)) {
    pos_error(ec_transparent_union_cannot_have_floating_first_field, position);
    return false;
  }
  if (first->is_bit_field) {
    pos_error(ec_transparent_union_cannot_have_bit_field_first, position);
    return false;
  }
  // It is passed as its first member is: no other may be larger.
  if (skip_typerefs(first->type)->size != type->size) {
    pos_ty2_warning(ec_union_cannot_be_transparent, position, type, first->type);
    return false;
  }
  return true;
}

void do_class_layout(a_type *class_type)
{
  a_class_type_part &part = as_class(class_type);
  if (part.layout_done) return;
  a_target_alignment declared = class_type->alignment_was_declared ? class_type->alignment : 0;
  class_type->alignment = 1;
  a_layout layout = {};
  layout.class_type = class_type;
  layout.is_union = class_type->kind == tk_union;
  layout.class_alignment = targ_minimum_struct_alignment;
  find_emptiness(class_type);
  if (C_dialect == 2) find_empty_subobjects(&layout);
  begin_base_layout(&layout);
  place_fields(&layout);
  end_base_layout(&layout);
  apply_declared_alignment(&layout, declared);
  end_of_empty_bases(&layout);
  if (targ_reuse_tail_padding) round_to_byte(&layout);
  set_nonvirtual_size(&layout);
  set_class_size(&layout);
  release_empty_places(&layout);
  part.layout_done = true;
  class_type->is_incomplete = false;
  if (part.is_transparent_union &&
      !check_transparent_union(class_type, class_type->source_corresp.decl_position)) {
    part.is_transparent_union = false;
  }
}
