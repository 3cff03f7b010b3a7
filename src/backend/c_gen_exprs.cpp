// c_gen_exprs.cpp - expressions of the generated C.
// Rule:  an operator form that is an operand stands in parentheses, so no precedence has to be
//        known.
// Entry: write_expression and its kin.
#include "backend/c_gen_private.h"
#include "driver/target.h"

static void write_operation(an_expr_node *expr);
static an_expr_node *visible_expression(an_expr_node *expr);

void write_parenthesized(an_expr_node *expr)
{
  put_char('(');
  write_expression(expr, false);
  put_char(')');
}

void write_constant(const a_constant *constant, bool in_context)
{
  form_constant(constant, in_context, &control);
}

// --- Primary forms -------------------------------------------------------------------------------

static void write_variable_reference(a_variable *variable)
{
  if (variable->is_by_reference) {
    put_str("(*");
    write_pointer_cast(variable->type);
    write_name(variable);
    put_char(')');
    return;
  }
  if (variable->is_this_parameter && variable->source_corresp.name == nullptr)
    put_str("this");
  else
    write_name(variable);
}

static void write_routine_reference(const an_expr_node *expr)
{
  a_routine *routine = routine_of(expr);
  a_type *type = skip_typerefs(expr->type);
  if (type->kind == tk_pointer) type = skip_typerefs(as_pointer(type).pointed_to_type);
  bool differs = type->kind == tk_routine && skip_typerefs(routine->type) != type &&
                 !identical_types(routine->type, type);
  if (differs) {
    put_char('(');
    write_pointer_cast(type);
  }
  write_name(routine);
  if (differs) put_char(')');
}

static void write_sizeof(const an_expr_node *expr)
{
  const an_expr_sizeof &operand = sizeof_of(expr);
  put_str("sizeof(");
  if (operand.is_type)
    write_type(operand.type);
  else
    write_expression(operand.expr, false);
  put_char(')');
}

static void write_argument_list(an_expr_node *argument)
{
  for (; argument != nullptr; argument = argument->next) {
    write_assignment_expression(argument);
    if (argument->next != nullptr) put_str(", ");
  }
}

static void write_builtin_operation(const an_expr_node *expr)
{
  const an_expr_builtin_operation &operation = builtin_operation_of(expr);
  put_str(builtin_operation_names[operation.op]);
  put_char('(');
  write_argument_list(operation.first_argument);
  put_char(')');
}

static void write_statement_expression(const an_expr_node *expr)
{
  put_str("({");
  write_block_body(statement_of(expr));
  put_str("})");
}

static void write_compound_literal(const an_expr_node *expr)
{
  a_dynamic_init *init = dynamic_init_of(expr);
  put_char('(');
  write_cast(expr->type);
  bool is_constant = init->kind == dik_constant || init->kind == dik_constant_via_temp;
  if (is_constant && constant_of(init)->kind == ck_aggregate) {
    a_variable literal = {};
    literal.type = expr->type;
    write_initializer(&literal, constant_of(init));
  } else {
    put_char('{');
    if (is_constant)
      write_constant(constant_of(init), false);
    else if (init->kind == dik_expression)
      write_assignment_expression(expr_of(init));
    put_char('}');
  }
  put_char(')');
}

static void write_eh_construct(const an_expr_node *expr)
{
  static const char *const words[lek_last] = {"caught_object_address",
                                              "thrown_object_address",
                                              "cleanup_state",
                                              "(unreachable) cleanup_state",
                                              "function_prologue",
                                              "function_epilogue",
                                              "catch_epilogue",
                                              "try_epilogue",
                                              "exception_caught",
                                              "exception_started",
                                              "initialization_completed",
                                              "internal_try("};
  const an_expr_eh_construct &construct = eh_construct_of(expr);
  put_str(words[construct.kind]);
  switch (construct.kind) {
  case lek_cleanup_state:
  case lek_unreachable_cleanup_state:
  case lek_initialization_completed:
    put_str(" = ");
    put_signed(construct.number);
    return;
  case lek_internal_try:
    write_argument_list(construct.operands);
    put_char(')');
    return;
  default: return;
  }
}

// --- Casts and addresses -------------------------------------------------------------------------

// Classes and arrays have no casts: a conversion of one only changes what the front end calls it.
static bool is_castable(a_type *type)
{
  type = skip_typerefs(type);
  return !kind_has_class_part(type->kind) && type->kind != tk_array && type->kind != tk_routine;
}

