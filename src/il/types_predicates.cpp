// types_predicates.cpp - questions about one type: kinds, sizes, typerefs, parts.
// Entry:   f_skip_typerefs, f_get_type_qualifiers, is_..._type, set_type_size, traverse_type_tree.
#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"

//---------------------------------------------------------------------------------------------
// Typerefs and qualifiers

a_type *f_skip_typerefs(a_type *type)
{
  while (type->kind == tk_typeref)
    type = type->variant.typeref.referenced_type;
  return type;
}

a_type *skip_typedefs(a_type *type)
{
  while (type->kind == tk_typeref && type->variant.typeref.qualifiers == 0) {
    type = type->variant.typeref.referenced_type;
  }
  return type;
}

a_type *skip_typerefs_not_typedefs(a_type *type)
{
  while (type->kind == tk_typeref && type->source_corresp.name == nullptr) {
    type = type->variant.typeref.referenced_type;
  }
  return type;
}

a_type *skip_typerefs_not_dependent_decltypes(a_type *type)
{
  while (type->kind == tk_typeref && !type->variant.typeref.dependent_decltype) {
    type = type->variant.typeref.referenced_type;
  }
  return type;
}

a_type *skip_typedefs_not_dependent_decltypes(a_type *type)
{
  while (type->kind == tk_typeref && type->variant.typeref.qualifiers == 0 &&
         !type->variant.typeref.dependent_decltype) {
    type = type->variant.typeref.referenced_type;
  }
  return type;
}

a_type_qualifier_set f_get_type_qualifiers(a_type *type, bool no_array_descent)
{
  a_type_qualifier_set qualifiers = 0;
  for (;;) {
    if (type->kind == tk_typeref) {
      qualifiers |= type->variant.typeref.qualifiers;
      type = type->variant.typeref.referenced_type;
    } else if (type->kind == tk_array && !no_array_descent) {
      type = type->variant.array.element_type;
    } else {
      return qualifiers;
    }
  }
}

//---------------------------------------------------------------------------------------------
// Predicates

bool is_integral_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_integer && (!as_integer(type).is_enum || enum_type_is_integral);
}

bool is_character_type(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_integer) return false;
  const an_integer_type_part &part = as_integer(type);
  return (!part.is_enum || enum_type_is_integral) && part.int_kind <= ik_unsigned_char &&
         !part.is_wchar_t && !part.is_char16_t && !part.is_char32_t && !part.is_bool;
}

bool is_signed_integral_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_integer && int_kind_is_signed[as_integer(type).int_kind];
}

bool is_unsigned_integral_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_integer && !int_kind_is_signed[as_integer(type).int_kind];
}

bool is_incomplete_type(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_array) return type->is_incomplete;
  // Elements of a class without body, which old compilers let a declaration have, have no size either.
  return is_incomplete_array_type(type) || is_incomplete_type(array_element_type(type));
}

bool is_object_type(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind == tk_routine) return false;
  if (C_dialect == 2) return type->kind != tk_void && !is_any_reference_type(type);
  return !is_incomplete_type(type);
}

bool class_type_has_body(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) && as_class(type).has_body;
}

bool is_incomplete_array_type(a_type *type)
{
  type = skip_typerefs(type);
  if (type->kind != tk_array) return false;
  const an_array_type_part &part = as_array(type);
  return !part.bound_is_constant && !part.bound_is_expr && !part.bound_is_zero &&
         part.bound.number_of_elements == 0;
}

bool has_any_unknown_specified_bound(a_type *type)
{
  for (type = skip_typerefs(type); type->kind == tk_array;
       type = skip_typerefs(as_array(type).element_type)) {
    if (as_array(type).bound_is_constant || as_array(type).bound_is_expr) return true;
  }
  return false;
}

