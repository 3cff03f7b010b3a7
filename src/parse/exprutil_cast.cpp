// exprutil_cast.cpp - casts, and the conversions by which an operand reaches a destination.
// Rule:    cast_operand* carry a conversion out without asking whether it is allowed; prep_* ask
//          and report.
// Entry:   cast_operand_full, prep_initializer_operand, prep_assignment_operand,
//          prep_argument_operand.
// See:     C99 6.3, 6.5.4, 6.5.16.1.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_internal.h"
#include "parse/exprutil.h"
#include "parse/overload.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Casts of nodes

an_expr_node *cast_node(an_expr_node *node, a_type *type, bool is_implicit)
{
  if (node->kind == enk_error || type->kind == tk_error) return node;
  if (is_implicit && identical_types(node->type, type)) return node;
  bool to_bool = is_bool_type(type) && !is_bool_type(node->type);
  a_source_range range = node->expr_range;
  an_expr_node *cast = make_operator_node(to_bool ? eok_cast_to_bool : eok_cast, type, node);
  operation_of(cast).is_implicit_cast = is_implicit;
  cast->expr_range = range;
  return cast;
}

// -------------------------------------------------------------------------------------------------
// Casts of operands

static void cast_constant_operand(a_type *type, an_operand *operand, a_source_position *pos,
                                  bool check_access, bool check_ambiguity, bool is_implicit,
                                  bool reports, bool no_hierarchy_adjust)
{
  if (is_implicit && identical_types(operand->type, type) && operand->state != os_lvalue) return;
  an_operand saved = *operand;
  a_constant result = operand->value.constant;
  bool not_folded = false;
  an_error_code suppressed = ec_no_error;
  type_change_constant_full(&result, type, is_implicit && reports, in_constant_context(),
                            expr_stack->value_required, expr_stack->favor_constant_result,
                            check_access, check_ambiguity, no_hierarchy_adjust, false, &not_folded,
                            expr_stack->suppress_errors ? &suppressed : nullptr, pos);
  if (suppressed != ec_no_error) expr_stack->error_was_suppressed = true;
  if (not_folded) {
    if (in_constant_context() && expr_stack->value_required) {
      expr_pos_error(ec_expr_not_constant, operand->position);
      conv_to_error_operand(operand);
      return;
    }
    an_expr_node *node = make_node_from_operand(operand);
    make_expression_operand(cast_node(node, type, is_implicit), operand);
    restore_operand_details_incl_ref(operand, &saved);
    return;
  }
  if (result.kind != ck_error && !is_implicit && constants_keep_their_expression()) {
    result.expr = cast_node(make_node_from_operand(operand), type, is_implicit);
  }
  // The fold was asked for an explicit cast only to keep it quiet.
  bool is_new_cast = result.expr != nullptr && result.expr != saved.value.constant.expr &&
                     is_operation(result.expr, eok_cast);
  if (is_new_cast) operation_of(result.expr).is_implicit_cast = is_implicit;
  make_constant_operand(&result, operand);
  operand->ruled_out_expr_kinds = saved.ruled_out_expr_kinds;
  restore_operand_details_incl_ref(operand, &saved);
}

void cast_operand_full(a_type *type, an_operand *operand, a_source_position *pos, bool check_access,
                       bool check_ambiguity, bool is_implicit, bool is_reinterpret,
                       bool no_hierarchy_adjust)
{
  if (operand->kind == ok_error) return;
  type = rvalue_type(type);
  if (is_error_type(type)) {
    conv_to_error_operand(operand);
    return;
  }
  if (operand->kind == ok_constant && !is_void_type(type)) {
    cast_constant_operand(type, operand, pos, check_access, check_ambiguity, is_implicit, true,
                          no_hierarchy_adjust);
    return;
  }
  if (operand->kind != ok_expression && operand->kind != ok_constant) return;
  an_operand saved = *operand;
  an_expr_node *node = make_node_from_operand(operand);
  an_expr_node *cast = cast_node(node, type, is_implicit);
  if (cast != node && is_reinterpret) cast->is_address_context = false;
  make_expression_operand(cast, operand);
  operand->ruled_out_expr_kinds = saved.ruled_out_expr_kinds;
  restore_operand_details_incl_ref(operand, &saved);
}

