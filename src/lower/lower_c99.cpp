// lower_c99.cpp - lowering of C regions: scopes, statements, the node walk and its table of
// operators.
// Rule:    the pass rewrites only what the generated C can't say: compound literals, variable-
//          length arrays, designators, operators on bool, statement expressions, names with
//          universal character names.
// Entry:   lower_c99_il_memory_region.
#include "lower/lower_c99.h"

#include "driver/flags.h"
#include "driver/target.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "lower/lower_class.h"
#include "lower/lower_init.h"
#include "mem/stack_limit.h"

static bool in_gnu_mode()
{
  return gcc_mode || gpp_mode;
}

// The keyword exists outside the GNU modes only.
static bool has_imaginary_types()
{
  return c99_complex_enabled && !in_gnu_mode();
}

bool c99_il_lowering_needed()
{
  if (suppress_il_lowering || total_errors != 0) return false;
  return c99_mode || in_gnu_mode() || compound_literals_allowed || vla_enabled ||
         designators_allowed || lowering_normalizes_boolean_controlling_expressions;
}

// --- Expressions ---------------------------------------------------------------------------------

void lower_c99_constant(a_constant *constant)
{
  if (constant->kind == ck_aggregate) {
    for (a_constant *element = aggregate_of(constant).first_element; element != nullptr;
         element = element->next) {
      lower_c99_constant(element);
    }
  } else if (constant->kind == ck_init_repeat) {
    lower_c99_constant(init_repeat_of(constant).repeated);
  } else if (constant->kind == ck_ptr_to_member) {
    lower_ptr_to_member_constant(constant);
  }
}

static bool type_is_bool(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_integer && as_integer(type).is_bool;
}

// The function type through which a call is made.
static a_type *called_type(an_expr_node *function)
{
  a_type *type = skip_typerefs(function->type);
  if (type->kind == tk_pointer) type = skip_typerefs(as_pointer(type).pointed_to_type);
  return type->kind == tk_routine ? type : nullptr;
}

// The node takes a pointer to the routine's own type, and so does what it names.
static void retype_function_expr(an_expr_node *function, a_routine *routine)
{
  if (function->kind == enk_routine) {
    function->type = routine->type;
    return;
  }
  function->type = make_pointer_type(routine->type);
  if (function->kind == enk_operation) first_operand_of(function)->type = routine->type;
}

// A call through an older declaration of a routine that has a prototype now.
static void lower_call_of_known_routine(an_expr_node *expr)
{
  an_expr_node *function = first_operand_of(expr);
  a_routine *routine = routine_from_function_expr(function);
  if (routine == nullptr) return;
  a_type *through = called_type(function);
  a_type *own = skip_typerefs(routine->type);
  if (through == nullptr || through == own || own->kind != tk_routine) return;
  a_routine_type_supplement *own_supplement = routine_supplement_of(own);
  if (!own_supplement->is_prototyped || !routine_supplement_of(through)->is_prototyped) return;
  if (identical_types(through, own)) return;
  a_type *former_type = function->type;
  retype_function_expr(function, routine);
  an_expr_node **link = &function->next;
  a_param_type *param = own_supplement->param_types;
  for (; *link != nullptr && param != nullptr; param = param->next) {
    an_expr_node *argument = *link;
    an_expr_node *rest = argument->next;
    argument->next = nullptr;
    *link = add_cast_if_necessary(argument, param->type);
    (*link)->next = rest;
    link = &(*link)->next;
  }
  bool too_many = *link != nullptr && !own_supplement->has_ellipsis;
  if (too_many || param != nullptr) function->type = former_type;
}

static void drop_void_cast_of_comma(an_expr_node *expr)
{
  an_expr_node *first = first_operand_of(expr);
  if (is_operation(first, eok_cast) && is_void_type(first->type)) {
    overwrite_node(first, first_operand_of(first));
    set_expr_result_not_used(first);
  }
}

