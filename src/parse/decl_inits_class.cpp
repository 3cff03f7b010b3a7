// decl_inits_class.cpp - objects of classes: values and constructors' arguments, objects without
// initializer, and where a dynamic initialization is kept.
// Rule:    the initialization of an object at file scope stands on the scope's list, that of a local
//          static one on its function's list of such, that of an automatic one in a statement.
// Entry:   def_initializer, record_dynamic_initialization, scan_class_initializer.
// See:     C++98 8.5, 3.6.2, 6.7, 12.2.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/class_decl.h"
#include "parse/decl_inits_internal.h"
#include "parse/decls.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Lifetimes

void push_init_lifetime(an_init_lifetime *scope)
{
  scope->lifetime = nullptr;
  if (C_dialect != 2) return;
  scope->lifetime = push_object_lifetime(iek_none, nullptr, olk_expression);
}

// The temporary that a reference is bound to, through the steps that lead to a part of it; or null.
static a_dynamic_init *temporary_bound_to(an_expr_node *node)
{
  while (node != nullptr) {
    if (node->kind == enk_temp_init) return dynamic_init_of(node);
    if (node->kind == enk_lifetime_wrapper) {
      node = lifetime_wrapper_of(node).expr;
      continue;
    }
    if (node->kind != enk_operation) return nullptr;
    switch (op_of(node)) {
    case eok_reference_to:
    case eok_address_of:
    case eok_cast:
    case eok_lvalue_cast:
    case eok_reference_cast:
    case eok_rvalue_class_adjust:
    case eok_derived_to_base:
    case eok_dot_field: node = first_operand_of(node); break;
    case eok_comma: node = second_operand_of(node); break;
    default: return nullptr;
    }
  }
  return nullptr;
}

// It dies with the reference, not with the expression.
static void keep_temporary_of_reference(a_dynamic_init *init, an_object_lifetime *outer)
{
  if (init->kind != dik_expression) return;
  a_dynamic_init *temporary = temporary_bound_to(expr_of(init));
  if (temporary == nullptr) return;
  temporary->long_lived_temp = true;
  if (temporary->destruction_lifetime == nullptr || outer == nullptr) return;
  remove_from_destruction_list(temporary);
  add_to_end_of_destructions_list(temporary, outer);
}

void pop_init_lifetime(an_init_lifetime *scope, a_dynamic_init *init, a_type *type)
{
  an_object_lifetime *lifetime = scope->lifetime;
  if (lifetime == nullptr) return;
  if (init == nullptr) {
    mark_object_lifetime_as_useless(lifetime);
  } else {
    if (is_any_reference_type(type)) keep_temporary_of_reference(init, lifetime->parent);
    bool is_expr = init->kind == dik_expression || init->kind == dik_call_returning_class;
    if (is_useless_object_lifetime(lifetime))
      ;
    else if (is_expr)
      expr_of(init) = add_object_lifetime_to_expr(expr_of(init), lifetime);
    else
      bind_object_lifetime(lifetime, iek_dynamic_init, init);
  }
  pop_object_lifetime();
}

// -------------------------------------------------------------------------------------------------
// Recording

static void add_to_dynamic_inits(a_dynamic_init *init, a_scope *scope)
{
  static a_dynamic_init *last;
  static a_scope *scope_of_last;
  init->next = nullptr;
  if (scope->dynamic_inits == nullptr) {
    scope->dynamic_inits = init;
  } else {
    if (scope_of_last != scope || last == nullptr) last = scope->dynamic_inits;
    while (last->next != nullptr)
      last = last->next;
    last->next = init;
  }
  last = init;
  scope_of_last = scope;
}

static bool is_automatic_object(const a_variable *variable)
{
  return variable->storage_class == sc_auto || variable->storage_class == sc_register;
}

static void record_automatic(a_variable *variable, a_dynamic_init *init,
                             const a_source_position *pos)
{
  variable->init_kind = initk_dynamic;
  dynamic_initializer_of(variable) = init;
  if (init->kind != dik_none) warn_if_code_is_unreachable(ec_initialization_not_reachable, pos);
  a_statement *statement = add_statement_at_stmt_pos(stmk_init, pos);
  dynamic_init_of(statement) = init;
  statement->end_position = curr_construct_end_position;
  update_init_statement_control_flow(statement);
}

static void record_local_static(a_variable *variable, a_dynamic_init *init,
                                const a_source_position *pos)
{
  if (inside_statement_expression()) pos_error(ec_dyn_local_static_in_statement_expr, *pos);
  if (init->kind != dik_none) warn_if_code_is_unreachable(ec_initialization_not_reachable, pos);
  a_scope *scope = ensure_il_scope_exists(top_scope());
  a_local_static_variable_init *entry = make_local_static_variable_init(variable, scope);
  entry->init_kind = initk_dynamic;
  entry->initializer.dynamic_init = init;
  a_statement *statement = add_statement_at_stmt_pos(stmk_init, pos);
  dynamic_init_of(statement) = init;
  statement->end_position = curr_construct_end_position;
}

