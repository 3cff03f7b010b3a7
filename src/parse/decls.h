// decls.h - declarations: the meaning of each declared name, type names, and the tests that tell a
// declaration from an expression.
#pragma once
#include <cstdint>

#include "errors/error.h"
#include "parse/declarator.h"

enum an_id_linkage_kind : unsigned char { idl_none, idl_internal, idl_external };

// Flags of record_symbol_declaration and decl_variable.
enum a_record_declaration_flag : uint32_t {
  rdf_declaration = 0x1,
  rdf_definition = 0x2,
  rdf_tentative = 0x200,       // a C definition at file scope with no initializer
  rdf_initialized = 0x800,     // has an initializer or needs default construction
  rdf_is_initialized_definition = 0x803,
  rdf_implicit = 0x1000,       // decl_routine: declared by a call
};

// Options of is_decl_start, is_type_start and is_decl_not_expr.
enum a_decl_start_option : uint32_t {
  dst_parenthesized_type = 0x1,
  dst_parameter = 0x2,
  dst_abstract_declarator = 0x4,
  dst_cast = 0x20,
  dst_template = 0x40,
  dst_template_argument = 0x80,
};

// --- declarations -------------------------------------------------------------------------------

// One declaration at file, namespace or block level, or (with param_ids) of a K&R parameter.  Ends
// behind the `;` or the function body.
void declaration(bool in_class_free_top, bool parameter_decls, bool top_level, bool after_extension,
                 a_func_info_block *param_ids, a_source_range *specifiers_range);
// A declaration in a block.  `is_for_init`: the first clause of a `for`.
void local_declaration(bool is_for_init, bool after_extension = false);
// C++: a declaration as the condition of a statement; returns its variable's symbol.
a_symbol *condition_declaration();
void handler_declaration(a_handler *handler, a_source_position *position, bool flag);

// The declared name becomes a variable (or the one declared before).  `flags` are rdf_ bits,
// *linkage gets the linkage, *extern_symbol the name-space-5 symbol if there is one.  Returns
// through state->symbol and locator->symbol.
void decl_variable(a_symbol_locator *locator, a_decl_parse_state *state, uint32_t flags,
                   an_id_linkage_kind *linkage, a_symbol **extern_symbol,
                   a_decl_pos_block *pos_block);
// The same for a function.  rdf_implicit: declared by a call in C.
void decl_routine(a_symbol_locator *locator, a_decl_parse_state *state,
                  a_func_info_block *func_info, uint32_t flags, an_id_linkage_kind *linkage,
                  a_symbol **extern_symbol, a_decl_pos_block *pos_block);
void decl_typedef(a_symbol_locator *locator, a_decl_parse_state *state, a_type *type,
                  a_decl_pos_block *pos_block);
// Declares `locator` as an external function returning int, for a call in C.
a_symbol *declare_implicit_routine(a_symbol_locator *locator);

// Merges a new type into a declared routine; returns false (with a message) when they don't agree.
bool reconcile_routine_types(a_routine *routine, a_type *new_type, bool is_definition,
                             bool in_same_file_scope, a_decl_parse_state *state);
bool reconcile_external_symbol_types(a_symbol *symbol, a_source_position *position, a_type *type,
                                     an_error_severity severity);
bool reconcile_static_data_member_types(a_symbol *symbol, a_type *type,
                                        a_source_position *position);
void check_main_function(a_func_info_block *func_info, a_type *type, a_storage_class *storage,
                         bool *is_inline, a_source_position *position);

void static_assert_declaration(bool in_class);
// `in_block` makes a statement, otherwise an iek_asm_entry of the file scope.
void asm_declaration(bool in_block, bool flag, an_attribute **attributes);
void scan_gnu_asm_name(a_decl_parse_state *state);
void alias_declaration(a_decl_parse_state *state, a_source_position *position);
a_using_decl *make_using_decl(a_symbol *symbol, a_source_position *position, bool flag);
void make_using_directive(a_namespace *space, int depth, a_source_position *position, bool flag,
                          an_attribute *attributes);

// --- type names ---------------------------------------------------------------------------------

