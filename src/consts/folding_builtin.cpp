// folding_builtin.cpp - tests on constants; built-in functions and operations with a value at
// translation time.
// Entry: is_null_pointer_constant and its kin; fold_builtin_operation_if_possible,
//        fold_pow_if_possible, fold_fptest_if_possible, fold_bit_count_operation_if_possible.
#include <cstring>
#include "consts/folding_private.h"
#include "driver/sys_predef.h"

// --- Tests ---------------------------------------------------------------------------------------

// Integer zero, or that cast to void * in C.
bool is_null_pointer_constant(const a_constant *constant)
{
  if (constant->kind != ck_integer || constant->type == nullptr) return false;
  a_type *type = skip_typerefs(constant->type);
  if (type->kind == tk_nullptr) return true;
  if (cmplit_integer_constant(constant, 0) != 0) return false;
  bool is_void_pointer = C_dialect != 2 && type->kind == tk_pointer &&
                         is_void_type(as_pointer(type).pointed_to_type) &&
                         get_type_qualifiers(as_pointer(type).pointed_to_type) == 0;
  bool is_integral = C_dialect == 2 ? is_integral_type(type) : is_integral_or_enum_type(type);
  if (!is_void_pointer && !is_integral) return false;
  if (!constant->not_integral_constant_expr) return true;
  bool old_gnu = (gcc_mode || gpp_mode) && gnu_version <= 40499;
  return old_gnu && (is_integral || gcc_mode);
}

bool is_or_might_be_null_pointer_constant(const a_constant *constant)
{
  return constant->kind == ck_template_param || is_null_pointer_constant(constant);
}

bool variable_has_non_null_address(const a_variable *variable)
{
  return variable->source_corresp.name != nullptr && variable->weak_state == ws_none;
}

bool routine_has_non_null_address(const a_routine *routine)
{
  return routine->source_corresp.name != nullptr && routine->weak_state == ws_none;
}

static bool address_is_known_non_null(const a_constant_address &address)
{
  switch (address.kind) {
  case ack_routine: return routine_has_non_null_address(static_cast<a_routine *>(address.entity));
  case ack_variable: {
    const a_variable *variable = static_cast<a_variable *>(address.entity);
    return variable->is_compiler_generated || variable_has_non_null_address(variable);
  }
  case ack_constant:
  case ack_uuidof:
  case ack_typeid:
  case ack_label: return true;
  case ack_last: break;
  }
  unexpected_kind("address constant");
}

static bool is_label_difference(const a_constant *constant)
{
  const a_constant_address_difference &difference = address_difference_of(constant);
  return difference.minuend->kind == ck_address && difference.subtrahend->kind == ck_address &&
         address_of(difference.minuend).kind == ack_label &&
         address_of(difference.subtrahend).kind == ack_label;
}

bool constant_bool_value_known_at_compile_time(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_integer:
  case ck_float:
  case ck_complex:
  case ck_imaginary:
  case ck_ptr_to_member:
  case ck_string: return true;
  case ck_address: return address_is_known_non_null(address_of(constant));
  case ck_address_difference: return is_label_difference(constant);
  default: return false;
  }
}

bool is_false_constant(const a_constant *constant)
{
  switch (constant->kind) {
  case ck_integer: return cmplit_integer_constant(constant, 0) == 0;
  case ck_float:
  case ck_complex:
  case ck_imaginary: return float_constant_is_zero(constant);
  case ck_ptr_to_member: return ptr_to_member_of(constant).member == nullptr;
  case ck_address_difference: {
    const a_constant_address_difference &difference = address_difference_of(constant);
    return address_of(difference.minuend).entity == address_of(difference.subtrahend).entity;
  }
  default: return false;
  }
}

bool constant_is_pointer_to_string_literal(const a_constant *constant)
{
  return constant->kind == ck_address && address_of(constant).kind == ack_constant &&
         address_of(constant).offset == 0 &&
         static_cast<a_constant *>(address_of(constant).entity)->kind == ck_string;
}

bool expr_is_pointer_to_string_literal(const an_expr_node *expr)
{
  while (is_operation(expr, eok_cast) || is_operation(expr, eok_array_to_pointer))
    expr = first_operand_of(expr);
  if (expr->kind != enk_constant) return false;
  return constant_of(expr)->kind == ck_string ||
         constant_is_pointer_to_string_literal(constant_of(expr));
}

// --- Built-in functions --------------------------------------------------------------------------