bool num_array_elements(a_type *type, a_target_size *count)
{
  a_target_size product = 1;
  for (type = skip_typerefs(type); type->kind == tk_array;
       type = skip_typerefs(as_array(type).element_type)) {
    const an_array_type_part &part = as_array(type);
    if (part.bound_is_constant || part.bound_is_expr || is_incomplete_array_type(type))
      return false;
    if (__builtin_mul_overflow(product, part.bound.number_of_elements, &product)) return false;
  }
  *count = product;
  return true;
}

bool is_arithmetic_type(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_float_part(type->kind) || is_integral_type(type);
}

bool is_arithmetic_or_enum_type(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_float_part(type->kind) || type->kind == tk_integer;
}

bool is_arithmetic_or_unscoped_enum_type(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_float_part(type->kind) || is_integral_or_unscoped_enum_type(type);
}

bool is_scalar_type(a_type *type)
{
  type = skip_typerefs(type);
  return is_arithmetic_or_enum_type(type) || is_pointer_type(type) ||
         type->kind == tk_ptr_to_member || type->kind == tk_nullptr;
}

bool is_aggregate_or_union_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_array || kind_has_class_part(type->kind);
}

static a_type *element_of_array_or_null(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_array ? skip_typerefs(as_array(type).element_type) : nullptr;
}

bool is_char_array_type(a_type *type)
{
  a_type *element = element_of_array_or_null(type);
  return element != nullptr && is_character_type(element);
}

// C has no distinct wide types: the element counts when it is the integer type behind the name.
static bool is_array_of_wide_type(a_type *type, a_type *wide_type)
{
  a_type *element = element_of_array_or_null(type);
  if (element == nullptr || element->kind != tk_integer || as_integer(element).is_enum)
    return false;
  const an_integer_type_part &a = as_integer(element), &b = as_integer(wide_type);
  return a.int_kind == b.int_kind && a.is_wchar_t == b.is_wchar_t &&
         a.is_char16_t == b.is_char16_t && a.is_char32_t == b.is_char32_t && !a.is_bool;
}

bool is_wchar_t_array_type(a_type *type)
{
  return is_array_of_wide_type(type, eff_wchar_t_type());
}
bool is_char16_t_array_type(a_type *type)
{
  return is_array_of_wide_type(type, eff_char16_t_type());
}
bool is_char32_t_array_type(a_type *type)
{
  return is_array_of_wide_type(type, eff_char32_t_type());
}

bool is_string_type(a_type *type)
{
  return is_char_array_type(type) || is_wchar_t_array_type(type) || is_char16_t_array_type(type) ||
         is_char32_t_array_type(type);
}

bool is_void_star_type(a_type *type)
{
  return is_pointer_type(type) && is_void_type(type_pointed_to(type));
}

bool is_ptrdiff_t_type(a_type *type)
{
  return skip_typerefs(type) == ptrdiff_t_type();
}

bool is_struct_vector(a_type *type)
{
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) && as_class(type).is_struct_vector;
}

bool is_vla_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_array && as_array(type).is_vla;
}

bool is_auto_type(a_type *type)
{
  type = skip_typerefs(type);
  return type->kind == tk_template_param &&
         as_template_param(type).template_param_kind == tptk_param &&
         as_template_param(type).template_param_supplement->level <= -1;
}

bool is_or_contains_volatile(a_type *type)
{
  if (f_get_type_qualifiers(type, false) & tq_volatile) return true;
  type = skip_array_types(skip_typerefs(type));
  type = skip_typerefs(type);
  return kind_has_class_part(type->kind) && as_class(type).has_volatile_field;
}

//---------------------------------------------------------------------------------------------
// Accessors

a_type *type_pointed_to(a_type *type)
{
  return as_pointer(skip_typerefs(type)).pointed_to_type;
}
a_type *array_element_type(a_type *type)
{
  return as_array(skip_typerefs(type)).element_type;
}

a_type *skip_array_types(a_type *type)
{
  for (a_type *array = skip_typerefs(type); array->kind == tk_array; array = skip_typerefs(type)) {
    type = as_array(array).element_type;
  }
  return type;
}

