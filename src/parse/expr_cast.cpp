// expr_cast.cpp - casts of C++: by keyword, in functional notation, and to references and classes.
// Entry:   scan_keyword_cast, scan_functional_cast, cast_cplusplus_operand.
// See:     C++98 5.2.3, 5.2.7 to 5.2.11, 5.4.
#include "consts/folding.h"
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/decls.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/overload.h"

// -------------------------------------------------------------------------------------------------
// References, classes

// The lvalue named by another type: (T &)x, reinterpret_cast<T &>(x).
static void cast_to_reference(a_type *type, an_operand *operand, a_source_position pos,
                              bool is_reinterpret)
{
  a_type *target = type_pointed_to(type);
  bool is_function = operand->state == os_function_designator;
  if (!is_lvalue_operand(operand) && !is_function && !is_class_struct_union_type(operand->type)) {
    expr_pos_error(ec_bad_cast, pos);
    conv_to_error_operand(operand);
    return;
  }
  if (!is_lvalue_operand(operand) && !is_function) conv_class_rvalue_operand_to_lvalue(operand);
  a_base_class *base = nullptr;
  if (!is_reinterpret && is_class_struct_union_type(target) &&
      is_class_struct_union_type(operand->type) && !is_incomplete_type(operand->type))
    base = find_base_class_of(skip_typerefs(operand->type), skip_typerefs(target));
  if (base != nullptr) {
    an_operand saved = *operand;
    an_expr_node *node = make_node_from_operand(operand);
    make_lvalue_expression_operand(base_class_selection_expr(node, base), operand);
    restore_operand_details_incl_ref(operand, &saved);
  }
  cast_operand_for_reference_cast(target, operand, false, is_reinterpret);
  change_ref_kinds(operand->ref_entries, rk_address_taken);
}

static void cast_to_class(a_type *type, an_operand *operand)
{
  a_conv_descr conv;
  if (!user_defined_conversion_possible(operand, type, true, &conv, nullptr)) return;
  if (conv.routine != nullptr || conv.std_conv.base_class != nullptr)
    user_convert_operand(operand, type, &conv, false);
  if (operand->kind != ok_error) do_operand_transformations(operand, 0);
}

// True when the cast is one that only C++ knows, and done.
bool cast_cplusplus_operand(a_type *type, an_operand *operand, a_source_position pos)
{
  if (operand->kind == ok_error) return false;
  if (is_any_reference_type(type)) {
    cast_to_reference(type, operand, pos, false);
    return true;
  }
  if (is_void_type(type)) return false;
  if (is_class_struct_union_type(type)) {
    cast_to_class(type, operand);
    return true;
  }
  if (operand->kind == ok_indefinite_function) {
    prep_initializer_operand(operand, type, 1, ec_bad_cast, &pos);
    return true;
  }
  if (!is_class_struct_union_type(operand->type)) return false;
  a_conv_descr conv;
  if (!user_defined_conversion_possible(operand, type, true, &conv, &pos)) return true;
  user_convert_operand(operand, rvalue_type(type), &conv, false);
  return true;
}

// -------------------------------------------------------------------------------------------------
// Casts by keyword

static const char *keyword_of_cast(a_token_kind token)
{
  switch (token) {
  case tok_const_cast: return "const_cast";
  case tok_dynamic_cast: return "dynamic_cast";
  case tok_reinterpret_cast: return "reinterpret_cast";
  default: return "static_cast";
  }
}

static void fail_cast(an_error_code code, a_source_position pos, an_operand *operand)
{
  if (operand->kind != ok_error) expr_pos_error(code, pos);
  conv_to_error_operand(operand);
}

// The type that the qualifiers of `type` are compared on: of a reference, a pointer to its object.
static a_type *pointer_form(a_type *type)
{
  return is_any_reference_type(type) ? make_pointer_type(type_pointed_to(type)) : type;
}

static bool loses_qualifiers(a_type *source, a_type *target)
{
  if (!is_pointer_type(source) || !is_pointer_type(target)) return false;
  return cast_removes_qualifiers(source, target);
}