// An implicit conversion to a pointer to arrays: C makes it by itself, and the bound may belong to a
// prototype that can't be named here.
static bool is_idle_vla_conversion(const an_expr_node *expr)
{
  return operation_of(expr).is_implicit_cast && is_pointer_type(expr->type) &&
         is_pointer_type(first_operand_of(expr)->type) && is_variably_modified_type(expr->type);
}

// A null pointer, or an address, that is converted to the type of such a parameter.
static void lower_c99_constant_node(an_expr_node *expr)
{
  if (!il_header.vla_used || !is_pointer_type(expr->type)) return;
  if (!is_variably_modified_type(expr->type)) return;
  expr->type = make_pointer_type(void_type());
  constant_of(expr)->type = expr->type;
}

void lower_c99_cast(an_expr_node *expr)
{
  if (op_of(expr) == eok_cast_to_bool) {
    lower_bool_cast(expr);
  } else if (op_of(expr) == eok_cast) {
    // A conversion to bool may be written as a plain cast.
    bool is_bool_conversion =
        type_is_bool(expr->type) && !type_is_bool(first_operand_of(expr)->type);
    if (is_bool_conversion) {
      operation_of(expr).op = eok_cast_to_bool;
      lower_bool_cast(expr);
    } else if (is_idle_vla_conversion(expr)) {
      overwrite_node(expr, first_operand_of(expr));
    } else {
      lower_type_of_vla_cast_if_necessary(expr);
    }
  }
}

// A real operand of complex arithmetic stays real: C computes with the parts alone then, which keeps
// the signs of zeros and the infinities (C99 6.3.1.8).
static void keep_real_operand(an_expr_node *operand)
{
  if (!is_operation(operand, eok_cast) || !operation_of(operand).is_implicit_cast) return;
  if (!is_complex_type(operand->type)) return;
  if (is_nonreal_floating_type(first_operand_of(operand)->type)) return;
  operand->type = float_type(float_kind_of_type(operand->type));
}

static void keep_real_operands(an_expr_node *expr)
{
  if (!is_floating_type(expr->type)) return;
  switch (op_of(expr)) {
  case eok_add:
  case eok_subtract:
  case eok_multiply:
  case eok_divide: keep_real_operand(first_operand_of(expr)); [[fallthrough]];
  case eok_add_assign:
  case eok_subtract_assign:
  case eok_multiply_assign:
  case eok_divide_assign: keep_real_operand(second_operand_of(expr)); break;
  default: break;
  }
}

void lower_c99_operator(an_expr_node *expr)
{
  keep_real_operands(expr);
  an_expr_operator_kind op = op_of(expr);
  switch (op) {
  case eok_array_to_pointer:
    set_address_taken_for_variable_or_routine_expr(first_operand_of(expr));
    convert_struct_rvalue_to_comma_expr_if_needed(expr);
    break;
  case eok_address_of:
    set_address_taken_for_variable_or_routine_expr(first_operand_of(expr));
    break;
  case eok_plus: overwrite_node(expr, first_operand_of(expr)); break;
  case eok_cast_to_bool:
  case eok_cast: lower_c99_cast(expr); break;
  case eok_pre_incr:
  case eok_pre_decr:
  case eok_post_incr:
  case eok_post_decr:
    if (type_is_bool(first_operand_of(expr)->type)) lower_bool_incr_decr(expr);
    break;
  case eok_min:
  case eok_max: lower_min_max(expr); break;
  case eok_comma: drop_void_cast_of_comma(expr); break;
  case eok_call: lower_call_of_known_routine(expr); break;
  default:
    if (op >= eok_add_assign && op <= eok_bit_xor_assign &&
        type_is_bool(first_operand_of(expr)->type)) {
      rewrite_compound_assignment(expr);
    }
    break;
  }
}