static bool cast_is_idle(const an_expr_node *expr)
{
  a_type *from = first_operand_of(expr)->type;
  if (!is_castable(expr->type) || is_va_list_type(expr->type) || is_va_list_type(from)) return true;
  if (!operation_of(expr).is_implicit_cast) return false;
  a_type *to = skip_typerefs(expr->type);
  from = skip_typerefs(from);
  if (to == from) return first_operand_of(expr)->kind != enk_constant;
  // A pointer that only gains qualifiers of what it points to.
  return to->kind == tk_pointer && from->kind == tk_pointer &&
         skip_typerefs(as_pointer(to).pointed_to_type) ==
             skip_typerefs(as_pointer(from).pointed_to_type) &&
         !is_operation(first_operand_of(expr), eok_cast);
}

static void write_cast_operation(const an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  a_type *target = skip_typerefs(expr->type);
  write_cast(expr->type);
  bool widens_pointer = is_pointer_type(operand->type) && target->kind == tk_integer &&
                        target->size > targ_sizeof_pointer;
  if (widens_pointer) put_str("((unsigned long)");
  write_operand(operand);
  if (widens_pointer) put_char(')');
}

// "(*(T *)&operand)", or without the star the address alone.
static void write_lvalue_cast(const an_expr_node *expr, bool address_only)
{
  an_expr_node *operand = first_operand_of(expr);
  if (is_function_type(expr->type) && !is_operation(operand, eok_indirection)) {
    put_char('(');
    write_pointer_cast(expr->type);
    write_operand(operand);
    put_char(')');
    return;
  }
  put_char('(');
  if (!address_only) put_char('*');
  write_pointer_cast(expr->type);
  if (is_operation(operand, eok_indirection)) {
    write_operand(first_operand_of(operand));
  } else if (is_operation(operand, eok_lvalue_cast) || is_operation(operand, eok_cast_to_lvalue)) {
    write_lvalue_cast(operand, true);
  } else {
    put_char('&');
    write_operand(operand);
  }
  put_char(')');
}

static void write_address_of(const an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  if (is_function_type(operand->type) || operand->kind == enk_routine) {
    write_operand(operand);
    return;
  }
  if (is_operation(operand, eok_lvalue_cast) || is_operation(operand, eok_cast_to_lvalue)) {
    write_lvalue_cast(operand, true);
    return;
  }
  a_type *pointer = skip_typerefs(expr->type);
  bool is_exact = pointer->kind == tk_pointer &&
                  identical_types(as_pointer(pointer).pointed_to_type, operand->type);
  bool is_const_object =
      !is_castable(operand->type) && (get_type_qualifiers(operand->type) & tq_const) != 0;
  if (pointer->kind == tk_pointer && (!is_exact || is_const_object)) write_cast(expr->type);
  put_char('&');
  write_operand(operand);
}

static void write_indirection(const an_expr_node *expr)
{
  an_expr_node *operand = first_operand_of(expr);
  bool to_function = op_of(expr) == eok_ref_indirection && is_pointer_type(operand->type) &&
                     is_function_type(type_pointed_to(operand->type));
  if (!to_function) put_char('*');
  write_operand(operand);
}

// --- Operators by their form ---------------------------------------------------------------------

static void write_prefix(const char *word, const an_expr_node *expr)
{
  put_str(word);
  write_operand(first_operand_of(expr));
}

static void write_binary(const char *word, const an_expr_node *expr)
{
  write_operand(first_operand_of(expr));
  put_char(' ');
  put_str(word);
  put_char(' ');
  write_operand(second_operand_of(expr));
}

// Pointers to functions are compared as numbers.
static void write_order_comparison(const char *word, const an_expr_node *expr)
{
  an_expr_node *left = first_operand_of(expr), *right = second_operand_of(expr);
  bool of_functions = is_pointer_type(left->type) && is_function_type(type_pointed_to(left->type));
  if (!of_functions) {
    write_binary(word, expr);
    return;
  }
  put_str("(unsigned long)");
  write_operand(left);
  put_char(' ');
  put_str(word);
  put_str(" (unsigned long)");
  write_operand(right);
}

static void write_logical(const char *word, const an_expr_node *expr)
{
  write_parenthesized(first_operand_of(expr));
  put_str(word);
  write_parenthesized(second_operand_of(expr));
}

static void write_question(const an_expr_node *expr)
{
  write_parenthesized(first_operand_of(expr));
  put_str(" ? ");
  write_parenthesized(second_operand_of(expr));
  put_str(" : ");
  write_parenthesized(third_operand_of(expr));
}

