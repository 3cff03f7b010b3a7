// folding_convert.cpp - conversion of a constant to another type.
// Rule:  the constant is only changed when the conversion succeeds; what can't be represented is
//        left to an expression, or is a fault with a code and a severity.
// Entry: type_change_constant_full, type_change_constant, implicit_cast.
// See:   C99 6.3.
#include "consts/folding_private.h"

namespace {
// One conversion on its way.
struct a_conversion {
  const a_constant *source;
  a_constant *result; // a copy of the source that gets the new type first
  bool is_implicit;
  bool report; // warn of changed values
  a_folding folding;
};
} // namespace

static void mark_not_folded(a_conversion *conversion)
{
  conversion->folding.not_folded = true;
}

// --- To integers ---------------------------------------------------------------------------------

// What of a narrowing was lost: nothing but copies of the sign, or bits of the value.
static an_error_code lost_bits_code(const a_constant *source, unsigned bits)
{
  an_integer_value lost = integer_of(source), minus_one;
  set_integer_value(&minus_one, -1);
  shift_right_integer_value(&lost, int(bits), int_constant_is_signed(source), true);
  bool ignored;
  bool only_sign = value_of_integer_value(&lost, true, &ignored) == 0 ||
                   cmp_integer_values(&lost, true, &minus_one, true) == 0;
  return only_sign ? ec_integer_sign_change : ec_integer_truncated;
}

void conv_integer_to_integer(const a_constant *source, a_constant *result, bool report,
                             an_error_code *code, an_error_severity *severity)
{
  if (is_incomplete_type(result->type)) {
    *code = ec_incomplete_type_not_allowed;
    *severity = es_error;
    return;
  }
  unsigned bits, source_bits;
  bool is_signed, source_is_signed;
  get_integer_attributes(result->type, &bits, &is_signed);
  get_integer_attributes(source->type, &source_bits, &source_is_signed);
  an_integer_value value = integer_of(source);
  trunc_and_set_integer(&value, result, source_is_signed, false, nullptr, nullptr);
  bool changed = cmp_integer_values(&value, source_is_signed, &integer_of(result), is_signed) != 0;
  if (!report || !changed || is_pointer_type(source->type)) return;
  *code = bits < source_bits ? lost_bits_code(source, bits) : ec_integer_sign_change;
  *severity = es_warning;
}

// The integer part of a float; false when 64 bits can't hold it.
static bool float_as_integer(a_float_kind kind, const simul_fval *value, bool is_signed,
                             an_integer_value *integer)
{
  bool error, second;
  if (fp_is_nan(value) || fp_is_infinity(value)) return false;
  if (is_signed || fp_is_negative(value)) {
    long long number;
    fp_to_host_large_integer(kind, value, &number, &error, &second);
    set_integer_value(integer, number);
  } else {
    unsigned long long number;
    fp_to_host_large_unsigned(kind, value, &number, &error, &second);
    set_unsigned_integer_value(integer, number);
  }
  return !error;
}

void make_saturated_integer_for_float(a_float_kind, const simul_fval *value,
                                      an_integer_value *result, a_type *type)
{
  an_integer_kind kind = as_integer(skip_typerefs(type)).int_kind;
  *result =
      f_ge(value, &pos_zero) ? max_integer_value_of_kind[kind] : min_integer_value_of_kind[kind];
}

static void conv_float_to_integer(a_conversion *conversion, const simul_fval *value)
{
  a_constant *result = conversion->result;
  a_float_kind kind = float_kind_of_type(conversion->source->type);
  bool saturate = gcc_mode && gnu_version >= 30400;
  unsigned bits;
  bool is_signed;
  get_integer_attributes(result->type, &bits, &is_signed);
  bool value_is_signed = is_signed || fp_is_negative(value);
  an_integer_value integer;
  bool fits = float_as_integer(kind, value, is_signed, &integer);
  if (fits) {
    trunc_and_set_integer(&integer, result, value_is_signed, saturate, nullptr, nullptr);
    fits = cmp_integer_values(&integer, value_is_signed, &integer_of(result), is_signed) == 0;
  } else {
    make_saturated_integer_for_float(kind, value, &integer, result->type);
    set_result_value(result, &integer);
  }
  if (fits) return;
  bool only_warn = gcc_mode && !conversion->is_implicit;
  record_fault(&conversion->folding, ec_float_to_integer_conversion,
               only_warn ? es_warning : es_error);
}

