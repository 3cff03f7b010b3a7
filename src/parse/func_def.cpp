// func_def.cpp - definitions of functions: from the declarator through the body.
// Rule:    the parameters and the outermost block of a function share one scope (C99 6.2.1p4).
// Entry:   function_definition, scan_function_body, check_function_return_type.
// See:     C99 6.9.1; declarations of an identifier list are marked "K&R".
#include "parse/func_def.h"

#include "driver/flags.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_hooks.h"
#include "il/il_walk.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/source_input.h"
#include "parse/attribute.h"
#include "parse/decl_inits.h"
#include "parse/decls.h"
#include "parse/exprutil.h"
#include "parse/scope_stk.h"
#include "parse/statements_parts.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// Return types

static bool is_incomplete_class(a_type *type)
{
  return is_class_struct_union_type(type) && is_incomplete_type(type);
}

void check_function_return_type(a_type *type, a_source_position *position, bool is_declaration,
                                a_routine *routine)
{
  if (is_error_type(type) || is_void_type(type)) {
    if (is_void_type(type) && get_type_qualifiers(type) != 0 && !is_declaration &&
        strict_ansi_mode && C_dialect != 2) {
      pos_diagnostic(strict_ansi_discretionary_severity, ec_type_qualifier_on_void_return_type,
                     *position);
    }
    return;
  }
  if (is_declaration || !is_incomplete_type(type)) return;
  a_symbol *symbol = routine != nullptr ? routine->source_corresp.assoc_symbol : nullptr;
  if (!is_incomplete_class(type) && !is_enum_type(type)) {
    pos_error(ec_bad_function_return_type, *position);
  } else if (symbol != nullptr) {
    pos_syty_error(ec_incomplete_function_return_type, *position, symbol, type);
  } else {
    pos_ty_error(ec_incomplete_return_type, *position, type);
  }
}

//---------------------------------------------------------------------------------------------
// K&R parameters

static void default_undeclared_parameters(a_func_info_block *func_info)
{
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next) {
    if (id->declared) continue;
    id->type = integer_type(ik_int);
    if (check_misra_c_2004) {
      pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_2, id->position);
    }
    if (strict_ansi_mode && c99_mode && id->locator.header != nullptr) {
      pos_st_diagnostic(strict_ansi_discretionary_severity, ec_undeclared_parameter, id->position,
                        id->locator.header->identifier);
    }
  }
}

// The promoted types are what a call passes (C99 6.5.2.2p6).
static void build_promoted_parameter_list(a_type *routine_type, a_func_info_block *func_info)
{
  a_param_type **link = &routine_supplement_of(routine_type)->param_types;
  unsigned number = 0;
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next) {
    a_param_type *param =
        alloc_param_type(default_argument_promotion(make_unqualified_type(id->type)));
    param->orig_type = id->type;
    if (id->locator.header != nullptr) param->name = id->locator.header->identifier;
    param->position = id->position;
    param->declared_register = id->storage_class == sc_register;
    param->number = ++number;
    *link = param;
    link = &param->next;
    id->param_type = param;
  }
}

static void report_repeated_names(a_func_info_block *func_info)
{
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next) {
    if (id->locator.header == nullptr || find_earlier_param_id(func_info, id) == nullptr) continue;
    pos_error(ec_dupl_param_name, id->locator.position);
    id->locator.header = nullptr;
    id->locator.is_qualified = true;
  }
}

// The declarations between `)` and `{`.
static void old_style_parameters(a_decl_parse_state *state, a_func_info_block *func_info)
{
  a_type *routine_type = skip_typerefs(state->declared_type);
  report_repeated_names(func_info);
  push_scope(sck_function_prototype, -1, routine_type, nullptr);
  a_vla_fixup **outer_fixups = exchange_vla_fixups(&func_info->vla_fixups);
  add_stop_token(tok_lbrace);
  while (curr_token != tok_lbrace && curr_token != tok_end_of_source && is_decl_start(0)) {
    declaration(false, true, false, false, func_info, nullptr);
  }
  remove_stop_token(tok_lbrace);
  exchange_vla_fixups(outer_fixups);
  a_scope_stack_entry *entry = top_scope();
  func_info->prototype_symbols = block_of_scope_entry(entry)->symbols;
  func_info->prototype_scope = entry->il_scope;
  pop_scope();
  default_undeclared_parameters(func_info);
  routine_supplement_of(routine_type)->is_old_style_definition = true;
  build_promoted_parameter_list(routine_type, func_info);
  process_curr_token_pragmas();
}

