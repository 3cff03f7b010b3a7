// types_relations.cpp - relations between two types: identity, compatibility, composite type.
// Rule:    the three are kept apart: identity is C++'s same type, compatibility C's (C99 6.2.7), and
//          the composite type builds something new only where one side knows more than the other.
// Entry:   f_identical_types, f_types_are_compatible_full, param_types_are_compatible_full,
//          composite_type.
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"

bool (*types_correspond_hook)(a_type *a, a_type *b);

//---------------------------------------------------------------------------------------------
// Parts that the relations share

static bool in_gnu_mode()
{
  return gcc_mode || gpp_mode;
}

// The record of corresponding entries of several translation units makes types the same.
static bool types_correspond(a_type *a, a_type *b)
{
  if (a->source_corresp.trans_unit_corresp != nullptr &&
      a->source_corresp.trans_unit_corresp == b->source_corresp.trans_unit_corresp) {
    return true;
  }
  return types_correspond_hook != nullptr && types_correspond_hook(a, b);
}

static bool kinds_match(a_type_kind a, a_type_kind b)
{
  return a == b || (a == tk_class && b == tk_struct) || (a == tk_struct && b == tk_class);
}

static bool same_integer_part(a_type *a, a_type *b)
{
  const an_integer_type_part &x = as_integer(a), &y = as_integer(b);
  return x.int_kind == y.int_kind && x.is_wchar_t == y.is_wchar_t &&
         x.is_char16_t == y.is_char16_t && x.is_char32_t == y.is_char32_t && x.is_bool == y.is_bool;
}

static bool may_differ_in_alignment(a_type *type)
{
  return !is_incomplete_type(type) && !is_array_type(type) && !is_function_type(type);
}

// GNU: two complete types with different alignments are different types; in GNU C++ dependent types
// have no alignment yet.
static bool alignments_allow_equality(a_type *a, a_type *b)
{
  if (!in_gnu_mode() || a == b) return true;
  if (!may_differ_in_alignment(a) || !may_differ_in_alignment(b)) return true;
  if (f_alignment_of_type(a) == f_alignment_of_type(b)) return true;
  return gpp_mode && (is_template_dependent_type(a) || is_template_dependent_type(b));
}

// The qualifiers that a comparison looks at: in C++ those of an array's elements too.
static a_type_qualifier_set compared_qualifiers(a_type *type)
{
  return f_get_type_qualifiers(type, C_dialect != 2) & ~tq_packed;
}

// Steps through typedefs on both sides to a reference; drops it when only one side has one.
static void see_through_typedef_references(a_type **a, a_type **b)
{
  auto step = [](a_type *type) {
    while (type->kind == tk_typeref) {
      const a_typeref_type_part &part = as_typeref(type);
      if (part.is_typeof || part.is_underlying_type || part.is_decltype) break;
      type = part.referenced_type;
    }
    return type;
  };
  a_type *x = step(*a), *y = step(*b);
  bool x_is_reference = is_any_reference_type(x), y_is_reference = is_any_reference_type(y);
  if (x_is_reference == y_is_reference) return;
  if (x_is_reference)
    *a = type_pointed_to(x);
  else
    *b = type_pointed_to(y);
}

static bool is_default_convention(unsigned convention)
{
  return convention == 0;
}

bool calling_conventions_are_compatible(a_type *a, a_type *b)
{
  unsigned x = routine_supplement_of(skip_typerefs(a))->calling_convention;
  unsigned y = routine_supplement_of(skip_typerefs(b))->calling_convention;
  return x == y || (is_default_convention(x) && is_default_convention(y));
}

bool routine_linkages_are_compatible(a_type *a, a_type *b, unsigned options)
{
  if (!c_and_cpp_function_types_are_distinct || (options & tco_ignore_linkage)) return true;
  if ((options & tco_allow_linkage_difference) &&
      impl_conv_between_c_and_cpp_function_ptrs_allowed) {
    return true;
  }
  return routine_supplement_of(a)->type_linkage == routine_supplement_of(b)->type_linkage;
}

