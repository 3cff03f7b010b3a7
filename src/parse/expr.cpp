// expr.cpp - the core of the expression scanner and its entries.
// Rule:    each entry cuts the expression stack, pushes its own kind, scans, pops and restores; the
//          scan itself
//          climbs precedences, one handler a group of operators.
// Entry:   scan_expression and the scan_* of expr.h.
// See:     C99 6.5, 6.6.
#include "parse/expr.h"

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/literals.h"
#include "lex/pp_expr.h"
#include "lex/token_cache.h"
#include "mem/stack_limit.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

typedef void an_operator_handler(an_operand *left, a_rescan_control_block *control_block,
                                 an_operand *result);

struct an_operator_entry {
  signed char precedence; // 0: the token is no operator
  bool right_associative;
  an_operator_handler *handler;
};

static an_operator_entry operator_table[tok_last];

static void fill_operator_table()
{
#define OPERATOR(token, precedence, right, handler)                                                \
  operator_table[token] = {precedence, right, handler};
#include "parse/operators.def"
}

bool token_binds_tighter(unsigned token, int min_precedence)
{
  return operator_table[token].precedence > min_precedence;
}

// -------------------------------------------------------------------------------------------------
// Messages of constant contexts

an_error_code not_allowed_in_constant_code()
{
  switch (expr_stack->expression_kind) {
  case ek_preprocessing: return ec_bad_pp_operator;
  case ek_integral_constant: return ec_bad_integral_operator;
  case ek_template_argument: return ec_bad_templ_arg_expr_operator;
  case ek_constant:
  case ek_normal:
  case ek_unevaluated: break;
  }
  return ec_bad_constant_operator;
}

// -------------------------------------------------------------------------------------------------
// Operands on the way

// A name without declaration is fine only before "(".
static void reject_undefined_symbol(an_operand *operand)
{
  if (operand->kind != ok_undefined_symbol || curr_token == tok_lparen) return;
  a_symbol_locator locator = cleared_locator;
  locator.header = operand->symbol->header;
  locator.position = operand->position;
  expr_pos_st_diagnostic(es_error, ec_undefined_identifier, operand->position,
                         operand->symbol->header->identifier);
  enter_undefined_symbol(&locator);
  record_symbol_reference(rk_plain | rk_error,
                          locator.symbol != nullptr ? locator.symbol : operand->symbol,
                          &operand->position);
  conv_to_error_operand(operand);
}

static void reject_bound_function(an_operand *operand)
{
  if (!operand->is_bound_function || curr_token == tok_lparen) return;
  expr_pos_error(ec_bound_function_must_be_called, operand->position);
  conv_to_error_operand(operand);
}

// K&R: `a + = 1` is `a += 1`.
static a_token_kind old_compound_assignment(a_token_kind token)
{
  switch (token) {
  case tok_plus: return tok_plus_assign;
  case tok_ampersand: return tok_and_assign;
  case tok_star: return tok_times_assign;
  case tok_minus: return tok_minus_assign;
  case tok_divide: return tok_divide_assign;
  case tok_remainder: return tok_remainder_assign;
  case tok_shift_left: return tok_shift_left_assign;
  case tok_shift_right: return tok_shift_right_assign;
  case tok_excl_or: return tok_excl_or_assign;
  case tok_or: return tok_or_assign;
  default: return tok_error;
  }
}

static void merge_old_compound_assignment()
{
  a_token_kind merged = old_compound_assignment(curr_token);
  if (merged == tok_error || next_token() != tok_assign) return;
  a_source_position start = pos_curr_token;
  get_token();
  curr_token = merged;
  pos_curr_token = start;
}

static bool is_end_of_template_argument()
{
  if (!expr_stack->angle_bracket_sensitive || expr_stack->paren_depth != 0) return false;
  return curr_token == tok_gt ||
         (curr_token == tok_shift_right && right_shift_can_be_angle_brackets);
}