static bool check_qualifiers(a_token_kind token, a_type *type, an_operand *operand,
                             a_source_position pos)
{
  bool to_reference = is_any_reference_type(type);
  a_type *source = to_reference ? make_pointer_type(operand->type) : rvalue_type(operand->type);
  if (is_array_type(operand->type) && !to_reference)
    source = type_after_array_to_pointer_transformation(operand->type);
  if (!loses_qualifiers(source, pointer_form(type))) return true;
  expr_pos_st_diagnostic(es_error, ec_cannot_cast_away_const, pos, keyword_of_cast(token));
  conv_to_error_operand(operand);
  return false;
}

// At every level of pointers.
static bool differ_in_qualifiers_only(a_type *a, a_type *b)
{
  while (is_pointer_type(a) && is_pointer_type(b)) {
    a = type_pointed_to(a);
    b = type_pointed_to(b);
  }
  return f_identical_types(a, b, ido_ignore_top_qualifiers);
}

static void do_const_cast(a_type *type, an_operand *operand, a_source_position pos)
{
  bool to_reference = is_any_reference_type(type);
  a_type *target = to_reference || is_pointer_type(type) ? type_pointed_to(type) : nullptr;
  if ((target == nullptr && !is_ptr_to_member_type(type)) ||
      (target != nullptr && is_function_type(target))) {
    fail_cast(ec_bad_const_cast_type, pos, operand);
    return;
  }
  if (to_reference) {
    if (!f_identical_types(operand->type, target, ido_ignore_top_qualifiers)) {
      fail_cast(ec_bad_const_cast, pos, operand);
      return;
    }
    cast_to_reference(type, operand, pos, false);
    return;
  }
  do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return;
  if (!differ_in_qualifiers_only(operand->type, type)) {
    fail_cast(ec_bad_const_cast, pos, operand);
    return;
  }
  cast_operand(type, operand, true);
}

static bool reinterpret_is_nonstandard(a_type *source, a_type *target)
{
  bool from_function = is_pointer_type(source) && is_function_type(type_pointed_to(source));
  bool to_function = is_pointer_type(target) && is_function_type(type_pointed_to(target));
  return is_pointer_type(source) && is_pointer_type(target) && from_function != to_function;
}

static bool names_classes(a_type *source, a_type *target)
{
  return is_pointer_type(source) && is_pointer_type(target) &&
         is_class_struct_union_type(type_pointed_to(source)) &&
         is_class_struct_union_type(type_pointed_to(target));
}

static void do_reinterpret_cast(a_type *type, an_operand *operand, a_source_position pos)
{
  if (is_any_reference_type(type)) {
    if (!check_qualifiers(tok_reinterpret_cast, type, operand, pos)) return;
    cast_to_reference(type, operand, pos, true);
    return;
  }
  do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return;
  if (!check_qualifiers(tok_reinterpret_cast, type, operand, pos)) return;
  if (!reinterpret_cast_conversion_possible(operand->type, type)) {
    fail_cast(ec_bad_cast, pos, operand);
    return;
  }
  if (reinterpret_is_nonstandard(operand->type, type))
    expr_pos_diagnostic(strict_ansi_mode ? strict_ansi_discretionary_severity : es_remark,
                        ec_nonstd_reinterpret_cast, pos);
  // The address stays as it is, also between classes that are related.
  if (names_classes(operand->type, type))
    cast_operand_special(make_pointer_type(void_type()), operand, false, true);
  cast_operand_special(type, operand, false, true);
}

// What an implicit conversion does, and the reverse of standard conversions.
static bool static_cast_applies(a_type *type, an_operand *operand)
{
  a_conversion_source source = {};
  source.type = operand->type;
  source.is_lvalue = is_lvalue_operand(operand);
  source.is_constant = operand->kind == ok_constant;
  source.is_null_pointer_constant =
      operand->kind == ok_constant && is_null_pointer_constant(constant_of_operand(operand));
  a_std_conv_descr conv;
  clear_std_conv_descr(&conv);
  if (impl_conversion_possible(&source, rvalue_type(type), &conv)) return true;
  if (is_arithmetic_or_enum_type(operand->type) && is_arithmetic_or_enum_type(type)) return true;
  a_conversion_source reverse = {};
  reverse.type = rvalue_type(type);
  clear_std_conv_descr(&conv);
  bool pointers = (is_pointer_type(type) && is_pointer_type(operand->type)) ||
                  (is_ptr_to_member_type(type) && is_ptr_to_member_type(operand->type));
  if (!pointers) return false;
  // The reverse way may add the qualifiers that the operand has.
  a_type *back = operand->type;
  if (is_pointer_type(back))
    back = make_pointer_type(
        f_make_qualified_type(type_pointed_to(back), get_type_qualifiers(type_pointed_to(type))));
  return impl_conversion_possible(&reverse, back, &conv);
}