a_type *underlying_array_element_type(a_type *type)
{
  return skip_array_types(type);
}
a_type *pm_member_type(a_type *type)
{
  return as_ptr_to_member(skip_typerefs(type)).member_type;
}
a_type *pm_class_type(a_type *type)
{
  return as_ptr_to_member(skip_typerefs(type)).member_class;
}
a_type *return_type_of(a_type *type)
{
  return as_routine(skip_typerefs(type)).return_type;
}

// What the routine returns after lowering: nothing when a class comes back in memory.
a_type *il_return_type_of(a_type *type)
{
  type = skip_typerefs(type);
  return routine_supplement_of(type)->returns_class_in_memory ? void_type()
                                                              : as_routine(type).return_type;
}

a_param_type *param_types_of(a_type *type)
{
  return routine_supplement_of(skip_typerefs(type))->param_types;
}

a_target_alignment f_alignment_of_type(a_type *type)
{
  while (type->kind == tk_typeref && !type->alignment_was_declared) {
    type = type->variant.typeref.referenced_type;
  }
  // An array with a size has taken its element's alignment over.
  if (type->kind == tk_array && !type->alignment_was_declared && type->size == 0) {
    a_target_alignment element = f_alignment_of_type(as_array(type).element_type);
    return element > type->alignment ? element : type->alignment;
  }
  return type->alignment;
}

a_target_size size_of_type(a_type *type)
{
  type = skip_typerefs(type);
  if (type->size == 0) set_type_size(type);
  return type->size;
}

an_integer_kind int_kind_of_type(a_type *type)
{
  return as_integer(skip_typerefs(type)).int_kind;
}
a_float_kind float_kind_of_type(a_type *type)
{
  return as_float(skip_typerefs(type)).float_kind;
}

a_type *f_underlying_type_of_derived_type(a_type *type, bool *found)
{
  *found = true;
  switch (type->kind) {
  case tk_pointer: return as_pointer(type).pointed_to_type;
  case tk_routine: return as_routine(type).return_type;
  case tk_array: return as_array(type).element_type;
  case tk_typeref: return as_typeref(type).referenced_type;
  case tk_ptr_to_member: return as_ptr_to_member(type).member_type;
  case tk_error:
  case tk_void:
  case tk_integer:
  case tk_float:
  case tk_imaginary:
  case tk_complex:
  case tk_class:
  case tk_struct:
  case tk_union:
  case tk_template_param:
  case tk_cl_vector:
  case tk_nullptr:
  case tk_unknown:
  case tk_last: break;
  }
  *found = false;
  return type;
}

a_type *find_bottom_of_type(a_type *type)
{
  for (bool found = true; found;) {
    // A named typeref ends the part that one declarator wrote.
    if (type->kind == tk_typeref && type->source_corresp.name != nullptr) return type;
    a_type *next = f_underlying_type_of_derived_type(type, &found);
    if (next == nullptr) return type;
    type = next;
  }
  return type;
}

a_type *f_implicit_this_param_type_of(a_type *routine_type)
{
  a_routine_type_supplement *supplement = routine_supplement_of(skip_typerefs(routine_type));
  if (supplement->this_class == nullptr) return nullptr;
  return make_pointer_type(
      f_make_qualified_type(supplement->this_class, supplement->this_qualifiers));
}

a_type *underlying_type_of_enum(a_type *type)
{
  type = skip_typerefs(type);
  if (!as_integer(type).is_enum) return type;
  an_enum_type_supplement *supplement = as_integer(type).enum_supplement;
  if (supplement != nullptr && supplement->underlying_type != nullptr) {
    return supplement->underlying_type;
  }
  return integer_type(as_integer(type).int_kind);
}

//---------------------------------------------------------------------------------------------
// Sizes

