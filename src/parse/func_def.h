// func_def.h - definitions of functions: from the declarator through the body.
#pragma once
#include "il/il_fwd.h"
#include "parse/declarator.h"

// The declarator of a function was read and a body follows (or, in C, the declarations of an identifier
// list).  Declares the function by decl_routine and reads the body; on return the current token is
// the one behind `}`.
void function_definition(a_symbol_locator *locator, a_decl_parse_state *decl_state,
                         a_func_info_block *func_info, a_decl_pos_block *pos_block);
enum a_function_body_flag : unsigned {
  fbf_discard = 0x1,  // the definition was wrong: the body is read and dropped
  fbf_deferred = 0x2  // from the tokens that a class kept: they end in the end-of-source token
};
// A routine that takes such a body; `class_type` (may be null) is the class of its `this`.
a_routine *make_routine_for_discarded_body(a_type *class_type, a_func_info_block *func_info);
// Reads the body (the current token is its `{`) of a declared routine; func_info names its parameters.
void scan_function_body(a_routine *routine, a_func_info_block *func_info, unsigned flags);
// Reports a type that no function may return (98, 870, 916, 411); `routine` may be null.
void check_function_return_type(a_type *type, a_source_position *position, bool is_declaration,
                                a_routine *routine);

// --- Functions that the compiler writes (func_generated.cpp) ---
// Makes the body of an implicit or defaulted special member that has none; does nothing to other routines.
// Issues 399 and what the members' own functions lead to.
void force_definition_of_compiler_generated_routine(a_routine *routine);
// The same, later: such a routine was used.
void generated_routine_is_needed(a_routine *routine);
// Makes the bodies that wait; those of classes local to the open function, or all.
void define_needed_generated_routines(bool local_ones_only);
// The class's table of virtual functions is defined in this unit.
void require_definitions_of_virtual_functions_in_class(a_type *class_type);
void func_generated_init();
// `this` of the function whose scope is the top one.
void make_this_parameter(a_routine *routine);

// The register of an asm name: a code of the table, or register_unrecognized.
inline constexpr int register_unrecognized = 58;
int name_to_register(const char *name);
void extasm_one_time_init();

// The outermost block calls it in front of its first statement: sizes of parameters are evaluated there.
void start_of_function_block();
