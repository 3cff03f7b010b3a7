// types_convert.cpp - promotions, the usual arithmetic conversions, and whether a conversion exists.
// Rule:    nothing here reports; a warning that a conversion deserves is left in the descriptor.
// Entry:   type_after_integral_promotion, usual_arithmetic_conversions, impl_conversion_possible.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error_codes.h"
#include "il/il.h"
#include "il/types.h"

//---------------------------------------------------------------------------------------------
// Promotion

static bool is_distinct_cplusplus_integer(const an_integer_type_part &part)
{
  return part.is_enum || part.is_wchar_t || part.is_char16_t || part.is_char32_t;
}

// C99 6.3.1.1 for kinds below int; old C preserves unsignedness.
static an_integer_kind promoted_small_kind(an_integer_kind kind)
{
  bool old_c = C_dialect == 1;
  switch (kind) {
  case ik_signed_char:
  case ik_short: return ik_int;
  case ik_char:
    if (targ_has_signed_chars) return ik_int;
    [[fallthrough]];
  case ik_unsigned_char: return !old_c && targ_sizeof_int > 1 ? ik_int : ik_unsigned_int;
  case ik_unsigned_short:
    return !old_c && targ_sizeof_int > targ_sizeof_short ? ik_int : ik_unsigned_int;
  default: return kind;
  }
}

a_type *type_after_integral_promotion(a_type *original)
{
  a_type *type = skip_typerefs(original);
  if (type->kind != tk_integer) return original;
  const an_integer_type_part &part = as_integer(type);
  if (part.is_bool) return integer_type(ik_int);
  if (part.is_enum && part.enum_is_scoped) return original;
  an_integer_kind kind = part.int_kind;
  bool distinct = is_distinct_cplusplus_integer(part);
  if (C_dialect == 2 && distinct && targ_sizeof_long == targ_sizeof_int &&
      targ_precisionof_long == targ_precisionof_int) {
    if (kind == ik_long) return integer_type(ik_int);
    if (kind == ik_unsigned_long) return integer_type(ik_unsigned_int);
  }
  an_integer_kind promoted = promoted_small_kind(kind);
  if (promoted != kind) return integer_type(promoted);
  if (distinct) return integer_type(kind); // no enum or keyword type leaves promotion
  return type;
}

a_type *type_after_bit_field_integral_promotion(a_type *type, unsigned width)
{
  a_type *bottom = skip_typerefs(type);
  if (bottom->kind != tk_integer || C_dialect == 1) return type_after_integral_promotion(type);
  an_integer_kind kind = as_integer(bottom).int_kind;
  bool is_signed = int_kind_is_signed[kind];
  if (as_integer(bottom).is_bool || width < targ_precisionof_int ||
      (width == targ_precisionof_int && is_signed)) {
    return integer_type(ik_int);
  }
  if (width == targ_precisionof_int) return integer_type(ik_unsigned_int);
  return type_after_integral_promotion(type);
}

a_type *default_argument_promotion(a_type *original)
{
  a_type *type = skip_typerefs(original);
  if (type->kind == tk_integer) return type_after_integral_promotion(original);
  if (type->kind == tk_float && as_float(type).float_kind == fk_float) return float_type(fk_double);
  if (type->kind == tk_imaginary && as_float(type).float_kind == fk_float) {
    return imaginary_type(fk_double);
  }
  return original;
}

a_type *type_after_array_to_pointer_transformation(a_type *type)
{
  a_type *bottom = skip_typerefs(type);
  if (bottom->kind == tk_routine) return make_pointer_type(type);
  if (bottom->kind != tk_array) return type;
  // Qualifiers on an array typedef belong to its elements.
  a_type_qualifier_set qualifiers = f_get_type_qualifiers(type, true);
  a_type *element = as_array(bottom).element_type;
  if (qualifiers != 0) element = f_make_qualified_type(element, qualifiers);
  return make_pointer_type(element);
}

//---------------------------------------------------------------------------------------------
// Usual arithmetic conversions

static bool either(an_integer_kind a, an_integer_kind b, an_integer_kind wanted)
{
  return a == wanted || b == wanted;
}

