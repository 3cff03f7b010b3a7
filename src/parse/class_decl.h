// class_decl.h - class, struct, union: heads, bodies, members; what waits for the end of the outermost
// class, and the members that the compiler declares itself.
#pragma once
#include <cstdint>

#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"
#include "lex/token_cache.h"
#include "parse/decl_spec.h"

struct a_def_arg_expr_fixup;

// What is known of a class while its body is read.
struct a_class_scan_state {
  a_type *class_type;
  unsigned current_access : 2;
  bool not_aggregate : 1;
  bool not_pod : 1;
  bool needs_constructor_for_member : 1;
  bool has_flexible_array_member : 1;
  bool needs_default_constructor : 1;
  bool field_has_destructor : 1;
  bool base_has_destructor : 1;
  bool any_named_member : 1;
  a_field *last_field;
  a_source_position flexible_array_position;
};

// A member function (or a friend defined in the class) whose body and default arguments are read when
// the outermost class is complete.  In region 0, with a free list.
struct a_routine_fixup {
  a_routine_fixup *next;
  a_type *class_type;
  a_symbol *symbol;                         // of the function; null after an error
  a_func_info_block func_info;              // owns the list of parameter names
  a_token_cache body_cache;                 // initializers and handlers included; empty: no body
  a_def_arg_expr_fixup *default_arg_fixups; // in the order of the parameters
  bool has_body : 1;
};
// The one of the member that is being read, or null; writer: class_member_decl.cpp.
extern a_routine_fixup *curr_routine_fixup;

// Reads a class specifier whose class, struct or union keyword is the current token: head, and body
// if there is one.  `options` are those of decl_specifiers.  Returns the type, never null; sets
// sf_defines_type and state->tag_locator.
a_type *class_specifier(uint32_t options, a_decl_parse_state *state, a_decl_pos_block *pos_block);

// Finds or makes the type of a tag.  `kind` is sk_class_or_struct_tag, sk_union_tag or sk_enum_tag;
// `type_kind` the kind for a new class.  is_definition: a body (or enum list) follows; is_alone: a
// `;` follows, which redeclares the tag in the inner scope (C99 6.7.2.3p7).
a_type *find_or_enter_tag(a_symbol_locator *locator, unsigned char kind, a_type_kind type_kind,
                          bool is_definition, bool is_alone, a_decl_parse_state *state);

// Reads base clause and body at the current `:` or `{`; false when no body was there.
bool scan_class_definition(a_type *class_type, a_decl_parse_state *state,
                           a_decl_pos_block *pos_block);
// Promotes the members of an anonymous union or struct into the scope that holds it.
void check_anonymous_union_symbols(a_symbol *symbol, a_type *type, bool in_class);
a_symbol *make_anonymous_parent_object_symbol(a_variable *variable, a_source_position *position);

// Behind a class specifier: if the class was the outermost one, reads the default arguments and bodies
// that its members and those of the classes inside it left for now.  A null class only looks whether
// anything waits at the current place.
void process_deferred_class_fixups_and_instantiations(a_type *class_type);
// Reads the default arguments of one class's members.
void default_argument_fixup_for_class(a_type *class_type);

// `= default` or `= delete` of func_info for a declared function; drops the form after an error (2043,
// 2044, 2048, 2075, 2076, 2077, 2080, 2081, 2090).
void check_defaulted_or_deleted_function(a_decl_parse_state *state, a_func_info_block *func_info,
                                         a_symbol *symbol, a_source_position *position);
// Whether the operator= (one routine or any of an overload set) copies an object of its class.
// *takes_const: some form takes its operand by value or as const; *user_provided: some form was written.
bool is_assignment_operator_for_copy(a_symbol *symbol, bool *takes_const, bool *user_provided);

// operator= of a class whose parameter is a reference to the class with these qualifiers.
void declare_implicit_copy_assignment(a_class_scan_state *scan, bool is_deleted,
                                      unsigned qualifiers);

// The return type of a constructor, destructor or conversion function, where the declarator has its name:
// void, or the type converted to (1017, 1018, 454 where one was written; 409).
void set_return_type_of_special_member(a_decl_parse_state *state, const a_symbol_locator *locator);

// An unnamed class or enum takes the name of the typedef that declares it.
void give_typedef_name_to_tag(a_type *type, a_symbol_locator *locator);

// The record in base->derived_class of the subobject that is `inner` in the class of the base.
a_base_class *corresp_base_class(a_base_class *base, a_base_class *inner);
// The path through which a base is reached where several lead to it: the one with the widest access.
a_derivation_step *preferred_virtual_derivation_of(a_base_class *base);

// Which function of a complete class stands for `routine`, a virtual function of the class of its base
// `base`: the routine itself when nothing overrides it.
a_routine *final_overrider_of(a_base_class *base, a_routine *routine);
// The pure virtual functions that make a class abstract, one after the other: the first one, or the one
// behind `behind`; null at the end.
a_routine *pure_function_of_class(a_type *class_type, a_routine *behind);

// The class with the keyword's flags: supplement of the class's symbol, null for a class without one.
a_class_symbol_supplement *class_symbol_supplement_of(a_type *class_type);

void class_decl_init();