// The name of a GNU built-in without its prefix; null for any other routine.
static const char *builtin_name(const a_routine *routine)
{
  if (!is_gnu_builtin_function(routine)) return nullptr;
  const char *name =
      name_of_builtin_function(a_builtin_function_kind(routine->special.builtin_function_kind));
  constexpr char prefix[] = "__builtin_";
  constexpr size_t length = sizeof prefix - 1;
  if (name == nullptr) return nullptr;
  return strncmp(name, prefix, length) == 0 ? name + length : name;
}

void make_huge_fp_val(a_constant *result, a_type *type)
{
  clear_constant(result, ck_float);
  result->type = type;
  make_fp_infinity(&float_of(result), float_kind_of_type(type));
}

static void set_int_result(a_constant *result, long long value)
{
  set_integer_constant(result, value, ik_int);
  if (result->type == nullptr) result->type = integer_type(ik_int);
}

bool fold_fptest_if_possible(const a_routine *routine, const a_constant *argument,
                             a_constant *result)
{
  const char *name = builtin_name(routine);
  if (name == nullptr || argument->kind != ck_float) return false;
  const simul_fval *value = &float_of(argument);
  bool nan = fp_is_nan(value), infinite = fp_is_infinity(value);
  long long answer;
  if (strcmp(name, "isnan") == 0 || strcmp(name, "isnanf") == 0 || strcmp(name, "isnanl") == 0)
    answer = nan;
  else if (strcmp(name, "isinf_sign") == 0)
    answer = infinite ? (value->sign ? -1 : 1) : 0;
  else if (strncmp(name, "isinf", 5) == 0)
    answer = infinite;
  else if (strcmp(name, "isfinite") == 0 || strncmp(name, "finite", 6) == 0)
    answer = !nan && !infinite;
  else if (strcmp(name, "isnormal") == 0)
    answer = fp_is_normalized(float_kind_of_type(argument->type), value);
  else if (strncmp(name, "signbit", 7) == 0)
    answer = value->sign;
  else
    return false;
  set_int_result(result, answer);
  return true;
}

// The bits of the argument within the width of its type.
static unsigned long long argument_bits(const a_constant *argument, unsigned *width)
{
  bool is_signed, ignored;
  get_integer_attributes(argument->type, width, &is_signed);
  an_integer_value value = integer_of(argument), mask;
  make_integer_value_mask(&mask, int(*width));
  and_integer_values(&value, &mask);
  return static_cast<unsigned long long>(value_of_integer_value(&value, true, &ignored));
}

// Name without the suffix for the argument's width: "l", "ll", "imax".
static bool is_family(const char *name, const char *family)
{
  size_t length = strlen(family);
  if (strncmp(name, family, length) != 0) return false;
  name += length;
  return *name == '\0' || strcmp(name, "l") == 0 || strcmp(name, "ll") == 0 ||
         strcmp(name, "imax") == 0;
}

bool fold_bit_count_operation_if_possible(const a_routine *routine, const a_constant *argument,
                                          a_constant *result)
{
  const char *name = builtin_name(routine);
  if (name == nullptr || argument->kind != ck_integer || !is_integral_or_enum_type(argument->type))
    return false;
  unsigned width;
  unsigned long long bits = argument_bits(argument, &width);
  int answer;
  if (is_family(name, "clz") && bits != 0)
    answer = __builtin_clzll(bits) - (64 - int(width));
  else if (is_family(name, "ctz") && bits != 0)
    answer = __builtin_ctzll(bits);
  else if (is_family(name, "ffs"))
    answer = __builtin_ffsll(static_cast<long long>(bits));
  else if (is_family(name, "parity"))
    answer = __builtin_parityll(bits);
  else if (is_family(name, "popcount"))
    answer = __builtin_popcountll(bits);
  else
    return false;
  set_int_result(result, answer);
  return true;
}

// The exponent as a number from 0 to 255; false for any other value.
static bool small_exponent(const a_constant *exponent, unsigned *number)
{
  if (exponent->kind != ck_float || fp_is_nan(&float_of(exponent))) return false;
  long long integer;
  bool error, second, unordered;
  fp_to_host_large_integer(fk_long_double, &float_of(exponent), &integer, &error, &second);
  if (error || integer < 0 || integer > 255) return false;
  simul_fval back;
  fp_host_large_integer_to_float(fk_long_double, integer, &back, &error);
  *number = unsigned(integer);
  return fp_compare(fk_long_double, &back, &float_of(exponent), &unordered) == 0 && !unordered;
}