static void lower_c99_operation(an_expr_node *expr)
{
  if (in_gnu_mode()) {
    lower_sequence_point_expr(expr);
    if (expr->kind != enk_operation) {
      lower_c99_expr(expr);
      return;
    }
  }
  switch (op_of(expr)) {
  case eok_question: lower_question_operator(expr, false); return;
  case eok_land:
  case eok_lor: lower_logical_operator(expr); return;
  default: break;
  }
  if (has_imaginary_types() && rewrite_imaginary_assignment(expr)) {
    lower_c99_expr(expr);
    return;
  }
  unsigned mask = expr_boolean_controlling_expr_mask(expr);
  unsigned bit = 1;
  an_expr_node *next;
  for (an_expr_node *operand = first_operand_of(expr); operand != nullptr; operand = next) {
    next = operand->next;
    lower_c99_expr(operand);
    if (mask & bit) normalize_boolean_controlling_expr_if_needed(operand);
    bit <<= 1;
  }
  bool is_subscript = op_of(expr) == eok_subscript;
  if (has_imaginary_types()) lower_imaginary_operator(expr);
  if (C_dialect == 2 && expr->kind == enk_operation) lower_cplusplus_operator(expr);
  if (expr->kind != enk_operation) return;
  lower_c99_operator(expr);
  if (is_subscript) convert_struct_rvalue_to_comma_expr_if_needed(expr);
}

// --- Compound literals ---------------------------------------------------------------------------

// The constant becomes the initializer of a static temporary, or of one that a statement in front
// sets.
static void initialize_literal_with_constant(a_variable *variable, a_dynamic_init *init,
                                             a_constant *constant)
{
  if (is_file_scope_entry(variable)) {
    if (!is_file_scope_entry(constant)) constant = copy_constant_full(constant, true);
    variable->init_kind = initk_static;
    variable->initializer.constant = constant;
    return;
  }
  set_dynamic_init_kind(init, dik_constant);
  constant_of(init) = constant;
  add_stmk_init_for_compound_literal(variable, init);
}

static bool is_automatic(const a_variable *variable)
{
  return !is_file_scope_entry(variable);
}

// The node becomes the object.  One of variably modified type is declared without its bounds and is
// given its type where it stands.
static void make_object_of_literal(an_expr_node *expr, a_variable *variable)
{
  a_type *type = expr->type;
  bool was_lvalue = expr->is_lvalue;
  if (is_variably_modified_type(type)) {
    bool is_named_typedef = type->kind == tk_typeref && type->source_corresp.name != nullptr;
    if (!is_named_typedef) lower_vla_dimensions_in_type(type);
    set_variable_address_taken(variable);
    an_expr_node *address = add_cast(var_addr_expr(variable), make_pointer_type(type));
    overwrite_node(expr, add_indirection_to_node(address));
  } else {
    set_expr_node_kind(expr, enk_variable);
    variable_of(expr) = variable;
  }
  expr->is_lvalue = was_lvalue;
}

static void lower_compound_literal(an_expr_node *expr)
{
  a_dynamic_init *init = dynamic_init_of(expr);
  a_variable *variable = make_lowered_temporary(expr->type);
  init->variable = variable;
  variable->init_needs_zero_fill = init->needs_zero_fill;
  make_object_of_literal(expr, variable);
  lower_dynamic_init_designated_initializers(init);
  an_init_pos_descr descr;
  set_var_init_pos_descr(variable, &descr);
  an_insert_location location;
  set_expr_insert_location(expr, &location);
  a_constant *constant = nullptr;
  bool is_new = false;
  lower_dynamic_init(init, &descr, nullptr, nullptr, lif_none, false, &location, &constant,
                     &is_new);
  if (constant != nullptr) initialize_literal_with_constant(variable, init, constant);
  if (variable->init_kind == initk_zero && is_automatic(variable)) {
    zero_automatic_temporary(variable, expr);
  }
}

// --- The node walk -------------------------------------------------------------------------------