static void do_static_cast(a_type *type, an_operand *operand, a_source_position pos)
{
  if (is_void_type(type)) {
    discard_operand(operand);
    do_operand_transformations(operand,
                               is_class_struct_union_type(operand->type) ? ot_keep_lvalues : 0u);
    if (operand->kind != ok_error) cast_operand(type, operand, true);
    return;
  }
  if (is_any_reference_type(type)) {
    if (!check_qualifiers(tok_static_cast, type, operand, pos)) return;
    a_type *target = type_pointed_to(type);
    bool related =
        f_identical_types(operand->type, target, ido_ignore_top_qualifiers) ||
        (is_class_struct_union_type(target) && is_class_struct_union_type(operand->type) &&
         (is_same_class_or_base_class_thereof(skip_typerefs(target),
                                              skip_typerefs(operand->type)) ||
          is_same_class_or_base_class_thereof(skip_typerefs(operand->type),
                                              skip_typerefs(target))));
    if (related && is_lvalue_operand(operand)) {
      cast_to_reference(type, operand, pos, false);
    } else {
      prep_reference_initializer_operand(operand, type, nullptr, true, rif_lives_on, ec_bad_cast,
                                         &pos);
    }
    return;
  }
  if (cast_cplusplus_operand(type, operand, pos)) return;
  if (!check_qualifiers(tok_static_cast, type, operand, pos)) return;
  do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return;
  if (!static_cast_applies(type, operand)) {
    fail_cast(ec_bad_cast, pos, operand);
    return;
  }
  unsigned ruled_out = operand->ruled_out_expr_kinds;
  cast_operand(type, operand, true);
  operand->ruled_out_expr_kinds =
      operand->kind == ok_constant && is_integral_or_enum_type(type) ? 0 : (unsigned char)ruled_out;
}

static a_type *complete_class_behind(a_type *type)
{
  if (!is_pointer_type(type) && !is_any_reference_type(type)) return nullptr;
  a_type *target = skip_typerefs(type_pointed_to(type));
  return is_class_struct_union_type(target) && !is_incomplete_type(target) ? target : nullptr;
}

static bool is_polymorphic(a_type *class_type)
{
  return as_class(skip_typerefs(class_type)).has_virtual_functions;
}

static void do_dynamic_cast(a_type *type, an_operand *operand, a_source_position pos)
{
  bool to_reference = is_any_reference_type(type);
  bool to_void = is_pointer_type(type) && is_void_type(type_pointed_to(type));
  a_type *target = complete_class_behind(type);
  if (target == nullptr && !to_void) {
    fail_cast(ec_bad_dynamic_cast_type, pos, operand);
    return;
  }
  if (!to_reference) do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return;
  a_type *source =
      to_reference ? skip_typerefs(operand->type) : complete_class_behind(operand->type);
  if (source == nullptr || !is_class_struct_union_type(source) ||
      (to_reference && !is_lvalue_operand(operand))) {
    fail_cast(to_reference ? ec_bad_ref_dynamic_cast_operand : ec_bad_ptr_dynamic_cast_operand, pos,
              operand);
    return;
  }
  if (!check_qualifiers(tok_dynamic_cast, type, operand, pos)) return;
  if (target != nullptr && is_same_class_or_base_class_thereof(target, source)) {
    if (to_reference)
      cast_to_reference(type, operand, pos, false);
    else
      cast_operand(type, operand, true);
    return;
  }
  if (!is_polymorphic(source)) {
    fail_cast(ec_dynamic_cast_operand_must_be_polymorphic, pos, operand);
    return;
  }
  if (!rtti_enabled) expr_pos_warning(ec_dynamic_cast_without_rtti, pos);
  an_operand saved = *operand;
  an_expr_node *node = make_node_from_operand(operand);
  a_type *result_type = to_reference ? target : type;
  an_expr_node *cast = make_operator_node(to_reference ? eok_dynamic_cast_lvalue : eok_dynamic_cast,
                                          rvalue_type(result_type), node);
  if (to_reference) {
    cast->type = type_pointed_to(type);
    cast->is_lvalue = true;
    make_lvalue_expression_operand(cast, operand);
  } else {
    make_expression_operand(cast, operand);
  }
  restore_operand_details_incl_ref(operand, &saved);
}

