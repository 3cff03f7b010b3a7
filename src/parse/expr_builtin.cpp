// expr_builtin.cpp - GNU built-in functions whose calls are folded or have arguments of their own
// kind.
// Entry:   has_special_arguments, scan_builtin_with_special_arguments,
//          fold_builtin_call_if_possible.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/decls.h"
#include "parse/expr_internal.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"
#include "parse/type_evaluation.h"

enum a_builtin_class : unsigned char {
  bc_none,
  bc_abs,
  bc_bit_count,
  bc_nan,
  bc_huge,
  bc_fptest,
  bc_fpclassify,
  bc_strlen,
  bc_pow,
  bc_choose_expr,
  bc_classify_type,
  bc_constant_p,
  bc_va_start,
  bc_va_end,
  bc_va_copy,
  bc_va_arg,
  bc_varargs_start
};

struct a_builtin_row {
  const char *name; // without "__builtin_"
  a_builtin_class builtin_class;
};

// clang-format off
static const a_builtin_row builtin_rows[] = {
    {"abs", bc_abs},
    {"clz", bc_bit_count}, {"clzl", bc_bit_count}, {"clzll", bc_bit_count},
    {"ctz", bc_bit_count}, {"ctzl", bc_bit_count}, {"ctzll", bc_bit_count},
    {"ffs", bc_bit_count}, {"ffsl", bc_bit_count}, {"ffsll", bc_bit_count},
    {"parity", bc_bit_count}, {"parityl", bc_bit_count}, {"parityll", bc_bit_count},
    {"popcount", bc_bit_count}, {"popcountl", bc_bit_count}, {"popcountll", bc_bit_count},
    {"nan", bc_nan}, {"nanf", bc_nan}, {"nanl", bc_nan},
    {"inf", bc_huge}, {"inff", bc_huge}, {"infl", bc_huge},
    {"huge_val", bc_huge}, {"huge_valf", bc_huge}, {"huge_vall", bc_huge},
    {"isnan", bc_fptest}, {"isinf", bc_fptest}, {"isfinite", bc_fptest}, {"isnormal", bc_fptest},
    {"fpclassify", bc_fpclassify},
    {"strlen", bc_strlen},
    {"pow", bc_pow}, {"powf", bc_pow}, {"powl", bc_pow},
    {"choose_expr", bc_choose_expr}, {"classify_type", bc_classify_type},
    {"constant_p", bc_constant_p},
    {"va_start", bc_va_start}, {"stdarg_start", bc_va_start}, {"varargs_start", bc_varargs_start},
    {"va_end", bc_va_end}, {"va_copy", bc_va_copy}, {"va_arg", bc_va_arg},
};
// clang-format on

static a_builtin_class class_of_builtin(const a_routine *routine)
{
  const char *name = routine->source_corresp.name;
  if (name == nullptr || strncmp(name, "__builtin_", 10) != 0) return bc_none;
  for (const a_builtin_row &row : builtin_rows) {
    if (strcmp(row.name, name + 10) == 0) return row.builtin_class;
  }
  return bc_none;
}

bool has_special_arguments(a_routine *routine)
{
  return class_of_builtin(routine) >= bc_choose_expr;
}

bool is_foldable_gnu_builtin_function(a_routine *routine)
{
  a_builtin_class builtin_class = class_of_builtin(routine);
  return builtin_class != bc_none && builtin_class <= bc_constant_p;
}

// -------------------------------------------------------------------------------------------------
// Folding of ordinary calls

static void replace_by_constant(a_constant *constant, an_operand *result)
{
  an_operand saved = *result;
  an_expr_node *call = make_node_from_operand(result);
  if (expr_stack->expression_kind == ek_normal) constant->expr = call;
  make_constant_operand(constant, result);
  restore_operand_details(result, &saved);
  result->ruled_out_expr_kinds = 0;
}

static bool constant_argument(an_expr_node *argument, a_constant **constant)
{
  if (argument == nullptr || argument->kind != enk_constant) return false;
  *constant = constant_of(argument);
  return true;
}

