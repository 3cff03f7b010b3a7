// expr_paren.cpp - what may stand behind "(": an expression, a cast, a compound literal, a
// statement expression;
//                  and what becomes of a value that nobody uses.
// Entry:   scan_parenthesized_form, check_for_no_effect.
// See:     C99 6.5.1p5, 6.5.2.5, 6.5.4, 6.8.3.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/decl_inits.h"
#include "parse/decls.h"
#include "parse/expr_internal.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/type_evaluation.h"

// -------------------------------------------------------------------------------------------------
// Statement expressions (GNU)

static void skip_statement_expression(an_operand *result, an_error_code code, a_source_position pos)
{
  expr_pos_error(code, pos);
  flush_until_matching_token();
  if (curr_token == tok_rbrace) get_token();
  make_error_operand(result);
}

static an_expr_node *make_statement_expr_node(a_statement *block)
{
  a_type *type = void_type();
  a_statement *last = last_statement_in_block(block);
  if (last != nullptr && last->kind == stmk_expr && last->expr != nullptr)
    type = rvalue_type(last->expr->type);
  an_expr_node *node = alloc_expr_node(enk_statement_expr);
  node->type = type;
  statement_of(node) = block;
  return node;
}

static void scan_statement_expression(a_source_position pos, an_operand *result)
{
  if (in_constant_context() && expr_stack->value_required) {
    skip_statement_expression(result, ec_expr_not_constant, pos);
    return;
  }
  if (!in_function_scope() || !in_statement_context()) {
    skip_statement_expression(result, ec_statement_expression_in_function_only, pos);
    return;
  }
  if (report_gnu_extensions) expr_pos_warning(ec_statement_expression_is_gnu_extension, pos);
  an_expr_stack_entry *saved_stack = expr_stack;
  a_ref_entry *saved_references = curr_expr_ref_entries;
  expr_stack = nullptr;
  curr_expr_ref_entries = nullptr;
  a_statement *block = statement_expression_block();
  expr_stack = saved_stack;
  curr_expr_ref_entries = saved_references;
  an_expr_node *node = make_statement_expr_node(block);
  if (is_variably_modified_type(node->type)) expr_pos_error(ec_statement_expr_with_vla_type, pos);
  if (is_error_type(node->type)) {
    make_error_operand(result);
    return;
  }
  make_expression_operand(node, result);
  rule_out_expr_kinds(rule_out_any_constant, result);
}

// -------------------------------------------------------------------------------------------------
// Compound literals

// The object of a literal outside functions, or of one that is a constant in a constant context.
static void make_static_literal(a_type *type, a_constant *constant, an_operand *result)
{
  int saved_region;
  switch_to_file_scope_region(&saved_region);
  a_variable *variable = make_variable(type, sc_static, true);
  variable->init_kind = initk_static;
  constant_initializer_of(variable) = alloc_unshared_constant_full(constant, true);
  variable->has_initializer = true;
  add_to_variables_list(variable, 0);
  set_variable_address_taken(variable);
  switch_back_to_original_region(saved_region);
  make_lvalue_variable_operand(variable, &pos_curr_token, &end_pos_curr_token, result, nullptr);
  result->is_id_expression = false;
}

static void make_automatic_literal(a_type *type, a_constant *constant, a_dynamic_init *init,
                                   an_operand *result)
{
  if (init == nullptr) {
    init = alloc_dynamic_init(dik_constant);
    constant_of(init) = alloc_unshared_constant(constant);
  }
  init->is_compound_literal = true;
  an_expr_node *node = alloc_temp_init_node(type, init, true);
  node->is_compound_literal = true;
  make_lvalue_expression_operand(node, result);
}

static void scan_compound_literal(a_type *type, a_source_position pos, an_operand *result)
{
  bool is_static = !in_function_scope() || in_constant_context();
  a_constant constant;
  a_dynamic_init *init = nullptr;
  // The literal itself may give an array its bound.
  bool incomplete =
      is_incomplete_type(is_incomplete_array_type(type) ? array_element_type(type) : type);
  if (is_function_type(type) || is_void_type(type) || is_vla_type(type) || incomplete) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, pos, type);
    type = error_type();
  }
  bool saved_keep = expr_stack->keep_context_across_push;
  expr_stack->keep_context_across_push = true;
  scan_compound_literal_initializer(&type, is_static, &constant, &init);
  expr_stack->keep_context_across_push = saved_keep;
  if (is_error_type(type) || (init == nullptr && constant.kind == ck_error)) {
    make_error_operand(result);
  } else if (is_static && init == nullptr) {
    make_static_literal(type, &constant, result);
  } else {
    make_automatic_literal(type, &constant, init, result);
  }
  if (result->kind != ok_error) rule_out_expr_kinds(rule_out_integral_constant, result);
}