bool fold_pow_if_possible(const a_constant *base, const a_constant *exponent, a_constant *result,
                          a_type *type)
{
  unsigned count;
  if (base->kind != ck_float || !small_exponent(exponent, &count)) return false;
  bool error, second;
  simul_fval power = one, square, value;
  fp_change_kind(&float_of(base), float_kind_of_type(base->type), &square, fk_long_double, &error,
                 &second);
  for (; !error && count != 0; count >>= 1) {
    if (count & 1) fp_multiply(fk_long_double, &power, &square, &power, &error, &second);
    if (!error && count > 1)
      fp_multiply(fk_long_double, &square, &square, &square, &error, &second);
  }
  if (error) return false;
  fp_change_kind(&power, fk_long_double, &value, float_kind_of_type(type), &error, &second);
  if (error) return false;
  clear_constant(result, ck_float);
  result->type = type;
  float_of(result) = value;
  return true;
}

// --- Built-in operations -------------------------------------------------------------------------

namespace {
struct an_offset_walk {
  uint64_t offset;
  bool not_constant;
  an_error_code code;
};
} // namespace

static void walk_designator(const an_expr_node *expr, an_offset_walk *walk);

static void walk_index(const an_expr_node *expr, an_offset_walk *walk)
{
  const an_expr_node *index = second_operand_of(expr);
  walk_designator(first_operand_of(expr), walk);
  if (index->kind != enk_constant || constant_of(index)->kind != ck_integer) {
    if (walk->code == ec_no_error) walk->code = ec_nonconstant_offsetof;
    walk->not_constant = true;
    return;
  }
  bool overflow;
  long long number = value_of_integer_constant(constant_of(index), &overflow), bytes;
  long long size = (long long)size_of_type(type_pointed_to(first_operand_of(expr)->type));
  if (overflow || __builtin_mul_overflow(number, size, &bytes) ||
      (bytes >= 0 && walk->offset + (unsigned long long)bytes > targ_size_t_max)) {
    walk->code = ec_integer_overflow_internal;
    return;
  }
  walk->offset += (unsigned long long)bytes;
}

// Adds what the designator's steps contribute; its innermost operand, the object itself, adds
// nothing.
static void walk_designator(const an_expr_node *expr, an_offset_walk *walk)
{
  if (expr->kind != enk_operation) return;
  switch (op_of(expr)) {
  case eok_dot_field:
  case eok_arrow_field:
    walk_designator(first_operand_of(expr), walk);
    if (second_operand_of(expr)->kind == enk_field)
      walk->offset += field_of(second_operand_of(expr))->offset;
    return;
  case eok_subscript:
  case eok_pointer_add: walk_index(expr, walk); return;
  case eok_array_to_pointer:
  case eok_indirection:
  case eok_address_of:
  case eok_lvalue_cast:
  case eok_cast: walk_designator(first_operand_of(expr), walk); return;
  case eok_derived_to_base:
    walk_designator(first_operand_of(expr), walk);
    if (a_base_class *base = find_base_class_of(first_operand_of(expr)->type, expr->type)) {
      if (base->is_virtual) walk->code = ec_offsetof_virtual_base_member;
      walk->offset += base->offset;
    }
    return;
  default: return;
  }
}

bool offset_overflows(const an_expr_node *designator)
{
  an_offset_walk walk = {0, false, ec_no_error};
  walk_designator(designator, &walk);
  return walk.code == ec_integer_overflow_internal;
}

static void fold_offsetof(const an_expr_node *node, a_constant *constant,
                          const a_source_position *position, bool *out_not_constant)
{
  an_offset_walk walk = {0, false, ec_no_error};
  for (const an_expr_node *argument = builtin_operation_of(node).first_argument;
       argument != nullptr; argument = argument->next)
    walk_designator(argument, &walk);
  if (walk.not_constant && (gcc_mode || gpp_mode)) {
    *out_not_constant = true;
    return;
  }
  if (walk.code != ec_no_error) {
    pos_error(walk.code, *position);
    set_error_constant(constant);
    return;
  }
  set_unsigned_integer_constant(constant, walk.offset, targ_size_t_int_kind);
}

static a_type *argument_type(const an_expr_node *argument)
{
  return argument->kind == enk_type_operand ? type_operand_of(argument) : argument->type;
}

