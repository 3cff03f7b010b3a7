// sections.h - sections in which variables and routines are placed, and the reader of sections of an
// object file.
#pragma once
#include <cstddef>

#include "il/il_fwd.h"
#include "lex/source_position.h"

struct a_section_specification;

// a_section_specification::kind: what has placed the entity.
enum a_section_specification_kind : unsigned char {
  secspec_pragma,    // DATA_SECTION, CODE_SECTION
  secspec_attribute, // the section attribute
  secspec_block,     // SET_DATA_SECTION, SET_CODE_SECTION
};

// What SET_CODE_SECTION and SET_DATA_SECTION have set for the entities to come, or null.
extern a_section_specification *curr_code_section, *curr_data_section;

// Places the entity in the section `name`, which is copied.  What a SET_ pragma has given yields; against
// any other section the older one stays, with warning 1508 if the names differ.  `kind` is an
// a_section_specification_kind; returns whether the entity is in the section now.
bool set_variable_section_specification(a_variable *variable, unsigned char kind, const char *name,
                                        a_source_position position);
bool set_routine_section_specification(a_routine *routine, unsigned char kind, const char *name,
                                       a_source_position position);
// A new or newly defined entity goes where the SET_ pragma in force says; warning 1508, at error_position,
// if a pragma has placed it elsewhere.
void apply_variable_block_section_specification(a_variable *variable);
void apply_routine_block_section_specification(a_routine *routine);

void sections_one_time_init();
void sections_trans_unit_init();

//---------------------------------------------------------------------------------------------
// Object files (COFF).  One is open at a time.

enum a_load_error {
  load_ok = 0,
  load_read_error = 1, // can't be opened, positioned or read
  load_bad_format = 2,
  load_out_of_memory = 3,
  load_no_section = 4,
};
extern int load_err;     // why the last call failed, an a_load_error
extern size_t sect_size; // bytes in the section read last

// Opens the file and reads its headers; false and load_err after a failure, and nothing is open then.
bool coff_open(const char *name);
// The contents of the first section of that name in a block of malloc, which the caller frees; null and
// load_err if there is none or it can't be read.  A block of an empty section has one byte.
unsigned char *coff_sect_data(const char *section_name);
void coff_close();
