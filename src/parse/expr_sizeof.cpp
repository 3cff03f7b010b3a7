// expr_sizeof.cpp - operators on types and on operands that are not evaluated: sizeof, alignment,
// typeof, and the
//                   target's own.
// Entry:   scan_sizeof_operator, scan_alignof_operator, scan_typeof_operator,
//          scan_types_compatible_operator, ...
// See:     C99 6.5.3.4.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/decl_inits.h"
#include "parse/decls.h"
#include "parse/expr_internal.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"
#include "parse/type_evaluation.h"

// -------------------------------------------------------------------------------------------------
// Operands that are types or expressions

struct an_unevaluated_operand {
  a_type *type; // of either form
  bool is_type;
  an_operand operand; // an expression's
  a_source_position position;
  an_expr_node *evaluation; // of the bounds in a type name, or null
};

// A compound literal behind "(type)" is an expression; the type is its.
static void scan_literal_of_type(a_type **type)
{
  a_constant constant;
  a_dynamic_init *init = nullptr;
  scan_compound_literal_initializer(type, !in_function_scope(), &constant, &init);
}

static void scan_unevaluated_expression(an_unevaluated_operand *result, bool paren_consumed)
{
  unsigned flags = paren_consumed ? (unsigned)se_paren_consumed : 0u;
  scan_expression(&result->operand, nullptr, prec_unary, flags);
  do_operand_transformations(&result->operand, ot_keep_function_designators | ot_keep_arrays |
                                                   ot_keep_lvalues | ot_keep_sym_for_member);
  result->type = result->operand.type;
  result->position = result->operand.position;
}

// The operand of sizeof and its kin, scanned in an entry of the unevaluated kind.
static void scan_type_or_expression(an_unevaluated_operand *result)
{
  result->is_type = false;
  result->position = pos_curr_token;
  result->evaluation = nullptr;
  clear_operand(ok_error, &result->operand);
  if (curr_token != tok_lparen) {
    scan_unevaluated_expression(result, false);
    return;
  }
  a_source_position pos = pos_curr_token;
  get_token();
  if (!is_decl_not_expr(dst_parenthesized_type | dst_cast)) {
    scan_unevaluated_expression(result, true);
    result->position = pos;
    return;
  }
  result->is_type = true;
  result->position = pos_curr_token;
  result->type = scan_type_for_sizeof(false);
  result->evaluation = end_type_evaluation(nullptr);
  curr_construct_end_position = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  if (curr_token == tok_lbrace && compound_literals_allowed) {
    scan_literal_of_type(&result->type);
    result->is_type = false;
    make_error_operand(&result->operand);
    result->operand.type = result->type;
  }
}

static void open_unevaluated_entry(an_expr_stack_entry *entry)
{
  push_expr_stack(ek_unevaluated, entry, false, true);
  entry->scanner_handles_discard = true;
}

static bool operand_is_bit_field(an_unevaluated_operand *operand)
{
  if (operand->is_type || operand->operand.kind != ok_expression) return false;
  an_expr_node *node = operand->operand.value.expr;
  if (!is_operation(node, eok_dot_field) && !is_operation(node, eok_arrow_field)) return false;
  an_expr_node *field_node = second_operand_of(node);
  return field_node->kind == enk_field && field_of(field_node)->is_bit_field;
}

void make_size_constant_operand(unsigned long long value, an_operand *operand)
{
  a_constant constant;
  set_unsigned_integer_constant(&constant, value, targ_size_t_int_kind);
  constant.type = size_t_type();
  make_constant_operand(&constant, operand);
}

static void finish_unevaluated_result(an_operand *result, a_source_position pos,
                                      a_source_position end)
{
  result->position = pos;
  result->end_position = end;
  error_position = pos;
}

// -------------------------------------------------------------------------------------------------
// sizeof