bool equiv_class_types(a_type *a, a_type *b, unsigned)
{
  if (a == b || types_correspond(a, b)) return true;
  if (C_dialect != 2) return false;
  // Two instances of one template with identical arguments.
  a_class_type_supplement *x = class_supplement_of(a), *y = class_supplement_of(b);
  if (x->assoc_template == nullptr || x->assoc_template != y->assoc_template) return false;
  if (!as_class(a).is_template_instance || !as_class(b).is_template_instance) return false;
  a_template_arg *p = x->template_args, *q = y->template_args;
  for (; p != nullptr && q != nullptr; p = p->next, q = q->next) {
    if (p->kind != q->kind) return false;
    if (p->kind == tak_type && !identical_types(p->variant.type, q->variant.type)) return false;
    if (p->kind == tak_constant && !eq_constants(p->variant.constant, q->variant.constant))
      return false;
    if (p->kind == tak_template && p->variant.template_symbol != q->variant.template_symbol)
      return false;
  }
  return p == nullptr && q == nullptr && x->template_args != nullptr;
}

bool cl_vectors_are_same_type(a_type *a, a_type *b)
{
  const a_cl_vector_type_part &x = as_cl_vector(a), &y = as_cl_vector(b);
  return x.element_count == y.element_count && x.element_kind_index == y.element_kind_index &&
         x.vector_flags == y.vector_flags &&
         x.element_int_or_float_kind == y.element_int_or_float_kind;
}

//---------------------------------------------------------------------------------------------
// Identity

static bool identical_routine_types(a_type *a, a_type *b, unsigned options)
{
  a_routine_type_supplement *x = routine_supplement_of(a), *y = routine_supplement_of(b);
  bool this_missing = x->this_class == nullptr || y->this_class == nullptr;
  if (x->this_qualifiers != y->this_qualifiers) return false;
  if (this_missing) {
    if (x->this_class != y->this_class && !(options & ido_ignore_missing_this_class)) return false;
  } else if (!f_identical_types(x->this_class, y->this_class, options)) {
    return false;
  }
  options &= ~(ido_ignore_missing_this_class | ido_ignore_top_qualifiers);
  if (x->is_prototyped != y->is_prototyped || x->has_ellipsis != y->has_ellipsis) return false;
  if (!routine_linkages_are_compatible(a, b, tco_none)) return false;
  if (in_gnu_mode() && !calling_conventions_are_compatible(a, b)) return false;
  if (!f_identical_types(as_routine(a).return_type, as_routine(b).return_type, options))
    return false;
  a_param_type *p = x->param_types, *q = y->param_types;
  for (; p != nullptr && q != nullptr; p = p->next, q = q->next) {
    bool original = (options & ido_original_param_arrays) && p->orig_type && q->orig_type;
    if (p->is_pack != q->is_pack) return false;
    if (!f_identical_types(original ? p->orig_type : p->type, original ? q->orig_type : q->type,
                           options | ido_ignore_top_qualifiers)) {
      return false;
    }
  }
  return p == nullptr && q == nullptr;
}

static bool identical_array_bounds(a_type *a, a_type *b)
{
  const an_array_type_part &x = as_array(a), &y = as_array(b);
  if (x.is_vla || y.is_vla) return false;
  if (x.bound_is_constant != y.bound_is_constant || x.bound_is_expr != y.bound_is_expr)
    return false;
  if (x.bound_is_constant)
    return eq_constants(x.bound.bound_as_constant, y.bound.bound_as_constant);
  if (x.bound_is_expr) return compare_expressions(x.bound.bound_expr, y.bound.bound_expr, 0);
  return x.bound.number_of_elements == y.bound.number_of_elements &&
         x.bound_is_zero == y.bound_is_zero;
}