void scan_keyword_cast(an_operand *result)
{
  a_token_kind token = curr_token;
  a_source_position pos = pos_curr_token;
  get_token();
  a_type *type = error_type();
  if (required_token(tok_lt, ec_exp_lt)) {
    ++expr_stack->paren_depth;
    add_stop_token(tok_gt);
    type_name(&type);
    remove_stop_token(tok_gt);
    --expr_stack->paren_depth;
    required_token(tok_gt, ec_exp_gt);
  }
  required_token(tok_lparen, ec_exp_lparen);
  ++expr_stack->paren_depth;
  add_stop_token(tok_rparen);
  scan_expression(result, nullptr, prec_lowest, 0);
  remove_stop_token(tok_rparen);
  --expr_stack->paren_depth;
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  normalize_error_operand(result);
  if (is_error_type(type)) {
    conv_to_error_operand(result);
  } else if (result->kind != ok_error) {
    switch (token) {
    case tok_const_cast: do_const_cast(type, result, pos); break;
    case tok_reinterpret_cast: do_reinterpret_cast(type, result, pos); break;
    case tok_dynamic_cast: do_dynamic_cast(type, result, pos); break;
    default: do_static_cast(type, result, pos); break;
    }
  }
  result->position = pos;
  result->end_position = end;
  result->is_id_expression = false;
  result->is_string_literal = false;
}

// -------------------------------------------------------------------------------------------------
// T(x), T(), T(a, b)

static void make_value_initialized(a_type *type, an_operand *result)
{
  if (is_void_type(type)) {
    make_expression_operand(zero_cast_to_void(), result);
    return;
  }
  if (is_class_struct_union_type(type)) {
    construct_temporary(type, nullptr, pos_curr_token, result);
    return;
  }
  a_constant zero;
  make_zero_of_proper_type(rvalue_type(type), &zero);
  make_constant_operand(&zero, result);
}

void scan_functional_cast(a_type *type, a_source_position pos, an_operand *result)
{
  get_token();
  an_arg_operand *args = scan_argument_operands();
  a_source_position end = end_pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  if (is_error_type(type)) {
    make_error_operand(result);
  } else if (args == nullptr) {
    make_value_initialized(type, result);
  } else if (is_class_struct_union_type(type)) {
    construct_temporary(type, args, pos, result);
  } else if (args->next != nullptr) {
    expr_pos_error(ec_too_many_initializer_values, args->next->operand.position);
    make_error_operand(result);
  } else {
    *result = args->operand;
    cast_to_type(type, result, pos);
  }
  free_arg_operand_list(args);
  result->position = pos;
  result->end_position = end;
  result->is_id_expression = false;
}

a_type *type_of_functional_cast_keyword()
{
  switch (curr_token) {
  case tok_char: return integer_type(ik_char);
  case tok_wchar_t: return wchar_t_type();
  case tok_bool: return bool_type();
  case tok_short: return integer_type(ik_short);
  case tok_int:
  case tok_signed: return integer_type(ik_int);
  case tok_unsigned: return integer_type(ik_unsigned_int);
  case tok_long: return integer_type(ik_long);
  case tok_float: return float_type(fk_float);
  case tok_double: return float_type(fk_double);
  case tok_void: return void_type();
  case tok_char16_t: return char16_t_type();
  case tok_char32_t: return char32_t_type();
  default: return nullptr;
  }
}