static a_type *common_floating_type(a_type *a, a_type *b)
{
  a_float_kind kind = fk_float;
  bool any_float = false;
  a_type *const operands[] = {a, b};
  for (a_type *type : operands) {
    if (!kind_has_float_part(type->kind)) continue;
    any_float = true;
    if (as_float(type).float_kind > kind) kind = as_float(type).float_kind;
  }
  check(any_float);
  if (C_dialect == 1 && kind == fk_float) kind = fk_double;
  auto is_nonreal = [](a_type *type) {
    return type->kind == tk_complex || type->kind == tk_imaginary;
  };
  if (!is_nonreal(a) && !is_nonreal(b)) return float_type(kind);
  if (a->kind == tk_imaginary && b->kind == tk_imaginary) return imaginary_type(kind);
  return complex_type(kind);
}

static bool unsigned_of_same_precision_as_long_long(an_integer_kind kind)
{
  switch (kind) {
  case ik_unsigned_int40: return targ_precisionof_int40_t == targ_precisionof_long_long;
  case ik_unsigned_long: return targ_precisionof_long == targ_precisionof_long_long;
  case ik_unsigned_int: return targ_precisionof_int == targ_precisionof_long_long;
  default: return false;
  }
}

static an_integer_kind common_long_kind(an_integer_kind a, an_integer_kind b)
{
  if (either(a, b, ik_unsigned_long)) return ik_unsigned_long;
  if (either(a, b, ik_long)) {
    if (targ_precisionof_long == targ_precisionof_int40_t) {
      return either(a, b, ik_unsigned_int40) ? ik_unsigned_long : ik_long;
    }
    bool unsigned_wins =
        targ_precisionof_long == targ_precisionof_int && either(a, b, ik_unsigned_int);
    return unsigned_wins ? ik_unsigned_long : ik_long;
  }
  return either(a, b, ik_unsigned_int) ? ik_unsigned_int : ik_int;
}

// The kinds are promoted.  The 40-bit type stands between long and long long, unless long is at
// least as wide.
static an_integer_kind common_integer_kind(an_integer_kind a, an_integer_kind b)
{
  if (either(a, b, ik_unsigned_long_long)) return ik_unsigned_long_long;
  if (either(a, b, ik_long_long)) {
    an_integer_kind other = a == ik_long_long ? b : a;
    return unsigned_of_same_precision_as_long_long(other) ? ik_unsigned_long_long : ik_long_long;
  }
  bool long_decides = targ_precisionof_long >= targ_precisionof_int40_t &&
                      (either(a, b, ik_long) || either(a, b, ik_unsigned_long));
  if (!long_decides && targ_precisionof_int40_t > targ_precisionof_int) {
    if (either(a, b, ik_unsigned_int40)) return ik_unsigned_int40;
    if (either(a, b, ik_int40)) return ik_int40;
  }
  return common_long_kind(a, b);
}

a_type *usual_arithmetic_conversions(a_type *a, a_type *b)
{
  a = skip_typerefs(a);
  b = skip_typerefs(b);
  if (a->kind == tk_error || b->kind == tk_error) return error_type();
  if (kind_has_float_part(a->kind) || kind_has_float_part(b->kind))
    return common_floating_type(a, b);
  a = skip_typerefs(type_after_integral_promotion(a));
  b = skip_typerefs(type_after_integral_promotion(b));
  if (a->kind != tk_integer || b->kind != tk_integer) return error_type();
  return integer_type(common_integer_kind(as_integer(a).int_kind, as_integer(b).int_kind));
}

//---------------------------------------------------------------------------------------------
// Base classes

a_base_class *find_base_class_of(a_type *class_type, a_type *base_type)
{
  class_type = skip_typerefs(class_type);
  base_type = skip_typerefs(base_type);
  if (!kind_has_class_part(class_type->kind)) return nullptr;
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    if (identical_types(skip_typerefs(base->type), base_type)) return base;
  }
  return nullptr;
}

bool is_same_class_or_base_class_thereof(a_type *base_type, a_type *class_type)
{
  return identical_types(skip_typerefs(base_type), skip_typerefs(class_type)) ||
         find_base_class_of(class_type, base_type) != nullptr;
}

static bool related_classes(a_type *source, a_type *dest, a_base_class **base, bool *to_derived)
{
  *to_derived = false;
  if (!is_class_struct_union_type(source) || !is_class_struct_union_type(dest)) return false;
  *base = find_base_class_of(source, dest);
  if (*base != nullptr) return true;
  *base = find_base_class_of(dest, source);
  *to_derived = *base != nullptr;
  return *to_derived;
}

bool f_related_class_pointers(a_type *source_type, a_type *dest_type, a_base_class **base_class,
                              bool *to_derived)
{
  source_type = skip_typerefs(source_type);
  dest_type = skip_typerefs(dest_type);
  *base_class = nullptr;
  *to_derived = false;
  if (source_type->kind != tk_pointer || dest_type->kind != tk_pointer) return false;
  return related_classes(as_pointer(source_type).pointed_to_type,
                         as_pointer(dest_type).pointed_to_type, base_class, to_derived);
}

