// lower_name.h - external names of C++ entities: the IA-64 C++ ABI's mangling, with forms of our own
// for what that ABI doesn't have.
// Rule:    internal_name gets the mangled name, name stays the source name; what has been mangled is
//          never mangled again.  Nothing here issues a diagnostic.
// Entry:   do_all_name_mangling for a unit, mangle_* for what lowering makes.
#pragma once
#include <cstddef>
#include <cstdint>

#include "il/il_enums.h"
#include "il/il_fwd.h"

// Longest name that the tools behind us take; 0: no limit.
extern size_t max_mangled_name_length;
// Names are cut by do_final_name_mangling, not before.
extern bool final_name_mangling_needed;

// ---- A unit ----

// Names for all types, namespaces, routines, variables and constants of the unit in force.
// `without_module_id`: the id isn't known, and names that need it are left for later.
void do_all_name_mangling(bool without_module_id);
void do_type_name_mangling();
// Cuts what was left too long.
void do_final_name_mangling();
// The members of one scope that aren't types, and those of the classes in it.
void do_scope_other_name_mangling(a_scope *scope);
// Names for the classes of a function and their members, before lowering takes them out of it.
void mangle_local_types(a_scope *function_scope);

// ---- Entities ----

void mangle_function_name(a_routine *routine);
// The name without storing it where it isn't yet; the text lasts until the next name.
const char *get_mangled_function_name(a_routine *routine);
// `with_complete_digit`: of a constructor's or destructor's complete entry.  `externalize`: with the
// module id.  `digit_place`, unless null, gets the place of the entry's digit, 0 for none.
const char *get_mangled_function_name_full(a_routine *routine, bool with_complete_digit,
                                           bool externalize, size_t *digit_place);
const char *get_mangled_member_variable_name(a_variable *variable);
void mangle_member_constant_name(a_constant *constant);
// The name of `routine` with the digit of the alternate's kind: 1 complete, 2 base, 3 deleting.
void mangle_alternate_entry_point_name(a_routine *alternate, a_routine *routine);
// A local type (iek_type) or static variable (iek_variable) that moves to the file scope; `scope` is
// the function's.  `truncate`: a name too long is cut now.
void mangle_promoted_entity_name(void *entity, an_il_entry_kind kind, bool truncate,
                                 a_routine *routine, a_scope *scope);
// An entity of internal linkage (a_variable or a_routine) that becomes external.
void externalize_mangled_name(void *entity, bool is_variable);

// How a thunk changes a pointer on its way; a vcall index of 0: there is none.
struct a_pointer_adjustment {
  int64_t delta;
  int64_t vcall_index;
};
struct a_thunk_description {
  a_routine *target;
  a_pointer_adjustment this_adjustment;
  bool is_covariant;
  a_pointer_adjustment result_adjustment;
};
void mangle_wrapper_name(a_routine *thunk, const a_thunk_description *description);

// ---- Names of what lowering makes; the text is in the file-scope region ----

// Without "_Z".
const char *mangled_class_name(a_type *class_type);
void mangle_subobject_class_name(a_type *class_type, a_type *subobject_type);
// The table for `base` within the class, or of its own (null); `construction_base`: while that base
// is constructed.
const char *mangled_vtbl_name(a_type *class_type, a_base_class *base,
                              a_base_class *construction_base);
const char *mangled_virtual_table_table_name(a_type *class_type);
const char *mangled_typeinfo_name(a_type *type);
// The text that stands in the information, and the name of the variable that holds it.
const char *mangled_typeinfo_string(a_type *type);
const char *mangled_typeinfo_string_name(a_type *type);

// ---- Tests ----

// An entity without linkage gets into the routine's name through a template argument.
bool routine_contains_an_individuated_entity(a_routine *routine);
bool exception_specification_contains_an_individuated_entity(a_type *type);

void name_lower_one_time_init();
void name_lower_init();