static void fold_abs(an_expr_node *argument, a_type *type, an_operand *result)
{
  a_constant *value;
  if (!constant_argument(argument, &value) || value->kind != ck_integer) return;
  bool overflow = false;
  long long number = value_of_integer_constant(value, &overflow);
  if (overflow || number == -2147483647 - 1) return;
  a_constant constant;
  set_integer_constant(&constant, number < 0 ? -number : number, int_kind_of_type(type));
  constant.type = type;
  replace_by_constant(&constant, result);
}

static a_constant *string_behind_argument(an_expr_node *argument)
{
  while (argument != nullptr && is_operation(argument, eok_cast))
    argument = first_operand_of(argument);
  if (argument != nullptr && is_operation(argument, eok_array_to_pointer))
    argument = first_operand_of(argument);
  a_constant *constant;
  if (!constant_argument(argument, &constant)) return nullptr;
  if (constant->kind == ck_string) return constant;
  if (constant->kind != ck_address || address_of(constant).kind != ack_constant) return nullptr;
  a_constant *string = (a_constant *)address_of(constant).entity;
  return string->kind == ck_string && address_of(constant).offset == 0 ? string : nullptr;
}

static void fold_nan(an_expr_node *argument, a_type *type, an_operand *result)
{
  a_constant *string = string_behind_argument(argument);
  if (string == nullptr || string_of(string).length != 1) return;
  a_constant constant;
  clear_constant(&constant, ck_float);
  constant.type = type;
  make_fp_nan(&float_of(&constant), float_kind_of_type(type));
  replace_by_constant(&constant, result);
}

static void fold_strlen(an_expr_node *argument, a_type *type, an_operand *result)
{
  a_constant *string = C_dialect == 2 ? nullptr : string_behind_argument(argument);
  if (string == nullptr || !is_ordinary_string_constant(string)) return;
  size_t length = strnlen(string_of(string).text, string_of(string).length);
  a_constant constant;
  set_unsigned_integer_constant(&constant, length, int_kind_of_type(type));
  constant.type = type;
  replace_by_constant(&constant, result);
}

static void fold_fptest(a_routine *routine, an_expr_node *argument, an_operand *result)
{
  if (argument == nullptr || argument->next != nullptr) {
    expr_pos_error(ec_call_requires_one_argument, result->position);
    conv_to_error_operand(result);
    return;
  }
  if (!is_real_floating_type(argument->type)) {
    expr_pos_error(ec_call_requires_floating_point_argument, result->position);
    conv_to_error_operand(result);
    return;
  }
  a_constant *value, constant;
  if (!constant_argument(argument, &value) || value->kind != ck_float) return;
  if (fold_fptest_if_possible(routine, value, &constant)) replace_by_constant(&constant, result);
}

static void check_fpclassify(an_expr_node *arguments, an_operand *result)
{
  an_expr_node *argument = arguments;
  for (int i = 0; i < 5; ++i) {
    if (argument == nullptr || !is_integral_or_enum_type(argument->type)) {
      expr_pos_error(ec_invalid_builtin_fpclassify_args, result->position);
      conv_to_error_operand(result);
      return;
    }
    argument = argument->next;
  }
  if (argument == nullptr || argument->next != nullptr || !is_real_floating_type(argument->type)) {
    expr_pos_error(ec_bad_final_builtin_fpclassify_arg, result->position);
    conv_to_error_operand(result);
  }
}

static void fold_pow(an_expr_node *arguments, a_type *type, an_operand *result)
{
  a_constant *base, *exponent, constant;
  if (!constant_argument(arguments, &base) || base->kind != ck_float) return;
  if (!constant_argument(arguments->next, &exponent) || exponent->kind != ck_float) return;
  if (fold_pow_if_possible(base, exponent, &constant, type)) replace_by_constant(&constant, result);
}

