// types.cpp - the shared types: caches of the basic types, construction of derived types.
// Owns:    the type caches, one set a translation unit.
// Rule:    a derived type is looked up on its base's list before it is built; a hit moves to the front.
// Entry:   integer_type, make_pointer_type_full, f_make_qualified_type, make_routine_type.
#include "il/types.h"

#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "mem/registered_vars.h"

static constexpr int max_cached_string_length = 80;

static a_type *integer_types[ik_none];
static a_type *float_types[fk_none];
static a_type *complex_types[fk_none];
static a_type *imaginary_types[fk_none];
static a_type *the_void_type;
static a_type *the_error_type;
static a_type *the_unknown_type;
static a_type *the_bool_type;
static a_type *the_wchar_t_type;
static a_type *the_char16_t_type;
static a_type *the_char32_t_type;
static a_type *the_standard_nullptr_type;
static a_type *the_managed_nullptr_type;
bool wide_string_types_used;
static a_type *string_literal_types[chk_last][max_cached_string_length + 1];
// Bases whose lists hold members to be removed, newest first.
struct a_fixup_entry {
  a_fixup_entry *next;
  a_type *base;
};
static a_fixup_entry *based_type_fixup_list;

//---------------------------------------------------------------------------------------------
// Basic types

// Returns the cached type, or makes one of the kind and completes its size.
static a_type *cached_type(a_type **cache, a_type_kind kind)
{
  if (*cache == nullptr) {
    *cache = alloc_type(kind);
    if (kind == tk_void) (*cache)->is_incomplete = true;
    if (kind != tk_integer && !kind_has_float_part(kind)) set_type_size(*cache);
  }
  return *cache;
}

a_type *void_type()
{
  return cached_type(&the_void_type, tk_void);
}
a_type *error_type()
{
  return cached_type(&the_error_type, tk_error);
}
a_type *unknown_type()
{
  return cached_type(&the_unknown_type, tk_unknown);
}
a_type *standard_nullptr_type()
{
  return cached_type(&the_standard_nullptr_type, tk_nullptr);
}

a_type *managed_nullptr_type()
{
  a_type *type = cached_type(&the_managed_nullptr_type, tk_nullptr);
  type->is_incomplete = true;
  return type;
}

static a_type *make_integer_type(an_integer_kind kind)
{
  a_type *type = alloc_type(tk_integer);
  as_integer(type).int_kind = kind;
  set_type_size(type);
  return type;
}

a_type *integer_type(an_integer_kind kind)
{
  check(kind < ik_none);
  if (integer_types[kind] == nullptr) integer_types[kind] = make_integer_type(kind);
  return integer_types[kind];
}

static a_type *cached_float_type(a_type **cache, a_type_kind type_kind, a_float_kind kind)
{
  check(kind < fk_none);
  if (cache[kind] == nullptr) {
    a_type *type = alloc_type(type_kind);
    as_float(type).float_kind = kind;
    set_type_size(type);
    cache[kind] = type;
  }
  return cache[kind];
}

a_type *float_type(a_float_kind kind)
{
  return cached_float_type(float_types, tk_float, kind);
}
a_type *complex_type(a_float_kind kind)
{
  return cached_float_type(complex_types, tk_complex, kind);
}
a_type *imaginary_type(a_float_kind kind)
{
  return cached_float_type(imaginary_types, tk_imaginary, kind);
}

a_type *bool_type()
{
  if (the_bool_type == nullptr) {
    the_bool_type = make_integer_type(targ_bool_int_kind);
    as_integer(the_bool_type).is_bool = true;
  }
  return the_bool_type;
}

a_type *wchar_t_type()
{
  if (the_wchar_t_type == nullptr) {
    the_wchar_t_type = make_integer_type(targ_wchar_t_int_kind);
    as_integer(the_wchar_t_type).is_wchar_t = true;
  }
  return the_wchar_t_type;
}

a_type *char16_t_type()
{
  if (the_char16_t_type == nullptr) {
    the_char16_t_type = make_integer_type(targ_char16_t_int_kind);
    as_integer(the_char16_t_type).is_char16_t = true;
  }
  return the_char16_t_type;
}

a_type *char32_t_type()
{
  if (the_char32_t_type == nullptr) {
    the_char32_t_type = make_integer_type(targ_char32_t_int_kind);
    as_integer(the_char32_t_type).is_char32_t = true;
  }
  return the_char32_t_type;
}