// A class that must be complete; an incomplete one is reported.
static bool complete_class(a_type *type, const a_source_position *position, bool *failed)
{
  if (!is_class_struct_union_type(type)) return false;
  if (!is_incomplete_type(type)) return true;
  pos_error(ec_incomplete_class_type, *position);
  *failed = true;
  return false;
}

static bool trait_of_class(a_builtin_operation_kind op, a_type *type,
                           const a_source_position *position, bool *failed)
{
  if (!complete_class(type, position, failed)) return false;
  const a_class_type_part &part = as_class(skip_typerefs(type));
  switch (op) {
  case bok_is_abstract: return part.is_abstract;
  case bok_is_empty: return part.is_empty_class;
  case bok_is_polymorphic:
  case bok_has_virtual_destructor: return part.has_virtual_functions;
  default: return false;
  }
}

// Without user-written members every class of C, and every scalar, is trivial in each respect.
static bool trait_of_plain_type(a_builtin_operation_kind op, a_type *type,
                                const a_source_position *position, bool *failed)
{
  a_type *element = skip_array_types(type);
  if (is_class_struct_union_type(element)) {
    if (!complete_class(element, position, failed)) return false;
    const a_class_type_part &part = as_class(skip_typerefs(element));
    return !part.has_virtual_functions && !part.has_virtual_bases &&
           class_supplement_of(skip_typerefs(element))->base_classes == nullptr;
  }
  if (op == bok_has_assign || op == bok_has_copy) return false;
  return is_scalar_type(element);
}

// The value of a trait; false with *known false for one that isn't decided here.
static bool value_of_trait(a_builtin_operation_kind op, a_type *first, a_type *second,
                           const a_source_position *position, bool *failed, bool *known)
{
  *known = true;
  switch (op) {
  case bok_types_compatible_p:
    return f_types_are_compatible(first, second, tco_error_types | tco_ignore_top_qualifiers);
  case bok_is_class: return is_class_struct_type(first);
  case bok_is_union: return is_union_type(first);
  case bok_is_enum: return is_enum_type(first);
  case bok_is_base_of: return is_same_class_or_base_class_thereof(first, second);
  case bok_is_convertible_to: {
    a_conversion_source source = {first, false, false, false, false};
    a_std_conv_descr descr;
    return impl_conversion_possible(&source, second, &descr);
  }
  case bok_is_abstract:
  case bok_is_empty:
  case bok_is_polymorphic:
  case bok_has_virtual_destructor: return trait_of_class(op, first, position, failed);
  case bok_is_pod:
  case bok_is_trivial:
  case bok_is_standard_layout:
  case bok_is_trivially_copyable:
  case bok_is_literal_type:
  case bok_has_nothrow_assign:
  case bok_has_nothrow_constructor:
  case bok_has_nothrow_copy:
  case bok_has_trivial_assign:
  case bok_has_trivial_constructor:
  case bok_has_trivial_copy:
  case bok_has_trivial_destructor: return trait_of_plain_type(op, first, position, failed);
  default: *known = false; return false;
  }
}

void fold_builtin_operation_if_possible(an_expr_node *node, a_constant *constant, unsigned,
                                        const a_source_position *position, bool *out_not_constant)
{
  *out_not_constant = false;
  const an_expr_builtin_operation &operation = builtin_operation_of(node);
  for (an_expr_node *argument = operation.first_argument; argument != nullptr;
       argument = argument->next) {
    if (argument->kind == enk_error || is_error_type(argument_type(argument))) {
      set_error_constant(constant);
      return;
    }
    if (C_dialect == 2 && is_template_dependent_type(argument_type(argument))) {
      make_template_param_expr_constant(node, constant);
      return;
    }
  }
  if (operation.op == bok_offsetof) {
    fold_offsetof(node, constant, position, out_not_constant);
    return;
  }
  an_expr_node *first = operation.first_argument;
  if (first == nullptr) {
    *out_not_constant = true;
    return;
  }
  bool failed = false, known;
  a_type *second_type = first->next == nullptr ? nullptr : argument_type(first->next);
  bool value =
      value_of_trait(operation.op, argument_type(first), second_type, position, &failed, &known);
  if (failed) {
    set_error_constant(constant);
  } else if (!known) {
    *out_not_constant = true;
  } else {
    clear_constant(constant, ck_integer);
    constant->type = node->type;
    set_result_number(constant, value);
  }
}
