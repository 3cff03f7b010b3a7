// decls_private.h - what the files of decls share with each other and with nobody else.
#pragma once
#include "parse/decls.h"

// How one declarator of an object or function is to be taken; filled step by step.
struct a_decl_decision {
  a_symbol_locator *locator;
  a_decl_parse_state *state;
  a_symbol *prior_symbol;         // the declaration in the same scope
  a_symbol *prior_extern_symbol;  // of name space 5: a block-scope extern declaration somewhere
  a_symbol *overload_head;        // C++: functions of the name with other parameter types
  a_symbol *visible_symbol;       // block-scope extern: the visible declaration with linkage
  int lookup_depth;               // scope whose entities match, -1 for none
  a_storage_class storage_class;
  a_func_info_block *routine;     // null for a variable
  a_type *type;
  bool is_definition : 1;
  bool is_tentative : 1;
  bool in_class : 1;
  bool at_block_level : 1;
  bool enclosing_function_member : 1;
  bool in_implicit_extern_c : 1;
  bool has_explicit_linkage : 1;
  bool is_implicit : 1;           // a function declared by a call
  bool is_qualified : 1;          // C++: declared by a qualified name
  bool is_unusable : 1;           // the qualified name means nothing: reported
  an_id_linkage_kind linkage;
  a_name_linkage_kind name_linkage;
};

// decls_linkage.cpp
void init_decision(a_decl_decision *decision, a_symbol_locator *locator, a_decl_parse_state *state,
                   a_func_info_block *func_info, uint32_t flags);
void find_storage_and_linkage(a_decl_decision *decision);
// The declaration of the name, in whatever scope, that came before this one; or null.
a_symbol *earlier_declaration(const a_decl_decision *decision);
void set_name_linkage(a_decl_decision *decision, a_symbol *symbol,
                      a_source_correspondence *corresp);
// The type of the entity that a symbol with linkage stands for.
a_type *type_of_linked_symbol(a_symbol *symbol);
void set_type_of_linked_symbol(a_symbol *symbol, a_type *type);
bool symbol_is_object_or_routine(const a_symbol *symbol);
// `visibility` of an external entity that has none takes the default that a pragma set.
unsigned visibility_with_default(unsigned visibility, const a_source_correspondence *corresp);
// An asm name of the declarator for a variable or routine; 1882, 1586.
void set_asm_name(a_decl_parse_state *state, const char **asm_name, bool was_defined);

// decls_overload.cpp
// The member of an overload set (or the function) that a C++ declaration with the decision's type
// redeclares; null for a new function.  Symbols of other kinds come back as they are.  340 for a
// second function with C linkage.
a_symbol *prior_among_overloads(a_decl_decision *decision);
// What the qualified name at hand was declared as: sets prior_symbol, and the `this` class of the
// decision's type.  False, with a message, where the scope has no such member (284, 136, 300, 745, 148,
// 248, 71); 553 and 758 for a wrong place.
bool find_prior_of_qualified_name(a_decl_decision *decision);

// decls_object.cpp: a declarator that isn't a function or typedef; the current token is behind it.
void object_declaration(a_symbol_locator *locator, a_decl_parse_state *state, bool is_last,
                        a_decl_pos_block *pos_block);

// decls_routine.cpp: a function declarator.  True when a body followed, which ends the declaration.
bool routine_declaration(a_symbol_locator *locator, a_decl_parse_state *state,
                         a_func_info_block *func_info, bool body_allowed,
                         a_decl_pos_block *pos_block);

// decls_special.cpp
bool linkage_specification();
bool namespace_or_using_declaration(an_attribute *attributes);