static void set_float_size(a_type *type)
{
  switch (as_float(type).float_kind) {
  case fk_float:
    type->size = targ_sizeof_float;
    type->alignment = targ_alignof_float;
    break;
  case fk_double:
    type->size = targ_sizeof_double;
    type->alignment = targ_alignof_double;
    break;
  case fk_long_double:
    type->size = targ_sizeof_long_double;
    type->alignment = targ_alignof_long_double;
    break;
  case fk_none: unexpected_kind("float kind");
  }
  if (type->kind == tk_complex) type->size *= 2;
}

static void set_ptr_to_member_size(a_type *type)
{
  bool to_function = is_function_type(as_ptr_to_member(type).member_type);
  type->size = to_function ? targ_sizeof_ptr_to_member_function : targ_sizeof_ptr_to_data_member;
  type->alignment =
      to_function ? targ_alignof_ptr_to_member_function : targ_alignof_ptr_to_data_member;
}

static void set_pointer_size(a_type *type, a_type *pointed_to)
{
  unsigned alignment;
  type->size = size_of_pointer_to(pointed_to, &alignment);
  type->alignment = alignment;
}

void set_type_size(a_type *type)
{
  if (type->size != 0) return;
  switch (type->kind) {
  case tk_integer:
    get_integer_size_and_alignment(as_integer(type).int_kind, &type->size, &type->precision,
                                   &type->alignment);
    return;
  case tk_float:
  case tk_imaginary:
  case tk_complex: set_float_size(type); return;
  case tk_pointer: set_pointer_size(type, as_pointer(type).pointed_to_type); return;
  case tk_nullptr: set_pointer_size(type, void_type()); return;
  case tk_ptr_to_member: set_ptr_to_member_size(type); return;
  case tk_array: set_array_type_size(type, true); return;
  case tk_error:
  case tk_template_param:
  case tk_unknown: type->size = 1; return;
  case tk_class:
  case tk_struct:
  case tk_union:
    if (gcc_mode || gpp_mode) return;
    [[fallthrough]];
  case tk_void:
  case tk_routine:
  case tk_typeref:
    type->size = 0;
    if (!kind_has_class_part(type->kind) && type->kind != tk_typeref) type->alignment = 1;
    return;
  case tk_cl_vector: return; // set where the vector type is made
  case tk_last: break;
  }
  unexpected_kind("type kind");
}

void set_array_type_size(a_type *type, bool report)
{
  an_array_type_part &part = as_array(type);
  a_type *element = skip_typerefs(part.element_type);
  if (element->size == 0 && element->kind != tk_array) set_type_size(element);
  if (element->kind == tk_array && element->size == 0) set_array_type_size(element, report);
  a_target_alignment alignment = f_alignment_of_type(part.element_type);
  if (alignment > type->alignment) type->alignment = alignment;
  type->is_incomplete = is_incomplete_array_type(type);
  if (type->is_incomplete || part.bound_is_constant || part.bound_is_expr) return;
  a_target_size size;
  if (__builtin_mul_overflow(part.bound.number_of_elements, element->size, &size) ||
      size > targ_size_t_max) {
    if (report) error(ec_array_size_too_large);
    part.bound.number_of_elements = 1;
    size = element->size;
  }
  type->size = size;
}

bool align(a_target_size *value, a_target_alignment alignment)
{
  a_target_size rest = *value % alignment;
  if (rest == 0) return true;
  return !__builtin_add_overflow(*value, alignment - rest, value);
}

//---------------------------------------------------------------------------------------------
// Walk

typedef int a_type_test(a_type *type, bool *stop_descent);

// The next type down a typeref, or null where the options end the walk.
static a_type *step_through_typeref(a_type *type, unsigned options)
{
  if ((options & two_stop_at_named) && type->source_corresp.name != nullptr) return nullptr;
  if ((options & two_stop_at_qualifiers) && as_typeref(type).qualifiers != 0) return nullptr;
  return as_typeref(type).referenced_type;
}