void fold_builtin_call_if_possible(a_routine *routine, an_expr_node *arguments, an_operand *result)
{
  a_constant *value, constant;
  switch (class_of_builtin(routine)) {
  case bc_abs: fold_abs(arguments, result->type, result); return;
  case bc_bit_count:
    if (!constant_argument(arguments, &value) || value->kind != ck_integer) return;
    if (fold_bit_count_operation_if_possible(routine, value, &constant))
      replace_by_constant(&constant, result);
    return;
  case bc_nan: fold_nan(arguments, result->type, result); return;
  case bc_huge:
    if (arguments != nullptr) return;
    make_huge_fp_val(&constant, result->type);
    replace_by_constant(&constant, result);
    return;
  case bc_fptest: fold_fptest(routine, arguments, result); return;
  case bc_fpclassify: check_fpclassify(arguments, result); return;
  case bc_strlen: fold_strlen(arguments, result->type, result); return;
  case bc_pow: fold_pow(arguments, result->type, result); return;
  default: return;
  }
}

// -------------------------------------------------------------------------------------------------
// Calls with arguments of their own kind: the current token is "(" at the start and behind ")" at
// the end.

static bool open_arguments()
{
  get_token();
  ++expr_stack->paren_depth;
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  return curr_token != tok_rparen;
}

static a_source_position close_arguments()
{
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rparen);
  --expr_stack->paren_depth;
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  return end;
}

static bool comma_between_arguments()
{
  return required_token(tok_comma, ec_exp_comma);
}

// Both arms are read, only the chosen one counts: its type and lvalueness are those of the whole.
static void scan_choose_expr(an_operand *result)
{
  an_operand condition, first, second;
  an_expr_stack_entry entry;
  push_expr_stack(ek_constant, &entry, false, true);
  scan_operand_of_list(&condition);
  do_operand_transformations(&condition, 0);
  bool ok = check_scalar_operand(&condition);
  condition.ref_entries = condition.last_ref_entry = nullptr;
  pop_expr_stack();
  bool is_false =
      ok && condition.kind == ok_constant && is_false_constant(&condition.value.constant);
  bool saved_required = expr_stack->value_required, saved_generated = expr_stack->code_is_generated;
  comma_between_arguments();
  if (is_false) expr_stack->value_required = expr_stack->code_is_generated = false;
  scan_operand_of_list(&first);
  expr_stack->value_required = saved_required;
  expr_stack->code_is_generated = saved_generated;
  comma_between_arguments();
  if (!is_false) expr_stack->value_required = expr_stack->code_is_generated = false;
  scan_operand_of_list(&second);
  expr_stack->value_required = saved_required;
  expr_stack->code_is_generated = saved_generated;
  if (condition.kind != ok_constant) {
    make_error_operand(result);
    return;
  }
  *result = is_false ? second : first;
  result->is_string_literal = false;
}

// The classes of values that GNU's old typeclass.h numbers.
static int type_class_number(a_type *type)
{
  type = skip_typerefs(type);
  switch (type->kind) {
  case tk_void: return 0;
  case tk_integer: return C_dialect == 2 && as_integer(type).is_enum ? 3 : 1;
  case tk_pointer: return 5;
  case tk_float: return 8;
  case tk_complex:
  case tk_imaginary: return 9;
  case tk_routine: return 5;
  case tk_array: return 5;
  case tk_class:
  case tk_struct: return 12;
  case tk_union: return 13;
  default: return -1;
  }
}

static void scan_unevaluated_argument(an_operand *operand, bool keep_lvalue)
{
  an_expr_stack_entry entry;
  push_expr_stack(ek_unevaluated, &entry, false, true);
  scan_operand_of_list(operand);
  do_operand_transformations(operand, keep_lvalue ? ot_keep_lvalues : 0u);
  operand->ref_entries = operand->last_ref_entry = nullptr;
  pop_expr_stack();
}

static void scan_classify_type(an_operand *result)
{
  an_operand operand;
  scan_unevaluated_argument(&operand, false);
  if (operand.kind == ok_error)
    make_error_operand(result);
  else
    make_integer_constant_operand(type_class_number(operand.type), integer_type(ik_int), result);
}

// A constant of arithmetic type, or the address of a string literal.
static bool counts_as_constant(an_operand *operand)
{
  if (operand->kind != ok_constant) return false;
  a_constant *constant = &operand->value.constant;
  switch (constant->kind) {
  case ck_integer:
  case ck_float:
  case ck_complex:
  case ck_imaginary: return true;
  case ck_address:
    return address_of(constant).kind == ack_constant && address_of(constant).offset == 0 &&
           ((a_constant *)address_of(constant).entity)->kind == ck_string;
  default: return false;
  }
}

