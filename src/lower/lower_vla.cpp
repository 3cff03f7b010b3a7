// lower_vla.cpp - variable-length arrays: the dimensions are evaluated once, where the source
// declares them.
// Entry:   create_dimension_variable, lower_vla_dimensions_in_type, lower_runtime_sizeof.
#include "driver/flags.h"
#include "driver/target.h"
#include "lower/lower_c99.h"

void lower_vla_dimension_expression(a_vla_dimension *dimension)
{
  if (dimension->expr == nullptr || entry_flags_of(dimension).lowered) return;
  entry_flags_of(dimension).lowered = true;
  a_scope *saved_function_scope = innermost_function_scope;
  a_scope *scope = nullptr;
  if (dimension->is_parameter_dimension) {
    // It is written in the declarator, where no block of the function surrounds it.
    innermost_function_scope = nullptr;
    scope = il_header.primary_scope;
  }
  a_saved_context saved;
  save_and_push_context(&saved, scope, nullptr);
  lower_c99_full_expr(dimension->expr);
  restore_saved_context(&saved);
  innermost_function_scope = saved_function_scope;
}

static int lower_dimension_of_array(a_type *type, bool *)
{
  if (type->kind != tk_array || !type->has_vla_bound_ref) return 0;
  a_vla_dimension *dimension = find_vla_dimension(type);
  if (dimension != nullptr) lower_vla_dimension_expression(dimension);
  return 0;
}

void lower_vla_dimensions_in_type(a_type *type)
{
  if (!il_header.vla_used || innermost_function_scope == nullptr) return;
  unsigned options = two_return_types | two_stop_at_named;
  if (C_dialect != 2) options |= two_param_types;
  traverse_type_tree(type, lower_dimension_of_array, options);
}

void lower_type_of_vla_cast_if_necessary(an_expr_node *expr)
{
  if (vla_enabled && is_directly_variably_modified_type(expr->type)) {
    lower_vla_dimensions_in_type(expr->type);
  }
}

// The declarators of parameters whose size is held for the body by `dimension`.
static void lower_declared_dimensions(a_vla_dimension *dimension)
{
  a_vla_dimension *declared = innermost_function_scope->vla_dimensions;
  for (; declared != nullptr; declared = declared->next) {
    if (declared->same_dimension == dimension && declared->is_parameter_dimension) {
      lower_vla_dimension_expression(declared);
    }
  }
}

void create_dimension_variable(a_statement *statement)
{
  a_vla_dimension *dimension = vla_dimension_of(statement);
  if (dimension->type == nullptr) lower_declared_dimensions(dimension);
  if (dimension->expr == nullptr) return;
  lower_vla_dimension_expression(dimension);
  if (dimension->is_parameter_dimension || dimension->variable != nullptr) return;
  if (is_void_type(dimension->expr->type)) return; // evaluated for its effects: typeof
  dimension->variable = assign_expr_to_temp(dimension->expr);
  dimension->expr = first_operand_of(dimension->expr);
}

// The product of all dimensions, computed in front of the declaration.
void create_element_count_variable_for_vla(a_statement *statement)
{
  a_variable *variable = decl_of(statement).variable;
  a_type *count_type = integer_type(targ_ptrdiff_t_int_kind);
  variable->element_count_variable = make_lowered_temporary(count_type);
  an_expr_node *product = nullptr;
  uint64_t host_count = 1;
  for (a_type *type = skip_typerefs(variable->type); type->kind == tk_array;
       type = skip_typerefs(as_array(type).element_type)) {
    if (!as_array(type).is_vla) {
      host_count *= as_array(type).bound.number_of_elements;
      continue;
    }
    a_vla_dimension *dimension = find_vla_dimension(type);
    check(dimension != nullptr);
    an_expr_node *size = dimension->variable != nullptr ? var_rvalue_expr(dimension->variable)
                                                        : make_reusable_copy(dimension->expr, true);
    size = add_cast_if_necessary(size, count_type);
    product = product == nullptr ? size : make_binary_node(eok_multiply, count_type, product, size);
  }
  if (host_count != 1 || product == nullptr) {
    an_expr_node *factor =
        node_for_host_large_integer((long long)host_count, targ_ptrdiff_t_int_kind);
    product =
        product == nullptr ? factor : make_binary_node(eok_multiply, count_type, product, factor);
  }
  a_statement *declaration = copy_statement(statement);
  statement->next = declaration;
  an_expr_node *assignment = make_binary_node(
      eok_assign, count_type, var_lvalue_expr(variable->element_count_variable), product);
  set_statement_kind(statement, stmk_expr);
  set_expr_result_not_used(assignment);
  statement->expr = assignment;
}

// What isn't evaluated is replaced by its type: lowering could change what an array's size is asked
// of.
void lower_runtime_sizeof(an_expr_node *expr)
{
  an_expr_sizeof &operand = sizeof_of(expr);
  if (!operand.is_type && !is_variably_modified_type(operand.expr->type)) {
    a_type *type = operand.expr->type;
    operand.is_type = true;
    operand.type = type;
  }
  if (operand.is_type) {
    lower_vla_dimensions_in_type(operand.type);
  } else {
    lower_c99_expr(operand.expr);
  }
}