// The size at run time: a node that lowering turns into the product of the dimensions.  An operand
// of variable length is evaluated (C99 6.5.3.4p2): what it does, and what the name of its type
// evaluates, stands in front.
static void make_runtime_sizeof(an_unevaluated_operand *source, an_operand *result)
{
  an_expr_node *node = alloc_expr_node(enk_sizeof);
  node->type = size_t_type();
  sizeof_of(node).is_type = true;
  sizeof_of(node).type = source->type;
  if (!source->is_type && source->operand.kind == ok_expression) {
    an_expr_node *operand = source->operand.value.expr;
    if (node_has_side_effects(operand)) node = make_comma_node(operand, node);
  }
  make_expression_operand(node, result);
  put_type_evaluation_before(source->evaluation, result);
}

// 1 for void and functions in the GNU modes; 0 after a message.
static bool size_of_incomplete_operand(an_unevaluated_operand *source, unsigned long long *size)
{
  bool is_function = is_function_type(source->type), is_void = is_void_type(source->type);
  if ((is_function || is_void) && (gcc_mode || gpp_mode)) {
    if (gpp_mode) {
      if (is_function)
        expr_pos_warning(ec_sizeof_function, source->position);
      else
        expr_pos_ty_diagnostic(es_warning, ec_incomplete_type_not_allowed, source->position,
                               source->type);
    }
    *size = 1;
    return true;
  }
  if (is_function)
    expr_pos_error(ec_sizeof_function, source->position);
  else
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, source->position,
                           source->type);
  return false;
}

static void check_sizeof_operand_for_misra(an_unevaluated_operand *source)
{
  if (source->is_type || source->operand.kind != ok_expression) return;
  if (node_has_side_effects(source->operand.value.expr))
    expr_pos_diagnostic(misra_required_severity, ec_misra_c_2004_12_3, source->position);
}

static void make_sizeof_operand(an_unevaluated_operand *source, an_operand *result)
{
  a_type *type = source->type;
  if (is_error_type(type)) {
    make_error_operand(result);
    return;
  }
  if (is_any_reference_type(type)) source->type = type = type_pointed_to(type);
  if (operand_is_bit_field(source) && C_dialect != 1) {
    expr_pos_error(ec_sizeof_bit_field, source->position);
    make_error_operand(result);
    return;
  }
  unsigned long long size;
  bool incomplete = is_function_type(type) || is_void_type(type) || is_incomplete_type(type) ||
                    is_incomplete_array_type(type);
  if (incomplete) {
    if (size_of_incomplete_operand(source, &size))
      make_size_constant_operand(size, result);
    else
      make_error_operand(result);
    return;
  }
  if (is_directly_variably_modified_type(type)) {
    make_runtime_sizeof(source, result);
    return;
  }
  make_size_constant_operand(size_of_type(type), result);
}

void scan_sizeof_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_expr_stack_entry entry;
  an_unevaluated_operand source;
  get_token();
  if (expr_stack->expression_kind == ek_preprocessing) {
    expr_pos_error(ec_bad_pp_operator, pos);
    make_error_operand(result);
    flush_tokens_without_warning();
    return;
  }
  open_unevaluated_entry(&entry);
  scan_type_or_expression(&source);
  a_source_position end =
      source.is_type ? curr_construct_end_position : source.operand.end_position;
  source.operand.ref_entries = source.operand.last_ref_entry = nullptr;
  pop_expr_stack();
  if (check_misra_c_2004) check_sizeof_operand_for_misra(&source);
  make_sizeof_operand(&source, result);
  finish_unevaluated_result(result, pos, end);
}

// -------------------------------------------------------------------------------------------------
// __ALIGNOF__

// A variable's or field's own alignment counts, else that of its type.
static unsigned long long alignment_of_operand(an_unevaluated_operand *source)
{
  if (!source->is_type && source->operand.kind == ok_expression) {
    an_expr_node *node = source->operand.value.expr;
    if (node->kind == enk_variable) return alignment_of_variable(variable_of(node));
    if (is_operation(node, eok_dot_field) || is_operation(node, eok_arrow_field)) {
      an_expr_node *field_node = second_operand_of(node);
      if (field_node->kind == enk_field && field_of(field_node)->declared_alignment != 0) {
        return field_of(field_node)->declared_alignment;
      }
    }
  }
  return f_alignment_of_type(source->type);
}

