// lower_name_type.cpp - types in mangled names.
// Rule:    a compound or named type becomes a candidate for substitution once it is written, and a
//          qualified type one beside its unqualified form.
// Entry:   put_type, put_param_types.
#include "driver/flags.h"
#include "il/il_alloc.h"
#include "lower/lower_name_private.h"

static const unsigned written_qualifiers = tq_const | tq_volatile | tq_restrict;

void put_qualifiers(a_mangling_control_block *mcb, unsigned qualifiers)
{
  if (qualifiers & tq_restrict) put(mcb, "r");
  if (qualifiers & tq_volatile) put(mcb, "V");
  if (qualifiers & tq_const) put(mcb, "K");
}

// --- Built-in types ------------------------------------------------------------------------------

static const char *integer_code(a_type *type)
{
  static const char *const codes[] = {"c", "a", "h",     "s",     "t", "i", "j",
                                      "l", "m", "u3i40", "u3u40", "x", "y"};
  const an_integer_type_part &part = as_integer(type);
  if (part.is_bool) return "b";
  if (part.is_wchar_t) return "w";
  if (part.is_char16_t) return "Ds";
  if (part.is_char32_t) return "Di";
  return part.int_kind < ik_none ? codes[part.int_kind] : "?";
}

static const char *float_code(a_type *type)
{
  static const char *const codes[] = {"f", "d", "e"};
  static const char *const complex_codes[] = {"Cf", "Cd", "Ce"};
  a_float_kind kind = as_float(type).float_kind;
  if (kind >= fk_none) return "?";
  return type->kind == tk_complex ? complex_codes[kind] : codes[kind];
}

// The code of a type that is never a candidate, or null.
static const char *builtin_type_code(a_type *type)
{
  switch (type->kind) {
  case tk_error:
  case tk_unknown:
  case tk_typeref:
  case tk_last: return "?";
  case tk_void: return "v";
  case tk_integer: return as_integer(type).is_enum ? nullptr : integer_code(type);
  case tk_float:
  case tk_complex: return float_code(type);
  case tk_nullptr: return "Dn";
  case tk_template_param: return is_auto_type(type) ? "Da" : nullptr;
  case tk_imaginary:
  case tk_pointer:
  case tk_routine:
  case tk_array:
  case tk_class:
  case tk_struct:
  case tk_union:
  case tk_ptr_to_member:
  case tk_cl_vector: return nullptr;
  }
  return "?";
}

// --- Functions -----------------------------------------------------------------------------------

void put_param_types(a_mangling_control_block *mcb, a_type *routine_type)
{
  a_routine_type_supplement *supplement = routine_supplement_of(skip_typerefs(routine_type));
  a_param_type *param = supplement->param_types;
  if (param != nullptr && param->is_this_param) param = param->next;
  if (param == nullptr && !supplement->has_ellipsis) put(mcb, "v");
  for (; param != nullptr; param = param->next) {
    if (param->is_pack) put(mcb, "Dp");
    put_type(mcb, make_unqualified_type(param->type));
  }
  if (supplement->has_ellipsis) put(mcb, "z");
}

static void put_function_type(a_mangling_control_block *mcb, a_type *type)
{
  a_routine_type_supplement *supplement = routine_supplement_of(type);
  put_qualifiers(mcb, supplement->this_qualifiers);
  bool is_c = c_and_cpp_function_types_are_distinct && supplement->type_linkage == nlk_c;
  put(mcb, is_c ? "FY" : "F");
  put_type(mcb, as_routine(type).return_type);
  put_param_types(mcb, type);
  put(mcb, "E");
}

// --- Arrays --------------------------------------------------------------------------------------

static void put_number_of_elements(a_mangling_control_block *mcb, uint64_t count)
{
  if (!mcb->in_array_bound) {
    put_number(mcb, count);
    return;
  }
  put(mcb, "Li");
  put_number(mcb, count);
  put(mcb, "E");
}

static void put_bound(a_mangling_control_block *mcb, const an_array_type_part &part)
{
  if (part.is_vla || part.is_star_vla) return;
  if (part.bound_is_constant || part.bound_is_expr) {
    if (emulate_gnu_abi_bugs) mcb->in_array_bound = true;
    if (part.bound_is_constant)
      put_constant_expression(mcb, part.bound.bound_as_constant);
    else
      put_expression(mcb, part.bound.bound_expr);
  } else if (part.bound.number_of_elements != 0 || part.bound_is_zero) {
    put_number_of_elements(mcb, part.bound.number_of_elements);
  }
}

// Qualifiers of an array are those of its elements.
static void put_array_type(a_mangling_control_block *mcb, a_type *type, unsigned qualifiers)
{
  const an_array_type_part &part = as_array(type);
  bool was_in_array_bound = mcb->in_array_bound;
  put(mcb, "A");
  put_bound(mcb, part);
  put(mcb, "_");
  a_type *element = part.element_type;
  put_type(mcb, qualifiers != 0 ? f_make_qualified_type(element, qualifiers) : element);
  mcb->in_array_bound = was_in_array_bound;
}

// --- Other compound types ------------------------------------------------------------------------

static void put_pointer_type(a_mangling_control_block *mcb, a_type *type)
{
  const a_pointer_type_part &part = as_pointer(type);
  put(mcb, !part.is_reference ? "P" : part.is_rvalue ? "O" : "R");
  put_type(mcb, part.pointed_to_type);
}