// -------------------------------------------------------------------------------------------------
// Casts

// Old C lets a cast to an array type be.
static bool is_lax_array_cast(a_type *type)
{
  return C_dialect == 1 && !strict_ansi_mode && is_array_type(type) &&
         !is_incomplete_array_type(type);
}

// The target itself: functions and arrays can't be cast to, qualifiers mean nothing.
static bool check_cast_target(a_type **type, a_source_position pos)
{
  if (is_error_type(*type)) return false;
  if (is_lax_array_cast(*type)) return true;
  if (is_function_type(*type) || is_array_type(*type)) {
    expr_pos_ty_diagnostic(es_error, ec_cast_to_bad_type, pos, *type);
    return false;
  }
  if (get_type_qualifiers(*type) != 0 && !is_class_struct_union_type(*type)) {
    bool only_written = (*type)->kind == tk_typeref && (*type)->source_corresp.name == nullptr;
    if (only_written) expr_pos_diagnostic(es_remark, ec_cast_to_qualified_type, pos);
    *type = make_unqualified_type(*type);
  }
  return true;
}

// GNU: (union u)x, where x has the type of a member.
static bool cast_to_union(a_type *type, an_operand *operand)
{
  a_type *union_type = skip_typerefs(type);
  if (union_type->kind != tk_union || !gcc_mode || !in_function_scope()) return false;
  for (a_field *field = as_class(union_type).first_field; field != nullptr; field = field->next) {
    if (!f_types_are_compatible(rvalue_type(field->type), operand->type, tco_ignore_top_qualifiers))
      continue;
    an_operand saved = *operand;
    a_variable *temporary = make_expression_temporary(union_type);
    an_expr_node *member = field_lvalue_selection_expr(var_lvalue_expr(temporary), field);
    member->next = make_node_from_operand(operand);
    an_expr_node *store = make_operator_node(assignment_operator_for_type(field->type),
                                             rvalue_type(field->type), member);
    make_expression_operand(make_comma_node(store, var_rvalue_expr(temporary)), operand);
    restore_operand_details_incl_ref(operand, &saved);
    return true;
  }
  return false;
}

static bool cast_is_possible(a_type *type, an_operand *operand)
{
  a_type *source = rvalue_type(operand->type);
  if (is_void_type(type)) return true;
  if (!is_scalar_type(type) || !is_scalar_type(source)) return false;
  bool pointer_and_float = (is_pointer_type(type) && is_floating_type(source)) ||
                           (is_floating_type(type) && is_pointer_type(source));
  return !pointer_and_float;
}

static void warn_about_pointer_truncation(a_type *type, an_operand *operand)
{
  a_type *source = rvalue_type(operand->type);
  if (!is_pointer_type(source) || !is_integral_type(type) || is_bool_type(type)) return;
  bool narrow = size_of_type(type) < size_of_type(source);
  if (narrow && expr_stack->value_required)
    expr_pos_warning(ec_integer_truncated, operand->position);
}