static void convert_to_integer(a_conversion *conversion)
{
  const a_constant *source = conversion->source;
  a_constant *result = conversion->result;
  switch (source->kind) {
  case ck_integer:
    conv_integer_to_integer(source, result, conversion->report, &conversion->folding.code,
                            &conversion->folding.severity);
    result->value_is_punned = false;
    return;
  case ck_float: conv_float_to_integer(conversion, &float_of(source)); return;
  case ck_complex: {
    simul_fval real = complex_of(source)->real;
    conv_float_to_integer(conversion, &real);
    return;
  }
  case ck_imaginary: set_result_number(result, 0); return;
  case ck_address_difference: {
    // The difference of two labels keeps its form where no bit of it can get lost.
    unsigned bits, source_bits;
    bool ignored;
    get_integer_attributes(result->type, &bits, &ignored);
    get_integer_attributes(source->type, &source_bits, &ignored);
    if (bits < source_bits) mark_not_folded(conversion);
    return;
  }
  default: mark_not_folded(conversion); return;
  }
}

static void convert_to_bool(a_conversion *conversion)
{
  if (!constant_bool_value_known_at_compile_time(conversion->source)) {
    mark_not_folded(conversion);
    return;
  }
  set_result_number(conversion->result, !is_false_constant(conversion->source));
  conversion->result->value_is_punned = false;
}

// --- To floating types ---------------------------------------------------------------------------

// The value in the kind of the target; *fits false when it is out of its range.
static simul_fval change_float_kind(const simul_fval *value, a_float_kind from, a_float_kind to,
                                    bool *fits)
{
  simul_fval result;
  bool error, second;
  fp_change_kind(value, from, &result, to, &error, &second);
  if (error) *fits = false;
  return result;
}

// The real and imaginary parts that the source gives, in the target's kind.
static bool parts_in_kind(a_conversion *conversion, a_float_kind kind, simul_fval *real,
                          simul_fval *imag, bool *fits)
{
  const a_constant *source = conversion->source;
  *real = pos_zero;
  *imag = pos_zero;
  if (source->kind == ck_integer) {
    bool overflow;
    conv_integer_value_to_float(&integer_of(source), int_constant_is_signed(source), real, kind,
                                &overflow);
    return true;
  }
  if (source->kind != ck_float && source->kind != ck_imaginary && source->kind != ck_complex)
    return false;
  a_float_kind from = float_kind_of_type(source->type);
  if (source->kind == ck_float)
    *real = change_float_kind(&float_of(source), from, kind, fits);
  else if (source->kind == ck_imaginary)
    *imag = change_float_kind(&float_of(source), from, kind, fits);
  else {
    *real = change_float_kind(&complex_of(source)->real, from, kind, fits);
    *imag = change_float_kind(&complex_of(source)->imag, from, kind, fits);
  }
  return true;
}

static void convert_to_float(a_conversion *conversion, a_type_kind target_kind)
{
  a_constant *result = conversion->result;
  a_float_kind kind = float_kind_of_type(result->type);
  simul_fval real, imag;
  bool fits = true;
  if (!parts_in_kind(conversion, kind, &real, &imag, &fits)) {
    mark_not_folded(conversion);
    return;
  }
  if (target_kind == tk_float) {
    set_result_float(result, ck_float, &real);
  } else if (target_kind == tk_imaginary) {
    set_result_float(result, ck_imaginary, &imag);
  } else {
    set_constant_kind(result, ck_complex); // a pair of its own, even when the source is complex
    complex_of(result)->real = real;
    complex_of(result)->imag = imag;
  }
  result->value_is_punned = false;
  if (!fits) record_fault(&conversion->folding, ec_float_to_float_conversion, es_error);
}

// --- To and from pointers ------------------------------------------------------------------------

static void convert_to_pointer(a_conversion *conversion)
{
  const a_constant *source = conversion->source;
  a_constant *result = conversion->result;
  switch (source->kind) {
  case ck_integer: {
    an_integer_value value = integer_of(source);
    trunc_and_set_integer(&value, result, int_constant_is_signed(source), false, nullptr, nullptr);
    result->value_is_punned = true;
    return;
  }
  case ck_address:
  case ck_address_difference: return;
  default: mark_not_folded(conversion); return;
  }
}

