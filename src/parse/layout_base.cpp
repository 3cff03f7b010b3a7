// layout_base.cpp - class layout: the virtual function table pointer and the base classes.
// Rule:    a class shares the table pointer of its primary base, which lies at its start; virtual bases
//          follow the fields, and each lies where the complete class puts it.
// Entry:   select_primary_base; the steps of layout_private.h.
// See:     the IA-64 C++ ABI, 2.4.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_decl.h"
#include "parse/layout_private.h"

static a_base_class *first_base(const a_layout *layout)
{
  return class_supplement_of(layout->class_type)->base_classes;
}

static bool follows_gnu_abi(unsigned from, unsigned to)
{
  return emulate_gnu_abi_bugs && gnu_abi_version >= (int)from && gnu_abi_version <= (int)to;
}

//---------------------------------------------------------------------------------------------
// The primary base.

// The class has a table pointer.
static bool is_dynamic_class(a_type *type)
{
  return as_class(type).has_virtual_functions || as_class(type).has_virtual_bases;
}

// Nothing but a table pointer: it may lie in the place of any class that needs one.
static bool is_nearly_empty(a_type *type)
{
  if (!is_dynamic_class(type)) return false;
  for (a_field *field = as_class(type).first_field; field; field = field->next) {
    if (!field->is_bit_field || field->bit_size != 0) return false;
  }
  a_class_type_supplement *supplement = class_supplement_of(type);
  for (a_base_class *base = supplement->base_classes; base != nullptr; base = base->next) {
    if (!base->is_direct || base->is_virtual || is_empty_class_type(base->type)) continue;
    if (base != supplement->primary_base || !is_nearly_empty(base->type)) return false;
  }
  return true;
}

a_base_class *nominal_primary_base(a_base_class *base)
{
  a_base_class *primary = class_supplement_of(base->type)->primary_base;
  return primary != nullptr ? corresp_base_class(base, primary) : nullptr;
}

static bool is_primary_of_a_base(a_base_class *first, a_base_class *candidate)
{
  for (a_base_class *base = first; base != nullptr; base = base->next) {
    if (nominal_primary_base(base) == candidate) return true;
  }
  return false;
}

// The first nearly empty virtual base that no other base extends; failing that, the first one.
static a_base_class *virtual_primary_base(a_class_type_supplement *supplement)
{
  a_base_class *second_choice = nullptr;
  a_base_class *base = supplement->virtual_bases;
  for (; base != nullptr; base = base->next_virtual_base) {
    if (!is_nearly_empty(base->type)) continue;
    if (!is_primary_of_a_base(supplement->base_classes, base)) return base;
    if (second_choice == nullptr) second_choice = base;
  }
  return second_choice;
}

void select_primary_base(a_type *class_type)
{
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  a_base_class *primary = supplement->base_classes;
  while (primary != nullptr &&
         !(primary->is_direct && !primary->is_virtual && is_dynamic_class(primary->type))) {
    primary = primary->next;
  }
  if (primary == nullptr) primary = virtual_primary_base(supplement);
  if (primary == nullptr) return;
  supplement->primary_base = primary;
  a_class_type_supplement *inner = class_supplement_of(primary->type);
  supplement->next_virtual_function_number = inner->next_virtual_function_number;
  a_base_class *owner = inner->vptr_owner_base;
  supplement->vptr_owner_base = owner != nullptr ? corresp_base_class(primary, owner) : primary;
  for (a_base_class *base = primary; base != nullptr; base = nominal_primary_base(base))
    base->is_primary = true;
}

// Which base of the complete class lies in the place of which other one: the class's own choice first,
// then that of each base, where no earlier one has taken it.
static void claim_primary_bases(a_layout *layout)
{
  a_base_class *own = class_supplement_of(layout->class_type)->primary_base;
  if (own != nullptr) own->layout_done = true;
  for (a_base_class *base = first_base(layout); base != nullptr; base = base->next) {
    a_base_class *primary = nominal_primary_base(base);
    if (primary == nullptr || primary->layout_done) continue;
    primary->primary_of = base;
    primary->layout_done = true;
  }
  for (a_base_class *base = first_base(layout); base != nullptr; base = base->next)
    base->layout_done = false;
}

//---------------------------------------------------------------------------------------------
// Bases.

// Where the base lies its own bases lie too, except for the virtual ones that it doesn't share its table
// pointer with.
static void place_base_tree(a_base_class *base, a_target_size offset)
{
  base->offset = offset;
  base->layout_done = true;
  base->is_empty = is_empty_class_type(base->type);
  a_base_class *inner = class_supplement_of(base->type)->base_classes;
  for (; inner != nullptr; inner = inner->next) {
    if (!inner->is_direct || inner->is_virtual) continue;
    a_base_class *corresp = corresp_base_class(base, inner);
    if (corresp != nullptr) place_base_tree(corresp, offset + inner->offset);
  }
  a_base_class *primary = nominal_primary_base(base);
  if (primary != nullptr && primary->is_virtual && primary->primary_of == base &&
      !primary->layout_done) {
    place_base_tree(primary, offset);
  }
}