// GNU: a function named has the alignment that its attribute gives; other functions and void have
//      1.
static unsigned long long alignment_of_routine_operand(an_unevaluated_operand *source)
{
  if (source->is_type || source->operand.kind != ok_expression) return 1;
  an_expr_node *node = source->operand.value.expr;
  bool is_aligned = node->kind == enk_routine && routine_of(node)->alignment != 0;
  return is_aligned ? routine_of(node)->alignment : 1;
}

void scan_alignof_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_expr_stack_entry entry;
  an_unevaluated_operand source;
  get_token();
  open_unevaluated_entry(&entry);
  scan_type_or_expression(&source);
  a_source_position end =
      source.is_type ? curr_construct_end_position : source.operand.end_position;
  source.operand.ref_entries = source.operand.last_ref_entry = nullptr;
  pop_expr_stack();
  if (is_any_reference_type(source.type)) source.type = type_pointed_to(source.type);
  if (is_error_type(source.type)) {
    make_error_operand(result);
  } else if (operand_is_bit_field(&source)) {
    expr_pos_error(ec_sizeof_bit_field, source.position);
    make_error_operand(result);
  } else if (is_function_type(source.type) || is_void_type(source.type)) {
    if (gcc_mode || gpp_mode) {
      make_size_constant_operand(alignment_of_routine_operand(&source), result);
    } else {
      expr_pos_error(ec_alignof_incomplete_type, source.position);
      make_error_operand(result);
    }
  } else if (is_incomplete_type(source.type) && !is_array_type(source.type)) {
    expr_pos_error(ec_alignof_incomplete_type, source.position);
    make_error_operand(result);
  } else {
    make_size_constant_operand(alignment_of_operand(&source), result);
  }
  finish_unevaluated_result(result, pos, end);
}

// -------------------------------------------------------------------------------------------------
// typeof

// The type of an expression as written: arrays and functions stay, bit-fields have their declared
// type.
static a_type *type_of_typeof_operand(an_unevaluated_operand *source)
{
  if (source->is_type) return source->type;
  if (operand_is_bit_field(source))
    return field_of(second_operand_of(source->operand.value.expr))->type;
  return source->type;
}

// GNU: the operand is evaluated where its type is variably modified.
static void evaluate_typeof_operand(an_unevaluated_operand *source, a_type *type)
{
  if (!il_header.vla_used || type == nullptr || !is_variably_modified_type(type)) return;
  if (source->evaluation != nullptr) add_type_evaluation(source->evaluation, source->position);
  if (source->is_type || source->operand.kind != ok_expression) return;
  an_expr_node *operand = source->operand.value.expr;
  if (node_has_side_effects(operand)) add_type_evaluation(operand, source->position);
}

a_type *scan_typeof_operator()
{
  a_source_position pos = pos_curr_token;
  an_expr_stack_entry entry;
  an_unevaluated_operand source;
  if (report_gnu_extensions) pos_warning(ec_typeof_is_gnu_extension, pos);
  get_token();
  if (curr_token != tok_lparen) {
    syntax_error(ec_exp_lparen);
    return error_type();
  }
  an_expr_stack_entry *enclosing = expr_stack;
  expr_stack = nullptr;
  open_unevaluated_entry(&entry);
  entry.in_typeof_or_decltype = true;
  a_source_position open = pos_curr_token;
  get_token();
  add_stop_token(tok_rparen);
  source.is_type = is_decl_not_expr(dst_parenthesized_type);
  source.position = open;
  source.evaluation = nullptr;
  clear_operand(ok_error, &source.operand);
  if (source.is_type) {
    source.type = scan_type_for_sizeof(false);
    source.evaluation = end_type_evaluation(nullptr);
  } else {
    scan_expression(&source.operand, nullptr, prec_lowest, 0);
    eliminate_unusual_operand_kinds(&source.operand);
    source.type = source.operand.type;
    source.operand.ref_entries = source.operand.last_ref_entry = nullptr;
  }
  remove_stop_token(tok_rparen);
  pop_expr_stack();
  expr_stack = enclosing;
  required_token(tok_rparen, ec_exp_rparen);
  a_type *type = type_of_typeof_operand(&source);
  evaluate_typeof_operand(&source, type);
  return type == nullptr || is_unknown_type(type) ? error_type() : type;
}

