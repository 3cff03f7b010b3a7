// declarator.h - declarators: what stands around one name, and the type that it builds.
#pragma once
#include <cstdint>

#include "parse/decl_spec.h"

// Option bits of declarator.
enum a_declarator_option : uint32_t {
  dop_name_ok = 0x1,                 // a declarator with a name may appear
  dop_abstract_ok = 0x2,             // the name may be left out
  dop_param_id_list_ok = 0x4,        // a K&R parameter list may appear (a definition can follow)
  dop_reactivate_scopes = 0x8,       // a qualified name opens its scope
  dop_option_copy_1 = 0x10,
  dop_option_copy_2 = 0x20,
  dop_typedef = 0x40,
  dop_friend = 0x80,
  dop_may_be_qualified = 0x100,
  dop_cplusplus = 0x200,
  dop_member = 0x400,
  dop_parameter = 0x800,
  dop_vla_ok = 0x1000,               // nonconstant bounds may appear
  dop_no_function = 0x2000,          // a `(` after the name isn't a parameter list (new-type-id)
  dop_no_array_or_function = 0x4000, // conversion-type-id: pointers only
  dop_nonconstant_first_bound = 0x8000,
  dop_no_specifiers = 0x10000,       // no specifiers came before
  dop_type_name = 0x20000,           // in a type name
};

// Reads one declarator at the current token.  `bottom_type` is the type to which it attaches
// (state->bottom_type when null).  Fills `locator` with the declared name (cleared_locator when
// there is none), state->declared_type with the derived type, `func_info` (may be null) with the
// parameter list of the outermost function declarator.
void declarator(uint32_t options, a_decl_parse_state *state, a_type *bottom_type,
                a_symbol_locator *locator, a_func_info_block *func_info,
                a_decl_pos_block *pos_block);
void scan_lambda_declarator(a_lambda *lambda, a_decl_parse_state *state,
                            a_func_info_block *func_info, a_decl_pos_block *pos_block);

// Reads `*`, `&`, `&&`, `X::*` and their qualifiers; returns the type built on `type`.
a_type *pointer_declarator(a_type *type, a_decl_parse_state *state, bool references_allowed);
// Reads one `[ ]`; *type becomes a new array type without element type.
void array_declarator(a_decl_parse_state *state, a_type **type, uint32_t options, bool is_first);
// Joins a derived type to a chain that is built from the outside in.  Checks the pair (array of
// functions, function returning array, pointer to reference); a bad pair becomes the error type.
void add_to_derived_type_list(a_type *new_type, a_type **first, a_type **last,
                              a_decl_parse_state *state, bool is_pointer);

// Tests the return type of a function declarator; returns it, or the error type after a message.
a_type *check_return_type(a_type *type, a_decl_parse_state *state, a_source_position *position);
void report_bad_return_type_qualifier(a_type *type, a_source_position *position);

// Hides (or shows again) the symbols of the parameters of the last prototype scope.
void make_param_syms_invisible(a_func_info_block *func_info, bool invisible);

bool is_cfront_member_function_typedef(a_type *type, a_type **member_class);

// Adds one parameter to func_info's list; returns the record.
a_param_id *add_to_param_id_list(const a_symbol_locator *locator, a_type *type,
                                 a_source_position *position, a_storage_class storage_class,
                                 a_func_info_block *func_info);

void declarator_init();