//---------------------------------------------------------------------------------------------
// Parameters of the body

// Tags and enumerators that the parameter list declared are known in the body.
static void reenter_prototype_symbols(a_func_info_block *func_info)
{
  a_symbol *next;
  for (a_symbol *symbol = func_info->prototype_symbols; symbol != nullptr; symbol = next) {
    next = symbol->next_in_scope;
    if (!is_tag_symbol(symbol) && symbol->kind != sk_constant && symbol->kind != sk_type) continue;
    if (symbol->not_entered) continue;
    reenter_symbol(symbol, depth_scope_stack, true);
  }
}

static void check_parameter_type(a_param_id *id)
{
  a_type *type = id->type;
  if (is_error_type(type) || is_template_dependent_type(type)) return;
  if (is_incomplete_type(type)) {
    pos_error(ec_incomplete_type_not_allowed, id->position);
    id->type = error_type();
  } else if (id->has_unspecified_bound || is_or_contains_vla_type_with_unspecified_bound(type)) {
    pos_error(ec_vla_with_unspecified_bound_not_allowed, id->position);
    id->type = error_type();
  }
}

static a_symbol *enter_parameter(a_param_id *id, a_variable *variable)
{
  a_symbol *symbol;
  if (id->locator.header != nullptr) {
    a_symbol_locator locator = id->locator;
    locator.symbol = nullptr;
    locator.position = id->position;
    if (check_misra_c_2004) misra_hooks.check_for_misra_20_2(&locator);
    symbol = enter_local_symbol(sk_variable, &locator);
  } else {
    // C99 6.9.1p5; the declaration of an erroneous name has had its message.
    if (C_dialect != 2 && !is_error_type(id->type) && !id->locator.is_qualified) {
      pos_diagnostic(gcc_mode ? es_warning : es_error, ec_all_proto_params_must_be_named,
                     id->position);
    }
    symbol = make_unnamed_symbol(sk_variable, &id->position);
    symbol->scope_number = top_scope()->number;
  }
  symbol->is_parameter = true;
  variable_of_symbol(symbol) = variable;
  id->symbol = symbol;
  return symbol;
}

static void make_parameter(a_param_id *id, a_param_type *param_type)
{
  check_parameter_type(id);
  a_variable *variable = alloc_variable(id->storage_class == sc_register ? sc_register : sc_auto);
  variable->type = f_make_qualified_type(id->type, id->qualifiers);
  variable->is_parameter = true;
  variable->is_definition = true;
  variable->declared_register = id->storage_class == sc_register;
  variable->param_type = param_type;
  a_symbol *symbol = enter_parameter(id, variable);
  set_source_corresp(&variable->source_corresp, symbol);
  variable->source_corresp.is_local = true;
  if (id->locator.header == nullptr) variable->source_corresp.name = nullptr;
  add_to_parameters_list(variable, depth_scope_stack);
  record_symbol_declaration(rdf_declaration | rdf_definition, symbol, &id->position,
                            id->decl_position_supplement);
  mark_variable_value_set(symbol);
  if (id->attributes != nullptr) attach_attributes(id->attributes, variable, iek_variable, nullptr);
  if (id->param_type != nullptr && id->param_type->is_unused) variable->is_unused = true;
}

static void make_parameters(a_routine *routine, a_func_info_block *func_info)
{
  // The function's type is the composite one: its records are not those of the declarator.
  a_param_type *param_type = param_types_of(routine->type);
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next) {
    make_parameter(id, param_type);
    if (param_type != nullptr) param_type = param_type->next;
  }
}