static bool identical_template_params(a_type *a, a_type *b, unsigned options)
{
  const a_template_param_type_part &x = as_template_param(a), &y = as_template_param(b);
  if (x.template_param_kind != y.template_param_kind) return false;
  if (x.template_param_kind == tptk_unknown) return true;
  a_template_param_type_supplement *p = x.template_param_supplement,
                                   *q = y.template_param_supplement;
  if (x.template_param_kind == tptk_member) {
    return p->parent_class != nullptr && q->parent_class != nullptr &&
           f_identical_types(p->parent_class, q->parent_class, options) &&
           a->source_corresp.name == b->source_corresp.name;
  }
  bool unknown = p->coordinate == 0 || q->coordinate == 0;
  if (unknown && (options & ido_unknown_coordinates_equal)) return true;
  if (unknown && (options & ido_unknown_coordinates_differ)) return false;
  return p->coordinate == q->coordinate && p->level == q->level;
}

// Both sides are free of typerefs, different entries, of matching kinds; pointers, arrays and pointers
// to members are followed by the caller's loop.
static bool identical_ends(a_type *a, a_type *b, unsigned options)
{
  switch (a->kind) {
  case tk_integer:
    if (as_integer(a).is_enum || as_integer(b).is_enum) return false;
    return same_integer_part(a, b);
  case tk_float:
  case tk_imaginary:
  case tk_complex: return as_float(a).float_kind == as_float(b).float_kind;
  case tk_routine: return identical_routine_types(a, b, options);
  case tk_class:
  case tk_struct:
  case tk_union: return C_dialect == 2 && equiv_class_types(a, b, options);
  case tk_template_param: return identical_template_params(a, b, options);
  case tk_nullptr: return a->is_incomplete == b->is_incomplete;
  case tk_cl_vector: return cl_vectors_are_same_type(a, b);
  case tk_error:
  case tk_void:
  case tk_unknown: return true;
  case tk_pointer:
  case tk_array:
  case tk_typeref:
  case tk_ptr_to_member:
  case tk_last: break;
  }
  unexpected_kind("type kind");
}

bool f_identical_types(a_type *a, a_type *b, unsigned options)
{
  for (;;) {
    if (a == b) return true;
    if (!(options & ido_ignore_top_qualifiers) &&
        compared_qualifiers(a) != compared_qualifiers(b)) {
      return false;
    }
    if (options & ido_see_through_typedef_refs) see_through_typedef_references(&a, &b);
    a_type *x = skip_typerefs(a), *y = skip_typerefs(b);
    if (x != y && !kinds_match(x->kind, y->kind)) return false;
    if (!alignments_allow_equality(a, b)) return false;
    if (x == y || types_correspond(x, y)) return true;
    options &=
        ~(ido_ignore_top_qualifiers | ido_ignore_missing_this_class * (x->kind != tk_routine));
    switch (x->kind) {
    case tk_pointer: {
      const a_pointer_type_part &p = as_pointer(x), &q = as_pointer(y);
      if (p.is_reference != q.is_reference || p.is_tracking != q.is_tracking) return false;
      if (p.is_rvalue != q.is_rvalue && !(options & ido_ignore_reference_kind)) return false;
      a = p.pointed_to_type;
      b = q.pointed_to_type;
      break;
    }
    case tk_array:
      if (!identical_array_bounds(x, y)) return false;
      a = as_array(x).element_type;
      b = as_array(y).element_type;
      break;
    case tk_ptr_to_member:
      if (!f_identical_types(as_ptr_to_member(x).member_class, as_ptr_to_member(y).member_class,
                             options)) {
        return false;
      }
      a = as_ptr_to_member(x).member_type;
      b = as_ptr_to_member(y).member_type;
      options |= ido_ignore_missing_this_class;
      break;
    default: return identical_ends(x, y, options);
    }
  }
}

//---------------------------------------------------------------------------------------------
// Compatibility

// Enumerations (C99 6.7.2.2p4): compatible with the integer that carries them, with each other only
// in old GNU C.
static bool compatible_integers(a_type *a, a_type *b, unsigned options)
{
  bool a_is_enum = as_integer(a).is_enum, b_is_enum = as_integer(b).is_enum;
  if (!a_is_enum && !b_is_enum) return same_integer_part(a, b);
  if (options & tco_enum_as_integer) return as_integer(a).int_kind == as_integer(b).int_kind;
  if (C_dialect == 2) return false;
  if (a_is_enum && b_is_enum && !(gcc_mode && gnu_version <= 30399)) return false;
  return same_integer_part(a, b);
}