// The entry of the operator at hand when it is to be applied; null: the expression ends here.
static const an_operator_entry *operator_to_apply(int min_precedence, unsigned flags)
{
  if (C_dialect == 1) merge_old_compound_assignment();
  const an_operator_entry *entry = &operator_table[curr_token];
  if (entry->precedence == 0) return nullptr;
  if (curr_token == tok_comma && (flags & se_stop_at_comma) != 0) return nullptr;
  if (is_end_of_template_argument()) return nullptr;
  if (entry->precedence < min_precedence) return nullptr;
  if (entry->precedence == min_precedence && !entry->right_associative) return nullptr;
  return entry;
}

static void apply_operators(an_operand *result, int min_precedence, unsigned flags)
{
  for (;;) {
    const an_operator_entry *entry = operator_to_apply(min_precedence, flags);
    if (entry == nullptr) return;
    reject_undefined_symbol(result);
    reject_bound_function(result);
    an_operand left = *result;
    error_position = pos_curr_token;
    entry->handler(&left, nullptr, result);
  }
}

// GNU: in the arm that a known condition drops, anything may stand where a constant is required.
//      What isn't
// constant becomes a zero of its type.
static void replace_nonconstant_of_dead_arm(an_operand *result)
{
  if (result->kind == ok_constant || result->kind == ok_error) return;
  do_operand_transformations(result, 0);
  if (result->kind == ok_constant || result->kind == ok_error) return;
  if (!is_scalar_type(result->type)) {
    expr_pos_error(ec_expr_not_constant, result->position);
    conv_to_error_operand(result);
    return;
  }
  an_operand saved = *result;
  a_constant zero;
  make_zero_of_proper_type(rvalue_type(result->type), &zero);
  make_constant_operand(&zero, result);
  result->position = saved.position;
  result->end_position = saved.end_position;
}

static void join_outer_references(a_ref_entry *outer)
{
  if (outer == nullptr) return;
  a_ref_entry **link = &curr_expr_ref_entries;
  while (*link != nullptr)
    link = &(*link)->next_in_expression;
  *link = outer;
}

static void scan_expression_in_context(an_operand *result, an_operand *selector, int min_precedence,
                                       unsigned flags)
{
  while (curr_token == tok_extension)
    get_token();
  if ((flags & se_paren_consumed) != 0) {
    scan_parenthesized_form(result, flags);
  } else {
    scan_primary(result, selector, min_precedence, flags);
  }
  apply_operators(result, min_precedence, flags);
  reject_undefined_symbol(result);
  if ((flags & se_allow_bound_function) == 0) reject_bound_function(result);
}

void scan_expression(an_operand *result, an_operand *selector, int min_precedence, unsigned flags)
{
  check_recursion();
  if (expr_stack->expression_cache != nullptr && expr_stack->expression_cache->first != nullptr) {
    fetch_operand_from_expression_cache(result);
    error_position = result->position;
    return;
  }
  a_ref_entry *outer_references = curr_expr_ref_entries;
  curr_expr_ref_entries = nullptr;
  bool lax = (gcc_mode || gpp_mode) && in_constant_context() && !expr_stack->value_required &&
             expr_stack->expression_kind != ek_preprocessing;
  if (lax) {
    an_expr_stack_entry entry;
    bool sensitive = expr_stack->angle_bracket_sensitive;
    int depth = expr_stack->paren_depth;
    push_expr_stack(ek_normal, &entry, false, true);
    entry.favor_constant_result = true;
    entry.angle_bracket_sensitive = sensitive;
    entry.paren_depth = depth;
    scan_expression_in_context(result, selector, min_precedence, flags);
    replace_nonconstant_of_dead_arm(result);
    result->ref_entries = result->last_ref_entry = nullptr;
    pop_expr_stack();
  } else {
    scan_expression_in_context(result, selector, min_precedence, flags);
  }
  flush_ref_entries_except(result->ref_entries,
                           selector != nullptr ? selector->ref_entries : nullptr);
  join_outer_references(outer_references);
}