a_type *eff_wchar_t_type()
{
  return C_dialect == 2 && wchar_t_is_keyword ? wchar_t_type()
                                              : integer_type(targ_wchar_t_int_kind);
}

a_type *eff_char16_t_type()
{
  return char16_t_and_char32_t_are_keywords ? char16_t_type()
                                            : integer_type(targ_char16_t_int_kind);
}

a_type *eff_char32_t_type()
{
  return char16_t_and_char32_t_are_keywords ? char32_t_type()
                                            : integer_type(targ_char32_t_int_kind);
}

a_type *size_t_type()
{
  return integer_type(targ_size_t_int_kind);
}
a_type *ptrdiff_t_type()
{
  return integer_type(targ_ptrdiff_t_int_kind);
}

an_integer_kind signed_int_kind_of(an_integer_kind kind)
{
  switch (kind) {
  case ik_char:
  case ik_unsigned_char: return ik_signed_char;
  case ik_unsigned_short: return ik_short;
  case ik_unsigned_int: return ik_int;
  case ik_unsigned_long: return ik_long;
  case ik_unsigned_int40: return ik_int40;
  case ik_unsigned_long_long: return ik_long_long;
  case ik_signed_char:
  case ik_short:
  case ik_int:
  case ik_long:
  case ik_int40:
  case ik_long_long:
  case ik_none: return kind;
  }
  unexpected_kind("integer kind");
}

a_type *signed_integer_type(an_integer_kind kind)
{
  return integer_type(signed_int_kind_of(kind));
}

a_type *other_signedness_integer_type(an_integer_kind kind)
{
  return integer_type(int_kind_is_signed[kind] ? unsigned_int_kind_of[kind]
                                               : signed_int_kind_of(kind));
}

//---------------------------------------------------------------------------------------------
// Sharing

a_based_type_list_member *find_based_type(a_type *base, a_based_type_kind kind)
{
  for (a_based_type_list_member *member = base->based_types; member; member = member->next) {
    if (member->based_kind == kind) return member;
  }
  return nullptr;
}

// Finds the member for which matches(derived) holds and moves it to the front of the list.
template <typename a_test>
static a_type *find_derived_type(a_type *base, a_based_type_kind kind, a_test matches)
{
  a_based_type_list_member **link = &base->based_types;
  for (a_based_type_list_member *member = *link; member; member = *link) {
    if (member->based_kind == kind && matches(member->type)) {
      if (link != &base->based_types) {
        *link = member->next;
        member->next = base->based_types;
        base->based_types = member;
      }
      return member->type;
    }
    link = &member->next;
  }
  return nullptr;
}

static bool is_ptr_to_member_of_incomplete_class(a_type *type)
{
  return type->kind == tk_ptr_to_member && is_incomplete_type(as_ptr_to_member(type).member_class);
}

static void put_on_fixup_list(a_type *base)
{
  for (a_fixup_entry *entry = based_type_fixup_list; entry; entry = entry->next) {
    if (entry->base == base) return;
  }
  a_fixup_entry *entry = (a_fixup_entry *)alloc_in_region(0, sizeof(a_fixup_entry));
  entry->base = base;
  entry->next = based_type_fixup_list;
  based_type_fixup_list = entry;
}

void add_based_type(a_type *base, a_based_type_kind kind, a_type *derived)
{
  a_based_type_list_member *member = alloc_based_type_list_member(base);
  member->type = derived;
  member->based_kind = kind;
  member->next = base->based_types;
  base->based_types = member;
  bool leaves_il =
      C_dialect == 2 && ((!prototype_instantiations_in_il && is_template_dependent_type(base)) ||
                         is_ptr_to_member_of_incomplete_class(derived));
  bool derived_is_secondary =
      entry_flags_of(derived).is_secondary_entry && !entry_flags_of(base).is_secondary_entry;
  if (leaves_il || derived_is_secondary) {
    member->needs_fixup = true;
    put_on_fixup_list(base);
  }
}

void do_based_type_fixup()
{
  for (a_fixup_entry *entry = based_type_fixup_list; entry; entry = entry->next) {
    a_based_type_list_member **link = &entry->base->based_types;
    while (*link != nullptr) {
      if ((*link)->needs_fixup)
        *link = (*link)->next;
      else
        link = &(*link)->next;
    }
  }
  based_type_fixup_list = nullptr;
}