void cast_to_type(a_type *type, an_operand *operand, a_source_position pos)
{
  if (C_dialect == 2 && cast_cplusplus_operand(type, operand, pos)) return;
  if (is_void_type(type)) {
    if (is_lvalue_operand(operand) && !is_array_type(operand->type))
      change_some_ref_kinds(operand->ref_entries, rk_plain, rk_read);
    do_operand_transformations(operand,
                               is_class_struct_union_type(operand->type) ? ot_keep_lvalues : 0u);
    if (operand->kind != ok_error) cast_operand(type, operand, true);
    return;
  }
  bool same_class = is_class_struct_union_type(type);
  do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return;
  if (same_class) {
    if (C_dialect != 2 && gcc_mode &&
        f_types_are_compatible(type, operand->type, tco_ignore_top_qualifiers))
      return;
    if (cast_to_union(type, operand)) return;
  }
  if (is_void_type(operand->type) || !cast_is_possible(type, operand)) {
    if (same_class)
      expr_pos_ty_diagnostic(es_error, ec_cast_to_bad_type, pos, type);
    else
      expr_pos_error(ec_bad_cast, pos);
    conv_to_error_operand(operand);
    return;
  }
  warn_about_pointer_truncation(type, operand);
  if (check_misra_c_2004) {
    misra_hooks.misra_set_diagnostic_pos(pos);
    misra_hooks.check_cast_for_misra(operand, type);
  }
  unsigned ruled_out = operand->ruled_out_expr_kinds;
  cast_operand(type, operand, true);
  if (check_misra_c_2004) settle_conversion_for_misra(operand);
  if (operand->kind == ok_constant && is_integral_or_enum_type(type)) ruled_out = 0;
  operand->ruled_out_expr_kinds = (unsigned char)ruled_out;
  if (is_pointer_type(type) || is_floating_type(type))
    rule_out_expr_kinds(rule_out_integral_constant, operand);
}

// (int)1.5 stays usable in an integral constant expression: its operand is read as any constant.
static void scan_cast_operand(a_type *type, an_operand *operand)
{
  unsigned flags = se_stop_at_comma | se_float_cast_operand;
  bool nested = !strict_ansi_mode && is_integral_or_enum_type(type) &&
                (expr_stack->expression_kind == ek_integral_constant ||
                 expr_stack->expression_kind == ek_template_argument);
  if (!nested) {
    scan_expression(operand, nullptr, prec_cast_operand, flags);
    return;
  }
  an_expr_stack_entry entry;
  bool required = expr_stack->value_required;
  push_expr_stack(ek_constant, &entry, false, true);
  entry.value_required = required;
  scan_expression(operand, nullptr, prec_cast_operand, flags);
  do_operand_transformations(operand, 0);
  operand->ref_entries = operand->last_ref_entry = nullptr;
  pop_expr_stack();
}

// To the operand's own array type a cast does nothing; to another it is one to the elements' pointer type.
static void cast_to_array_type(a_type *type, an_operand *operand, a_source_position pos)
{
  if (is_array_type(operand->type) && f_types_are_compatible(type, operand->type, 0)) {
    expr_pos_warning(ec_nonstd_ignored_array_cast, pos);
    return;
  }
  a_type *pointer = type_after_array_to_pointer_transformation(type);
  expr_pos_ty_diagnostic(es_warning, ec_nonstd_array_cast, pos, pointer);
  cast_to_type(pointer, operand, pos);
}

static void scan_cast(a_type *type, a_source_position pos, an_operand *result)
{
  bool ok = check_cast_target(&type, pos);
  scan_cast_operand(type, result);
  if (!ok) conv_to_error_operand(result);
  if (result->kind != ok_error) {
    if (is_array_type(type)) {
      cast_to_array_type(type, result, pos);
    } else {
      cast_to_type(type, result, pos);
    }
  }
  result->position = pos;
  result->is_id_expression = false;
  result->is_string_literal = false;
}

// -------------------------------------------------------------------------------------------------
// (

static void scan_type_in_parens(a_source_position pos, an_operand *result)
{
  bool defines_type = false, is_class_definition = false;
  an_expr_node *outer_evaluation = begin_type_evaluation();
  a_type *type = scan_type_for_cast(false, &defines_type, &is_class_definition);
  an_expr_node *evaluation = end_type_evaluation(outer_evaluation);
  bool closed = required_token(tok_rparen, ec_exp_rparen);
  if (closed && curr_token == tok_lbrace && compound_literals_allowed) {
    scan_compound_literal(type, pos, result);
    put_type_evaluation_before(evaluation, result);
    result->position = pos;
    result->end_position = curr_construct_end_position;
    return;
  }
  scan_cast(type, pos, result);
  put_type_evaluation_before(evaluation, result);
}

static void scan_parenthesized_expression(a_source_position pos, unsigned flags, an_operand *result)
{
  ++expr_stack->paren_depth;
  add_stop_token(tok_rparen);
  scan_expression(result, nullptr, prec_lowest,
                  (flags & (se_float_cast_operand | se_address_operand)) | se_allow_bound_function |
                      se_in_parens);
  remove_stop_token(tok_rparen);
  --expr_stack->paren_depth;
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  if (result->kind == ok_expression) result->value.expr->is_parenthesized = true;
  if (result->kind == ok_constant && result->value.constant.expr != nullptr)
    result->value.constant.expr->is_parenthesized = true;
  if (result->kind != ok_error) {
    result->position = pos;
    result->end_position = end;
  }
  result->is_id_expression = false;
  result->parenthesized = true;
}