//---------------------------------------------------------------------------------------------
// Bounds that the parameter list left to the body

static a_type *wanted_array_type;

static int test_wanted_array(a_type *type, bool *)
{
  return type == wanted_array_type;
}

static bool array_is_part_of_parameter(a_func_info_block *func_info, a_type *array_type)
{
  wanted_array_type = array_type;
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next) {
    if (traverse_type_tree(id->type, test_wanted_array, two_return_types) != 0) return true;
  }
  return false;
}

static void replace_param_ref(an_expr_node *expr, an_expr_or_stmt_traversal_block *block)
{
  if (expr->kind != enk_param_ref || param_ref_of(expr).levels_up != 0) return;
  a_func_info_block *func_info = (a_func_info_block *)block->data;
  int position = param_ref_of(expr).position;
  a_param_id *id = func_info->param_ids;
  while (id != nullptr && --position > 0)
    id = id->next;
  if (id == nullptr || id->symbol == nullptr) return;
  a_variable *variable = variable_of_symbol(id->symbol);
  bool is_lvalue = expr->is_lvalue;
  overwrite_node(expr, is_lvalue ? var_lvalue_expr(variable) : var_rvalue_expr(variable));
  id->symbol->referenced = id->symbol->address_or_read = true;
  mark_variable_referenced(variable);
}

static bool some_bound_has_side_effects(const a_func_info_block *func_info)
{
  for (a_vla_fixup *fixup = func_info->vla_fixups; fixup != nullptr; fixup = fixup->next) {
    if (fixup->bound != nullptr && node_has_side_effects(fixup->bound)) return true;
  }
  return false;
}

// A bound with side effects is evaluated once, in the body, and can't stand in the declarator too:
// what is passed becomes a parameter without bounds, and the one of the source a variable of the
// body that starts with its value.
static void move_parameter_into_body(a_param_id *id)
{
  a_variable *parameter = variable_of_symbol(id->symbol);
  a_variable *passed = alloc_variable(sc_auto);
  passed->type = type_without_variable_bounds(make_unqualified_type(parameter->type));
  passed->is_parameter = passed->is_definition = true;
  passed->param_type = parameter->param_type;
  passed->source_corresp.is_local = passed->source_corresp.is_nameless = true;
  passed->source_corresp.needed = true;
  set_parent_scope(&passed->source_corresp, iek_variable, top_scope()->il_scope);
  a_variable **link = &top_scope()->il_scope->parameters;
  while (*link != parameter)
    link = &(*link)->next;
  passed->next = parameter->next;
  *link = passed;
  parameter->is_parameter = false;
  parameter->storage_class = sc_auto;
  add_to_variables_list(parameter, depth_scope_stack);
  a_statement *declaration = add_statement_at_stmt_pos(stmk_type_or_var_decl, &id->position);
  decl_of(declaration).variable = parameter;
  an_expr_node *target = var_lvalue_expr(parameter);
  target->type = make_unqualified_type(target->type);
  link_statement(make_assignment_statement(target, var_rvalue_expr(passed)));
}

static void move_variable_parameters_into_body(a_func_info_block *func_info)
{
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next) {
    if (is_variably_modified_type(id->type) && !is_error_type(id->type)) {
      move_parameter_into_body(id);
    }
  }
}

// A dimension of a parameter's type is evaluated on entry (C99 6.7.5.2p5, 6.9.1p10).
static void evaluate_parameter_dimensions(a_func_info_block *func_info)
{
  for (a_vla_fixup *fixup = func_info->vla_fixups; fixup != nullptr; fixup = fixup->next) {
    bool is_part = array_is_part_of_parameter(func_info, fixup->array_type);
    if (fixup->bound == nullptr || (!is_part && !node_has_side_effects(fixup->bound))) continue;
    an_expr_node *bound = copy_expr_tree(fixup->bound, true);
    an_expr_or_stmt_traversal_block block;
    clear_expr_or_stmt_traversal_block(&block);
    block.expr_callback = replace_param_ref;
    block.data = func_info;
    traverse_expr(bound, &block);
    a_vla_dimension *declared =
        make_vla_dimension(fixup->array_type, bound, true, &fixup->position);
    // The body may change what the bound was made of: the size is kept.
    declared->same_dimension =
        make_vla_dimension(nullptr, copy_expr_tree(bound, true), false, &fixup->position);
    set_vla_size_statement(declared->same_dimension, &fixup->position);
  }
}