static bool compatible_array_bounds(a_type *a, a_type *b, unsigned options)
{
  const an_array_type_part &x = as_array(a), &y = as_array(b);
  if (x.is_vla || y.is_vla) return true;
  if (x.bound_is_constant || y.bound_is_constant || x.bound_is_expr || y.bound_is_expr) {
    return identical_array_bounds(a, b);
  }
  if (is_incomplete_array_type(a) || is_incomplete_array_type(b)) {
    return C_dialect != 2 || (options & tco_array_bounds) ||
           (is_incomplete_array_type(a) && is_incomplete_array_type(b));
  }
  return x.bound.number_of_elements == y.bound.number_of_elements;
}

// GNU: a parameter of transparent union type may be declared with the type of any member.
static bool matches_transparent_union_member(a_type *union_type, a_type *type, unsigned options)
{
  union_type = skip_typerefs(union_type);
  if (!gcc_mode || union_type->kind != tk_union || !as_class(union_type).is_transparent_union) {
    return false;
  }
  for (a_field *field = as_class(union_type).first_field; field; field = field->next) {
    if (f_types_are_compatible_full(field->type, type, options, nullptr)) return true;
  }
  return false;
}

static bool compatible_params(a_type *a, a_type *b, unsigned options,
                              a_type_difference *differences)
{
  options = (options | tco_ignore_top_qualifiers) & ~tco_ignore_return_qualifiers;
  return f_types_are_compatible_full(a, b, options, differences) ||
         matches_transparent_union_member(a, b, options) ||
         matches_transparent_union_member(b, a, options);
}

bool prototype_matches_unprototyped(a_type *prototyped)
{
  a_routine_type_supplement *supplement = routine_supplement_of(skip_typerefs(prototyped));
  if (supplement->has_ellipsis) return false;
  for (a_param_type *param = supplement->param_types; param; param = param->next) {
    a_type *type = make_unqualified_type(param->type);
    if (!f_types_are_compatible(type, default_argument_promotion(type),
                                tco_ignore_top_qualifiers | tco_error_types)) {
      return false;
    }
  }
  return true;
}

// C99 6.7.5.3p15: a prototype against a definition with an identifier list: the promoted types of the
// old parameters count.
static bool prototype_matches_old_definition(a_routine_type_supplement *prototyped,
                                             a_routine_type_supplement *old, unsigned options)
{
  if (prototyped->has_ellipsis) return false;
  a_param_type *p = prototyped->param_types, *q = old->param_types;
  for (; p != nullptr && q != nullptr; p = p->next, q = q->next) {
    if (!compatible_params(p->type, default_argument_promotion(make_unqualified_type(q->type)),
                           options, nullptr)) {
      return false;
    }
  }
  return p == nullptr && q == nullptr;
}

bool param_types_are_compatible_full(a_type *a, a_type *b, unsigned options,
                                     a_type_difference *differences)
{
  a = skip_typerefs(a);
  b = skip_typerefs(b);
  a_routine_type_supplement *x = routine_supplement_of(a), *y = routine_supplement_of(b);
  if (!x->is_prototyped && !y->is_prototyped) return true;
  if (x->is_prototyped != y->is_prototyped) {
    a_type *prototyped = x->is_prototyped ? a : b;
    a_routine_type_supplement *old = x->is_prototyped ? y : x;
    if (old->is_old_style_definition) {
      return prototype_matches_old_definition(routine_supplement_of(prototyped), old, options);
    }
    return prototype_matches_unprototyped(prototyped);
  }
  if (x->has_ellipsis != y->has_ellipsis) return false;
  a_param_type *p = x->param_types, *q = y->param_types;
  for (; p != nullptr && q != nullptr; p = p->next, q = q->next) {
    if (p->type != q->type && !compatible_params(p->type, q->type, options, differences))
      return false;
  }
  return p == nullptr && q == nullptr;
}