//---------------------------------------------------------------------------------------------
// Pointers

static a_based_type_kind based_kind_for_flags(unsigned flags)
{
  if (flags & ptf_tracking) return btk_tracking_reference;
  if (flags & ptf_rvalue) return btk_rvalue_reference;
  return flags & ptf_reference ? btk_reference : btk_pointer;
}

a_type *make_pointer_type_full(a_type *type, unsigned flags)
{
  a_based_type_kind based_kind = based_kind_for_flags(flags);
  if (type != nullptr) {
    a_type *found = find_derived_type(type, based_kind, [](a_type *) { return true; });
    if (found != nullptr) return found;
  }
  a_type *pointer = alloc_type(tk_pointer);
  a_pointer_type_part &part = as_pointer(pointer);
  part.pointed_to_type = type;
  part.is_reference = (flags & (ptf_reference | ptf_rvalue | ptf_tracking)) != 0;
  part.is_rvalue = (flags & ptf_rvalue) != 0;
  part.is_tracking = (flags & ptf_tracking) != 0;
  set_type_size(pointer);
  if (type != nullptr) add_based_type(type, based_kind, pointer);
  return pointer;
}

a_type *make_reference_type(a_type *type)
{
  return make_pointer_type_full(type, ptf_reference);
}
a_type *make_rvalue_reference_type(a_type *type)
{
  return make_pointer_type_full(type, ptf_reference | ptf_rvalue);
}
a_type *make_lhsref_type(a_type *type)
{
  return make_pointer_type_full(type, ptf_reference | ptf_tracking);
}

a_type *make_pointer_type_of_same_kind(a_type *like, a_type *type)
{
  const a_pointer_type_part &part = as_pointer(skip_typerefs(like));
  unsigned flags = (part.is_reference ? ptf_reference : 0) | (part.is_rvalue ? ptf_rvalue : 0) |
                   (part.is_tracking ? ptf_tracking : 0);
  return make_pointer_type_full(type, flags);
}

bool ptr_to_member_function_types_used;

a_type *ptr_to_member_type_full(a_type *type, a_type *class_type, unsigned)
{
  if (type != nullptr) {
    a_type *found = find_derived_type(type, btk_ptr_to_member, [class_type](a_type *derived) {
      return as_ptr_to_member(derived).member_class == class_type;
    });
    if (found != nullptr) return found;
  }
  if (type == nullptr || is_function_type(type)) ptr_to_member_function_types_used = true;
  a_type *result = alloc_type(tk_ptr_to_member);
  as_ptr_to_member(result).member_class = class_type;
  as_ptr_to_member(result).member_type = type;
  if (type != nullptr) {
    set_type_size(result);
    add_based_type(type, btk_ptr_to_member, result);
  }
  return result;
}

a_type *make_ptr_to_const_type(a_type *type)
{
  return make_pointer_type(f_make_qualified_type(type, tq_const));
}

//---------------------------------------------------------------------------------------------
// Qualified types

// A typeref that says nothing but qualifiers.
static bool is_plain_qualified_typeref(a_type *type)
{
  if (type->kind != tk_typeref || type->source_corresp.name != nullptr) return false;
  const a_typeref_type_part &part = type->variant.typeref;
  return !part.is_typedef_decl && !part.is_typeof && !part.is_underlying_type &&
         !part.is_decltype && !part.has_attributes && !part.is_alias_decl &&
         !type->alignment_was_declared && type->source_corresp.attributes == nullptr;
}

// The shared typeref over a type that is no array.
static a_type *qualified_typeref(a_type *type, a_type_qualifier_set qualifiers)
{
  while (is_plain_qualified_typeref(type)) {
    qualifiers |= as_typeref(type).qualifiers;
    type = as_typeref(type).referenced_type;
  }
  a_type *found = find_derived_type(type, btk_qualified, [qualifiers](a_type *derived) {
    return as_typeref(derived).qualifiers == qualifiers;
  });
  if (found != nullptr) return found;
  a_type *result = alloc_type(tk_typeref);
  as_typeref(result).referenced_type = type;
  as_typeref(result).qualifiers = qualifiers & 15u;
  add_based_type(type, btk_qualified, result);
  return result;
}