static a_func_info_block *func_info_of_body;

// Called by the outermost block when its statements begin.
void start_of_function_block()
{
  if (func_info_of_body == nullptr) return;
  a_func_info_block *func_info = func_info_of_body;
  func_info_of_body = nullptr;
  if (func_info->vla_fixups == nullptr) return;
  evaluate_parameter_dimensions(func_info);
  if (some_bound_has_side_effects(func_info)) move_variable_parameters_into_body(func_info);
}

//---------------------------------------------------------------------------------------------
// The body

static void finish_body(bool is_at_file_level)
{
  // The scope ends before the token behind the brace is read: directives there belong to the file.
  bool has_brace = curr_token == tok_rbrace;
  pop_scope();
  if (!has_brace) return;
  next_token_is_top_level_decl_start = is_at_file_level;
  get_token();
  next_token_is_top_level_decl_start = false;
}

// C++: the object of a non-static member function.
void make_this_parameter(a_routine *routine)
{
  a_type *type = f_implicit_this_param_type_of(routine->type);
  if (C_dialect != 2 || type == nullptr) return;
  a_variable *variable = alloc_variable(sc_auto);
  variable->type = f_make_qualified_type(type, tq_const);
  variable->is_parameter = variable->is_this_parameter = true;
  variable->is_definition = variable->is_compiler_generated = true;
  variable->source_corresp.is_local = true;
  variable->source_corresp.decl_position = routine->source_corresp.decl_position;
  a_scope *scope = top_scope()->il_scope;
  set_parent_scope(&variable->source_corresp, iek_variable, scope);
  scope->this_param = variable;
}

// `: a(1), b(2)` in front of a constructor's body, and what the source doesn't write of it; the end of a
// destructor.
static void special_member_prologue(a_routine *routine)
{
  if (routine->special_kind == sfk_constructor) {
    ctor_initializer(routine, curr_token == tok_colon);
  } else if (routine->special_kind == sfk_destructor) {
    dtor_initializer(routine);
  }
}

void scan_function_body(a_routine *routine, a_func_info_block *func_info, unsigned flags)
{
  bool is_at_file_level = decl_scope_level == 0 && !(flags & fbf_deferred);
  check_function_return_type(return_type_of(routine->type), &routine->source_corresp.decl_position,
                             false, routine);
  a_struct_stmt_stack_state stack_state;
  push_scope(sck_function, -1, routine->type, routine);
  routine->fp_contract_state = (unsigned char)curr_fp_contract_state;
  routine->fenv_access_state = (unsigned char)curr_fenv_access_state;
  routine->cx_limited_range_state = (unsigned char)curr_cx_limited_range_state;
  if (flags & fbf_discard) top_scope()->eliminate_body = true;
  // A class may stand in an expression; its functions don't belong to that.
  expr_stack = nullptr;
  make_this_parameter(routine);
  new_struct_stmt_stack(&stack_state);
  bool saved_type_was_missing = curr_function_type_was_missing;
  curr_function_type_was_missing = func_info->type_was_missing;
  reenter_prototype_symbols(func_info);
  make_parameters(routine, func_info);
  a_func_info_block *saved_func_info = func_info_of_body;
  func_info_of_body = func_info;
  push_stop_token_stack();
  if (C_dialect == 2) special_member_prologue(routine);
  compound_statement(true, 0, false, false);
  if (!il_hooks.is_empty() && !(flags & fbf_discard)) {
    il_hooks.body_completed(routine, top_scope()->il_scope->assoc_block);
  }
  if (check_misra_c_2004 && !(flags & fbf_discard)) {
    misra_hooks.check_routine_for_misra_violations(routine);
  }
  pop_stop_token_stack();
  func_info_of_body = saved_func_info;
  curr_function_type_was_missing = saved_type_was_missing;
  if (C_dialect == 2) define_needed_generated_routines(true);
  finish_body(is_at_file_level);
  restore_struct_stmt_stack(&stack_state);
}