a_type *scan_decltype_operator(a_rescan_control_block *, a_decl_pos_block *)
{
  return scan_typeof_operator();
}

a_type *scan_underlying_type_operator()
{
  a_type *type = nullptr;
  a_source_position pos = pos_curr_token;
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) return error_type();
  add_stop_token(tok_rparen);
  type_name(&type);
  remove_stop_token(tok_rparen);
  required_token(tok_rparen, ec_exp_rparen);
  if (is_error_type(type)) return type;
  if (is_enum_type(type)) return underlying_type_of_enum(type);
  pos_error(ec_bad_argument_for_underlying_type, pos);
  return error_type();
}

// -------------------------------------------------------------------------------------------------
// __builtin_types_compatible_p

void scan_types_compatible_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  a_type *first = nullptr, *second = nullptr;
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) {
    make_error_operand(result);
    return;
  }
  an_expr_node *outer_evaluation = begin_type_evaluation();
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  type_name(&first);
  remove_stop_token(tok_comma);
  bool ok = required_token(tok_comma, ec_exp_comma);
  if (ok) type_name(&second);
  end_type_evaluation(outer_evaluation);
  remove_stop_token(tok_rparen);
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  if (!ok || is_error_type(first) || is_error_type(second)) {
    make_error_operand(result);
  } else {
    bool compatible =
        f_types_are_compatible(first, second, tco_error_types | tco_ignore_top_qualifiers);
    make_integer_constant_operand(compatible, integer_type(ik_int), result);
  }
  finish_unevaluated_result(result, pos, end);
}

// -------------------------------------------------------------------------------------------------
// __INTADDR__

// An address as an integer constant: what offsetof macros of the target's headers are made of.
void scan_intaddr_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  an_expr_stack_entry entry;
  an_operand operand;
  get_token();
  if (!required_token(tok_lparen, ec_exp_lparen)) {
    make_error_operand(result);
    return;
  }
  push_expr_stack(ek_constant, &entry, false, true);
  add_stop_token(tok_rparen);
  scan_expression(&operand, nullptr, prec_lowest, 0);
  do_operand_transformations(&operand, 0);
  remove_stop_token(tok_rparen);
  bool fits = operand.kind == ok_constant &&
              (is_integral_or_enum_type(operand.type) || is_pointer_type(operand.type));
  if (operand.kind != ok_error && !fits) {
    expr_pos_error(ec_expr_not_integral_constant, operand.position);
    conv_to_error_operand(&operand);
  }
  if (operand.kind != ok_error) cast_operand(size_t_type(), &operand, true);
  operand.ref_entries = operand.last_ref_entry = nullptr;
  pop_expr_stack();
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  *result = operand;
  finish_unevaluated_result(result, pos, end);
}

// -------------------------------------------------------------------------------------------------
// __generic: the selector of type-generic macros

static void combine_generic_type(an_operand *argument, a_float_kind *kind, bool *complex)
{
  a_type *type = argument->type;
  a_float_kind own = fk_double;
  if (is_floating_type(type)) {
    own = float_kind_of_type(type);
    *complex = *complex || is_nonreal_floating_type(type);
  }
  if (own > *kind) *kind = own;
}

static int selected_generic_position(a_float_kind kind, bool complex)
{
  int position = kind == fk_double ? 4 : kind == fk_float ? 5 : 6;
  return complex ? position + 3 : position;
}

// An argument position may be empty: nothing stands for that type.
static bool scan_generic_position(bool selected, an_operand *operand)
{
  if (curr_token == tok_comma || curr_token == tok_rparen) return false;
  bool required = expr_stack->value_required, generated = expr_stack->code_is_generated;
  if (!selected) expr_stack->value_required = expr_stack->code_is_generated = false;
  scan_operand_of_list(operand);
  expr_stack->value_required = required;
  expr_stack->code_is_generated = generated;
  return true;
}