// A copied array of variable length is found under the dimension of its original.
static void copy_vla_dimension(a_type *original, a_type *copy)
{
  a_vla_dimension *dimension = find_vla_dimension(original);
  if (dimension == nullptr) return;
  make_vla_dimension(copy, nullptr, dimension->is_parameter_dimension, &dimension->position)
      ->same_dimension = dimension;
}

// A copy of one level of an array type over another element type.  Names, attributes and
// correspondences stay behind; alignments of typedefs on the way count from GNU 4.0.0 on.
static a_type *copy_array_level(a_type *named_array, a_type *array, a_type *element)
{
  a_type *copy = alloc_type(tk_array);
  as_array(copy) = as_array(array);
  as_array(copy).element_type = element;
  copy->size = array->size;
  copy->alignment = array->alignment;
  copy->is_incomplete = array->is_incomplete;
  bool ignores_typedef_alignment = (gcc_mode || gpp_mode) && gnu_version < 40000;
  if (!ignores_typedef_alignment && f_alignment_of_type(named_array) > copy->alignment) {
    copy->alignment = f_alignment_of_type(named_array);
  }
  if (as_array(array).is_vla) copy_vla_dimension(array, copy);
  return copy;
}

static a_type *qualified_array(a_type *type, a_type_qualifier_set qualifiers, int limit)
{
  a_type *array = skip_typerefs(type);
  a_type *element = f_make_qualified_type(as_array(array).element_type, qualifiers,
                                          limit > 0 ? limit - 1 : limit);
  if (element == as_array(array).element_type) return type;
  a_type *found = find_derived_type(type, btk_qualified_array, [element](a_type *derived) {
    return as_array(derived).element_type == element;
  });
  // An array whose bound is completed later leaves copies behind that are still incomplete.
  if (found != nullptr && is_incomplete_array_type(found) == is_incomplete_array_type(array)) {
    return found;
  }
  a_type *copy = copy_array_level(type, array, element);
  add_based_type(type, btk_qualified_array, copy);
  return copy;
}

a_type *f_make_qualified_type(a_type *type, a_type_qualifier_set qualifiers, int limit)
{
  a_type *bottom = skip_typerefs(type);
  if (bottom->kind == tk_error) return type;
  if (bottom->kind == tk_array && limit != 0) {
    qualifiers &= ~f_get_type_qualifiers(type, false);
    return qualifiers == 0 ? type : qualified_array(type, qualifiers, limit);
  }
  qualifiers &= ~f_get_type_qualifiers(type, true);
  if (bottom->kind == tk_pointer && as_pointer(bottom).is_reference) qualifiers &= tq_restrict;
  return qualifiers == 0 ? type : qualified_typeref(type, qualifiers);
}

a_type *make_unqualified_type(a_type *type)
{
  if (get_type_qualifiers(type) == 0) return type;
  a_type *bottom = skip_typerefs(type);
  if (bottom->kind != tk_array) {
    // Keep a typedef name that stands below the qualifiers.
    while (f_get_type_qualifiers(type, true) != 0)
      type = as_typeref(type).referenced_type;
    return type;
  }
  a_type *element = make_unqualified_type(as_array(bottom).element_type);
  if (element == as_array(bottom).element_type) return bottom;
  return copy_array_level(bottom, bottom, element);
}

a_type *make_typeref_with_attributes(a_type *type, an_attribute *attributes)
{
  a_type *result = alloc_type(tk_typeref);
  as_typeref(result).referenced_type = type;
  as_typeref(result).has_attributes = true;
  result->source_corresp.attributes = attributes;
  return result;
}

//---------------------------------------------------------------------------------------------
// Arrays and strings

a_type *make_array_type(a_type *element_type, a_target_size number_of_elements)
{
  a_type *type = alloc_type(tk_array);
  as_array(type).element_type = element_type;
  as_array(type).bound.number_of_elements = number_of_elements;
  as_array(type).bound_is_zero = number_of_elements == 0;
  set_type_size(type);
  return type;
}

// Size of an element: by its integer kind, else by its float kind.
static a_target_size cl_vector_element_size(int int_kind, int float_kind)
{
  if (int_kind < 0) return float_kind == fk_float ? 4 : 8;
  switch (int_kind) {
  case ik_char:
  case ik_signed_char:
  case ik_unsigned_char: return 1;
  case ik_short:
  case ik_unsigned_short: return 2;
  case ik_int:
  case ik_unsigned_int: return 4;
  default: return 8;
  }
}