void lower_c99_expr(an_expr_node *expr)
{
  check_recursion();
  entry_flags_of(expr).lowered = true;
  switch (expr->kind) {
  case enk_operation: lower_c99_operation(expr); break;
  case enk_temp_init: lower_compound_literal(expr); break;
  case enk_sizeof: lower_runtime_sizeof(expr); break;
  case enk_statement_expr: {
    a_saved_context saved;
    save_and_push_context(&saved, nullptr, nullptr);
    lower_c99_statement(statement_of(expr));
    if (in_gnu_mode()) lower_gnu_statement_expr(expr);
    restore_saved_context(&saved);
    break;
  }
  case enk_temp_ref: lower_reuse_value_expr(expr); break;
  case enk_builtin_operation: lower_builtin_operation(expr); break;
  case enk_new_delete: lower_new_delete(expr); break;
  case enk_lifetime_wrapper: lower_lifetime_wrapper(expr); break;
  case enk_constant:
    if (constant_of(expr)->kind == ck_ptr_to_member)
      lower_ptr_to_member_constant_node(expr);
    else
      lower_c99_constant_node(expr);
    break;
  case enk_throw: pos_st_error(ec_not_supported, expr->expr_range.start, "throw"); break;
  case enk_error:
  case enk_variable:
  case enk_field:
  case enk_lambda:
  case enk_condition:
  case enk_typeid:
  case enk_sizeof_pack:
  case enk_address_of_ellipsis:
  case enk_lowered_eh_construct:
  case enk_wrapper_call:
  case enk_routine:
  case enk_variable_marker:
  case enk_type_operand:
  case enk_param_ref: break;
  case enk_last: unexpected_kind("expression node");
  }
}

void lower_c99_full_expr(an_expr_node *expr)
{
  bool is_implicit_void_cast = is_operation(expr, eok_cast) && is_void_type(expr->type) &&
                               operation_of(expr).is_implicit_cast;
  if (is_implicit_void_cast) overwrite_node(expr, first_operand_of(expr));
  bool saved_has_statement_expression = full_expr_has_statement_expression;
  full_expr_has_statement_expression = has_statement_expression(expr);
  lower_c99_expr(expr);
  full_expr_has_statement_expression = saved_has_statement_expression;
  perform_post_pass_on_lowered_expression(expr);
  release_reusable_temporaries();
}

void lower_c99_boolean_controlling_expr(an_expr_node *expr, bool full)
{
  if (full) {
    lower_c99_full_expr(expr);
  } else {
    lower_c99_expr(expr);
  }
  normalize_boolean_controlling_expr_if_needed(expr);
}

// --- Statements ----------------------------------------------------------------------------------

// A condition or increment of a loop is evaluated again and again, and so must be what it hoists
// and the literals that it initializes: they go into a block that belongs to the loop.
static void lower_repeated_expr(a_statement *loop, an_expr_node *expr, bool is_condition)
{
  a_statement *block = loop_serialization_init(loop, is_condition);
  a_statement *saved_inits = temp_init_statements;
  temp_init_statements = nullptr;
  if (is_condition) {
    lower_c99_boolean_controlling_expr(expr, true);
  } else {
    lower_c99_full_expr(expr);
  }
  insert_temp_init_statements(block);
  temp_init_statements = saved_inits;
  loop_serialization_end(loop, is_condition);
}

static void lower_branch(a_statement *branch)
{
  if (branch != nullptr) lower_c99_statement(branch);
}