static void scan_constant_p(an_operand *result)
{
  an_operand operand;
  an_expr_stack_entry entry;
  push_expr_stack(ek_unevaluated, &entry, false, true);
  entry.favor_constant_result = true;
  scan_operand_of_list(&operand);
  do_operand_transformations(&operand, 0);
  operand.ref_entries = operand.last_ref_entry = nullptr;
  pop_expr_stack();
  if (operand.kind == ok_error)
    make_error_operand(result);
  else
    make_integer_constant_operand(counts_as_constant(&operand), integer_type(ik_int), result);
}

void scan_builtin_with_special_arguments(an_operand *, a_routine *routine, an_operand *result)
{
  a_builtin_class builtin_class = class_of_builtin(routine);
  a_source_position pos = pos_curr_token;
  if (builtin_class >= bc_va_start) {
    scan_va_builtin(builtin_class == bc_va_start  ? tok_va_start
                    : builtin_class == bc_va_end  ? tok_va_end
                    : builtin_class == bc_va_copy ? tok_va_copy
                    : builtin_class == bc_va_arg  ? tok_va_arg
                                                  : tok_error,
                    pos, result);
    return;
  }
  open_arguments();
  switch (builtin_class) {
  case bc_choose_expr: scan_choose_expr(result); break;
  case bc_classify_type: scan_classify_type(result); break;
  default: scan_constant_p(result); break;
  }
  result->end_position = close_arguments();
}

// -------------------------------------------------------------------------------------------------
// Variable arguments: va_start, va_arg, va_end, va_copy in both their spellings

// A va_list object, also one that a parameter of array type has become a pointer to; `use` is what
// happens to it.
static bool scan_va_list_argument(an_error_code code, an_operand *list, unsigned use)
{
  scan_operand_of_list(list);
  if (list->kind == ok_error) return false;
  bool is_array = is_array_type(list->type);
  do_operand_transformations(list, is_array ? 0u : ot_keep_lvalues);
  if (list->kind == ok_error) return false;
  bool is_value = !is_array && !is_lvalue_operand(list) && !is_pointer_type(list->type);
  if (is_value || is_arithmetic_or_enum_type(list->type)) {
    expr_pos_error(code, list->position);
    return false;
  }
  change_ref_kinds(list->ref_entries, use);
  return true;
}

static an_expr_node *make_va_node(an_expr_operator_kind op, a_type *type, an_operand *list,
                                  an_expr_node *second)
{
  an_expr_node *node = make_node_from_operand(list);
  node->next = second;
  return make_operator_node(op, type, node);
}

static bool check_in_variadic_function(a_source_position pos, an_error_code code)
{
  a_routine *routine = curr_routine();
  bool variadic =
      routine != nullptr && routine_supplement_of(skip_typerefs(routine->type))->has_ellipsis;
  if (variadic) return true;
  expr_pos_error(code, pos);
  return false;
}

static bool is_last_named_parameter(an_operand *operand)
{
  a_routine *routine = curr_routine();
  if (routine == nullptr || operand->kind != ok_expression ||
      operand->value.expr->kind != enk_variable)
    return false;
  a_variable *variable = variable_of(operand->value.expr);
  return variable->is_parameter && variable->next == nullptr;
}

static void scan_va_start(a_source_position pos, an_operand *result)
{
  an_operand list, parameter;
  bool ok = check_in_variadic_function(pos, ec_va_start_requires_ellipsis_function);
  ok = scan_va_list_argument(ec_bad_va_start, &list, rk_modified) && ok;
  if (!comma_between_arguments()) ok = false;
  scan_operand_of_list(&parameter);
  eliminate_unusual_operand_kinds(&parameter);
  if (ok && parameter.kind != ok_error && !is_last_named_parameter(&parameter)) {
    expr_pos_warning(ec_bad_va_start, parameter.position);
  }
  change_ref_kinds(parameter.ref_entries, rk_read);
  if (!ok || parameter.kind == ok_error) {
    make_error_operand(result);
    return;
  }
  if (curr_routine() != nullptr) curr_routine()->contains_varargs_use = true;
  make_expression_operand(
      make_va_node(eok_va_start, void_type(), &list, make_node_from_operand(&parameter)), result);
}