static bool compatible_routine_types(a_type *a, a_type *b, unsigned options,
                                     a_type_difference *differences)
{
  a_routine_type_supplement *x = routine_supplement_of(a), *y = routine_supplement_of(b);
  if (x->this_qualifiers != y->this_qualifiers) return false;
  if ((x->this_class == nullptr) != (y->this_class == nullptr)) return false;
  if (x->this_class != nullptr && !f_types_are_compatible(x->this_class, y->this_class, options)) {
    return false;
  }
  if (!routine_linkages_are_compatible(a, b, options)) return false;
  if (!calling_conventions_are_compatible(a, b)) {
    if (!(options & tco_record_calling_conventions)) return false;
    if (differences != nullptr) {
      differences->routine_type_a = a;
      differences->routine_type_b = b;
    }
  }
  unsigned return_options = options & ~(tco_ignore_return_qualifiers | tco_ignore_top_qualifiers);
  if (options & tco_ignore_return_qualifiers) return_options |= tco_ignore_top_qualifiers;
  if (!f_types_are_compatible_full(as_routine(a).return_type, as_routine(b).return_type,
                                   return_options, differences)) {
    return false;
  }
  return param_types_are_compatible_full(a, b, options & ~tco_ignore_top_qualifiers, differences);
}

static bool compatible_ends(a_type *a, a_type *b, unsigned options, a_type_difference *differences)
{
  switch (a->kind) {
  case tk_integer: return compatible_integers(a, b, options);
  case tk_routine: return compatible_routine_types(a, b, options, differences);
  case tk_class:
  case tk_struct:
  case tk_union: return equiv_class_types(a, b, options);
  case tk_error:
  case tk_void:
  case tk_float:
  case tk_imaginary:
  case tk_complex:
  case tk_template_param:
  case tk_nullptr:
  case tk_cl_vector:
  case tk_unknown: return identical_ends(a, b, 0);
  case tk_pointer:
  case tk_array:
  case tk_typeref:
  case tk_ptr_to_member:
  case tk_last: break;
  }
  unexpected_kind("type kind");
}

bool f_types_are_compatible_full(a_type *a, a_type *b, unsigned options,
                                 a_type_difference *differences)
{
  for (;;) {
    if (a == b) return true;
    a_type *x = skip_typerefs(a), *y = skip_typerefs(b);
    if ((options & tco_error_types) && (x->kind == tk_error || y->kind == tk_error)) return true;
    if (!(options & tco_ignore_top_qualifiers) &&
        compared_qualifiers(a) != compared_qualifiers(b)) {
      return false;
    }
    if (options & tco_see_through_typedef_refs) {
      see_through_typedef_references(&a, &b);
      x = skip_typerefs(a);
      y = skip_typerefs(b);
    }
    if (x != y && !kinds_match(x->kind, y->kind)) return false;
    if (!alignments_allow_equality(a, b)) return false;
    if (x == y || types_correspond(x, y)) return true;
    if (x->kind != tk_routine) options &= ~tco_ignore_top_qualifiers;
    switch (x->kind) {
    case tk_pointer: {
      const a_pointer_type_part &p = as_pointer(x), &q = as_pointer(y);
      if (p.is_reference != q.is_reference || p.is_rvalue != q.is_rvalue ||
          p.is_tracking != q.is_tracking) {
        return false;
      }
      a = p.pointed_to_type;
      b = q.pointed_to_type;
      break;
    }
    case tk_array:
      if (!compatible_array_bounds(x, y, options)) return false;
      a = as_array(x).element_type;
      b = as_array(y).element_type;
      break;
    case tk_ptr_to_member: {
      const a_ptr_to_member_type_part &p = as_ptr_to_member(x), &q = as_ptr_to_member(y);
      bool loose = options & (tco_ptr_to_member_64 | tco_ptr_to_member_128);
      if (!loose && !f_types_are_compatible(p.member_class, q.member_class, options)) return false;
      a = p.member_type;
      b = q.member_type;
      break;
    }
    default: return compatible_ends(x, y, options, differences);
    }
  }
}

bool f_types_are_compatible(a_type *a, a_type *b, unsigned options)
{
  return f_types_are_compatible_full(a, b, options, nullptr);
}