// The initialization stays in the loop only as one plain expression.  Anything else, and the
// declarations of the loop's own scope, go into a block around the loop; `statement` becomes the
// loop inside it.
static void lower_for_initialization(a_statement *&statement)
{
  a_for_supplement *supplement = for_supplement_of(statement);
  a_statement *init = supplement->init_statement;
  for (a_statement *each = init, *next; each != nullptr; each = next) {
    next = each->next;
    lower_c99_statement(each);
  }
  bool is_plain = init == nullptr || (init->kind == stmk_expr && init->next == nullptr);
  if (is_plain && supplement->scope == nullptr) return;
  a_statement *block = statement;
  statement = turn_statement_into_block(block);
  curr_gnu_statement = statement;
  if (supplement->scope != nullptr) {
    block_supplement_of(block)->scope = supplement->scope;
    supplement->scope->assoc_block = block;
    supplement->scope = nullptr;
  }
  if (is_plain) return;
  supplement->init_statement = nullptr;
  an_insert_location location;
  set_block_start_insert_location(block, &location);
  reinsert_for_loop_initialization(init, &location);
}

static void lower_for_statement(a_statement *statement)
{
  a_context context;
  a_scope *scope = for_supplement_of(statement)->scope;
  if (scope != nullptr) push_context(&context, scope, nullptr);
  lower_for_initialization(statement);
  if (statement->expr != nullptr) lower_repeated_expr(statement, statement->expr, true);
  an_expr_node *increment = for_supplement_of(statement)->increment_expr;
  if (increment != nullptr) lower_repeated_expr(statement, increment, false);
  curr_gnu_statement = statement;
  lower_branch(body_of(statement));
  settle_loop_serialization(statement);
  if (scope != nullptr) pop_context();
}

static void lower_while_statement(a_statement *statement)
{
  lower_repeated_expr(statement, statement->expr, true);
  curr_gnu_statement = statement;
  lower_branch(body_of(statement));
  settle_loop_serialization(statement);
}

static void lower_block(a_statement *block)
{
  a_context context;
  a_scope *scope = block_supplement_of(block)->scope;
  if (scope != nullptr) push_context(&context, scope, nullptr);
  for (a_statement *statement = first_statement_of(block), *next; statement != nullptr;
       statement = next) {
    next = statement->next;
    lower_c99_statement(statement);
  }
  if (scope == nullptr) return;
  if (C_dialect == 2) lower_end_of_block(block);
  pop_context();
}

static void lower_stmk_init(a_statement *statement)
{
  a_dynamic_init *init = dynamic_init_of(statement);
  lower_dynamic_init_designated_initializers(init);
  if (C_dialect == 2) {
    if (lower_cplusplus_stmk_init(statement)) return;
    turn_function_constant_into_expr(init);
  }
  switch (init->kind) {
  case dik_expression:
  case dik_call_returning_class: lower_c99_full_expr(expr_of(init)); break;
  case dik_constant: lower_c99_constant(constant_of(init)); break;
  case dik_constant_via_temp: {
    an_insert_location location;
    set_insert_location(statement, &location);
    an_init_pos_descr descr;
    set_var_init_pos_descr(init->variable, &descr);
    a_constant *constant = nullptr;
    bool is_new = false;
    lower_dynamic_init(init, &descr, nullptr, nullptr, lif_full_expression, false, &location,
                       &constant, &is_new);
    if (constant == nullptr) {
      turn_statement_into_noop(curr_gnu_statement);
    } else {
      set_dynamic_init_kind(init, dik_constant);
      constant_of(init) = constant;
    }
    break;
  }
  case dik_none:
  case dik_zero:
  case dik_constructor:
  case dik_bitwise_copy: break;
  case dik_last: unexpected_kind("dynamic initialization");
  }
}

// A label declared with __label__ gets a name of its own and belongs to the function from here on,
// so that hoisting may take its block elsewhere and the generated C needs no such declaration.
static void lower_label(a_statement *statement)
{
  a_label *label = label_of(statement);
  if (!in_gnu_mode() || !label->is_block_local) return;
  a_scope *block_scope = label->source_corresp.parent_scope;
  a_label **link = block_scope == nullptr ? nullptr : &block_scope->labels;
  while (link != nullptr && *link != nullptr && *link != label)
    link = &(*link)->next;
  if (link != nullptr && *link == label) *link = label->next;
  label->source_corresp.parent_scope = nullptr;
  label->source_corresp.name = nullptr;
  label->source_corresp.is_nameless = true;
  label->is_block_local = false;
  add_to_labels_list(label, -1);
}