static int traverse_routine_parts(a_type *type, a_type_test *test, unsigned options)
{
  a_routine_type_supplement *supplement = routine_supplement_of(type);
  int result = 0;
  if (options & two_param_types) {
    for (a_param_type *param = supplement->param_types; param && result == 0; param = param->next) {
      result = traverse_type_tree(param->type, test, options);
    }
  }
  if (result == 0 && (options & two_this_class) && supplement->this_class != nullptr) {
    result = traverse_type_tree(supplement->this_class, test, options);
  }
  if (result == 0 && (options & two_exception_specs) && supplement->exception_specification) {
    an_exception_specification_type *entry = supplement->exception_specification->first_type;
    for (; entry != nullptr && result == 0; entry = entry->next) {
      result = traverse_type_tree(entry->type, test, options);
    }
  }
  return result;
}

static int traverse_template_args(a_type *type, a_type_test *test, unsigned options)
{
  int result = 0;
  a_template_arg *arg = class_supplement_of(type)->template_args;
  for (; arg != nullptr && result == 0; arg = arg->next) {
    if (arg->kind == tak_type) result = traverse_type_tree(arg->variant.type, test, options);
  }
  return result;
}

int traverse_type_tree(a_type *type, a_type_test *test, unsigned options)
{
  while (type != nullptr) {
    if (options & two_skip_all_typerefs) type = skip_typerefs(type);
    bool stop_descent = false;
    int result = test(type, &stop_descent);
    if (result != 0 || stop_descent) return result;
    switch (type->kind) {
    case tk_typeref: type = step_through_typeref(type, options); break;
    case tk_pointer: type = as_pointer(type).pointed_to_type; break;
    case tk_array: type = as_array(type).element_type; break;
    case tk_ptr_to_member:
      result = traverse_type_tree(as_ptr_to_member(type).member_class, test, options);
      if (result != 0) return result;
      type = as_ptr_to_member(type).member_type;
      break;
    case tk_routine:
      result = traverse_routine_parts(type, test, options);
      if (result != 0) return result;
      type = options & two_return_types ? as_routine(type).return_type : nullptr;
      break;
    case tk_class:
    case tk_struct:
    case tk_union:
      return options & two_template_args ? traverse_template_args(type, test, options) : 0;
    case tk_error:
    case tk_void:
    case tk_integer:
    case tk_float:
    case tk_imaginary:
    case tk_complex:
    case tk_template_param:
    case tk_cl_vector:
    case tk_nullptr:
    case tk_unknown:
    case tk_last: return 0;
    }
  }
  return 0;
}

//---------------------------------------------------------------------------------------------
// Predicates by walking

static constexpr unsigned all_parts = two_return_types | two_param_types | two_this_class;

static int test_error(a_type *type, bool *)
{
  return type->kind == tk_error;
}

bool is_or_contains_error_type(a_type *type)
{
  return type->kind == tk_error || traverse_type_tree(type, test_error, all_parts) != 0;
}

static int test_template_param(a_type *type, bool *)
{
  return type->kind == tk_template_param;
}

bool is_or_contains_template_param(a_type *type)
{
  return C_dialect == 2 &&
         traverse_type_tree(type, test_template_param, all_parts | two_template_args) != 0;
}

static int test_dependent(a_type *type, bool *)
{
  if (type->kind == tk_template_param || type->kind == tk_unknown) return 1;
  if (type->kind == tk_typeref && as_typeref(type).dependent_decltype) return 1;
  if (type->kind == tk_array && as_array(type).bound_is_constant) return 1;
  return kind_has_class_part(type->kind) && as_class(type).is_template_dependent;
}

bool is_template_dependent_type(a_type *type)
{
  return C_dialect == 2 && traverse_type_tree(type, test_dependent, all_parts) != 0;
}

bool is_instantiation_dependent_type(a_type *type)
{
  return C_dialect == 2 &&
         traverse_type_tree(type, test_dependent,
                            all_parts | two_exception_specs | two_template_args) != 0;
}