// The arithmetic conversions wrap constants around without a word: in `u & ~7` nobody means a
// negative number.
void convert_arithmetic_operand(a_type *type, an_operand *operand)
{
  bool is_integer_constant =
      operand->kind == ok_constant && operand->value.constant.kind == ck_integer;
  if (is_integer_constant && is_integral_or_enum_type(type) && operand->kind != ok_error) {
    cast_constant_operand(rvalue_type(type), operand, &operand->position, false, false, true, false,
                          false);
  } else {
    cast_operand(type, operand, false);
  }
}

void cast_operand(a_type *type, an_operand *operand, bool is_explicit)
{
  cast_operand_full(type, operand, &operand->position, true, true, !is_explicit, false, false);
}

void cast_operand_special(a_type *type, an_operand *operand, bool is_implicit, bool is_reinterpret)
{
  cast_operand_full(type, operand, &operand->position, true, true, is_implicit, is_reinterpret,
                    false);
}

void cast_operand_for_reference_cast(a_type *type, an_operand *operand, bool is_implicit,
                                     bool is_reinterpret)
{
  an_operand saved = *operand;
  if (is_any_reference_type(type)) type = type_pointed_to(type);
  if (identical_types(type, operand->type)) return;
  an_expr_node *node = make_lvalue_operator_node(
      is_reinterpret ? eok_reference_cast : eok_lvalue_cast, type, make_node_from_operand(operand));
  operation_of(node).is_implicit_cast = is_implicit;
  make_lvalue_expression_operand(node, operand);
  restore_operand_details_incl_ref(operand, &saved);
}

// -------------------------------------------------------------------------------------------------
// Whether an operand converts to a destination

static void describe_source(an_operand *operand, a_conversion_source *source)
{
  source->type = operand->type;
  source->is_lvalue = is_lvalue_operand(operand);
  source->is_constant = operand->kind == ok_constant;
  source->is_null_pointer_constant =
      operand->kind == ok_constant && is_null_pointer_constant(&operand->value.constant);
  source->is_string_literal = operand->kind == ok_constant &&
                              constant_is_pointer_to_string_literal(&operand->value.constant);
}

bool implicit_conversion_possible(an_operand *operand, a_type *type, an_error_code *warning_code,
                                  an_error_severity *severity)
{
  *warning_code = ec_no_error;
  *severity = es_warning;
  a_type *source_type = rvalue_type(operand->type);
  if (is_error_type(source_type) || is_error_type(type)) return true;
  if (is_class_struct_union_type(type) || is_class_struct_union_type(source_type)) {
    return f_types_are_compatible(source_type, type, tco_ignore_top_qualifiers);
  }
  a_conversion_source source;
  a_std_conv_descr descr;
  describe_source(operand, &source);
  clear_std_conv_descr(&descr);
  if (!impl_conversion_possible(&source, rvalue_type(type), &descr)) return false;
  *warning_code = (an_error_code)descr.diagnostic;
  return true;
}