void scan_operand_of_list(an_operand *result)
{
  scan_expression(result, nullptr, prec_comma, se_stop_at_comma);
}

// -------------------------------------------------------------------------------------------------
// Entries: opening and closing

void open_entry(a_scan_entry *scan, an_expression_kind kind, bool force_own_lifetime,
                bool no_lifetime)
{
  scan->enclosing = expr_stack;
  expr_stack = nullptr;
  push_expr_stack(kind, &scan->entry, force_own_lifetime, no_lifetime);
  transfer_context_from_enclosing_expr_stack_entry(false, scan->enclosing, &scan->entry);
}

void close_entry(a_scan_entry *scan, const an_operand *operand)
{
  pop_expr_stack();
  expr_stack = scan->enclosing;
  curr_construct_end_position = operand->end_position;
}

static void init_unset_operand(an_operand *operand)
{
  operand->end_position = pos_curr_token;
}

// The end of a full expression: its node, lifetimes bound, relaxed calls replaced.
static an_expr_node *finish_full_expression(an_operand *operand, a_type *expected_type,
                                            a_misra_expr_use use = meu_value)
{
  an_expr_node *node = wrap_up_full_expression(make_node_from_operand(operand));
  if (check_misra_c_2004) misra_hooks.misra_check_expr(node, expected_type, use);
  if (relaxed_fp) replace_math_funcs(node, expected_type);
  return node;
}

// The end of a constant expression.  Under the checker the constant has kept the expression that it
// was folded from, here for the last time.
static void finish_constant_expression(an_operand *operand, a_type *expected_type,
                                       a_constant *constant)
{
  extract_constant_from_operand(operand, constant);
  if (!check_misra_c_2004 || constant->expr == nullptr) return;
  misra_hooks.misra_check_expr(constant->expr, expected_type, meu_value);
  if (!constants_keep_their_expression(false)) constant->expr = nullptr;
}

// -------------------------------------------------------------------------------------------------
// Constant expressions

static bool is_integral_constant_operand(an_operand *operand)
{
  if (operand->kind != ok_constant) return false;
  return is_integral_or_enum_type(operand->type) || is_template_param_type(operand->type);
}

// GNU C takes what any constant context takes: (int)&((struct s *)0)->m, casts of floating values.
void scan_integral_constant_expression(a_constant *constant)
{
  a_scan_entry scan;
  an_operand operand;
  bool is_gnu = gcc_mode || (gpp_mode && gnu_version < 40000);
  open_entry(&scan, is_gnu ? ek_constant : ek_integral_constant, false, true);
  scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
  do_operand_transformations(&operand, 0);
  if (operand.kind != ok_error && !is_integral_constant_operand(&operand)) {
    expr_pos_error(ec_expr_not_integral_constant, operand.position);
    conv_to_error_operand(&operand);
  }
  finish_constant_expression(&operand, nullptr, constant);
  // An address that was cast to an integer has no value before the program is linked.
  if (constant->kind != ck_integer && constant->kind != ck_error &&
      constant->kind != ck_template_param) {
    expr_pos_error(ec_expr_not_integral_constant, operand.position);
    set_error_constant(constant);
  }
  close_entry(&scan, &operand);
}

void scan_fs_integral_constant_expression(a_constant *constant)
{
  int saved_region;
  switch_to_file_scope_region(&saved_region);
  scan_integral_constant_expression(constant);
  switch_back_to_original_region(saved_region);
}

void scan_member_constant_initializer_expression(a_type *type, a_constant *constant)
{
  scan_constant_initializer_expression(type, nullptr, constant);
}