static void put_template_param_type(a_mangling_control_block *mcb, a_type *type)
{
  const a_template_param_type_part &part = as_template_param(type);
  const a_template_param_type_supplement *supplement = part.template_param_supplement;
  if (part.template_param_kind == tptk_member && supplement->parent_class != nullptr &&
      type->source_corresp.name != nullptr) {
    put(mcb, "N");
    put_type(mcb, supplement->parent_class);
    put_source_name(mcb, type->source_corresp.name);
    put(mcb, "E");
  } else {
    put_template_param_number(mcb, supplement == nullptr ? 1 : supplement->coordinate);
  }
}

static void put_vector_type(a_mangling_control_block *mcb, a_type *type)
{
  const a_cl_vector_type_part &part = as_cl_vector(type);
  put(mcb, "U11__cl_vector");
  put_number(mcb, part.element_count);
  put(mcb, "_");
  put_type(mcb, array_element_type(type));
}

static void put_compound_type(a_mangling_control_block *mcb, a_type *type)
{
  switch (type->kind) {
  case tk_pointer: put_pointer_type(mcb, type); break;
  case tk_routine: put_function_type(mcb, type); break;
  case tk_array: put_array_type(mcb, type, 0); break;
  case tk_ptr_to_member:
    put(mcb, "M");
    put_type(mcb, as_ptr_to_member(type).member_class);
    put_type(mcb, as_ptr_to_member(type).member_type);
    break;
  case tk_template_param: put_template_param_type(mcb, type); break;
  case tk_cl_vector: put_vector_type(mcb, type); break;
  case tk_imaginary:
    put(mcb, "G");
    put(mcb, float_code(type));
    break;
  case tk_error:
  case tk_void:
  case tk_integer:
  case tk_float:
  case tk_complex:
  case tk_class:
  case tk_struct:
  case tk_union:
  case tk_typeref:
  case tk_nullptr:
  case tk_unknown:
  case tk_last: put(mcb, "?"); break;
  }
}

static void put_unqualified_type(a_mangling_control_block *mcb, a_type *type)
{
  const char *code = builtin_type_code(type);
  if (code != nullptr) {
    put(mcb, code);
  } else if (type->kind == tk_integer || kind_has_class_part(type->kind)) {
    put_type_name(mcb, type);
  } else if (!put_substitution(mcb, iek_type, type, 0)) {
    put_compound_type(mcb, type);
    add_substitution(mcb, iek_type, type, 0);
  }
}

static void put_qualified_type(a_mangling_control_block *mcb, a_type *type, unsigned qualifiers)
{
  if (put_substitution(mcb, iek_type, type, qualifiers)) return;
  put_qualifiers(mcb, qualifiers);
  put_unqualified_type(mcb, type);
  add_substitution(mcb, iek_type, type, qualifiers);
}

// --- Types that stand for others -----------------------------------------------------------------

// typeof, decltype and __underlying_type of something that isn't known yet: true when written.
static bool put_dependent_typeref(a_mangling_control_block *mcb, a_type *type)
{
  const a_typeref_type_part &part = as_typeref(type);
  const a_typeref_supplement *supplement = part.typeref_supplement;
  if (part.is_typeof && is_template_dependent_type(type)) {
    put(mcb, "u6typeof");
  } else if (part.is_decltype && part.dependent_decltype) {
    an_expr_node *expr = supplement == nullptr ? nullptr : supplement->decl_expr;
    bool simple = expr != nullptr && (expr->kind == enk_variable || expr->kind == enk_param_ref ||
                                      expr->kind == enk_field);
    put(mcb, simple ? "Dt" : "DT");
    if (expr == nullptr)
      put(mcb, "?");
    else
      put_expression(mcb, expr);
    put(mcb, "E");
  } else if (part.is_underlying_type && supplement != nullptr &&
             supplement->underlying_type_operand != nullptr && is_template_dependent_type(type)) {
    put(mcb, "Du");
    put_type(mcb, supplement->underlying_type_operand);
    put(mcb, "E");
  } else {
    return false;
  }
  return true;
}

// The first typeref of the chain that is written by its operand, or null.
static a_type *dependent_typeref(a_type *type)
{
  for (; type->kind == tk_typeref; type = as_typeref(type).referenced_type) {
    const a_typeref_type_part &part = as_typeref(type);
    if (part.is_typeof || part.is_decltype || part.is_underlying_type) return type;
    if (part.referenced_type == nullptr) return type;
  }
  return nullptr;
}

void put_type(a_mangling_control_block *mcb, a_type *type)
{
  if (type == nullptr) {
    put(mcb, "?");
    return;
  }
  a_type *special = dependent_typeref(type);
  if (special != nullptr) {
    if (put_dependent_typeref(mcb, special)) return;
    if (as_typeref(special).referenced_type == nullptr) {
      put(mcb, "?");
      return;
    }
  }
  unsigned qualifiers = f_get_type_qualifiers(type, true) & written_qualifiers;
  type = skip_typerefs(type);
  if (qualifiers == 0) {
    put_unqualified_type(mcb, type);
  } else if (type->kind == tk_array) {
    put_array_type(mcb, type, qualifiers);
    add_substitution(mcb, iek_type, type, qualifiers);
  } else {
    put_qualified_type(mcb, type, qualifiers);
  }
}