// An address as a number stays an address: the linker knows its value.
static void convert_address_to_integer(a_conversion *conversion)
{
  unsigned bits;
  bool ignored;
  get_integer_attributes(conversion->result->type, &bits, &ignored);
  if (bits < targ_sizeof_pointer * targ_char_bit)
    mark_not_folded(conversion);
  else
    conversion->result->value_is_punned = true;
}

static void convert_address(a_conversion *conversion, a_type *target)
{
  switch (target->kind) {
  case tk_integer:
    if (as_integer(target).is_bool)
      convert_to_bool(conversion);
    else
      convert_address_to_integer(conversion);
    return;
  case tk_pointer: conversion->result->value_is_punned = false; return;
  default: mark_not_folded(conversion); return;
  }
}

static void convert_to_ptr_to_member(a_conversion *conversion)
{
  const a_constant *source = conversion->source;
  a_constant *result = conversion->result;
  if (source->kind == ck_integer) { // a null pointer constant
    set_constant_kind(result, ck_ptr_to_member);
    return;
  }
  if (source->kind != ck_ptr_to_member || source->from_reinterpret_cast)
    mark_not_folded(conversion);
}

// --- All types -----------------------------------------------------------------------------------

static void convert_by_target(a_conversion *conversion, a_type *target)
{
  if (conversion->source->kind == ck_address) {
    convert_address(conversion, target);
    return;
  }
  switch (target->kind) {
  case tk_integer:
    if (as_integer(target).is_bool)
      convert_to_bool(conversion);
    else
      convert_to_integer(conversion);
    return;
  case tk_float:
  case tk_complex:
  case tk_imaginary: convert_to_float(conversion, target->kind); return;
  case tk_pointer: convert_to_pointer(conversion); return;
  case tk_ptr_to_member: convert_to_ptr_to_member(conversion); return;
  case tk_nullptr:
    set_result_number(conversion->result, 0);
    conversion->result->value_is_punned = true;
    return;
  case tk_array:
    if (conversion->source->kind != ck_string && conversion->source->kind != ck_aggregate)
      mark_not_folded(conversion);
    return;
  case tk_class:
  case tk_struct:
  case tk_union:
    if (conversion->source->kind != ck_aggregate) mark_not_folded(conversion);
    return;
  default: mark_not_folded(conversion); return;
  }
}

static bool is_dependent_conversion(const a_constant *constant, a_type *new_type)
{
  if (C_dialect != 2) return false;
  return constant->kind == ck_template_param ||
         (in_front_end && !il_lowering_underway && is_template_dependent_type(new_type));
}

static bool is_class_pointer_conversion(const a_constant *constant, a_type *new_type)
{
  if (C_dialect != 2 || constant->type == nullptr || !is_pointer_type(constant->type) ||
      !is_pointer_type(new_type))
    return false;
  return is_class_struct_union_type(type_pointed_to(constant->type)) &&
         is_class_struct_union_type(type_pointed_to(new_type));
}

// The source form of the result: the expression that the constant came from, with the cast around
// it.
static void cast_source_expression(a_constant *result, an_expr_node *expr, a_type *new_type,
                                   bool is_implicit)
{
  result->expr = expr == nullptr ? nullptr
                 : is_implicit   ? add_implicit_cast(expr, new_type)
                                 : add_cast(expr, new_type);
}

