// layout_private.h - what the files of class layout share.
#pragma once
#include "il/types.h"
#include "parse/layout.h"

// An empty class that has its place in the class being laid out; from a free list.
struct an_empty_place {
  an_empty_place *next;
  a_type *type;
  a_target_size offset;
};

// The layout of one class.
struct a_layout {
  a_type *class_type;
  a_target_size next_byte;
  unsigned next_bit; // below targ_char_bit after every step
  a_target_alignment class_alignment;
  bool size_error_reported;
  bool is_union;
  bool tail_padding_reported;
  a_target_size union_byte; // the largest end of the members so far
  unsigned union_bit;
  a_type *unit_type; // the open unit of the Microsoft rules
  unsigned unit_bits_left;
  a_base_class *last_base_placed; // the last one that takes space
  bool has_base_end;              // of the bases placed so far:
  a_target_size highest_base_byte; //   the last byte that one occupies
  an_empty_place *empty_places;
  a_target_size biggest_empty_base; // bytes; only below it can an empty base meet another class
};

// layout.cpp: positions.
a_target_size size_limit();
void add_bytes(a_layout *layout, a_target_size bytes);
void round_to_byte(a_layout *layout);
// False when the limit was passed (104, 105 reported once).
bool align_position(a_layout *layout, a_target_alignment alignment);
void raise_alignment(a_layout *layout, a_target_alignment alignment);

// layout_base.cpp: table pointer and bases, in the order of the steps.
// The record in the complete class of the primary base of one of its bases; null: it has none.
a_base_class *nominal_primary_base(a_base_class *base);
void begin_base_layout(a_layout *layout);   // the pointer, the primary base, direct non-virtual bases
void end_base_layout(a_layout *layout);     // behind the fields: virtual bases, nonvirtual_size
void end_of_empty_bases(a_layout *layout);  // the position moves behind them
// Warns (1301) of a member or base that lies in the padding of the base before it.
void check_tail_padding(a_layout *layout, a_target_size offset);
void set_nonvirtual_size(a_layout *layout); // where tail padding may be used
void check_base_offsets(a_layout *layout);  // 713, 1564, 1565

// layout_empty.cpp: two subobjects of one empty class may not share an address.
void find_empty_subobjects(a_layout *layout); // sets has_empty_subobject
// Whether an object of the class at this offset puts an empty class on one of its own type.
bool field_conflicts(a_layout *layout, a_type *type, a_target_size offset);
bool base_conflicts(a_layout *layout, a_base_class *base, a_target_size offset);
// Notes the empty classes in what was placed.
void note_field_place(a_layout *layout, a_type *type, a_target_size offset);
void note_base_place(a_layout *layout, a_base_class *base, a_target_size offset);
void release_empty_places(a_layout *layout);
void layout_empty_init();
