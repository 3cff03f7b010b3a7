// exprutil_conv.cpp - the implicit conversions: decay, lvalue to rvalue, promotion, the arithmetic
// conversions.
// Rule:    do_operand_transformations is the only place that states their order: arrays decay
//          before functions
//          are resolved, and lvalue-to-rvalue never runs on an array or a function.
// Entry:   do_operand_transformations, conv_lvalue_to_rvalue, determine_arithmetic_conversions.
// See:     C99 6.3.1, 6.3.2.
#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_internal.h"
#include "parse/exprutil.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Addresses into arrays of known size

static bool integer_constant_value(an_expr_node *node, int64_t *value)
{
  if (node->kind != enk_constant || constant_of(node)->kind != ck_integer) return false;
  bool overflow = false;
  *value = value_of_integer_constant(constant_of(node), &overflow);
  return !overflow;
}

// The array that a decayed pointer points into.
static bool array_behind_pointer(an_expr_node *pointer, a_target_size *count, int64_t *index)
{
  if (is_operation(pointer, eok_array_to_pointer)) {
    a_type *type = skip_typerefs(first_operand_of(pointer)->type);
    if (type->kind != tk_array || as_array(type).is_vla || as_array(type).bound_is_expr)
      return false;
    if (is_incomplete_array_type(type) || as_array(type).bound_is_constant) return false;
    *count = as_array(type).bound.number_of_elements;
    *index = 0;
    return *count >= 2;
  }
  if (pointer->kind != enk_constant) return false;
  a_constant *constant = constant_of(pointer);
  if (constant->kind != ck_address || !is_pointer_type(constant->type)) return false;
  a_type *object = nullptr;
  if (address_of(constant).kind == ack_variable) {
    object = ((a_variable *)address_of(constant).entity)->type;
  } else if (address_of(constant).kind == ack_constant) {
    object = ((a_constant *)address_of(constant).entity)->type;
  }
  if (object == nullptr || !is_array_type(object) || is_incomplete_array_type(object)) return false;
  a_type *element = type_pointed_to(constant->type);
  if (is_incomplete_type(element) || is_void_type(element) || is_function_type(element))
    return false;
  a_target_size size = size_of_type(element);
  if (size == 0 || !identical_types(make_unqualified_type(array_element_type(object)),
                                    make_unqualified_type(element))) {
    return false;
  }
  *count = size_of_type(object) / size;
  *index = address_of(constant).offset / (int64_t)size;
  return *count >= 2;
}

// The element that the pointer expression points to, when array and offset are known.
static bool known_element(an_expr_node *pointer, a_target_size *count, int64_t *index)
{
  int64_t offset;
  if (is_operation(pointer, eok_address_of) &&
      is_operation(first_operand_of(pointer), eok_subscript)) {
    an_expr_node *subscript = first_operand_of(pointer);
    if (!integer_constant_value(second_operand_of(subscript), &offset)) return false;
    if (!known_element(first_operand_of(subscript), count, index)) return false;
    *index += offset;
    return true;
  }
  if (is_operation(pointer, eok_pointer_add) || is_operation(pointer, eok_pointer_subtract)) {
    if (!integer_constant_value(second_operand_of(pointer), &offset)) return false;
    if (!known_element(first_operand_of(pointer), count, index)) return false;
    *index += is_operation(pointer, eok_pointer_add) ? offset : -offset;
    return true;
  }
  return array_behind_pointer(pointer, count, index);
}