// GNU: an argument for a transparent union takes the form of the first member that it converts to.
static bool conv_to_transparent_union(an_operand *operand, a_type *type)
{
  a_type *union_type = skip_typerefs(type);
  if (union_type->kind != tk_union || !as_class(union_type).is_transparent_union) return false;
  for (a_field *field = as_class(union_type).first_field; field != nullptr; field = field->next) {
    an_error_code code;
    an_error_severity severity;
    if (!implicit_conversion_possible(operand, field->type, &code, &severity) ||
        code != ec_no_error)
      continue;
    an_operand saved = *operand;
    cast_operand_full(field->type, operand, &operand->position, true, true, true, false, false);
    a_variable *temporary = make_expression_temporary(union_type);
    an_expr_node *member = field_lvalue_selection_expr(var_lvalue_expr(temporary), field);
    member->next = make_node_from_operand(operand);
    an_expr_node *assignment = make_operator_node(assignment_operator_for_type(field->type),
                                                  rvalue_type(field->type), member);
    make_expression_operand(make_comma_node(assignment, var_rvalue_expr(temporary)), operand);
    operand->type = union_type;
    restore_operand_details_incl_ref(operand, &saved);
    return true;
  }
  return false;
}

static void report_impossible_conversion(an_operand *operand, a_type *type, an_error_code code,
                                         a_source_position *pos)
{
  expr_pos_ty2_diagnostic(es_error, code, pos != nullptr ? *pos : operand->position, operand->type,
                          type);
  conv_to_error_operand(operand);
}

// What a conversion that is allowed but doubtful is worth.  The GNU modes take the pointer mixtures
// that
// old code is full of with a warning; so does every mode that isn't strict.
static void report_doubtful_conversion(an_operand *operand, a_type *type, an_error_code code,
                                       an_error_severity severity, a_source_position *pos)
{
  if (code == ec_no_error) return;
  expr_pos_ty2_diagnostic(severity, code, pos != nullptr ? *pos : operand->position, operand->type,
                          type);
}

// Pointers to other types, and integers as pointers: refused by the standard, taken by compilers of
// C.
static bool lax_pointer_conversion(an_operand *operand, a_type *type)
{
  if (C_dialect == 2) return false;
  a_type *source = rvalue_type(operand->type);
  if (is_pointer_type(type)) return is_pointer_type(source) || is_integral_or_enum_type(source);
  return is_integral_or_enum_type(type) && is_pointer_type(source);
}

// C++: what only overload resolution can convert; false leaves the operand to the standard
// conversions.
static bool convert_class_or_function(an_operand *operand, a_type *type, a_source_position *pos)
{
  if (operand->kind == ok_indefinite_function) {
    bool is_ambiguous = false;
    a_std_conv_descr conv;
    clear_std_conv_descr(&conv);
    a_symbol *function = find_addr_of_overloaded_function_match(
        operand->symbol, operand->template_args != nullptr, operand->template_args,
        operand->pending_address_of, type, false, &is_ambiguous, nullptr, &conv);
    if (function == nullptr) {
      expr_pos_sy_diagnostic(es_error,
                             is_ambiguous ? ec_ambiguous_ptr_to_overloaded_function
                                          : ec_no_match_for_addr_of_overloaded_function,
                             operand->position, operand->symbol);
      conv_to_error_operand(operand);
      return true;
    }
    overloaded_function_catch_up(operand, function);
    return false;
  }
  bool from_class = is_class_struct_union_type(operand->type);
  if (!from_class && !is_class_struct_union_type(type)) return false;
  if (in_constant_context() || is_error_type(type)) return false;
  a_conv_descr conv;
  if (!user_defined_conversion_possible(operand, rvalue_type(type), false, &conv, pos)) return true;
  if (conv.routine == nullptr && conv.std_conv.base_class == nullptr) return false;
  // A temporary of the class is the object itself: it isn't copied once more.
  bool is_copy = conv.copy_like_constructor && !is_lvalue_operand(operand) &&
                 f_identical_types(operand->type, type, ido_ignore_top_qualifiers);
  if (is_copy) return false;
  user_convert_operand(operand, rvalue_type(type), &conv, true);
  if (operand->kind != ok_error) do_operand_transformations(operand, 0);
  return true;
}