// `flag`: each element is a complex pair.  A vector of 3 takes the room of 4.
a_type *cl_vector_type(uint64_t size, int int_kind, int float_kind, bool flag)
{
  a_type *type = alloc_type(tk_cl_vector);
  a_cl_vector_type_part &part = as_cl_vector(type);
  part.element_count = size;
  part.vector_flags = (unsigned char)((int_kind >= 0 ? 1 : 0) | (flag ? 2 : 0));
  part.element_int_or_float_kind = (unsigned char)(int_kind >= 0 ? int_kind : float_kind);
  type->size =
      cl_vector_element_size(int_kind, float_kind) * (size == 3 ? 4 : size) * (flag ? 2 : 1);
  type->alignment = (a_target_alignment)type->size;
  return type;
}

a_type *make_incomplete_array_type(a_type *element_type)
{
  a_type *type = alloc_type(tk_array);
  as_array(type).element_type = element_type;
  type->is_incomplete = true;
  set_type_size(type);
  return type;
}

static a_type *without_variable_bounds(a_type *type, bool in_array)
{
  if (!is_variably_modified_type(type)) return type;
  a_type *bare = skip_typerefs(type);
  a_type *result = nullptr;
  if (bare->kind == tk_pointer) {
    result = make_pointer_type(without_variable_bounds(as_pointer(bare).pointed_to_type, false));
  } else if (bare->kind == tk_array) {
    a_type *element = without_variable_bounds(as_array(bare).element_type, true);
    if (as_array(bare).is_vla) {
      result = in_array ? make_array_type(element, 1) : make_incomplete_array_type(element);
    } else {
      result = make_array_type(element, as_array(bare).bound.number_of_elements);
    }
  } else {
    return void_type(); // a function: C has no such object
  }
  return f_make_qualified_type(result, f_get_type_qualifiers(type, false));
}

a_type *type_without_variable_bounds(a_type *type)
{
  return without_variable_bounds(type, false);
}

static a_type *character_type(a_char_kind kind)
{
  switch (kind) {
  case chk_char: return integer_type(plain_char_int_kind);
  case chk_wchar_t: return eff_wchar_t_type();
  case chk_char16_t: return eff_char16_t_type();
  case chk_char32_t: return eff_char32_t_type();
  case chk_last: break;
  }
  unexpected_kind("character kind");
}

a_type *string_literal_type(a_char_kind char_kind, a_target_size length)
{
  bool cacheable = length <= max_cached_string_length;
  if (cacheable && string_literal_types[char_kind][length] != nullptr) {
    return string_literal_types[char_kind][length];
  }
  if (char_kind != chk_char) wide_string_types_used = true;
  a_type *element = character_type(char_kind);
  if (string_literals_are_const) element = f_make_qualified_type(element, tq_const);
  a_type *type = make_array_type(element, length);
  if (cacheable) string_literal_types[char_kind][length] = type;
  return type;
}

a_type *string_type(a_target_size length)
{
  return string_literal_type(chk_char, length);
}

//---------------------------------------------------------------------------------------------
// Routine types

a_type *make_routine_type(a_type *return_type, a_type *p1, a_type *p2, a_type *p3, a_type *p4)
{
  a_type *type = alloc_type(tk_routine);
  as_routine(type).return_type = return_type;
  routine_supplement_of(type)->is_prototyped = true;
  a_type *const params[] = {p1, p2, p3, p4};
  for (a_type *param : params) {
    if (param == nullptr) break;
    add_param_type(type, alloc_param_type(param));
  }
  return type;
}

void add_param_type(a_type *routine_type, a_param_type *param)
{
  a_param_type **link = &routine_supplement_of(routine_type)->param_types;
  unsigned number = 1;
  while (*link != nullptr) {
    link = &(*link)->next;
    ++number;
  }
  param->number = number;
  *link = param;
}