// Reports a pointer beyond its array.  One past the end is fine until the element is accessed.
void check_pointer_range(an_operand *operand, bool is_access)
{
  if (operand->kind != ok_expression || !expr_stack->value_required) return;
  an_expr_node *node = operand->value.expr;
  a_target_size count;
  int64_t index, offset;
  an_error_code code = ec_pointer_outside_base_object;
  if (is_operation(node, eok_subscript)) {
    code = ec_subscript_out_of_range;
    if (!integer_constant_value(second_operand_of(node), &offset)) return;
    if (!known_element(first_operand_of(node), &count, &index)) return;
    index += offset;
  } else if (is_operation(node, eok_indirection)) {
    if (!is_access || !known_element(first_operand_of(node), &count, &index)) return;
  } else if (is_operation(node, eok_pointer_add) || is_operation(node, eok_pointer_subtract)) {
    if (is_access || !known_element(node, &count, &index)) return;
  } else {
    return;
  }
  bool outside = index < 0 || (uint64_t)index > count;
  bool one_past = index >= 0 && (uint64_t)index == count;
  if (is_access ? one_past : outside) expr_pos_warning(code, operand->position);
}

// -------------------------------------------------------------------------------------------------
// Lvalue to rvalue

// GNU: the static object of a compound literal initializes an object of its type.
static bool is_literal_object(a_variable *variable)
{
  return variable->is_compiler_generated && variable->init_kind == initk_static &&
         is_class_struct_union_type(variable->type);
}

// GNU: a const variable with a known value serves as a constant where one is required.
static bool const_variable_value(an_expr_node *node, a_constant *constant)
{
  if (node->kind != enk_variable || !(gcc_mode || gpp_mode) || !in_constant_context()) return false;
  if (expr_stack->expression_kind == ek_preprocessing) return false;
  a_variable *variable = variable_of(node);
  if (is_literal_object(variable)) {
    *constant = *constant_initializer_of(variable);
    constant->next = nullptr;
    return true;
  }
  if (!is_const_qualified(variable->type) || is_volatile_qualified(variable->type)) return false;
  if (variable->init_kind != initk_static || !is_arithmetic_or_enum_type(variable->type))
    return false;
  a_constant *value = constant_initializer_of(variable);
  if (value->kind != ck_integer && value->kind != ck_float) return false;
  *constant = *value;
  constant->expr = nullptr;
  return true;
}

// The literal that a pointer points to the start of: decayed, or, where constants are favored, its
// address.
static a_constant *string_behind_pointer(an_expr_node *pointer)
{
  if (is_operation(pointer, eok_array_to_pointer)) pointer = first_operand_of(pointer);
  if (pointer->kind != enk_constant) return nullptr;
  a_constant *constant = constant_of(pointer);
  if (constant->kind == ck_address && address_of(constant).kind == ack_constant &&
      address_of(constant).offset == 0 && is_pointer_type(constant->type)) {
    constant = (a_constant *)address_of(constant).entity;
    if (constant->kind != ck_string) return nullptr;
    a_type *element = type_pointed_to(constant_of(pointer)->type);
    return size_of_type(element) == char_size_of_string(constant) ? constant : nullptr;
  }
  return constant->kind == ck_string ? constant : nullptr;
}

// "abc"[1] is a character constant outside strict mode.
static bool character_of_string_literal(an_expr_node *node, a_constant *constant)
{
  if (strict_ansi_mode || !is_operation(node, eok_subscript)) return false;
  int64_t index;
  a_constant *string = string_behind_pointer(first_operand_of(node));
  if (string == nullptr || !integer_constant_value(second_operand_of(node), &index)) return false;
  unsigned size = char_size_of_string(string);
  if (index < 0 || (uint64_t)index >= string_of(string).length / size) return false;
  a_type *type = make_unqualified_type(node->type);
  if (!is_integral_type(type)) return false;
  a_constant wide;
  set_unsigned_integer_constant(&wide, string_character_at(string, (uint64_t)index),
                                ik_unsigned_long_long);
  clear_constant(constant, ck_integer);
  constant->type = type;
  an_error_code code = ec_no_error;
  an_error_severity severity = es_none;
  conv_integer_to_integer(&wide, constant, false, &code, &severity);
  return true;
}

