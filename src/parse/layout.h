// layout.h - class layout: offsets, sizes, alignments; the state of the pack pragma.
#pragma once
#include <cstdint>

#include "il/il_fwd.h"
#include "lex/pragma.h"

// Gives every field its place and the class its size and alignment, and makes it complete.  Issues
// 104, 105, 713, 1168, 1236, 1301, 1564, 1565, 2150.
void do_class_layout(a_type *class_type);
// Behind the base clause: chooses the base whose virtual function table the class extends
// (primary_base, vptr_owner_base, next_virtual_function_number).
void select_primary_base(a_type *class_type);
// The alignment that the field's position and the class get from it.
uint32_t alignment_of_field_full(a_field *field, bool for_bit_field);
bool is_empty_class_type(a_type *type);
// Tests that a union may be passed as its first member (transparent_union); reports if not.
bool check_transparent_union(a_type *type, a_source_position position);

// The handler of #pragma pack; the current token is behind the pragma's name.
void pack_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement);
// Whether `value` may be a pack value; *result gets it.
bool check_pack_alignment_value(const a_constant *value, uint32_t *result);

struct a_saved_pack_alignment_state {
  unsigned value;
  a_pack_alignment_state *stack;
};
void reset_pack_alignment_state(unsigned value, a_saved_pack_alignment_state *state);
void restore_pack_alignment_state(const a_saved_pack_alignment_state *state);
uint32_t current_max_alignment_for_class_members();
uint32_t current_pack_pragma_value();

void layout_init();