static void lower_case_values(a_statement *statement)
{
  a_switch_case_entry *entry = case_entry_of(statement);
  if (entry->low_value != nullptr) lower_c99_constant(entry->low_value);
  if (entry->high_value != nullptr) lower_c99_constant(entry->high_value);
}

static bool lowers_its_own_expr(a_statement_kind kind)
{
  return kind == stmk_while || kind == stmk_do || kind == stmk_for;
}

// The parts of the statement, whose own expression is lowered.  It may have moved into a block by
// then.
static void lower_parts_of_statement(a_statement *statement)
{
  switch (statement->kind) {
  case stmk_if:
    lower_branch(then_statement_of(statement));
    lower_branch(else_statement_of(statement));
    break;
  case stmk_while:
  case stmk_do: lower_while_statement(statement); break;
  case stmk_for: lower_for_statement(statement); break;
  case stmk_label: lower_label(statement); break;
  case stmk_block: lower_block(statement); break;
  case stmk_case: lower_case_values(statement); break;
  case stmk_switch: lower_branch(body_of(statement)); break;
  case stmk_init: lower_stmk_init(statement); break;
  case stmk_return:
    if (dynamic_init_of(statement) != nullptr) lower_stmk_init(statement);
    if (C_dialect == 2) lower_return(statement);
    break;
  case stmk_goto:
    if (C_dialect == 2) lower_goto(statement);
    break;
  case stmk_asm: lower_asm_statement(statement); break;
  case stmk_vla_decl: create_dimension_variable(statement); break;
  case stmk_expr:
  case stmk_try:
  case stmk_decl_entities:
  case stmk_type_or_var_decl:
  case stmk_computed_goto:
  case stmk_vla_dealloc: break;
  case stmk_last: unexpected_kind("statement");
  }
}

void lower_c99_statement(a_statement *statement)
{
  check_recursion();
  if (statement == nullptr) return;
  a_statement *saved_inits = temp_init_statements;
  a_statement *saved_gnu_statement = curr_gnu_statement;
  a_source_position saved_code_pos = code_pos_for_lowering;
  a_source_position saved_error_pos = error_position;
  temp_init_statements = nullptr;
  curr_gnu_statement = statement;
  code_pos_for_lowering = statement->start_position;
  error_position = statement->start_position;
  if (statement->expr != nullptr && !lowers_its_own_expr(statement->kind)) {
    if (statement->kind == stmk_if) {
      lower_c99_boolean_controlling_expr(statement->expr, true);
    } else {
      lower_c99_full_expr(statement->expr);
    }
  }
  // Hoisting puts the statement into a block; what it was stands inside now.
  lower_parts_of_statement(curr_gnu_statement);
  insert_temp_init_statements(statement);
  temp_init_statements = saved_inits;
  curr_gnu_statement = saved_gnu_statement;
  code_pos_for_lowering = saved_code_pos;
  error_position = saved_error_pos;
}

// --- Scopes --------------------------------------------------------------------------------------

// A definition without initializer, where the linker can't merge it, is defined by zeroing.
static bool is_defined_by_zeroing(const a_variable *variable)
{
  if (!force_variable_definition_via_zeroing) return false;
  if (variable->storage_class != sc_unspecified || variable->init_kind != initk_none) return false;
  return variable->no_common || (il_header.zero_uninitialized_definitions && !variable->is_common);
}

static void lower_c99_variable(a_variable *variable)
{
  a_source_position saved_error_pos = error_position;
  error_position = variable->source_corresp.decl_position;
  rewrite_ucns_in_name(&variable->source_corresp);
  if (variable->init_kind == initk_static) {
    lower_designated_initializers(constant_initializer_of(variable), variable);
    lower_c99_constant(constant_initializer_of(variable));
  }
  if (is_defined_by_zeroing(variable)) variable->init_kind = initk_zero;
  error_position = saved_error_pos;
}