an_expr_node *conv_lvalue_expr_to_rvalue(an_expr_node *node, bool *folded, a_constant *constant,
                                         a_source_position *pos)
{
  *folded = false;
  if (const_variable_value(node, constant)) {
    if (!is_literal_object(variable_of(node))) expr_pos_warning(ec_const_var_in_C_const_expr, *pos);
    *folded = true;
    return node;
  }
  if (character_of_string_literal(node, constant)) {
    *folded = true;
    return node;
  }
  node->is_lvalue = false;
  node->type = rvalue_type(node->type);
  // The value of a selection from an object that is no lvalue itself, and of the arms of an lvalue
  // conditional or comma of the GNU modes.
  if (is_operation(node, eok_question)) {
    an_expr_node *second = second_operand_of(node);
    an_expr_node *third = second->next;
    bool arm_folded;
    a_constant ignored;
    second->is_lvalue = third->is_lvalue = false;
    conv_lvalue_expr_to_rvalue(second, &arm_folded, &ignored, pos);
    conv_lvalue_expr_to_rvalue(third, &arm_folded, &ignored, pos);
  } else if (is_operation(node, eok_comma)) {
    bool arm_folded;
    a_constant ignored;
    conv_lvalue_expr_to_rvalue(second_operand_of(node), &arm_folded, &ignored, pos);
  }
  return node;
}

// An incomplete type has no value; void is let through, it is the operand of casts and commas.
static bool check_complete_for_value(an_operand *operand)
{
  if (!is_incomplete_type(operand->type)) return true;
  if (is_void_type(operand->type) && C_dialect != 2) return true;
  if (is_managed_nullptr_type(operand->type)) return true;
  bool is_misra_rule = check_misra_c_2004 && misra_c_2004_generate_diagnostic(
                                                 ec_misra_c_2004_18_1, misra_required_severity);
  expr_pos_ty_diagnostic(es_error,
                         is_misra_rule ? ec_misra_c_2004_18_1 : ec_incomplete_type_not_allowed,
                         operand->position, operand->type);
  conv_to_error_operand(operand);
  return false;
}

void conv_lvalue_to_rvalue(an_operand *operand)
{
  if (!is_lvalue_operand(operand)) return;
  an_operand saved = *operand;
  change_some_ref_kinds(operand->ref_entries, rk_plain, rk_read);
  if (is_error_type(operand->type)) {
    conv_to_error_operand(operand);
    return;
  }
  if (!check_complete_for_value(operand)) return;
  check_pointer_range(operand, true);
  if (operand->kind == ok_constant) { // a string literal that stays an array
    operand->state = os_rvalue;
    return;
  }
  bool folded = false;
  a_constant constant;
  an_expr_node *node = conv_lvalue_expr_to_rvalue(make_node_from_operand(operand), &folded,
                                                  &constant, &operand->position);
  if (folded) {
    change_ref_kinds(saved.ref_entries, rk_read_folded);
    make_constant_operand(&constant, operand);
  } else if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_expr_not_constant, operand->position);
    conv_to_error_operand(operand);
    return;
  } else {
    make_expression_operand(node, operand);
  }
  operand->ruled_out_expr_kinds = 0;
  restore_operand_details(operand, &saved);
  if (!folded) rule_out_expr_kinds(rule_out_integral_constant | rule_out_any_constant, operand);
}

// The value of an lvalue that is then written: compound assignment, ++, --.
void using_lvalue(an_operand *operand)
{
  check_pointer_range(operand, true);
  change_some_ref_kinds(operand->ref_entries, rk_plain, rk_read);
}

void modifying_lvalue(an_operand *operand, bool also_read)
{
  check_pointer_range(operand, true);
  change_ref_kinds(operand->ref_entries, also_read ? rk_read_modified : rk_modified);
}

// -------------------------------------------------------------------------------------------------
// Arrays and functions

static a_type *decayed_array_type(a_type *type)
{
  a_type *element = array_element_type(type);
  a_type_qualifier_set qualifiers =
      f_get_type_qualifiers(type, false) & ~f_get_type_qualifiers(element, false);
  return make_pointer_type(qualifiers == 0 ? element : f_make_qualified_type(element, qualifiers));
}