static bool has_own_name(a_type *type)
{
  return kind_has_class_part(type->kind) || (type->kind == tk_integer && as_integer(type).is_enum);
}

static int test_local(a_type *type, bool *)
{
  return has_own_name(type) && type->source_corresp.is_local;
}

bool is_or_contains_local_type(a_type *type)
{
  return traverse_type_tree(type, test_local, all_parts | two_template_args) != 0;
}

static int test_no_linkage(a_type *type, bool *)
{
  return has_own_name(type) &&
         (type->source_corresp.name == nullptr || type->source_corresp.name_linkage == nlk_none);
}

bool is_or_contains_type_with_no_name_linkage(a_type *type)
{
  return traverse_type_tree(type, test_no_linkage, all_parts | two_template_args) != 0;
}

static bool is_member_of_unnamed_namespace(const a_source_correspondence *corresp)
{
  a_namespace *name_space = C_dialect == 2 ? parent_namespace_of(corresp) : nullptr;
  for (; name_space; name_space = parent_namespace_of(&name_space->source_corresp)) {
    if (name_space->source_corresp.name == nullptr) return true;
  }
  return false;
}

static int test_unnamed_namespace(a_type *type, bool *)
{
  return has_own_name(type) && is_member_of_unnamed_namespace(&type->source_corresp);
}

bool is_or_contains_unnamed_namespace_type(a_type *type)
{
  return C_dialect == 2 &&
         traverse_type_tree(type, test_unnamed_namespace, all_parts | two_template_args) != 0;
}

static int test_trans_unit_specific(a_type *type, bool *)
{
  return has_own_name(type) &&
         (type->source_corresp.is_local || type->source_corresp.name == nullptr ||
          is_member_of_unnamed_namespace(&type->source_corresp));
}

bool is_or_contains_trans_unit_specific_type(a_type *type)
{
  return traverse_type_tree(type, test_trans_unit_specific, all_parts | two_template_args) != 0;
}

static int test_vla(a_type *type, bool *)
{
  return type->kind == tk_array && as_array(type).is_vla;
}

// Parameters are declarators of their own: their bounds don't count (C99 6.7.5p3).
bool is_variably_modified_type(a_type *type)
{
  return il_header.vla_used && traverse_type_tree(type, test_vla, two_return_types) != 0;
}

static int test_direct_vla(a_type *type, bool *stop_descent)
{
  if (type->kind == tk_pointer || type->kind == tk_routine) *stop_descent = true;
  return test_vla(type, stop_descent);
}

bool is_directly_variably_modified_type(a_type *type)
{
  return il_header.vla_used && traverse_type_tree(type, test_direct_vla, 0) != 0;
}

static int test_nonlocal_vla(a_type *type, bool *stop_descent)
{
  // The dimensions of a named type were evaluated where the name was declared.
  if (type->kind == tk_typeref && type->source_corresp.name != nullptr) *stop_descent = true;
  return test_vla(type, stop_descent);
}

bool is_nonlocal_variably_modified_type(a_type *type)
{
  return is_variably_modified_type(type) &&
         traverse_type_tree(type, test_nonlocal_vla, two_return_types) == 0;
}

static int test_star_vla(a_type *type, bool *)
{
  return type->kind == tk_array && as_array(type).is_star_vla;
}

bool is_or_contains_vla_type_with_unspecified_bound(a_type *type)
{
  return il_header.vla_used && traverse_type_tree(type, test_star_vla, two_return_types) != 0;
}

static int test_vla_side_effects(a_type *type, bool *)
{
  if (type->kind != tk_array || !as_array(type).is_vla) return 0;
  a_vla_dimension *dimension = find_vla_dimension(type);
  return dimension != nullptr && dimension->expr != nullptr &&
         node_has_side_effects(dimension->expr);
}

bool type_has_side_effects(a_type *type)
{
  return il_header.vla_used &&
         traverse_type_tree(type, test_vla_side_effects, two_return_types) != 0;
}