//---------------------------------------------------------------------------------------------
// Definitions

// C99 6.9.1p2: the function type must be written in the declarator.
static void check_type_from_declarator(a_symbol_locator *locator, a_decl_parse_state *state,
                                       a_func_info_block *func_info)
{
  if (func_info->type_from_declarator) return;
  pos_error(ec_function_type_must_come_from_declarator, locator->position);
  state->declared_type = copy_routine_type_with_param_types(state->declared_type);
  for (a_param_type *param = param_types_of(state->declared_type); param; param = param->next) {
    a_source_position position = locator->position;
    a_param_id *id =
        add_to_param_id_list(&cleared_locator, param->type, &position, sc_unspecified, func_info);
    id->param_type = param;
    id->locator.is_qualified = true;
    id->declared = true;
  }
}

// A routine that takes the body of an erroneous definition.
static a_routine *make_dummy_routine(a_type *type)
{
  a_routine *routine = alloc_routine();
  routine->type = type;
  routine->storage_class = sc_static;
  routine->source_corresp.name_linkage = nlk_none;
  return routine;
}

a_routine *make_routine_for_discarded_body(a_type *class_type, a_func_info_block *func_info)
{
  a_type *type = make_routine_type(error_type());
  for (a_param_id *id = func_info->param_ids; id != nullptr; id = id->next)
    add_param_type(type, alloc_param_type(id->type != nullptr ? id->type : error_type()));
  routine_supplement_of(type)->this_class = class_type;
  return make_dummy_routine(type);
}

static a_routine *routine_to_define(a_decl_parse_state *state, unsigned *flags)
{
  a_symbol *symbol = state->symbol;
  if (symbol != nullptr && is_routine_symbol(symbol) && routine_of_symbol(symbol) != nullptr) {
    a_routine *routine = routine_of_symbol(symbol);
    if (!routine->is_defined && is_function_type(routine->type)) return routine;
  }
  *flags |= fbf_discard;
  return make_dummy_routine(skip_typerefs(state->declared_type));
}

// MISRA 8.5: no definition in a header; 16.1: no variable number of arguments.
static void misra_checks_of_definition(const a_symbol_locator *locator, a_decl_parse_state *state)
{
  a_source_position position = locator->position;
  if (seq_is_in_include_file(position.seq)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_5, position);
  }
  a_type *type = skip_typerefs(state->declared_type);
  if (type->kind == tk_routine && routine_supplement_of(type)->has_ellipsis) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_16_1, position);
  }
}

void function_definition(a_symbol_locator *locator, a_decl_parse_state *decl_state,
                         a_func_info_block *func_info, a_decl_pos_block *pos_block)
{
  if (check_misra_c_2004) misra_checks_of_definition(locator, decl_state);
  check_type_from_declarator(locator, decl_state, func_info);
  bool is_old_style = func_info->is_old_style && C_dialect != 2;
  if (is_old_style) old_style_parameters(decl_state, func_info);
  an_id_linkage_kind linkage = idl_none;
  decl_routine(locator, decl_state, func_info, rdf_declaration | rdf_definition, &linkage, nullptr,
               pos_block);
  unsigned flags = 0;
  a_routine *routine = routine_to_define(decl_state, &flags);
  routine->has_old_style_definition = is_old_style && func_info->is_old_style;
  bool prologue_follows =
      C_dialect == 2 && curr_token == tok_colon && routine->special_kind == sfk_constructor;
  if (curr_token != tok_lbrace && !prologue_follows) {
    syntax_error(ec_exp_lbrace);
    if (curr_token != tok_lbrace) return;
  }
  process_curr_construct_pragmas(decl_state->symbol, nullptr);
  scan_function_body(routine, func_info, flags);
}