void record_dynamic_initialization(a_variable *variable, a_dynamic_init *init,
                                   const a_source_position *pos)
{
  init->variable = variable;
  init->position = *pos;
  bool is_automatic = is_automatic_object(variable);
  init->is_static_storage = !is_automatic;
  if (is_automatic) {
    record_automatic(variable, init, pos);
  } else if (in_function_scope() && !at_file_scope()) {
    record_local_static(variable, init, pos);
  } else {
    variable->init_kind = initk_dynamic;
    dynamic_initializer_of(variable) = init;
    add_to_dynamic_inits(init, il_header.primary_scope);
  }
  if (init->has_destructor) record_end_of_lifetime_destruction(init, !is_automatic, true);
}

// -------------------------------------------------------------------------------------------------
// Values of classes

// The end of a class operand's scan: what the object begins with.
static a_dynamic_init *take_class_value(an_operand *operand, a_type *type)
{
  if (operand->kind == ok_error) return nullptr;
  a_dynamic_init *init = dynamic_init_from_expr(make_node_from_operand(operand), type);
  if (!init->has_destructor) add_dtor_to_dynamic_init(init, type, &operand->position);
  return init;
}

void note_destructor_of_elements(a_dynamic_init *init, a_type *type, const a_source_position *pos)
{
  if (init->has_destructor || class_of_elements(type) == nullptr) return;
  a_scan_entry scan;
  an_operand place;
  open_entry(&scan, ek_normal, false, true);
  add_dtor_to_dynamic_init(init, type, pos);
  make_error_operand(&place);
  place.end_position = curr_construct_end_position;
  close_entry(&scan, &place);
}

static a_dynamic_init *scan_constructor_arguments(a_type *type, a_source_position pos)
{
  an_arg_operand *args = scan_argument_operands();
  a_dynamic_init *init = make_constructor_init(type, args, pos);
  if (init == nullptr) {
    for (an_arg_operand *arg = args; arg != nullptr; arg = arg->next)
      operand_will_not_be_used_because_of_error(&arg->operand);
  }
  free_arg_operand_list(args);
  return init;
}

a_dynamic_init *scan_class_initializer(a_type *type, bool is_parenthesized, a_source_position pos)
{
  a_scan_entry scan;
  an_operand operand;
  a_dynamic_init *init;
  a_type *plain = make_unqualified_type(type);
  open_entry(&scan, ek_normal, false, true);
  check_for_abstract_object(plain, &pos);
  if (is_parenthesized) {
    init = scan_constructor_arguments(plain, pos);
    make_error_operand(&operand);
    operand.end_position = pos_curr_token;
  } else {
    scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
    a_source_position end = operand.end_position;
    prep_initializer_operand(&operand, plain, 1, ec_bad_initializer_type, &operand.position);
    init = take_class_value(&operand, plain);
    operand.end_position = end;
  }
  close_entry(&scan, &operand);
  return init;
}

// -------------------------------------------------------------------------------------------------
// Objects without initializer

// const C c;  The constructor that the compiler makes gives plain members no value.
static bool const_object_is_unset(a_type *type)
{
  a_type *class_type = class_of_elements(type);
  if (!is_const_qualified(underlying_array_element_type(type))) return false;
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(class_type);
  return supplement != nullptr && !supplement->has_user_default_constructor &&
         !supplement->has_user_provided_default_constructor &&
         first_initializable_field(class_type) != nullptr;
}

void def_initializer(a_symbol *symbol, a_source_position *pos)
{
  a_type *type = type_of_entity_symbol(symbol);
  check_for_missing_initializer_full(symbol, type, in_function_scope());
  bool is_variable = symbol->kind == sk_variable || symbol->kind == sk_static_data_member;
  if (C_dialect != 2 || !is_variable || is_error_type(type) || is_incomplete_type(type)) return;
  a_type *class_type = class_of_elements(type);
  a_variable *variable = variable_of_symbol(symbol);
  if (class_type == nullptr || variable->init_kind != initk_none) return;
  if (const_object_is_unset(type)) {
    pos_syty_error(ec_missing_default_constructor_on_const, *pos, symbol, class_type);
    return;
  }
  an_init_lifetime lifetime;
  push_init_lifetime(&lifetime);
  a_scan_entry scan;
  an_operand place;
  open_entry(&scan, ek_normal, false, true);
  check_for_abstract_object(class_type, pos);
  bool failed;
  a_dynamic_init *init = make_default_init(type, *pos, &failed);
  make_error_operand(&place);
  place.end_position = curr_construct_end_position;
  close_entry(&scan, &place);
  pop_init_lifetime(&lifetime, init, type);
  if (init != nullptr) {
    record_dynamic_initialization(variable, init, pos);
    mark_variable_value_set(symbol);
  } else if (!failed && is_automatic_object(variable)) {
    record_trivial_init_control_flow(variable);
  }
}