bool f_rel_member_pointers(a_type *source_type, a_type *dest_type, a_base_class **base_class,
                           bool *to_derived)
{
  *base_class = nullptr;
  *to_derived = false;
  if (!is_ptr_to_member_type(source_type) || !is_ptr_to_member_type(dest_type)) return false;
  return related_classes(pm_class_type(source_type), pm_class_type(dest_type), base_class,
                         to_derived);
}

//---------------------------------------------------------------------------------------------
// Qualifiers

static a_type_qualifier_set cv_of(a_type *type)
{
  return get_type_qualifiers(type) & ~tq_packed;
}

bool same_type_with_added_qualifiers(a_type *source_type, a_type *dest_type)
{
  return (cv_of(source_type) & ~cv_of(dest_type)) == 0 &&
         f_identical_types(source_type, dest_type, ido_ignore_top_qualifiers);
}

// C++ 4.4: qualifiers may be added at any level if every level above the change is const.
bool qualification_conversion_possible_full(a_type *source_type, a_type *dest_type,
                                            bool *qualification_added)
{
  *qualification_added = false;
  bool const_above = true;
  bool first_level = true;
  for (;;) {
    a_type *x = skip_typerefs(source_type), *y = skip_typerefs(dest_type);
    bool both_members = x->kind == tk_ptr_to_member && y->kind == tk_ptr_to_member;
    if (!both_members && !(x->kind == tk_pointer && y->kind == tk_pointer)) break;
    if (both_members &&
        !identical_types(as_ptr_to_member(x).member_class, as_ptr_to_member(y).member_class)) {
      return false;
    }
    source_type = both_members ? as_ptr_to_member(x).member_type : as_pointer(x).pointed_to_type;
    dest_type = both_members ? as_ptr_to_member(y).member_type : as_pointer(y).pointed_to_type;
    a_type_qualifier_set p = cv_of(source_type), q = cv_of(dest_type);
    if (p & ~q) return false;
    if (p != q) {
      if (!const_above) return false;
      if (first_level) *qualification_added = true;
    }
    if (!first_level || C_dialect == 2)
      const_above = const_above && (q & tq_const);
    else
      const_above = C_dialect == 2;
    first_level = false;
  }
  return f_identical_types(source_type, dest_type, ido_ignore_top_qualifiers);
}

bool qualification_conversion_possible(a_type *source_type, a_type *dest_type)
{
  bool added;
  return qualification_conversion_possible_full(source_type, dest_type, &added);
}