static void convert_value(an_operand *operand, a_type *type, bool is_argument, an_error_code code,
                          a_source_position *pos)
{
  an_error_code warning_code;
  an_error_severity severity;
  if (implicit_conversion_possible(operand, type, &warning_code, &severity)) {
    report_doubtful_conversion(operand, type, warning_code, severity, pos);
    if (is_class_struct_union_type(type)) return;
    cast_operand_full(type, operand, &operand->position, true, true, true, false, false);
    return;
  }
  if (is_argument && (gcc_mode || gpp_mode) && conv_to_transparent_union(operand, type)) return;
  if (lax_pointer_conversion(operand, type)) {
    severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
    report_doubtful_conversion(operand, type, code, severity, pos);
    if (severity >= es_error)
      conv_to_error_operand(operand);
    else
      cast_operand_full(type, operand, &operand->position, true, true, true, false, false);
    return;
  }
  report_impossible_conversion(operand, type, code, pos);
}

void settle_conversion_for_misra(const an_operand *operand)
{
  if (operand->kind == ok_error)
    misra_hooks.misra_drop_diagnostics();
  else
    misra_hooks.misra_flush_diagnostics(operand->position);
}

// The assignment that the compiler makes reads the object; it needs no copy of it.
static bool is_assigned_as_it_stands(an_operand *operand, a_type *type)
{
  if (C_dialect != 2 || operand->kind == ok_error || !is_class_struct_union_type(type))
    return false;
  a_type *source = skip_typerefs(operand->type), *target = skip_typerefs(type);
  if (!is_class_struct_union_type(source) || is_incomplete_type(source)) return false;
  if (!is_same_class_or_base_class_thereof(target, source)) return false;
  return step_object_to_class(operand, false, target);
}

static void general_conversion(an_operand *operand, a_type *type, a_misra_conversion_use use,
                               an_error_code code, a_source_position *pos)
{
  if (is_any_reference_type(type)) {
    unsigned flags = use == mcu_argument              ? 0u
                     : expr_stack->in_return_or_throw ? unsigned{rif_return}
                                                      : unsigned{rif_lives_on};
    if (expr_stack->favor_constant_result) flags |= rif_static;
    prep_reference_initializer_operand(operand, type, nullptr, false, flags, code, pos);
    return;
  }
  if (C_dialect == 2 && convert_class_or_function(operand, type, pos)) return;
  do_operand_transformations(operand, ot_leave_indefinite_functions);
  normalize_error_operand(operand);
  if (operand->kind == ok_error) return;
  if (is_error_type(type)) {
    conv_to_error_operand(operand);
    return;
  }
  if (is_array_type(operand->type)) { // no lvalue, so that it is no pointer in C89
    expr_pos_error(ec_bad_rvalue_array, operand->position);
    conv_to_error_operand(operand);
    return;
  }
  if (check_misra_c_2004) misra_hooks.misra_check_conversion(operand, type, use);
  convert_value(operand, type, use == mcu_argument, code, pos);
  if (check_misra_c_2004) settle_conversion_for_misra(operand);
}

void prep_initializer_operand(an_operand *operand, a_type *type, unsigned context,
                              an_error_code code, a_source_position *pos)
{
  (void)context;
  a_misra_conversion_use use = expr_stack->in_return_or_throw ? mcu_return : mcu_assignment;
  general_conversion(operand, type, use, code, pos);
  if (expr_stack->favor_constant_result) force_operand_to_constant_if_possible(operand);
}

void prep_assignment_operand(an_operand *operand, a_type *type, an_error_code code,
                             a_source_position *pos)
{
  if (is_assigned_as_it_stands(operand, type))
    do_operand_transformations(operand, 0);
  else
    general_conversion(operand, type, mcu_assignment, code, pos);
}

void prep_argument_operand(an_operand *operand, a_type *param_type, a_param_type *param,
                           an_error_code code)
{
  general_conversion(operand, param_type, mcu_argument, code, &operand->position);
  if (param != nullptr && expr_stack->favor_constant_result)
    force_operand_to_constant_if_possible(operand);
}