// A type that default promotion changes can't come out of an argument list; the program would
// misbehave.
static void check_va_arg_type(a_type *type, a_source_position pos)
{
  a_type *promoted = default_argument_promotion(make_unqualified_type(type));
  bool narrow = is_arithmetic_or_enum_type(type) && !is_enum_type(type) &&
                !f_types_are_compatible(promoted, type, tco_ignore_top_qualifiers);
  if (narrow) {
    expr_pos_ty2_diagnostic(es_warning, ec_va_arg_would_have_been_promoted, pos, type, promoted);
  } else if (is_array_type(type) || is_function_type(type)) {
    expr_pos_warning(ec_bad_va_arg, pos);
  }
}

static void scan_va_arg(an_operand *result)
{
  an_operand list;
  bool ok = scan_va_list_argument(ec_bad_va_arg, &list, rk_read_modified);
  if (!comma_between_arguments()) ok = false;
  a_source_position type_pos = pos_curr_token;
  a_type *type = nullptr;
  an_expr_node *outer_evaluation = begin_type_evaluation();
  type_name(&type);
  an_expr_node *evaluation = end_type_evaluation(outer_evaluation);
  if (is_incomplete_type(type) && !is_error_type(type)) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, type_pos, type);
    ok = false;
  }
  if (!ok || is_error_type(type)) {
    make_error_operand(result);
    return;
  }
  check_va_arg_type(type, type_pos);
  an_expr_node *type_node = alloc_expr_node(enk_type_operand);
  type_node->type = void_type();
  type_operand_of(type_node) = type;
  an_expr_node *node = make_va_node(eok_va_arg, rvalue_type(type), &list, type_node);
  node->is_lvalue = false;
  make_expression_operand(node, result);
  put_type_evaluation_before(evaluation, result);
}

static void scan_va_end(an_operand *result)
{
  an_operand list;
  if (scan_va_list_argument(ec_bad_va_end, &list, rk_read)) {
    make_expression_operand(make_va_node(eok_va_end, void_type(), &list, nullptr), result);
  } else {
    make_error_operand(result);
  }
}

static void scan_va_copy(an_operand *result)
{
  an_operand target, source;
  bool ok = scan_va_list_argument(ec_bad_va_copy, &target, rk_modified);
  if (!comma_between_arguments()) ok = false;
  ok = scan_va_list_argument(ec_bad_va_copy, &source, rk_read) && ok;
  if (!ok) {
    make_error_operand(result);
    return;
  }
  make_expression_operand(
      make_va_node(eok_va_copy, void_type(), &target, make_node_from_operand(&source)), result);
}

static void scan_varargs_start(an_operand *result)
{
  an_operand list;
  if (scan_va_list_argument(ec_bad_va_start, &list, rk_modified)) {
    make_expression_operand(make_va_node(eok_varargs_start, void_type(), &list, nullptr), result);
  } else {
    make_error_operand(result);
  }
}

void scan_va_builtin(a_token_kind token, a_source_position pos, an_operand *result)
{
  if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(not_allowed_in_constant_code(), pos);
    flush_tokens_without_warning();
    make_error_operand(result);
    return;
  }
  open_arguments();
  switch (token) {
  case tok_va_start: scan_va_start(pos, result); break;
  case tok_va_arg: scan_va_arg(result); break;
  case tok_va_end: scan_va_end(result); break;
  case tok_va_copy: scan_va_copy(result); break;
  default: scan_varargs_start(result); break;
  }
  a_source_position end = close_arguments();
  result->position = pos;
  result->end_position = end;
  if (result->kind == ok_expression) rule_out_expr_kinds(rule_out_any_constant, result);
}

void scan_va_operator(an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token;
  get_token();
  if (curr_token != tok_lparen) {
    syntax_error(ec_exp_lparen);
    make_error_operand(result);
    return;
  }
  scan_va_builtin(token, pos, result);
}
