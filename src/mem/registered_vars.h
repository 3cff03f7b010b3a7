// registered_vars.h - globals that differ by translation unit, and globals that a precompiled
// header saves.  Every module registers its own in its one-time initialisation; the driver copies
// the first kind at a switch of translation units, the precompiled-header writer saves the second.
#pragma once
#include <cstddef>

struct a_registered_variable {
  a_registered_variable *next;
  void *address; // the live variable
  unsigned size;
  size_t save_offset;  // its place in a unit's saved block
  size_t field_offset; // 0 or the offset of a pointer field in a_translation_unit
};

extern a_registered_variable *registered_variables; // in order of registration
extern size_t size_of_saved_variables;              // size of every unit's saved block

// Registers `size` bytes at `address`.  A nonzero `field_offset` makes that field of the unit's
// record point at the up-to-date copy.
void f_register_trans_unit_variable(void *address, unsigned size, size_t field_offset);
#define register_trans_unit_variable(variable)                                                     \
  f_register_trans_unit_variable(&(variable), sizeof(variable), 0)

// A row of a module's table of saved variables; the table ends at a row with a null address.
struct a_pch_saved_variable {
  void *address;
  unsigned size;
  bool is_pointer; // the data lies at the address that the variable holds
};

inline constexpr int max_pch_saved_variable_tables = 64;
extern a_pch_saved_variable *pch_saved_variable_tables[max_pch_saved_variable_tables];
extern int num_pch_saved_variable_tables;

// Called only when precompiled_header_processing_required is set.
void register_pch_saved_variables(a_pch_saved_variable *table);
