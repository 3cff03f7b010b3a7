// misra_pointers.cpp - the rules on pointers: casts of section 11, and how long an object lives.
// Rule:    a message about a cast waits until the cast is formed: an attempt that fails takes it
//          along.
// Entry:   push_pointer_conversion_rules, is_expr_ptr_to_nonstatic.
#include "check/misra_expr.h"
#include "consts/folding.h"
#include "il/il.h"
#include "il/types.h"
#include "parse/exprutil.h"

//---------------------------------------------------------------------------------------------
// Conversions.

static void push_required(an_error_code code)
{
  misra_push_diagnostic(misra_required_severity, code, nullptr);
}

static bool is_pointer_to_function(a_type *type)
{
  return is_pointer_type(type) && is_function_type(type_pointed_to(type));
}

static bool is_pointer_to_object(a_type *type)
{
  return is_pointer_type(type) && !is_function_type(type_pointed_to(type));
}

// Qualifiers don't count, at any level: they are a rule of their own.
static bool point_to_compatible_types(a_type *source, a_type *target)
{
  while (is_pointer_type(source) && is_pointer_type(target)) {
    source = type_pointed_to(source);
    target = type_pointed_to(target);
  }
  return f_types_are_compatible(source, target, tco_ignore_top_qualifiers | tco_array_bounds);
}

static bool pointer_loses_qualifier(a_type *source, a_type *target)
{
  while (is_pointer_type(source) && is_pointer_type(target)) {
    source = type_pointed_to(source);
    target = type_pointed_to(target);
    unsigned lost = get_type_qualifiers(source) & ~get_type_qualifiers(target);
    if ((lost & (tq_const | tq_volatile)) != 0) return true;
  }
  return false;
}

// 11.1: only integers and functions of the same type go with a function.
static void push_function_pointer_rule(a_type *source, a_type *target)
{
  a_type *other = is_pointer_to_function(source) ? target : source;
  if (is_integral_or_enum_type(other)) return;
  if (is_pointer_to_function(other) && point_to_compatible_types(source, target)) return;
  push_required(ec_misra_c_2004_11_1);
}

// 11.2: integers, objects and void go with an object.
static void push_object_pointer_rule(a_type *source, a_type *target)
{
  a_type *other = is_pointer_to_object(source) ? target : source;
  if (is_integral_or_enum_type(other) || is_pointer_to_object(other)) return;
  push_required(ec_misra_c_2004_11_2);
}

static bool is_pointer_to_void(a_type *type)
{
  return is_void_type(type_pointed_to(type));
}

void push_pointer_conversion_rules(an_operand *operand, a_type *type)
{
  a_type *source = operand->type;
  if (!is_pointer_type(source) && !is_pointer_type(type)) return;
  if (is_void_type(type) || is_bool_type(type)) return;
  if (operand->kind == ok_constant && is_null_pointer_constant(constant_of_operand(operand)))
    return;
  if (is_pointer_to_function(source) || is_pointer_to_function(type)) {
    push_function_pointer_rule(source, type);
  }
  if (is_pointer_to_object(source) || is_pointer_to_object(type)) {
    push_object_pointer_rule(source, type);
  }
  if (is_integral_or_enum_type(source) || is_integral_or_enum_type(type)) {
    misra_push_diagnostic(misra_advisory_severity, ec_misra_c_2004_11_3, nullptr);
  }
  if (is_pointer_to_object(source) && is_pointer_to_object(type) && !is_pointer_to_void(source) &&
      !is_pointer_to_void(type) && !point_to_compatible_types(source, type)) {
    misra_push_diagnostic(misra_advisory_severity, ec_misra_c_2004_11_4, nullptr);
  }
  if (pointer_loses_qualifier(source, type)) push_required(ec_misra_c_2004_11_5);
}

//---------------------------------------------------------------------------------------------
// Lifetimes.

static bool is_automatic(const a_variable *variable)
{
  return variable->storage_class == sc_auto || variable->storage_class == sc_register;
}

// The address of the object that the lvalue stands for.
static bool is_address_of_nonstatic(an_expr_node *lvalue, a_variable **variable)
{
  if (lvalue->kind == enk_temp_init) return true; // a compound literal
  a_variable *object = variable_of_object(lvalue);
  if (object == nullptr || !is_automatic(object)) return false;
  *variable = object;
  return true;
}

bool is_expr_ptr_to_nonstatic(an_expr_node *expr, a_variable **variable)
{
  *variable = nullptr;
  for (;;) {
    expr = below_all_casts(expr);
    if (expr->kind != enk_operation) return false;
    switch (op_of(expr)) {
    case eok_address_of:
    case eok_array_to_pointer: return is_address_of_nonstatic(first_operand_of(expr), variable);
    case eok_pointer_add:
    case eok_pointer_subtract: expr = first_operand_of(expr); break;
    case eok_comma:
    case eok_assign: expr = second_operand_of(expr); break;
    case eok_question:
      if (is_expr_ptr_to_nonstatic(second_operand_of(expr), variable)) return true;
      expr = third_operand_of(expr);
      break;
    default: return false;
    }
  }
}