void scan_generic_operator(an_operand *result)
{
  a_source_position pos = pos_curr_token;
  a_float_kind kind = fk_float;
  bool complex = false, found = false;
  a_type *first_type = error_type();
  get_token();
  make_error_operand(result);
  if (!required_token(tok_lparen, ec_exp_lparen)) return;
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  ++expr_stack->paren_depth;
  for (int position = 1; position <= 9; ++position) {
    an_operand operand;
    bool selected = position > 3 && position == selected_generic_position(kind, complex);
    bool present = scan_generic_position(selected, &operand);
    if (present && position <= 3 && operand.kind != ok_error) {
      combine_generic_type(&operand, &kind, &complex);
      if (position == 1) first_type = operand.type;
    }
    if (present && selected) {
      *result = operand;
      found = true;
    }
    if (position < 9 && !required_token(tok_comma, ec_exp_comma)) break;
  }
  --expr_stack->paren_depth;
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rparen);
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  if (!found) expr_pos_ty_diagnostic(es_error, ec_type_generic_function_mismatch, pos, first_type);
  finish_unevaluated_result(result, pos, end);
}

// -------------------------------------------------------------------------------------------------
// __va_parmadr, __va_argcsu, __va_argref, __segment_begin, __segment_end, __segment_size

static bool is_passed_by_ref_type(a_type *type)
{
  if (C_dialect != 2 || !is_class_struct_union_type(type)) return false;
  a_symbol *symbol = skip_typerefs(type)->source_corresp.assoc_symbol;
  return symbol != nullptr && !class_supplement_of_symbol(symbol)->has_trivial_copy_constructor;
}

static void make_va_parmadr(an_operand *operand, a_source_position pos, an_operand *result)
{
  bool names_parameter = operand->kind == ok_expression &&
                         operand->value.expr->kind == enk_variable &&
                         variable_of(operand->value.expr)->is_parameter;
  if (!names_parameter) {
    if (operand->kind != ok_error) expr_pos_error(ec_bad_va_parmadr, pos);
    make_error_operand(result);
    return;
  }
  change_ref_kinds(operand->ref_entries, rk_address_taken);
  a_type *type = make_pointer_type(operand->type);
  make_expression_operand(make_operator_node(eok_va_parmadr, type, make_node_from_operand(operand)),
                          result);
}

static void make_target_result(a_token_kind token, a_type *type, an_operand *result)
{
  switch (token) {
  case tok_va_argcsu:
    make_integer_constant_operand(is_class_struct_union_type(type), integer_type(ik_int), result);
    return;
  case tok_va_argref:
    make_integer_constant_operand(is_passed_by_ref_type(type), integer_type(ik_int), result);
    return;
  default: make_size_constant_operand(0, result); return;
  }
}

void scan_target_operator(an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token;
  get_token();
  if (token == tok_va_parmadr) {
    an_operand operand;
    if (!required_token(tok_lparen, ec_exp_lparen)) {
      make_error_operand(result);
      return;
    }
    add_stop_token(tok_rparen);
    scan_expression(&operand, nullptr, prec_lowest, 0);
    eliminate_unusual_operand_kinds(&operand);
    remove_stop_token(tok_rparen);
    make_va_parmadr(&operand, pos, result);
    a_source_position end = end_pos_curr_token;
    required_token(tok_rparen, ec_exp_rparen);
    finish_unevaluated_result(result, pos, end);
    return;
  }
  an_expr_stack_entry entry;
  an_unevaluated_operand source;
  open_unevaluated_entry(&entry);
  scan_type_or_expression(&source);
  a_source_position end =
      source.is_type ? curr_construct_end_position : source.operand.end_position;
  source.operand.ref_entries = source.operand.last_ref_entry = nullptr;
  pop_expr_stack();
  if (is_error_type(source.type))
    make_error_operand(result);
  else
    make_target_result(token, source.type, result);
  finish_unevaluated_result(result, pos, end);
}