bool cast_identical_types(a_type *a, a_type *b)
{
  return f_identical_types(a, b, ido_ignore_top_qualifiers);
}

bool interchangeable_types(a_type *a, a_type *b)
{
  a = skip_typerefs(a);
  b = skip_typerefs(b);
  if (a == b) return true;
  if (a->kind == tk_integer && b->kind == tk_integer) {
    return as_integer(a).is_bool == as_integer(b).is_bool && a->size == b->size &&
           a->precision == b->precision &&
           int_kind_is_signed[as_integer(a).int_kind] == int_kind_is_signed[as_integer(b).int_kind];
  }
  return f_types_are_compatible(a, b, tco_ignore_top_qualifiers);
}

bool integral_types_the_same_except_for_signedness(a_type *a, a_type *b)
{
  a = skip_typerefs(a);
  b = skip_typerefs(b);
  if (a->kind != tk_integer || b->kind != tk_integer) return false;
  if (as_integer(a).is_bool || as_integer(b).is_bool) return false;
  return unsigned_int_kind_of[as_integer(a).int_kind] ==
         unsigned_int_kind_of[as_integer(b).int_kind];
}

//---------------------------------------------------------------------------------------------
// Exception specifications

static bool spec_contains(an_exception_specification *spec, a_type *type)
{
  for (an_exception_specification_type *entry = spec->first_type; entry; entry = entry->next) {
    if (identical_types(entry->type, type)) return true;
  }
  return false;
}

// Each type of `inner` stands in `outer`; a missing specification allows everything.
static bool spec_includes(an_exception_specification *outer, an_exception_specification *inner)
{
  if (outer == nullptr) return true;
  if (inner == nullptr) return false;
  for (an_exception_specification_type *entry = inner->first_type; entry; entry = entry->next) {
    if (!entry->is_redundant && !spec_contains(outer, entry->type)) return false;
  }
  return true;
}

bool same_exception_spec(an_exception_specification *a, an_exception_specification *b)
{
  return spec_includes(a, b) && spec_includes(b, a);
}

bool exception_spec_is_less_restrictive(an_exception_specification *a,
                                        an_exception_specification *b)
{
  return !spec_includes(b, a);
}

bool exception_spec_conversion_possible(a_type *from, a_type *to)
{
  a_type *source = skip_typerefs(from), *dest = skip_typerefs(to);
  while (source->kind == tk_pointer && dest->kind == tk_pointer) {
    source = skip_typerefs(as_pointer(source).pointed_to_type);
    dest = skip_typerefs(as_pointer(dest).pointed_to_type);
  }
  if (source->kind != tk_routine || dest->kind != tk_routine) return true;
  return spec_includes(routine_supplement_of(dest)->exception_specification,
                       routine_supplement_of(source)->exception_specification);
}

//---------------------------------------------------------------------------------------------
// Composite types (C99 6.2.7p3)

static a_type *composite_pointer(a_type *a, a_type *b)
{
  a_type *pointed_to = composite_type(as_pointer(a).pointed_to_type, as_pointer(b).pointed_to_type);
  if (pointed_to == as_pointer(a).pointed_to_type) return a;
  if (pointed_to == as_pointer(b).pointed_to_type) return b;
  return make_pointer_type_of_same_kind(a, pointed_to);
}

// The side whose bound is known: a constant one before a variable one, any before none.
static bool bound_is_better(a_type *a, a_type *b)
{
  if (is_incomplete_array_type(b)) return true;
  if (is_incomplete_array_type(a)) return false;
  return !as_array(a).is_vla || as_array(b).is_vla;
}

static a_type *composite_array(a_type *a, a_type *b)
{
  a_type *element = composite_type(as_array(a).element_type, as_array(b).element_type);
  a_type *bounded = bound_is_better(a, b) ? a : b;
  if (element == as_array(bounded).element_type) return bounded;
  a_type *result = copy_type(bounded);
  as_array(result).element_type = element;
  result->size = 0;
  result->alignment = 1;
  set_type_size(result);
  return result;
}