static a_target_alignment limited_base_alignment(const a_layout *layout,
                                                 a_target_alignment alignment)
{
  a_target_alignment limit = as_class(layout->class_type).max_member_alignment;
  if (!packing_applies_to_base_classes || limit == 0 || limit >= alignment) return alignment;
  return limit;
}

// The base's last byte counts, even where the next member may follow before it.
static void note_base_end(a_layout *layout, a_base_class *base)
{
  a_target_size size =
      base->is_empty ? base->type->size : class_supplement_of(base->type)->nonvirtual_size;
  if (size == 0) return;
  a_target_size last = base->offset + size - 1;
  if (layout->has_base_end && last <= layout->highest_base_byte) return;
  layout->has_base_end = true;
  layout->highest_base_byte = last;
}

void check_tail_padding(a_layout *layout, a_target_size offset)
{
  a_base_class *base = layout->last_base_placed;
  if (!warn_about_tail_padding_use || base == nullptr || layout->tail_padding_reported) return;
  a_target_size end = class_supplement_of(base->type)->nonvirtual_size;
  align(&end, base->type->alignment);
  if (offset >= base->offset + end) return;
  layout->tail_padding_reported = true;
  pos_warning(ec_size_affected_by_tail_padding, error_position);
}

// An empty base takes no space: it lies at the start unless another object of its type does.
static void place_empty_base(a_layout *layout, a_base_class *base)
{
  a_target_alignment alignment = class_supplement_of(base->type)->nonvirtual_alignment;
  alignment = limited_base_alignment(layout, alignment);
  a_target_size offset = 0;
  if (base_conflicts(layout, base, 0)) {
    offset = layout->next_byte + (layout->next_bit != 0);
    align(&offset, alignment);
    while (base_conflicts(layout, base, offset) && offset < size_limit())
      offset += alignment;
  }
  raise_alignment(layout, alignment);
  place_base_tree(base, offset);
  note_base_place(layout, base, offset);
}

static void place_base(a_layout *layout, a_base_class *base)
{
  if (is_empty_class_type(base->type) && targ_optimize_empty_base_class_layout) {
    place_empty_base(layout, base);
    note_base_end(layout, base);
    return;
  }
  a_class_type_supplement *supplement = class_supplement_of(base->type);
  a_target_alignment alignment = limited_base_alignment(layout, supplement->nonvirtual_alignment);
  bool fits = align_position(layout, alignment);
  while (fits && base_conflicts(layout, base, layout->next_byte)) {
    add_bytes(layout, alignment);
    fits = layout->next_byte < size_limit();
  }
  place_base_tree(base, layout->next_byte);
  note_base_place(layout, base, layout->next_byte);
  check_tail_padding(layout, layout->next_byte);
  add_bytes(layout, supplement->nonvirtual_size);
  layout->last_base_placed = base;
  raise_alignment(layout, alignment);
  note_base_end(layout, base);
}

//---------------------------------------------------------------------------------------------
// The start of the class.

static void allocate_table_pointer(a_layout *layout)
{
  a_target_alignment alignment = targ_alignof_virtual_function_info;
  a_target_alignment limit = as_class(layout->class_type).max_member_alignment;
  if (limit != 0 && limit < alignment) alignment = limit;
  align_position(layout, alignment);
  raise_alignment(layout, alignment);
  class_supplement_of(layout->class_type)->vptr_offset = layout->next_byte;
  add_bytes(layout, targ_sizeof_virtual_function_info);
}

// g++ 3.3: the rest of the last byte of a base that ends in a bit-field is used for the first field.
static void reuse_partial_byte_of_base(a_layout *layout)
{
  if (!follows_gnu_abi(30300, 30399)) return;
  a_base_class *base = layout->last_base_placed;
  if (base == nullptr || base->is_virtual || class_symbol_supplement_of(base->type)->is_pod) return;
  a_field *last = as_class(base->type).first_field;
  while (last != nullptr && last->next != nullptr)
    last = last->next;
  if (last == nullptr || !last->is_bit_field) return;
  a_target_size end = last->bit_offset + last->bit_size;
  if (end % targ_char_bit == 0) return;
  layout->next_byte = base->offset + last->offset + end / targ_char_bit + 1;
}

