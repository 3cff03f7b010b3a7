// class_private.h - what the files of class_decl share.
#pragma once
#include "parse/class_decl.h"

// class_member.cpp: fields.
// One member declarator of data, at the declarator's `:` or behind it; the locator has no header for an
// unnamed bit-field.
void field_member(a_class_scan_state *scan, a_decl_parse_state *state, a_symbol_locator *locator);
// Specifiers alone, as in `union { int a; };`; reports what declares nothing.
void member_without_declarator(a_class_scan_state *scan, a_decl_parse_state *state);
void record_member(a_decl_parse_state *state, a_symbol *symbol);

// class_member_decl.cpp: one member declaration, up to its `;` (which stays current) or behind a body.
// True when a function's body ended it.
bool scan_member_declaration(a_class_scan_state *scan);

// class_routine.cpp: declares a member function; state->symbol is its symbol, null after an error that
// left none.  `is_implicit`: the compiler declares it.
void decl_member_function(a_class_scan_state *scan, a_decl_parse_state *state,
                          a_symbol_locator *locator, a_func_info_block *func_info,
                          bool is_implicit);
// Appends `symbol` to a list of symbols.
void add_to_symbol_list(a_symbol_list_entry **list, a_symbol *symbol);

// class_static.cpp: a static data member.
void static_member(a_class_scan_state *scan, a_decl_parse_state *state, a_symbol_locator *locator);

// class_deferred.cpp
a_routine_fixup *alloc_routine_fixup(a_type *class_type);
void free_routine_fixup(a_routine_fixup *fixup);
// Stores the body at hand for later; the current token is then the one behind it.
void cache_body(a_routine_fixup *fixup, bool may_have_initializers);
void add_routine_fixup(a_routine_fixup *fixup);
// Around the body of a class: the first behind the push of its scope, the second behind the pop.
void begin_class_being_defined();
void end_class_being_defined(a_type *class_type);

// class_base.cpp
// Reads the bases at the current `:` and builds the tree; true when the body's `{` follows, else 245.
bool scan_base_clause(a_class_scan_state *scan);
// An object of the class can't be left as it is: some default constructor does work.
bool needs_default_constructor_call(const a_class_symbol_supplement *supplement);

// class_facts.cpp: what the class learns of a field.
void note_field_facts(a_class_scan_state *scan, a_field *field);

// implicit_member_form of a synthesized state: what is made, as a sum.
enum : unsigned { imf_member = 1, imf_constructor = 2, imf_trivial_default = 4, imf_destructor = 8 };

// class_implicit.cpp: declares what the class needs of constructors, destructor and assignment.
void declare_implicit_members(a_class_scan_state *scan);

// class_wrapup.cpp
// What a body may not be made of, for the body at `position`: no named member, members without bound.
void check_members(a_class_scan_state *scan, a_source_position position);
// Makes the class complete.
void wrap_up_class(a_class_scan_state *scan);

// class_virtual.cpp
// Whether the function is virtual, what it overrides and with which messages.
void settle_virtual(a_class_scan_state *scan, a_decl_parse_state *state,
                    a_func_info_block *func_info, a_symbol *symbol);
// The virtual function of the class with the routine's name and parameters, other than the routine; null:
// none.
a_routine *overridden_in_class(a_type *class_type, const a_routine *routine);

// class_overriders.cpp: steps of the wrap-up, in their order.
void assign_virtual_function_numbers(a_type *class_type);
void build_overriders(a_type *class_type);
void determine_whether_abstract(a_type *class_type);
void check_hidden_virtual_functions(a_type *class_type);

// class_friend.cpp
// A friend function; state->symbol gets its symbol, null where there is none.
void decl_friend_function(a_class_scan_state *scan, a_decl_parse_state *state,
                          a_symbol_locator *locator, a_func_info_block *func_info);
void decl_friend_class(a_type *type, a_type *class_type, const a_source_position *position);
// `friend class X;` and what isn't one.
void friend_without_declarator(a_class_scan_state *scan, a_decl_parse_state *state);