// Any expression of the comma level: conditions of the C grammar's constant-expression allow none.
void scan_constant_initializer_expression(a_type *type, an_init_pos_state *state,
                                          a_constant *constant)
{
  (void)state;
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_constant, false, true);
  scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
  prep_initializer_operand(&operand, type, 513, ec_bad_initializer_type, &operand.position);
  if (operand.kind == ok_expression) {
    bool compound_constant = operand.value.expr->kind == enk_constant;
    if (compound_constant) {
      make_constant_operand(constant_of(operand.value.expr), &operand);
    } else {
      expr_pos_error(ec_expr_not_constant, operand.position);
      conv_to_error_operand(&operand);
    }
  }
  finish_constant_expression(&operand, type, constant);
  close_entry(&scan, &operand);
}

// -------------------------------------------------------------------------------------------------
// Initializers and typed expressions

static void scan_initializer(a_type *type, bool is_static, bool no_lifetime, bool in_prescan,
                             an_expr_node **out_expr, a_constant *constant)
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, no_lifetime);
  scan.entry.in_aggregate_constant_prescan = in_prescan && is_static;
  scan.entry.favor_constant_result = is_static || favor_constant_result_for_nonstatic_init;
  scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
  prep_initializer_operand(&operand, type, is_static ? 513 : 1, ec_bad_initializer_type,
                           &operand.position);
  *out_expr = nullptr;
  if (operand.kind == ok_expression) {
    *out_expr = finish_full_expression(&operand, type);
    set_error_constant(constant);
  } else {
    finish_constant_expression(&operand, type, constant);
  }
  close_entry(&scan, &operand);
}

void scan_initializer_expression(a_type *type, a_decl_parse_state *state, bool is_static,
                                 bool no_lifetime, an_expr_node **out_expr, a_constant *constant)
{
  (void)state;
  scan_initializer(type, is_static, no_lifetime, false, out_expr, constant);
}

void scan_aggregate_initializer_expression(a_type *type, a_decl_parse_state *state, bool is_static,
                                           an_expr_node **out_expr, a_constant *constant)
{
  (void)state;
  scan_initializer(type, is_static, true, true, out_expr, constant);
}

// A value that was scanned for a class element and turned out to be of another type waits for the
// first
// member without braces; nothing else is scanned before that.
static struct {
  bool is_waiting;
  an_operand operand;
} kept_element;

static bool is_value_of_class(an_operand *operand, a_type *type)
{
  if (operand->kind == ok_error || is_error_type(operand->type)) return true;
  if (C_dialect == 2) return converts_to_class_element(operand, type);
  return is_class_struct_union_type(operand->type) &&
         f_types_are_compatible(operand->type, type, tco_ignore_top_qualifiers);
}

bool drop_kept_initializer_element()
{
  bool was_waiting = kept_element.is_waiting;
  kept_element.is_waiting = false;
  return was_waiting;
}

void scan_initializer_element(a_type *type, bool is_static, bool favor_constant,
                              bool is_whole_object, bool *not_whole, an_expr_node **out_expr,
                              a_constant *constant)
{
  a_scan_entry scan;
  an_operand operand;
  *not_whole = false;
  *out_expr = nullptr;
  open_entry(&scan, is_static ? ek_constant : ek_normal, false, true);
  scan.entry.favor_constant_result =
      is_static || favor_constant || favor_constant_result_for_nonstatic_init;
  scan.entry.in_aggregate_constant_prescan = favor_constant;
  if (kept_element.is_waiting) {
    kept_element.is_waiting = false;
    operand = kept_element.operand;
  } else {
    scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
  }
  bool is_wrong_class = is_whole_object && is_class_struct_union_type(operand.type);
  if (is_class_struct_union_type(type) && !is_wrong_class && !is_value_of_class(&operand, type)) {
    flush_ref_entries_except(nullptr, nullptr);
    operand.ref_entries = operand.last_ref_entry = nullptr;
    kept_element.is_waiting = true;
    kept_element.operand = operand;
    *not_whole = true;
    set_error_constant(constant);
    close_entry(&scan, &operand);
    return;
  }
  prep_initializer_operand(&operand, type, is_static ? 513 : 1, ec_bad_initializer_type,
                           &operand.position);
  if (operand.kind == ok_expression && is_static) {
    expr_pos_error(ec_expr_not_constant, operand.position);
    conv_to_error_operand(&operand);
  }
  if (operand.kind == ok_expression) {
    *out_expr = finish_full_expression(&operand, type);
    set_error_constant(constant);
  } else {
    finish_constant_expression(&operand, type, constant);
  }
  close_entry(&scan, &operand);
}