static void write_selection(const char *word, const an_expr_node *expr)
{
  an_expr_node *selector = second_operand_of(expr);
  write_operand(first_operand_of(expr));
  put_str(word);
  if (selector->kind == enk_field)
    write_name(field_of(selector));
  else
    write_expression(selector, false);
}

static void write_subscript(const an_expr_node *expr)
{
  write_operand(first_operand_of(expr));
  put_char('[');
  write_expression(second_operand_of(expr), false);
  put_char(']');
}

// True for an operand whose address can be written.
static bool is_addressable(const an_expr_node *expr)
{
  if (expr->kind == enk_variable) return true;
  if (expr->kind != enk_operation) return false;
  switch (op_of(expr)) {
  case eok_indirection:
  case eok_subscript:
  case eok_arrow_field: return true;
  case eok_dot_field: return is_addressable(first_operand_of(expr));
  default: return false;
  }
}

static bool is_register_variable(const an_expr_node *expr)
{
  while (is_operation(expr, eok_dot_field))
    expr = first_operand_of(expr);
  return expr->kind == enk_variable && !variable_of(expr)->asm_name_is_text;
}

// The target of an initialization may be const: it is written as what can be assigned to.
static void write_assign(const an_expr_node *expr)
{
  an_expr_node *left = first_operand_of(expr);
  bool is_bit_field = (is_operation(left, eok_dot_field) || is_operation(left, eok_arrow_field)) &&
                      second_operand_of(left)->kind == enk_field &&
                      field_of(second_operand_of(left))->is_bit_field;
  if ((get_type_qualifiers(left->type) & tq_const) == 0 || is_bit_field ||
      left->kind == enk_variable) {
    write_binary("=", expr);
    return;
  }
  put_char('*');
  write_pointer_cast(assignable_type(left->type));
  put_char('&');
  write_operand(left);
  put_str(" = ");
  write_operand(second_operand_of(expr));
}

// The head of a copy into `left`, up to the source.
static void write_memcpy_call(an_expr_node *left)
{
  put_str(memory_routines_are_redefined ? "(void)__builtin_memcpy((char *)&"
                                        : "(void)memcpy((char *)&");
  write_operand(left);
  put_str(", (char *)&");
}

// An object with const members can't be assigned to: it is initialized by way of a copy.
static void write_const_struct_assign(const an_expr_node *expr)
{
  an_expr_node *left = first_operand_of(expr);
  a_variable *copy = alloc_variable(sc_static);
  copy->type = left->type;
  put_str("({");
  write_declarator(assignable_type(left->type), &copy->source_corresp, iek_variable, false);
  put_str(" = ");
  write_assignment_expression(second_operand_of(expr));
  put_str("; ");
  write_memcpy_call(left);
  write_name(copy);
  put_str(",");
  put_unsigned(size_of_type(left->type));
  put_str(");})");
}

static void write_struct_assign(const an_expr_node *expr)
{
  an_expr_node *left = first_operand_of(expr), *right = second_operand_of(expr);
  a_type *type = skip_typerefs(left->type);
  if (kind_has_class_part(type->kind) && as_class(type).has_const_field && !is_addressable(right)) {
    write_const_struct_assign(expr);
    return;
  }
  bool by_copy =
      (expr->result_not_used ||
       (kind_has_class_part(type->kind) && as_class(type).has_const_field)) &&
      is_addressable(left) && is_addressable(right) && !is_register_variable(left) &&
      !is_register_variable(right) &&
      ((get_type_qualifiers(left->type) | get_type_qualifiers(right->type)) & tq_volatile) == 0;
  if (!by_copy) {
    write_assign(expr);
    return;
  }
  write_memcpy_call(left);
  write_operand(right);
  put_str(",");
  put_unsigned(size_of_type(left->type));
  put_char(')');
}

// GNU: the value that a temporary of transparent union type passes on to a call, else the argument.
// The compiler of the generated C takes the value for the union, and for the type of a member too, with
// which the function may be declared elsewhere.
static an_expr_node *without_transparent_union(an_expr_node *argument)
{
  if (!gcc_is_generated_code_target || !is_operation(argument, eok_comma)) return argument;
  an_expr_node *assignment = first_operand_of(argument);
  an_expr_node *passed = visible_expression(assignment->next);
  if (passed->kind != enk_variable || assignment->kind != enk_operation) return argument;
  a_variable *temporary = variable_of(passed);
  a_type *type = skip_typerefs(temporary->type);
  bool is_made = temporary->source_corresp.name == nullptr && type->kind == tk_union &&
                 as_class(type).is_transparent_union;
  if (!is_made) return argument;
  an_expr_node *member = first_operand_of(assignment);
  bool sets_it = is_operation(member, eok_dot_field) && member->next != nullptr &&
                 visible_expression(first_operand_of(member))->kind == enk_variable &&
                 variable_of(visible_expression(first_operand_of(member))) == temporary;
  return sets_it ? member->next : argument;
}