bool cast_removes_qualifiers(a_type *source_type, a_type *dest_type)
{
  a_type *x = skip_typerefs(source_type), *y = skip_typerefs(dest_type);
  while (x->kind == tk_pointer && y->kind == tk_pointer) {
    a_type *p = as_pointer(x).pointed_to_type, *q = as_pointer(y).pointed_to_type;
    if (cv_of(p) & ~cv_of(q)) return true;
    x = skip_typerefs(p);
    y = skip_typerefs(q);
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Implicit conversions

void clear_std_conv_descr(a_std_conv_descr *descr)
{
  *descr = a_std_conv_descr();
  descr->is_conversion = true;
}

// char * from a string literal whose type is const char [] (the deprecated conversion).
static bool is_string_literal_conversion(const a_conversion_source *source, a_type *pointed_to)
{
  if (!source->is_string_literal || !string_literals_are_const) return false;
  a_type *element = is_array_type(source->type) ? array_element_type(source->type)
                                                : type_pointed_to(source->type);
  return cv_of(pointed_to) == 0 &&
         f_identical_types(element, pointed_to, ido_ignore_top_qualifiers);
}

// Both are pointers: what lies behind them decides.
static bool impl_pointer_to_pointer(const a_conversion_source *source, a_type *p, a_type *q,
                                    a_type *dest_type, a_std_conv_descr *descr)
{
  a_type_qualifier_set from = cv_of(p), to = cv_of(q);
  bool loses = (from & ~to) != 0;
  if (loses && is_string_literal_conversion(source, q)) {
    descr->string_literal_to_nonconst = true;
    return true;
  }
  if (loses) return false;
  descr->qualification_added = from != to;
  bool to_void = is_void_type(q), from_void = is_void_type(p);
  if (to_void && from_void) return true;
  if (to_void && !is_function_type(p)) {
    descr->to_void_or_null = true;
    return true;
  }
  if (from_void && C_dialect != 2 && !is_function_type(q)) {
    descr->to_void_or_null = true;
    return true;
  }
  unsigned options =
      tco_ignore_top_qualifiers | tco_error_types | tco_array_bounds | tco_allow_linkage_difference;
  if (f_types_are_compatible(p, q, options)) {
    descr->is_conversion = false;
    descr->exception_spec_mismatch = !exception_spec_conversion_possible(p, q);
    return true;
  }
  if (C_dialect != 2) return false;
  bool added;
  if (qualification_conversion_possible_full(source->type, dest_type, &added)) return true;
  a_base_class *base = is_class_struct_union_type(p) ? find_base_class_of(p, q) : nullptr;
  if (base == nullptr) return false;
  descr->base_class = base;
  return true;
}

bool impl_pointer_conversion(const a_conversion_source *source, a_type *dest_type,
                             a_std_conv_descr *descr)
{
  a_type *dest = skip_typerefs(dest_type);
  if (dest->kind != tk_pointer) return false;
  a_type *type = skip_typerefs(type_after_array_to_pointer_transformation(source->type));
  if (source->is_null_pointer_constant || type->kind == tk_nullptr) {
    descr->to_void_or_null = true;
    return true;
  }
  if (type->kind != tk_pointer) return false;
  return impl_pointer_to_pointer(source, as_pointer(type).pointed_to_type,
                                 as_pointer(dest).pointed_to_type, dest_type, descr);
}

bool impl_ptr_to_member_conversion(const a_conversion_source *source, a_type *dest_type,
                                   a_std_conv_descr *descr)
{
  a_type *dest = skip_typerefs(dest_type), *type = skip_typerefs(source->type);
  if (dest->kind != tk_ptr_to_member) return false;
  if (source->is_null_pointer_constant || type->kind == tk_nullptr) {
    descr->to_void_or_null = true;
    return true;
  }
  if (type->kind != tk_ptr_to_member) return false;
  if (!f_types_are_compatible(pm_member_type(type), pm_member_type(dest),
                              tco_ignore_top_qualifiers | tco_error_types)) {
    return false;
  }
  if (cv_of(pm_member_type(type)) & ~cv_of(pm_member_type(dest))) return false;
  if (identical_types(pm_class_type(type), pm_class_type(dest))) {
    descr->is_conversion = false;
    return true;
  }
  // From a base's member to a derived class's.
  descr->base_class = find_base_class_of(pm_class_type(dest), pm_class_type(type));
  descr->ptr_to_member_step = descr->base_class != nullptr;
  return descr->ptr_to_member_step;
}

static bool impl_arithmetic_conversion(a_type *source, a_type *dest, a_std_conv_descr *descr)
{
  if (dest->kind == tk_integer && as_integer(dest).is_enum) {
    if (identical_types(source, dest)) {
      descr->is_conversion = false;
      return true;
    }
    if (C_dialect == 2) return false;
    // C: enumerators are ints, so an integer says nothing; another enumeration does.
    if (source->kind == tk_integer && as_integer(source).is_enum)
      descr->diagnostic = ec_mixed_enum_type;
    return true;
  }
  if (source->kind == tk_integer && as_integer(source).is_enum &&
      as_integer(source).enum_is_scoped) {
    return false;
  }
  if (identical_types(source, dest)) descr->is_conversion = false;
  bool source_complex = source->kind == tk_complex || source->kind == tk_imaginary;
  bool dest_complex = dest->kind == tk_complex || dest->kind == tk_imaginary;
  descr->real_to_complex = gpp_mode && gnu_version > 40299 && !source_complex && dest_complex;
  if ((source->kind == tk_imaginary && dest->kind != tk_imaginary && dest->kind != tk_complex) ||
      (dest->kind == tk_imaginary && !source_complex)) {
    descr->diagnostic = ec_real_imaginary_conversion;
  }
  bool float_promotion = source->kind == tk_float && as_float(source).float_kind == fk_float &&
                         dest->kind == tk_float && as_float(dest).float_kind == fk_double;
  bool integral_promotion = source->kind == tk_integer && descr->is_conversion &&
                            skip_typerefs(type_after_integral_promotion(source)) == dest;
  descr->is_promotion = float_promotion || integral_promotion;
  return true;
}

bool impl_conversion_possible(const a_conversion_source *source, a_type *dest_type,
                              a_std_conv_descr *descr)
{
  clear_std_conv_descr(descr);
  a_type *type = skip_typerefs(source->type), *dest = skip_typerefs(dest_type);
  if (type->kind == tk_error || dest->kind == tk_error || type->kind == tk_unknown ||
      dest->kind == tk_unknown) {
    descr->is_conversion = false;
    return true;
  }
  if (is_arithmetic_or_enum_type(type) && is_arithmetic_or_enum_type(dest)) {
    return impl_arithmetic_conversion(type, dest, descr);
  }
  if (dest->kind == tk_pointer) return impl_pointer_conversion(source, dest_type, descr);
  if (dest->kind == tk_ptr_to_member)
    return impl_ptr_to_member_conversion(source, dest_type, descr);
  if (is_bool_type(dest)) {
    a_type *decayed = skip_typerefs(type_after_array_to_pointer_transformation(type));
    descr->is_to_bool = decayed->kind == tk_pointer || decayed->kind == tk_ptr_to_member ||
                        decayed->kind == tk_nullptr;
    return descr->is_to_bool;
  }
  if (dest->kind == tk_nullptr) return type->kind == tk_nullptr || source->is_null_pointer_constant;
  if (f_types_are_compatible(type, dest, tco_ignore_top_qualifiers)) {
    descr->is_conversion = false;
    return type->kind != tk_void && type->kind != tk_routine;
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Explicit conversions

// GNU C: a cast to a union type from the type of one of its members.
static bool is_cast_to_union_of_member(a_type *type, a_type *dest)
{
  if (!gcc_mode || dest->kind != tk_union) return false;
  for (a_field *field = as_class(dest).first_field; field; field = field->next) {
    if (f_types_are_compatible(field->type, type, tco_ignore_top_qualifiers)) return true;
  }
  return false;
}

bool reinterpret_cast_conversion_possible(a_type *source_type, a_type *dest_type)
{
  a_type *type = skip_typerefs(type_after_array_to_pointer_transformation(source_type));
  a_type *dest = skip_typerefs(dest_type);
  bool from_pointer = type->kind == tk_pointer, to_pointer = dest->kind == tk_pointer;
  if (from_pointer && to_pointer) return true;
  if (from_pointer || type->kind == tk_nullptr) return dest->kind == tk_integer;
  if (to_pointer) return type->kind == tk_integer;
  return type->kind == tk_ptr_to_member && dest->kind == tk_ptr_to_member &&
         is_function_type(pm_member_type(type)) == is_function_type(pm_member_type(dest));
}

bool expl_conversion_possible(const a_conversion_source *source, a_type *dest_type,
                              a_std_conv_descr *descr)
{
  a_type *type = skip_typerefs(type_after_array_to_pointer_transformation(source->type));
  a_type *dest = skip_typerefs(dest_type);
  clear_std_conv_descr(descr);
  if (dest->kind == tk_void) return true;
  if (impl_conversion_possible(source, dest_type, descr)) return true;
  clear_std_conv_descr(descr);
  if (is_arithmetic_or_enum_type(type) && is_arithmetic_or_enum_type(dest)) return true;
  if (reinterpret_cast_conversion_possible(type, dest)) return true;
  if (is_cast_to_union_of_member(type, dest)) return true;
  bool to_derived;
  return f_related_class_pointers(type, dest, &descr->base_class, &to_derived) ||
         f_rel_member_pointers(type, dest, &descr->base_class, &to_derived);
}

bool type_masks_handler_param_type(a_type *thrown_type, a_type *handler_type)
{
  a_type *handler = skip_typerefs(handler_type);
  if (handler->kind == tk_pointer && as_pointer(handler).is_reference) {
    handler = skip_typerefs(as_pointer(handler).pointed_to_type);
  }
  a_type *thrown = skip_typerefs(thrown_type);
  if (thrown->kind == tk_pointer && as_pointer(thrown).is_reference) {
    thrown = skip_typerefs(as_pointer(thrown).pointed_to_type);
  }
  if (f_identical_types(handler, thrown, ido_ignore_top_qualifiers)) return true;
  if (is_class_struct_union_type(handler) && is_class_struct_union_type(thrown)) {
    return find_base_class_of(thrown, handler) != nullptr;
  }
  if (!is_pointer_type(handler) || !is_pointer_type(thrown)) return false;
  if (is_void_type(type_pointed_to(handler))) return true;
  a_base_class *base;
  bool to_derived;
  return f_related_class_pointers(thrown, handler, &base, &to_derived) && !to_derived;
}