void begin_base_layout(a_layout *layout)
{
  if (C_dialect != 2) return;
  a_class_type_supplement *supplement = class_supplement_of(layout->class_type);
  claim_primary_bases(layout);
  a_base_class *primary = supplement->primary_base;
  if (primary != nullptr) {
    place_base(layout, primary);
    supplement->vptr_offset = supplement->vptr_owner_base->offset +
                              class_supplement_of(supplement->vptr_owner_base->type)->vptr_offset;
  } else if (is_dynamic_class(layout->class_type)) {
    allocate_table_pointer(layout);
  }
  for (a_base_class *base = first_base(layout); base != nullptr; base = base->next) {
    if (base->is_direct && !base->is_virtual && base != primary) place_base(layout, base);
  }
  reuse_partial_byte_of_base(layout);
}

//---------------------------------------------------------------------------------------------
// The end of the class.

void end_of_empty_bases(a_layout *layout)
{
  if (C_dialect != 2) return;
  for (a_base_class *base = first_base(layout); base != nullptr; base = base->next) {
    if (!base->is_empty) continue;
    a_target_size end = base->offset + base->type->size;
    if (end <= layout->next_byte) continue;
    layout->next_bit = 0;
    layout->next_byte = end;
  }
}

// The part of the class that is there in each class derived from it too.
static void end_nonvirtual_part(a_layout *layout)
{
  a_class_type_supplement *supplement = class_supplement_of(layout->class_type);
  round_to_byte(layout);
  supplement->nonvirtual_size = layout->next_byte;
  supplement->nonvirtual_alignment = layout->class_alignment;
  if (layout->has_base_end && layout->highest_base_byte >= layout->next_byte) {
    if (emulate_gnu_abi_bugs && targ_reuse_tail_padding) {
      layout->next_byte = layout->highest_base_byte + 1;
    } else {
      supplement->nonvirtual_size = layout->highest_base_byte + 1;
    }
  }
  if (emulate_gnu_abi_bugs && gnu_abi_version < 30400) {
    align_position(layout, layout->class_alignment);
  }
  a_target_size aligned = supplement->nonvirtual_size;
  align(&aligned, supplement->nonvirtual_alignment);
  if (!targ_reuse_tail_padding) {
    supplement->nonvirtual_size = aligned;
    layout->next_byte = aligned;
  } else if (warn_about_tail_padding_use && aligned != supplement->nonvirtual_size &&
             !layout->tail_padding_reported) {
    layout->tail_padding_reported = true;
    pos_warning(ec_size_affected_by_tail_padding, error_position);
  }
}

// g++ 3.3 leaves a unit of alignment behind a virtual base that ends in a bit-field.
static void skip_behind_bit_field_of_base(a_layout *layout, a_base_class *base)
{
  if (!follows_gnu_abi(30300, 30399)) return;
  a_field *last = as_class(base->type).first_field;
  while (last != nullptr && last->next != nullptr)
    last = last->next;
  if (last == nullptr || !last->is_bit_field) return;
  if ((last->bit_offset + last->bit_size) % targ_char_bit == 0) return;
  add_bytes(layout, layout->class_alignment);
}

void end_base_layout(a_layout *layout)
{
  if (C_dialect != 2) return;
  if (emulate_gnu_abi_bugs) end_of_empty_bases(layout);
  if (!as_class(layout->class_type).has_virtual_bases) return;
  end_nonvirtual_part(layout);
  a_base_class *base = class_supplement_of(layout->class_type)->virtual_bases;
  for (; base != nullptr; base = base->next_virtual_base) {
    if (base->is_primary || base->layout_done || base->primary_of != nullptr) continue;
    place_base(layout, base);
    skip_behind_bit_field_of_base(layout, base);
  }
}

void set_nonvirtual_size(a_layout *layout)
{
  a_type *class_type = layout->class_type;
  if (C_dialect != 2 || as_class(class_type).has_virtual_bases) return;
  if (class_symbol_supplement_of(class_type)->is_pod) return;
  a_class_type_supplement *supplement = class_supplement_of(class_type);
  supplement->nonvirtual_size = layout->next_byte;
  supplement->nonvirtual_alignment = layout->class_alignment;
}

// g++ places a virtual base beyond the object where that is empty.
static void check_virtual_base_gap(a_layout *layout, a_base_class *base)
{
  if (!emulate_gnu_abi_bugs || !base->is_virtual || base->offset <= layout->next_byte) return;
  if (emulate_unsafe_gnu_abi_bugs) {
    pos_warning(ec_gnu_virtual_base_gap, error_position);
  } else {
    pos_warning(ec_no_gnu_virtual_base_gap, error_position);
    base->offset = layout->next_byte;
  }
}

void check_base_offsets(a_layout *layout)
{
  if (C_dialect != 2) return;
  bool reported = layout->size_error_reported;
  for (a_base_class *base = first_base(layout); base != nullptr; base = base->next) {
    if (!reported && base->offset > targ_max_base_class_offset) {
      reported = true;
      pos_sy2_error(ec_base_class_offset_too_large, error_position,
                    base->type->source_corresp.assoc_symbol,
                    layout->class_type->source_corresp.assoc_symbol);
    }
    check_virtual_base_gap(layout, base);
  }
}