// A compound literal of the GNU modes is a constant with an object of its own.
void do_array_to_pointer_conversion(an_operand *operand)
{
  an_operand saved = *operand;
  a_type *pointer = decayed_array_type(operand->type);
  if (expr_stack->expression_kind == ek_integral_constant && expr_stack->value_required &&
      !(gcc_mode || gpp_mode)) {
    expr_pos_error(ec_expr_not_integral_constant, operand->position);
    conv_to_error_operand(operand);
    return;
  }
  an_expr_node *node = make_node_from_operand(operand);
  change_ref_kinds(operand->ref_entries, rk_address_taken);
  a_constant address;
  bool is_dependent = false;
  if (expr_stack->favor_constant_result && node->is_lvalue &&
      constant_lvalue_address(node, &address, false, &is_dependent)) {
    address.type = pointer;
    make_constant_operand(&address, operand);
  } else if (in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_expr_not_constant, operand->position);
    conv_to_error_operand(operand);
    return;
  } else {
    an_expr_node *decayed = make_operator_node(eok_array_to_pointer, pointer, node);
    make_expression_operand(decayed, operand);
    if (node->kind == enk_constant) operand->ruled_out_expr_kinds = 0;
  }
  restore_operand_details(operand, &saved);
  rule_out_expr_kinds(rule_out_integral_constant, operand);
}

void conv_array_operand_to_pointer_operand(an_operand *operand)
{
  if (is_array_type(operand->type) && operand->kind != ok_error)
    do_array_to_pointer_conversion(operand);
}

void conv_function_designator_to_ptr_to_function(an_operand *operand)
{
  if (operand->kind == ok_indefinite_function) {
    operand->state = os_rvalue;
    return;
  }
  if (operand->kind == ok_undefined_symbol) return;
  if (operand->kind == ok_sym_for_member) {
    // The name alone, or in parentheses behind `&`, is an old form.
    an_error_severity severity =
        strict_ansi_mode || gpp_mode ? strict_ansi_error_severity : es_warning;
    expr_pos_diagnostic(severity, ec_nonstd_member_function_address, operand->position);
    make_ptr_to_member_constant_operand(operand);
    return;
  }
  an_operand saved = *operand;
  an_expr_node *node = make_node_from_operand(operand);
  change_ref_kinds(operand->ref_entries, rk_address_taken);
  a_constant address;
  bool is_dependent = false;
  if (constant_lvalue_address(node, &address, false, &is_dependent)) {
    address.type = make_pointer_type(operand->type);
    address.expr = nullptr;
    make_constant_operand(&address, operand);
  } else {
    make_expression_operand(add_address_of_to_node(node), operand);
  }
  operand->symbol = saved.symbol;
  restore_operand_details(operand, &saved);
  rule_out_expr_kinds(rule_out_integral_constant, operand);
}

static void decay_array_operand(an_operand *operand)
{
  bool rvalue_decays = C_dialect == 2 || c99_mode || gcc_mode;
  if (operand->state == os_lvalue || (operand->state == os_rvalue && rvalue_decays)) {
    do_array_to_pointer_conversion(operand);
  }
}

void do_operand_transformations(an_operand *operand, unsigned flags)
{
  if (operand->kind == ok_error) return;
  if (is_array_type(operand->type)) {
    if ((flags & ot_keep_arrays) == 0) decay_array_operand(operand);
  } else if (is_lvalue_operand(operand) && (flags & ot_keep_lvalues) == 0) {
    conv_lvalue_to_rvalue(operand);
  }
  if (operand->kind == ok_indefinite_function && (flags & ot_leave_indefinite_functions) == 0) {
    expr_pos_sy_diagnostic(es_error, ec_indeterminate_overloaded_function, operand->position,
                           operand->symbol);
    conv_to_error_operand(operand);
  }
  if (operand->state == os_function_designator) {
    unsigned keep =
        operand->kind == ok_sym_for_member ? ot_keep_sym_for_member : ot_keep_function_designators;
    if ((flags & keep) == 0) conv_function_designator_to_ptr_to_function(operand);
  }
}