void scan_parenthesized_form(an_operand *result, unsigned flags)
{
  a_source_position pos = pos_curr_token;
  if ((flags & se_paren_consumed) == 0) get_token();
  if (curr_token == tok_lbrace && (gcc_mode || gpp_mode) &&
      expr_stack->expression_kind != ek_preprocessing) {
    scan_statement_expression(pos, result);
    result->position = pos;
    result->end_position = end_pos_curr_token;
    required_token(tok_rparen, ec_exp_rparen);
    return;
  }
  if (expr_stack->expression_kind != ek_preprocessing &&
      is_decl_not_expr(dst_parenthesized_type | dst_cast)) {
    scan_type_in_parens(pos, result);
    return;
  }
  scan_parenthesized_expression(pos, flags, result);
}

// -------------------------------------------------------------------------------------------------
// Values that nobody uses

static bool operation_has_effect(an_expr_node *node);

static bool has_effect(an_expr_node *node)
{
  switch (node->kind) {
  case enk_error:
  case enk_statement_expr:
  case enk_temp_init:
  case enk_new_delete:
  case enk_throw:
  case enk_condition:
  case enk_lowered_eh_construct:
  case enk_builtin_operation: return true;
  case enk_operation: return operation_has_effect(node);
  default: return is_volatile_qualified(node->type);
  }
}

// What the outermost operator does decides: in `a + f()` the sum is pointless, whatever f does.
static bool operation_has_effect(an_expr_node *node)
{
  if (node->is_lvalue && is_volatile_qualified(node->type)) return true;
  switch (op_of(node)) {
  case eok_cast:
  case eok_cast_to_bool:
    if (is_void_type(node->type)) return true;
    return has_effect(first_operand_of(node));
  case eok_ref_indirection: return has_effect(first_operand_of(node));
  case eok_comma: return has_effect(second_operand_of(node));
  case eok_question:
    return has_effect(second_operand_of(node)) || has_effect(third_operand_of(node));
  case eok_land:
  case eok_lor: return has_effect(second_operand_of(node));
  case eok_call:
  case eok_virtual_call:
  case eok_ptr_to_member_call:
  case eok_pre_incr:
  case eok_pre_decr:
  case eok_post_incr:
  case eok_post_decr:
  case eok_assign:
  case eok_struct_assign:
  case eok_va_start:
  case eok_va_arg:
  case eok_va_end:
  case eok_va_copy:
  case eok_varargs_start: return true;
  default: return is_compound_assignment_operator(op_of(node));
  }
}

static void report_no_effect(an_operand *operand, bool is_statement)
{
  if (is_statement && check_misra_c_2004 &&
      misra_c_2004_generate_diagnostic(ec_misra_c_2004_14_2, misra_required_severity)) {
    expr_pos_diagnostic(misra_required_severity, ec_misra_c_2004_14_2, operand->position);
  } else {
    expr_pos_warning(ec_expr_has_no_effect, operand->position);
  }
}

void check_for_no_effect(an_operand *operand, bool is_statement)
{
  if (operand->kind == ok_error || !expr_stack->code_is_generated || in_constant_context()) return;
  if (!expr_stack->value_required) return;
  if (is_void_type(operand->type)) return;
  bool effect = operand->kind == ok_expression && has_effect(operand->value.expr);
  // A folded constant keeps the expression that it came from: a dropped call, say, was one.
  if (operand->kind == ok_constant && operand->value.constant.expr != nullptr) {
    effect = has_effect(operand->value.constant.expr);
  }
  if (!effect) report_no_effect(operand, is_statement);
}

void check_for_unused_result(an_operand *operand)
{
  if (!(gcc_mode || gpp_mode) || operand->kind != ok_expression) return;
  an_expr_node *node = operand->value.expr;
  if (!is_operation(node, eok_call)) return;
  a_routine *routine = routine_from_function_expr(first_operand_of(node));
  if (routine != nullptr && routine->warn_unused_result) {
    expr_pos_warning(ec_call_result_should_be_used, operand->position);
  }
}