static a_param_type *composite_param(a_param_type *p, a_param_type *q, bool *equals_p,
                                     bool *equals_q)
{
  a_type *type = composite_type(p->type, q->type);
  a_param_type *result = alloc_param_type(type);
  *result = *p;
  result->next = nullptr;
  result->type = type;
  if (result->name == nullptr) result->name = q->name;
  if (result->default_arg_expr == nullptr && q->default_arg_expr != nullptr) {
    result->default_arg_expr = q->default_arg_expr;
    result->has_default_arg = q->has_default_arg;
  }
  if (type != p->type || result->default_arg_expr != p->default_arg_expr) *equals_p = false;
  if (type != q->type || result->default_arg_expr != q->default_arg_expr) *equals_q = false;
  return result;
}

static a_type *composite_routine(a_type *a, a_type *b)
{
  a_routine_type_supplement *x = routine_supplement_of(a), *y = routine_supplement_of(b);
  a_type *return_type = composite_type(as_routine(a).return_type, as_routine(b).return_type);
  bool equals_a = return_type == as_routine(a).return_type;
  bool equals_b = return_type == as_routine(b).return_type;
  if (x->is_prototyped != y->is_prototyped || !x->is_prototyped) {
    // The prototype tells more; without any, a definition's list does.
    bool take_a = x->is_prototyped || (!y->is_prototyped && !y->is_old_style_definition);
    a_type *base = take_a ? a : b;
    if (take_a ? equals_a : equals_b) return base;
    a_type *result = copy_routine_type_with_param_types(base);
    as_routine(result).return_type = return_type;
    return result;
  }
  a_param_type *first = nullptr, **link = &first;
  a_param_type *p = x->param_types, *q = y->param_types;
  for (; p != nullptr && q != nullptr; p = p->next, q = q->next) {
    *link = composite_param(p, q, &equals_a, &equals_b);
    link = &(*link)->next;
  }
  if (equals_a) return a;
  if (equals_b) return b;
  a_type *result = copy_type(a);
  as_routine(result).return_type = return_type;
  routine_supplement_of(result)->param_types = first;
  return result;
}

a_type *composite_type(a_type *a, a_type *b)
{
  if (a == b) return a;
  a_type *x = skip_typerefs(a), *y = skip_typerefs(b);
  if (x == y || types_correspond(x, y) || x->kind == tk_error || y->kind == tk_error) return a;
  a_type *composite;
  if (x->kind != y->kind) {
    // An enum and its integer: the enum says more.
    return a;
  } else if (x->kind == tk_pointer) {
    composite = composite_pointer(x, y);
  } else if (x->kind == tk_array) {
    composite = composite_array(x, y);
  } else if (x->kind == tk_routine) {
    composite = composite_routine(x, y);
  } else {
    return a;
  }
  if (composite == x) return a;
  if (composite == y) return b;
  a_type_qualifier_set qualifiers = f_get_type_qualifiers(a, true) & ~tq_packed;
  return qualifiers == 0 ? composite : f_make_qualified_type(composite, qualifiers);
}

// C++ 5.9: both pointers converted to one type whose qualifiers at each level are those of both, with
// const on every level above the first difference.
a_type *multilevel_composite_pointer_type(a_type *a, a_type *b)
{
  a_type *x = skip_typerefs(a), *y = skip_typerefs(b);
  if (x->kind != tk_pointer || y->kind != tk_pointer) return composite_type(a, b);
  a_type *p = as_pointer(x).pointed_to_type, *q = as_pointer(y).pointed_to_type;
  a_type_qualifier_set p_qualifiers = get_type_qualifiers(p), q_qualifiers = get_type_qualifiers(q);
  a_type *inner =
      multilevel_composite_pointer_type(make_unqualified_type(p), make_unqualified_type(q));
  bool lower_differs = !identical_types(inner, make_unqualified_type(p)) ||
                       !identical_types(inner, make_unqualified_type(q));
  a_type_qualifier_set qualifiers = p_qualifiers | q_qualifiers;
  if (C_dialect == 2 && lower_differs && is_pointer_type(inner)) qualifiers |= tq_const;
  return make_pointer_type(f_make_qualified_type(inner, qualifiers));
}