static void write_call_arguments(an_expr_node *argument)
{
  for (; argument != nullptr; argument = argument->next) {
    write_assignment_expression(without_transparent_union(argument));
    if (argument->next != nullptr) put_str(", ");
  }
}

static void write_call(const an_expr_node *expr)
{
  an_expr_node *callee = first_operand_of(expr);
  bool by_name =
      is_operation(callee, eok_address_of) && first_operand_of(callee)->kind == enk_routine;
  write_operand(by_name ? first_operand_of(callee) : callee);
  put_char('(');
  write_call_arguments(callee->next);
  put_char(')');
}

// The list operand of the varargs forms is an lvalue, whichever way it is given.
static void write_varargs_list(an_expr_node *list)
{
  while (is_operation(list, eok_address_of))
    list = first_operand_of(list);
  write_operand(list);
}

static void write_varargs(const char *word, const an_expr_node *expr)
{
  no_wrap_depth++;
  put_str(word);
  an_expr_node *list = first_operand_of(expr);
  write_varargs_list(list);
  if (op_of(expr) == eok_va_arg) {
    put_str(", ");
    write_type(expr->type);
  } else if (op_of(expr) == eok_va_copy) {
    put_str(", ");
    write_varargs_list(list->next);
  } else if (op_of(expr) == eok_va_start && list->next != nullptr) {
    put_str(", ");
    write_expression(list->next, false);
  }
  put_char(')');
  no_wrap_depth--;
}

static const char *assignment_word(an_expr_operator_kind op)
{
  switch (op) {
  case eok_assign: return "=";
  case eok_add_assign:
  case eok_pointer_add_assign: return "+=";
  case eok_subtract_assign:
  case eok_pointer_subtract_assign: return "-=";
  case eok_multiply_assign: return "*=";
  case eok_divide_assign: return "/=";
  case eok_remainder_assign: return "%=";
  case eok_shift_left_assign: return "<<=";
  case eok_shift_right_assign: return ">>=";
  case eok_bit_and_assign: return "&=";
  case eok_bit_or_assign: return "|=";
  case eok_bit_xor_assign: return "^=";
  default: return nullptr;
  }
}

static const char *binary_word(an_expr_operator_kind op)
{
  switch (op) {
  case eok_add:
  case eok_add_complex_1:
  case eok_add_complex_2:
  case eok_pointer_add: return "+";
  case eok_subtract:
  case eok_subtract_complex_1:
  case eok_subtract_complex_2:
  case eok_pointer_subtract:
  case eok_pointer_difference: return "-";
  case eok_multiply:
  case eok_multiply_complex: return "*";
  case eok_divide:
  case eok_divide_complex: return "/";
  case eok_remainder: return "%";
  case eok_shift_left: return "<<";
  case eok_shift_right: return ">>";
  case eok_bit_and: return "&";
  case eok_bit_or: return "|";
  case eok_bit_xor: return "^";
  case eok_eq: return "==";
  case eok_ne: return "!=";
  default: return assignment_word(op);
  }
}

