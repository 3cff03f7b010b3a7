// expr_member.cpp - members in expressions: `this`, a member named without an object, a member function
// selected through one.
// Owns:    the object of the member function that was selected last, until its call takes it.
// Entry:   scan_this, make_operand_of_member, select_function, take_bound_selector.
// See:     C++ 5.2.5, 9.3.1.
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

static an_operand bound_selector;

// The `this` of the function at hand, or null.
static a_variable *this_variable()
{
  return innermost_function_scope != nullptr ? innermost_function_scope->this_param : nullptr;
}

static void make_this_operand(an_operand *result)
{
  make_expression_operand(this_param_value_expr(), result);
  result->type = make_unqualified_type(result->type);
}

void scan_this(an_operand *result)
{
  if (this_variable() == nullptr) {
    expr_pos_error(ec_this_used_incorrectly, pos_curr_token);
    make_error_operand(result);
  } else {
    make_this_operand(result);
  }
  get_token();
}

static a_type *class_of_member(a_symbol *symbol)
{
  return symbol->is_class_member ? symbol->parent.class_type : nullptr;
}

// `this` leads to an object of the member's class.
static bool this_reaches(a_symbol *symbol)
{
  a_variable *variable = this_variable();
  if (variable == nullptr) return false;
  a_type *class_type = class_of_member(symbol);
  return class_type != nullptr &&
         is_same_class_or_base_class_thereof(class_type, type_pointed_to(variable->type));
}

void select_function(a_symbol *symbol, an_operand *object, bool is_arrow, a_source_position *pos,
                     an_operand *result)
{
  a_source_position end = end_pos_curr_token;
  bool is_single = is_routine_symbol(symbol);
  if (is_single) {
    make_function_designator_operand(symbol, pos, &end, result, ref_entry(symbol, *pos));
  } else {
    make_indefinite_function_operand(symbol, result);
  }
  if (is_single && routine_of_symbol(symbol)->is_static_member) return;
  bound_selector = *object;
  if (!is_arrow) conv_class_operand_to_object_pointer(&bound_selector);
  result->is_bound_function = true;
}

void take_bound_selector(an_operand *selector)
{
  *selector = bound_selector;
}

bool make_operand_of_member(a_symbol *symbol, an_operand *result)
{
  a_source_position pos = pos_curr_token;
  if (!this_reaches(symbol)) {
    expr_pos_sy_diagnostic(es_error, ec_member_ref_requires_object, pos, symbol);
    make_error_operand(result);
    return false;
  }
  an_operand object;
  make_this_operand(&object);
  if (symbol->kind == sk_field) {
    record_symbol_reference(rk_plain, symbol, &pos, expr_stack->code_is_generated);
    select_member(symbol, &object, true, &pos, result);
  } else {
    select_function(symbol, &object, true, &pos, result);
  }
  return true;
}