static void lower_variable_list(a_variable *list)
{
  for (; list != nullptr; list = list->next)
    lower_c99_variable(list);
}

static void rewrite_ucns_in_types(a_scope *scope)
{
  for (a_type *type = scope->types; type != nullptr; type = type->next) {
    rewrite_ucns_in_name(&type->source_corresp);
    if (!kind_has_class_part(type->kind)) continue;
    for (a_field *field = as_class(type).first_field; field != nullptr; field = field->next) {
      rewrite_ucns_in_name(&field->source_corresp);
    }
  }
}

static void lower_c99_scope(a_scope *scope);

static void lower_c99_function_body(a_scope *scope)
{
  if (scope->assoc_block == nullptr) return;
  if (C_dialect == 2) note_lifetimes_of_labels(scope->assoc_block);
  lower_c99_statement(scope->assoc_block);
  insert_temp_init_statements(scope->assoc_block);
  if (C_dialect == 2) lower_special_function_body(scope);
}

static void lower_c99_scope(a_scope *scope)
{
  a_context context;
  push_context(&context, scope, nullptr);
  entry_flags_of(scope).lowered = true;
  a_scope *saved_function_scope = innermost_function_scope;
  bool is_function = scope->kind == sck_function;
  if (is_function) {
    innermost_function_scope = scope;
    lower_variable_list(scope->parameters);
  }
  lower_variable_list(scope->local_variables);
  lower_variable_list(scope->variables);
  if (il_header.canonical_ids_used) {
    rewrite_ucns_in_types(scope);
    for (a_routine *routine = scope->routines; routine != nullptr; routine = routine->next) {
      rewrite_ucns_in_name(&routine->source_corresp);
    }
    for (a_label *label = scope->labels; label != nullptr; label = label->next) {
      rewrite_ucns_in_name(&label->source_corresp);
    }
  }
  for (a_scope *sub = scope->subscopes; sub != nullptr; sub = sub->next)
    lower_c99_scope(sub);
  for (a_local_static_variable_init *init = scope->local_static_inits; init != nullptr;
       init = init->next) {
    if (init->init_kind != initk_static) continue;
    lower_designated_initializers(init->initializer.constant, init->variable);
    lower_c99_constant(init->initializer.constant);
  }
  if (is_function) lower_c99_function_body(scope);
  innermost_function_scope = saved_function_scope;
  pop_context();
}

void lower_c99_il_memory_region(int region)
{
  a_scope *scope =
      region == file_scope_region_number ? il_header.primary_scope : region_scope_table[region];
  if (scope == nullptr) return;
  a_scope *saved_function_scope = innermost_function_scope;
  an_object_lifetime *saved_lifetime = curr_object_lifetime;
  int saved_region = curr_il_region_number;
  il_lowering_underway = true;
  lowering_file_scope = region == file_scope_region_number;
  curr_context = nullptr;
  innermost_function_scope = nullptr;
  curr_object_lifetime = nullptr;
  switch_il_region(region);
  a_context file_context;
  bool is_function = scope->kind == sck_function;
  if (is_function) push_context(&file_context, il_header.primary_scope, nullptr);
  lower_c99_scope(scope);
  if (is_function) pop_context();
  innermost_function_scope = saved_function_scope;
  curr_object_lifetime = saved_lifetime;
  lowering_file_scope = false;
  il_lowering_underway = false;
  switch_il_region(saved_region);
}

// --- Initialization ------------------------------------------------------------------------------

void lower_c99_one_time_init()
{
  register_trans_unit_variable(temp_init_statements);
}

void lower_c99_trans_unit_init()
{
  temp_init_statements = nullptr;
  il_lowering_underway = false;
}

void lower_c99_init()
{
  code_pos_for_lowering = null_source_position;
}