// Braces are skipped level by level; the values in them are scanned for their messages.
void scan_and_discard_initializer_expression()
{
  check_recursion();
  if (curr_token == tok_lbrace) {
    get_token();
    add_stop_token(tok_rbrace);
    add_stop_token(tok_comma);
    while (token_loop_continues(tok_rbrace)) {
      scan_and_discard_initializer_expression();
      if (!loop_token(tok_comma)) break;
    }
    remove_stop_token(tok_comma);
    remove_stop_token(tok_rbrace);
    required_token(tok_rbrace, ec_exp_rbrace);
    return;
  }
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan_operand_of_list(&operand);
  do_operand_transformations(&operand, 0);
  close_entry(&scan, &operand);
}

an_expr_node *scan_typed_expression(a_type *type, an_error_code code)
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan_expression(&operand, nullptr, prec_lowest, 0);
  prep_initializer_operand(&operand, type, 1, code, &operand.position);
  an_expr_node *node = finish_full_expression(&operand, type);
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *scan_return_expression(a_type *return_type, an_error_code code,
                                     a_dynamic_init **out_init)
{
  if (out_init != nullptr) *out_init = nullptr;
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan.entry.in_return_or_throw = true;
  scan_expression(&operand, nullptr, prec_lowest, 0);
  if (is_void_type(return_type)) {
    do_operand_transformations(&operand, 0);
  } else {
    prep_initializer_operand(&operand, return_type, 1, code, &operand.position);
  }
  bool is_object = C_dialect == 2 && is_class_struct_union_type(return_type);
  if (is_object && operand.kind == ok_expression) release_class_value(operand.value.expr);
  an_expr_node *node = finish_full_expression(&operand, return_type, meu_return);
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *scan_nonconstant_dimension_expression(bool *is_constant, a_constant *constant)
{
  a_scan_entry scan;
  an_operand operand;
  an_expr_node *node = nullptr;
  open_entry(&scan, ek_normal, false, false);
  scan.entry.in_array_dimension = true;
  scan_expression(&operand, nullptr, prec_comma, se_stop_at_comma);
  do_operand_transformations(&operand, 0);
  check_integral_or_enum_operand(&operand);
  *is_constant = operand.kind != ok_expression;
  set_error_constant(constant);
  if (*is_constant) {
    finish_constant_expression(&operand, nullptr, constant);
    if (constant->kind != ck_integer) set_error_constant(constant);
  } else {
    promote_operand(&operand);
    node = finish_full_expression(&operand, nullptr);
  }
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *scan_default_arg_expr(a_type *type)
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan.entry.implicit_reference_marks = true;
  scan_operand_of_list(&operand);
  prep_initializer_operand(&operand, type, 1, ec_bad_default_arg_type, &operand.position);
  an_expr_node *node = finish_full_expression(&operand, type);
  close_entry(&scan, &operand);
  return node;
}

// -------------------------------------------------------------------------------------------------
// Statements

an_expr_node *scan_boolean_controlling_expression()
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, true, false);
  scan_expression(&operand, nullptr, prec_lowest, 0);
  check_boolean_controlling_expr(&operand);
  an_expr_node *node = finish_full_expression(&operand, nullptr, meu_condition);
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *condition_value_expression(a_symbol *symbol, bool is_integer)
{
  a_scan_entry scan;
  an_operand operand;
  a_source_position pos = symbol->position;
  open_entry(&scan, ek_normal, true, false);
  make_lvalue_variable_operand(variable_of_symbol(symbol), &pos, &pos, &operand,
                               ref_entry(symbol, pos));
  if (!is_integer) {
    check_boolean_controlling_expr(&operand);
  } else {
    do_operand_transformations(&operand, 0);
    if (check_integral_or_enum_operand(&operand)) promote_operand(&operand);
  }
  an_expr_node *node = wrap_up_full_expression(make_node_from_operand(&operand));
  operand.end_position = curr_construct_end_position;
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *scan_integer_expression(unsigned flags)
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan_expression(&operand, nullptr, prec_lowest, flags);
  do_operand_transformations(&operand, 0);
  if (check_integral_or_enum_operand(&operand)) promote_operand(&operand);
  an_expr_node *node = finish_full_expression(&operand, nullptr);
  close_entry(&scan, &operand);
  return node;
}