// Reads a type name (specifiers and an abstract declarator) into state->declared_type.
void type_name_full(a_decl_parse_state *state);
void type_name(a_type **type);
void new_type_name(a_decl_parse_state *state, bool flag);
// The first bound of the array that new_type_name read, when it isn't constant; else null.
an_expr_node *take_bound_of_new();
a_type *scan_type_for_sizeof(bool flag);
a_type *scan_type_for_cast(bool flag, bool *defines_type, bool *is_class_definition);
a_type *scan_template_type_argument();
a_type *simple_type_specifier_sequence();
void scan_conversion_operator(a_source_position *position, bool flag, a_type *parent,
                              a_type **type);

// --- tests on tokens ----------------------------------------------------------------------------

// The type symbol that the current identifier (or `::` name) stands for, null if it isn't a type.
a_symbol *curr_type_symbol();
bool is_type_start(uint32_t options);
bool is_decl_start(uint32_t options);
bool is_decl_not_expr(uint32_t options);
bool prescan_and_find_declarator(a_token_cache *cache, bool *flag);

// --- checks shared with other modules -----------------------------------------------------------

// The type specifier was left out: decides implicit int by mode.  Returns true when int stands;
// with `report` off nothing is issued.
bool report_missing_type_specifier(a_source_position *position, a_type **type, bool is_function,
                                   bool is_parameter, bool is_member, bool report);
// Arrays and functions decay; void and bad types get their message and become the error type.
void check_and_adjust_parameter_type(a_type **type, a_source_position *position);
// C++: the parameter types, the ellipsis included, are the same but for top-level qualifiers; so are
// the qualifiers of `this`.
bool same_parameter_types(a_type *a, a_type *b);
bool this_param_types_correspond(a_type *a, a_type *b);
// The function with the parameter types of `type` in an overload set, or the single function `symbol`
// if it has them (the using-declaration's projection for one that it brought in); null if there is none.
a_symbol *find_function_of_type(a_symbol *symbol, a_type *type);
// 313: the two differ in the return type alone.  True after the message.
bool conflicts_with_previous_function_decl(a_type *new_type, a_symbol *old_symbol,
                                           a_source_position *position);
bool check_operator_function_params(a_type *type, a_type *class_type, a_symbol_locator *locator);
void check_exception_specification(a_type *new_type, a_symbol *old_symbol,
                                   a_source_position *position, bool is_redeclaration);
void check_use_of_auto_type(a_decl_parse_state *state);
void check_constituent_types_have_linkage(a_symbol *symbol, a_source_position *position, bool flag);
void check_deduced_auto_type(a_decl_parse_state *state);
void f_check_pending_qualifiers_used(a_decl_parse_state *state);
void check_type_definition_in_type_name(a_decl_parse_state *state);

void update_dll_info_for_variable(a_variable *variable, a_decl_parse_state *state);
void update_dll_info_for_routine(a_routine *routine, a_decl_parse_state *state);
void update_variable_decl_modifiers(a_decl_parse_state *state);
void update_routine_decl_modifiers(a_routine *routine, a_decl_parse_state *state,
                                   a_source_position *position);
void attach_decl_attributes(a_decl_parse_state *state, bool is_redeclaration);
void attach_param_attributes(a_decl_parse_state *state, a_param_type *param);

// --- default arguments (C++) --------------------------------------------------------------------

struct a_def_arg_expr_fixup {
  a_def_arg_expr_fixup *next;
  a_token_cache *token_cache;
  a_param_type *param_type;
  bool is_template : 1;
};

void prescan_default_arg_expr(a_token_cache *cache, bool is_member);
void prescan_default_function_arg_expr(a_param_type *param, a_def_arg_expr_fixup **fixups);
void delayed_scan_of_default_arg_expr(a_param_type *param, a_symbol *symbol,
                                      bool check_later_params);
a_def_arg_expr_fixup *copy_def_arg_expr_fixup_list(a_def_arg_expr_fixup *list);
void free_def_arg_expr_fixup(a_def_arg_expr_fixup *fixup);

// --- life cycle ---------------------------------------------------------------------------------

void decls_one_time_init();
void decls_init();
void decls_trans_unit_init();