void eliminate_unusual_operand_kinds(an_operand *operand)
{
  do_operand_transformations(operand,
                             ot_keep_function_designators | ot_keep_arrays | ot_keep_lvalues);
}

// -------------------------------------------------------------------------------------------------
// References and class objects (C++)

void add_reference_indirection(an_operand *operand)
{
  an_operand saved = *operand;
  // Whatever happens to the object, the reference itself is read.
  change_some_ref_kinds(operand->ref_entries, rk_plain, rk_read);
  an_expr_node *node = make_node_from_operand(operand);
  node->is_lvalue = false;
  make_lvalue_expression_operand(add_ref_indirection_to_node(node), operand);
  restore_operand_details(operand, &saved);
  restore_operand_id_details(operand, &saved);
}

void take_reference_to_operand(an_operand *operand)
{
  an_operand saved = *operand;
  make_expression_operand(add_reference_to_to_node(make_node_from_operand(operand)), operand);
  restore_operand_details_incl_ref(operand, &saved);
}

void conv_class_rvalue_operand_to_lvalue(an_operand *operand)
{
  an_operand saved = *operand;
  an_expr_node *node = make_node_from_operand(operand);
  make_lvalue_expression_operand(add_rvalue_class_adjust_node(node), operand);
  restore_operand_details_incl_ref(operand, &saved);
}

void conv_object_pointer_to_lvalue(an_operand *operand)
{
  an_operand saved = *operand;
  make_lvalue_expression_operand(add_indirection_to_node(make_node_from_operand(operand)), operand);
  restore_operand_details_incl_ref(operand, &saved);
}

void conv_class_operand_to_object_pointer(an_operand *operand)
{
  an_operand saved = *operand;
  if (!is_lvalue_operand(operand)) conv_class_rvalue_operand_to_lvalue(operand);
  make_expression_operand(add_address_of_to_node(make_node_from_operand(operand)), operand);
  restore_operand_details_incl_ref(operand, &saved);
}

// A pointer rvalue whose value is a constant address becomes that constant.
void force_operand_to_constant_if_possible(an_operand *operand)
{
  if (operand->kind != ok_expression || operand->state != os_rvalue) return;
  if (!is_pointer_type(operand->type)) return;
  an_operand saved = *operand;
  a_constant address;
  bool is_dependent = false;
  if (!constant_rvalue_pointer(operand->value.expr, &address, false, &is_dependent)) return;
  a_type *type = operand->type;
  make_constant_operand(&address, operand);
  operand->type = operand->value.constant.type = type;
  restore_operand_details_incl_ref(operand, &saved);
}

// -------------------------------------------------------------------------------------------------
// Arithmetic

// The bit-field that the rvalue was read from, or null.
static a_field *bit_field_of_node(an_expr_node *node)
{
  if (!is_operation(node, eok_dot_field) && !is_operation(node, eok_arrow_field)) return nullptr;
  an_expr_node *field_node = second_operand_of(node);
  if (field_node->kind != enk_field || !field_of(field_node)->is_bit_field) return nullptr;
  return field_of(field_node);
}

static bool gnu_keeps_long_long_bit_fields(unsigned width)
{
  if (gpp_mode) return true;
  return gcc_mode && gnu_version < 40000 && width != targ_precisionof_long;
}

a_type *type_after_bit_field_integral_promotion(an_expr_node *node)
{
  a_field *field = bit_field_of_node(node);
  if (field == nullptr) return type_after_integral_promotion(rvalue_type(node->type));
  a_type *type = rvalue_type(field->type);
  if (!is_integral_or_enum_type(type)) return type;
  unsigned width = field->bit_size;
  an_integer_kind kind = int_kind_of_type(type);
  bool is_long_long = kind == ik_long_long || kind == ik_unsigned_long_long;
  if (is_long_long && gnu_keeps_long_long_bit_fields(width)) return type;
  if (is_bool_type(type)) return integer_type(ik_int);
  if (is_signed_integral_type(type) || (is_enum_type(type) && field->bit_field_is_signed)) {
    return width <= targ_precisionof_int ? integer_type(ik_int) : type;
  }
  if (width < targ_precisionof_int) return integer_type(ik_int);
  if (width == targ_precisionof_int) return integer_type(ik_unsigned_int);
  if (gcc_mode && gnu_version == 40000 && kind == ik_unsigned_long_long &&
      width < targ_precisionof_long_long) {
    return integer_type(ik_long_long);
  }
  return type;
}