// The last expression of a statement expression is its value: `;` and `}` follow, or `}` alone.
static bool is_value_of_statement_expression(bool in_statement_expression)
{
  if (!in_statement_expression) return false;
  return curr_token == tok_rbrace || (curr_token == tok_semicolon && next_token() == tok_rbrace);
}

an_expr_node *scan_void_expression(bool force_own_lifetime, bool extension_seen,
                                   bool in_statement_expression)
{
  a_scan_entry scan;
  an_operand operand;
  init_unset_operand(&operand);
  open_entry(&scan, ek_normal, force_own_lifetime, false);
  scan_expression(&operand, nullptr, prec_lowest, extension_seen ? se_extension_seen : 0u);
  an_expr_node *node;
  if (is_value_of_statement_expression(in_statement_expression)) {
    do_operand_transformations(&operand, 0);
    node = finish_full_expression(&operand, nullptr);
  } else {
    check_for_no_effect(&operand, true);
    check_for_unused_result(&operand);
    if (is_array_type(operand.type) || operand.state == os_function_designator) {
      do_operand_transformations(&operand, 0);
    } else {
      discard_operand(&operand);
    }
    node = finish_full_expression(&operand, nullptr, meu_statement);
    set_expr_result_not_used(node);
  }
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *scan_asm_operand_expression(bool is_output, bool allows_memory)
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan_expression(&operand, nullptr, prec_lowest, 0);
  if (is_output) {
    eliminate_unusual_operand_kinds(&operand);
    if (check_modifiable_lvalue_operand(&operand)) modifying_lvalue(&operand, false);
  } else if (allows_memory && is_lvalue_operand(&operand)) {
    change_ref_kinds(operand.ref_entries, rk_read);
    if (is_array_type(operand.type)) do_operand_transformations(&operand, 0);
  } else {
    do_operand_transformations(&operand, 0);
  }
  an_expr_node *node = finish_full_expression(&operand, nullptr);
  close_entry(&scan, &operand);
  return node;
}

an_expr_node *scan_computed_goto_expression()
{
  a_scan_entry scan;
  an_operand operand;
  open_entry(&scan, ek_normal, false, false);
  scan_expression(&operand, nullptr, prec_lowest, 0);
  do_operand_transformations(&operand, 0);
  if (operand.kind != ok_error && is_pointer_type(operand.type)) {
    cast_operand(make_pointer_type(void_type()), &operand, false);
  } else {
    if (operand.kind != ok_error) {
      expr_pos_error(ec_assigned_goto_requires_void_ptr, operand.position);
    }
    conv_to_error_operand(&operand);
  }
  an_expr_node *node = finish_full_expression(&operand, nullptr);
  close_entry(&scan, &operand);
  return node;
}

// -------------------------------------------------------------------------------------------------

void expr_one_time_init()
{
  fill_operator_table();
  pp_expr_stack_to_cut = &expr_stack;
  exprutil_one_time_init();
  token_is_function_name_string_literal_hook = token_is_function_name_string_literal;
}

void expr_init()
{
  exprutil_init();
}

void expr_trans_unit_init()
{
  exprutil_trans_unit_init();
}