void type_change_constant_full(a_constant *constant, a_type *new_type, bool is_implicit,
                               bool is_constant_context, bool value_required, bool,
                               bool check_access, bool check_ambiguity, bool no_class_adjustment,
                               bool, bool *out_not_folded, an_error_code *out_suppressed_error_code,
                               const a_source_position *position)
{
  bool ignored;
  if (out_not_folded == nullptr) out_not_folded = &ignored;
  *out_not_folded = false;
  if (constant->kind == ck_error || is_error_type(new_type)) {
    set_error_constant(constant);
    return;
  }
  if (is_dependent_conversion(constant, new_type)) {
    if (constant->type == new_type && is_implicit) return;
    a_constant source = *constant;
    make_template_param_cast_constant(&source, new_type, is_implicit, constant);
    return;
  }
  if (vla_enabled && !is_implicit && is_variably_modified_type(new_type)) {
    *out_not_folded = true;
    return;
  }
  // The result is a plain value: a name, as an enumerator has, isn't converted with it.
  a_constant result;
  copy_constant(constant, &result);
  if (constant->source_corresp.name != nullptr) {
    clear_constant(&result, constant->kind);
    result.variant = constant->variant;
    result.not_integral_constant_expr = constant->not_integral_constant_expr;
  }
  result.type = new_type;
  result.is_enumerator_use = false;
  a_conversion conversion = {constant, &result, is_implicit, is_implicit, {}};
  conversion.folding.result = &result;
  an_error_code class_code = ec_no_error;
  if (!no_class_adjustment && is_class_pointer_conversion(constant, new_type)) {
    result.type = constant->type;
    if (!fold_base_class_cast(&result, new_type, check_access, check_ambiguity, position,
                              &class_code))
      conversion.folding.not_folded = true;
    if (class_code != ec_no_error) record_fault(&conversion.folding, class_code, es_error);
    result.type = new_type;
  } else {
    convert_by_target(&conversion, skip_typerefs(new_type));
  }
  bool not_folded = report_folding(&conversion.folding, is_constant_context, value_required,
                                   out_suppressed_error_code, position);
  *out_not_folded = not_folded;
  if (not_folded) return;
  if (result.kind != ck_error)
    cast_source_expression(&result, constant->expr, new_type, is_implicit);
  *constant = result;
}

void type_change_constant(a_constant *constant, a_type *new_type, bool is_implicit,
                          bool *out_not_folded, const a_source_position *position)
{
  a_source_position here = position != nullptr ? *position : error_position;
  type_change_constant_full(constant, new_type, is_implicit, true, true, false, true, true, false,
                            false, out_not_folded, nullptr, &here);
}

bool implicit_cast(a_constant *constant, a_type *new_type)
{
  bool not_folded;
  an_error_code code = ec_no_error;
  a_constant result = *constant;
  // As an explicit cast: nothing is warned of, and a fault only ends in the code.
  type_change_constant_full(&result, new_type, false, true, true, false, false, false, false, false,
                            &not_folded, &code, &null_source_position);
  if (not_folded || code != ec_no_error) return false;
  *constant = result;
  return true;
}

// --- Classes and templates -----------------------------------------------------------------------

bool fold_base_class_cast(a_constant *constant, a_type *new_type, bool check_access,
                          bool check_ambiguity, const a_source_position *, an_error_code *code)
{
  *code = ec_no_error;
  a_base_class *base;
  bool to_derived;
  if (!f_related_class_pointers(constant->type, new_type, &base, &to_derived) || base == nullptr)
    return true;
  if (check_ambiguity && base->is_ambiguous) {
    *code = to_derived ? ec_ambiguous_derived_class : ec_ambiguous_base_class;
    return false;
  }
  if (to_derived && base->is_virtual) {
    *code = ec_derived_class_from_virtual_base;
    return false;
  }
  if (check_access && base->derivations != nullptr && !base->derivations->is_public_path) {
    *code = to_derived ? ec_conv_from_inaccessible_base_class : ec_inaccessible_base_class;
    return false;
  }
  if (base->is_virtual) return false;
  bool is_null = constant->kind == ck_integer && cmplit_integer_constant(constant, 0) == 0;
  if (is_null) return true;
  int64_t offset = to_derived ? -int64_t(base->offset) : int64_t(base->offset);
  if (constant->kind == ck_address) {
    address_of(constant).offset += offset;
    return true;
  }
  if (constant->kind != ck_integer) return false;
  an_integer_value distance, value = integer_of(constant);
  bool ignored;
  set_integer_value(&distance, offset);
  add_integer_values(&value, &distance, true, &ignored);
  trunc_and_set_integer(&value, constant, false, false, nullptr, nullptr);
  return true;
}

void make_template_param_expr_constant(an_expr_node *expr, a_constant *result)
{
  clear_constant(result, ck_template_param);
  set_template_param_constant_kind(result, tpck_expression);
  template_param_of(result).expr = expr;
  result->type = expr->type;
}

void make_template_param_cast_constant(const a_constant *source, a_type *new_type, bool is_implicit,
                                       a_constant *result)
{
  a_constant *operand = alloc_shareable_constant(source);
  clear_constant(result, ck_template_param);
  set_template_param_constant_kind(result, tpck_cast);
  template_param_of(result).constant = operand;
  result->type = new_type;
  result->show_cast = !is_implicit;
  result->show_implicit_cast = is_implicit;
}