a_type *copy_type(a_type *type)
{
  a_type *copy = alloc_type(type->kind);
  a_class_type_supplement *class_supplement = nullptr;
  a_routine_type_supplement *routine_supplement = nullptr;
  if (kind_has_class_part(type->kind)) class_supplement = class_supplement_of(copy);
  if (type->kind == tk_routine) routine_supplement = routine_supplement_of(copy);
  a_source_correspondence fresh = copy->source_corresp;
  *copy = *type;
  copy->source_corresp = fresh;
  copy->source_corresp.attributes = type->source_corresp.attributes;
  copy->next = nullptr;
  copy->based_types = nullptr;
  copy->typeinfo_var = nullptr;
  if (class_supplement != nullptr) {
    *class_supplement = *class_supplement_of(type);
    as_class(copy).class_supplement = class_supplement;
  }
  if (routine_supplement != nullptr) {
    *routine_supplement = *routine_supplement_of(type);
    as_routine(copy).routine_supplement = routine_supplement;
  }
  if (type->kind == tk_array && as_array(type).is_vla) copy_vla_dimension(type, copy);
  return copy;
}

a_type *copy_routine_type_with_param_types(a_type *routine_type)
{
  a_type *source = skip_typerefs(routine_type);
  a_type *copy = copy_type(source);
  a_routine_type_supplement *supplement = routine_supplement_of(copy);
  supplement->assoc_routine = nullptr;
  a_param_type **link = &supplement->param_types;
  for (a_param_type *param = routine_supplement_of(source)->param_types; param;
       param = param->next) {
    a_param_type *param_copy = alloc_param_type(param->type);
    *param_copy = *param;
    param_copy->next = nullptr;
    *link = param_copy;
    link = &param_copy->next;
  }
  *link = nullptr;
  return copy;
}

a_type *routine_type_without_this_class(a_type *routine_type)
{
  a_type *source = skip_typerefs(routine_type);
  if (routine_supplement_of(source)->this_class == nullptr) return routine_type;
  a_type *copy = copy_type(source);
  routine_supplement_of(copy)->this_class = nullptr;
  routine_supplement_of(copy)->this_qualifiers = 0;
  return copy;
}

a_type *routine_type_without_param_type_qualifiers(a_type *routine_type)
{
  a_type *source = skip_typerefs(routine_type);
  bool any = false;
  for (a_param_type *param = routine_supplement_of(source)->param_types; param;
       param = param->next) {
    any |= f_get_type_qualifiers(param->type, true) != 0;
  }
  if (!any) return routine_type;
  a_type *copy = copy_routine_type_with_param_types(source);
  for (a_param_type *param = routine_supplement_of(copy)->param_types; param; param = param->next) {
    param->type = make_unqualified_type(param->type);
  }
  return copy;
}

a_type *routine_type_without_default_args(a_type *routine_type)
{
  a_type *source = skip_typerefs(routine_type);
  bool any = false;
  for (a_param_type *param = routine_supplement_of(source)->param_types; param;
       param = param->next) {
    any |= param->default_arg_expr != nullptr;
  }
  if (!any) return routine_type;
  a_type *copy = copy_routine_type_with_param_types(source);
  for (a_param_type *param = routine_supplement_of(copy)->param_types; param; param = param->next) {
    param->default_arg_expr = nullptr;
  }
  return copy;
}

//---------------------------------------------------------------------------------------------
// Initialisation

void types_one_time_init()
{
  register_trans_unit_variable(integer_types);
  register_trans_unit_variable(float_types);
  register_trans_unit_variable(complex_types);
  register_trans_unit_variable(imaginary_types);
  register_trans_unit_variable(the_void_type);
  register_trans_unit_variable(the_error_type);
  register_trans_unit_variable(the_unknown_type);
  register_trans_unit_variable(the_bool_type);
  register_trans_unit_variable(the_wchar_t_type);
  register_trans_unit_variable(the_char16_t_type);
  register_trans_unit_variable(the_char32_t_type);
  register_trans_unit_variable(the_standard_nullptr_type);
  register_trans_unit_variable(the_managed_nullptr_type);
  register_trans_unit_variable(string_literal_types);
  register_trans_unit_variable(based_type_fixup_list);
}

void types_trans_unit_init()
{
  ptr_to_member_function_types_used = false;
  for (a_type *&type : integer_types)
    type = nullptr;
  for (int kind = 0; kind < fk_none; ++kind) {
    float_types[kind] = complex_types[kind] = imaginary_types[kind] = nullptr;
  }
  the_void_type = the_error_type = the_unknown_type = nullptr;
  the_bool_type = the_wchar_t_type = the_char16_t_type = the_char32_t_type = nullptr;
  the_standard_nullptr_type = the_managed_nullptr_type = nullptr;
  for (auto &row : string_literal_types) {
    for (a_type *&type : row)
      type = nullptr;
  }
  based_type_fixup_list = nullptr;
}
