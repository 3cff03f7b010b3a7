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
// Closes the scopes that the declarator's qualified name opened: the caller of declarator() calls it
// once initializer or body are read.
void close_declarator_scopes(a_decl_parse_state *state);
void scan_lambda_declarator(a_lambda *lambda, a_decl_parse_state *state,
                            a_func_info_block *func_info, a_decl_pos_block *pos_block);

// One part of a declarator: a pointer, an array or a function.  Parts are kept in a stack while the
// declarator is read, so that they can be built from the outermost (next to the specifiers' type)
// in.
enum a_declarator_part_kind : unsigned char {
  dpk_pointer,
  dpk_reference,
  dpk_rvalue_reference,
  dpk_ptr_to_member,
  dpk_array,
  dpk_function
};

struct a_declarator_part {
  a_declarator_part *closer;       // the part read before: closer to the name
  a_declarator_part_kind kind;
  unsigned qualifiers;             // of a pointer
  a_type *type;                    // array or routine without its base; class of a ptr to member
  an_attribute *attributes;
  a_source_position position;
  a_source_position restrict_position;
};

// The part around the type built so far: checks the pair (array of functions, function returning
// array, pointer to reference) and returns the new type, or the error type after a message.
a_type *apply_declarator_part(a_declarator_part *part, a_type *base, a_decl_parse_state *state);
// Reads one `[ ]` into a part.  `is_first`: outermost brackets, directly behind the name.
void array_declarator(uint32_t options, a_decl_parse_state *state, bool is_first,
                      a_declarator_part *part);
// Reads a parameter list behind a `(` that is taken already.  func_info is null where the list
// isn't wanted for a definition.
void function_declarator(uint32_t options, a_decl_parse_state *state,
                         a_func_info_block *func_info, a_declarator_part *part);

// Reads `throw ( types )` onto the routine type (C++).
void exception_specification(a_type *routine_type);

// Bounds in a prototype wait for the body: the list that is being collected, see a_vla_fixup.
void add_vla_fixup_entry(a_type *array_type, an_expr_node *bound, a_source_position position);
// Makes `list` the one that takes these records; returns the former one, which the caller puts back.
a_vla_fixup **exchange_vla_fixups(a_vla_fixup **list);

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