// Where the operand is a bit-field its width counts, not its declared type; old C never looks.
static a_type *promoted_operand_type(an_operand *operand)
{
  if (C_dialect != 1 && operand->kind == ok_expression) {
    if (bit_field_of_node(operand->value.expr) != nullptr) {
      return type_after_bit_field_integral_promotion(operand->value.expr);
    }
  }
  return type_after_integral_promotion(rvalue_type(operand->type));
}

a_type *determine_arithmetic_conversions(an_operand *left, an_operand *right)
{
  if (left->kind == ok_error || right->kind == ok_error) return error_type();
  a_type *left_type =
      is_integral_or_enum_type(left->type) ? promoted_operand_type(left) : rvalue_type(left->type);
  a_type *right_type = is_integral_or_enum_type(right->type) ? promoted_operand_type(right)
                                                             : rvalue_type(right->type);
  return usual_arithmetic_conversions(left_type, right_type);
}

void promote_operand(an_operand *operand)
{
  if (operand->kind == ok_error || !is_integral_or_enum_type(operand->type)) return;
  a_type *type = promoted_operand_type(operand);
  if (!identical_types(type, operand->type)) cast_operand(type, operand, false);
}

void arg_default_promote_operand(an_operand *operand, bool strict)
{
  do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return;
  if (is_array_type(operand->type)) {
    if (gcc_mode) {
      if (strict_ansi_mode)
        expr_pos_diagnostic(strict_ansi_error_severity, ec_bad_rvalue_array, operand->position);
    } else {
      expr_pos_error(ec_bad_rvalue_array, operand->position);
      conv_to_error_operand(operand);
      return;
    }
    do_array_to_pointer_conversion(operand);
    return;
  }
  if (is_integral_or_enum_type(operand->type)) {
    promote_operand(operand);
    return;
  }
  if (is_incomplete_type(operand->type)) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, operand->position,
                           operand->type);
    conv_to_error_operand(operand);
    return;
  }
  if (is_class_struct_union_type(operand->type)) {
    if (strict && C_dialect == 2 && expr_stack->value_required) {
      a_symbol *symbol = skip_typerefs(operand->type)->source_corresp.assoc_symbol;
      bool is_pod = symbol == nullptr || class_supplement_of_symbol(symbol)->is_pod;
      if (!is_pod) expr_pos_warning(ec_non_pod_passed_to_ellipsis, operand->position);
    }
    return;
  }
  a_type *type = default_argument_promotion(operand->type);
  cast_operand_full(type, operand, &operand->position, false, false, true, false, false);
}

void change_binary_operand_types(a_type *type, an_operand *left, an_operand *right)
{
  convert_arithmetic_operand(type, left);
  convert_arithmetic_operand(type, right);
}

// Imaginary and real operands of multiplication and division give a real or an imaginary result
// (C99 G.5).
a_type *determine_imaginary_operation_type(an_expr_operator_kind op, a_type *left, a_type *right,
                                           a_type *common)
{
  bool left_imaginary = is_imaginary_type(left), right_imaginary = is_imaginary_type(right);
  if (!left_imaginary && !right_imaginary) return common;
  if (is_complex_type(left) || is_complex_type(right)) return common;
  a_float_kind kind = float_kind_of_type(common);
  switch (op) {
  case eok_multiply:
  case eok_divide:
    return left_imaginary == right_imaginary ? float_type(kind) : imaginary_type(kind);
  default: return left_imaginary && right_imaginary ? imaginary_type(kind) : complex_type(kind);
  }
}