// Forms that are neither unary nor binary words; false: none of them.
static bool write_special_operation(an_expr_node *expr)
{
  switch (op_of(expr)) {
  case eok_address_of:
  case eok_reference_to: write_address_of(expr); return true;
  case eok_indirection:
  case eok_ref_indirection: write_indirection(expr); return true;
  case eok_cast:
  case eok_cast_to_bool:
  case eok_rvalue_cast:
  case eok_rvalue_qualifier_cast: write_cast_operation(expr); return true;
  case eok_lvalue_cast:
  case eok_reference_cast:
  case eok_cast_to_lvalue: write_lvalue_cast(expr, false); return true;
  case eok_gt: write_order_comparison(">", expr); return true;
  case eok_lt: write_order_comparison("<", expr); return true;
  case eok_ge: write_order_comparison(">=", expr); return true;
  case eok_le: write_order_comparison("<=", expr); return true;
  case eok_struct_assign: write_struct_assign(expr); return true;
  case eok_assign:
    if (is_class_struct_union_type(first_operand_of(expr)->type))
      write_struct_assign(expr);
    else
      write_assign(expr);
    return true;
  case eok_land: write_logical(" && ", expr); return true;
  case eok_lor: write_logical(" || ", expr); return true;
  case eok_subscript: write_subscript(expr); return true;
  case eok_dot_field: write_selection(".", expr); return true;
  case eok_arrow_field: write_selection("->", expr); return true;
  case eok_question: write_question(expr); return true;
  case eok_call: write_call(expr); return true;
  case eok_va_start: write_varargs("__builtin_va_start(", expr); return true;
  case eok_va_arg: write_varargs("__builtin_va_arg(", expr); return true;
  case eok_va_end: write_varargs("__builtin_va_end(", expr); return true;
  case eok_va_copy: write_varargs("__builtin_va_copy(", expr); return true;
  case eok_varargs_start: write_varargs("__builtin_varargs_start(", expr); return true;
  case eok_va_parmadr: write_varargs("__va_parmadr(", expr); return true;
  default: return false;
  }
}

static void write_comma(const an_expr_node *expr)
{
  write_operand(first_operand_of(expr));
  put_str(", ");
  write_operand(second_operand_of(expr));
}

static void write_operation(an_expr_node *expr)
{
  if (write_special_operation(expr)) return;
  switch (op_of(expr)) {
  case eok_negate: write_prefix("-", expr); return;
  case eok_plus: write_prefix("+", expr); return;
  case eok_complement:
  case eok_conj: write_prefix("~", expr); return;
  case eok_not:
    put_char('!');
    write_parenthesized(first_operand_of(expr));
    return;
  case eok_real: write_prefix("__real ", expr); return;
  case eok_imag: write_prefix("__imag ", expr); return;
  case eok_pre_incr: write_prefix("++", expr); return;
  case eok_pre_decr: write_prefix("--", expr); return;
  case eok_post_incr:
    write_operand(first_operand_of(expr));
    put_str("++");
    return;
  case eok_post_decr:
    write_operand(first_operand_of(expr));
    put_str("--");
    return;
  case eok_comma: write_comma(expr); return;
  default: break;
  }
  const char *word = binary_word(op_of(expr));
  if (word == nullptr) unexpected_kind("operator behind lowering");
  write_binary(word, expr);
}

// What stands for its operand alone; null: the operation has a form of its own.
static an_expr_node *transparent_operand(an_expr_node *expr)
{
  switch (op_of(expr)) {
  case eok_array_to_pointer:
  case eok_rvalue_class_adjust: return first_operand_of(expr);
  case eok_cast:
  case eok_rvalue_cast:
  case eok_rvalue_qualifier_cast: return cast_is_idle(expr) ? first_operand_of(expr) : nullptr;
  default: return nullptr;
  }
}

// The node that has a form of its own.
static an_expr_node *visible_expression(an_expr_node *expr)
{
  while (expr->kind == enk_operation) {
    an_expr_node *operand = transparent_operand(expr);
    if (operand == nullptr) break;
    expr = operand;
  }
  return expr;
}

void write_assignment_expression(an_expr_node *expr)
{
  expr = visible_expression(expr);
  write_expression(expr, is_operation(expr, eok_comma));
}

void write_expression(an_expr_node *expr, bool parenthesize)
{
  expr = visible_expression(expr);
  switch (expr->kind) {
  case enk_operation:
    if (parenthesize) put_char('(');
    write_operation(expr);
    if (parenthesize) put_char(')');
    return;
  case enk_constant: write_constant(constant_of(expr), parenthesize); return;
  case enk_variable: write_variable_reference(variable_of(expr)); return;
  case enk_field: write_name(field_of(expr)); return;
  case enk_temp_init: write_compound_literal(expr); return;
  case enk_throw: put_str("throw"); return;
  case enk_lifetime_wrapper: write_expression(lifetime_wrapper_of(expr).expr, parenthesize); return;
  case enk_sizeof: write_sizeof(expr); return;
  case enk_address_of_ellipsis: put_str("&..."); return;
  case enk_statement_expr: write_statement_expression(expr); return;
  case enk_lowered_eh_construct: write_eh_construct(expr); return;
  case enk_routine: write_routine_reference(expr); return;
  case enk_type_operand: write_type(type_operand_of(expr)); return;
  case enk_builtin_operation: write_builtin_operation(expr); return;
  case enk_param_ref: form_param_ref(expr, &control); return;
  default: return; // nothing else remains behind lowering
  }
}
