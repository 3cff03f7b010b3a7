// class_virtual.cpp - virtual functions: what a function overrides, and whether it may.
// Rule:    a function that overrides is virtual whether it says so or not.
// Entry:   settle_virtual, overridden_in_class.
// See:     C++ 10.3.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/lookup.h"

// One function while its base classes are searched.
struct a_virtual_check {
  a_class_scan_state *scan;
  a_decl_parse_state *state;
  a_func_info_block *func_info;
  a_symbol *symbol;
  a_routine *routine;
  a_routine *checked; // the latest overridden function whose type was compared
};

//---------------------------------------------------------------------------------------------
// Functions of the same name and parameters.

static a_symbol *functions_named_as(a_type *class_type, const a_routine *routine)
{
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(class_type);
  if (supplement == nullptr || routine->special_kind == sfk_constructor) return nullptr;
  if (routine->special_kind == sfk_destructor) return supplement->destructor;
  a_symbol *own = routine->source_corresp.assoc_symbol;
  a_symbol *symbol = find_symbol_list_in_table(&supplement->pointers_block, own->header);
  for (; symbol != nullptr; symbol = symbol->next_in_bucket) {
    if (symbol->kind == sk_member_function || symbol->kind == sk_overloaded_function) return symbol;
  }
  return nullptr;
}

static bool has_same_signature(const a_routine *a, const a_routine *b)
{
  if (a->special_kind == sfk_destructor) return true;
  return same_parameter_types(a->type, b->type) && this_param_types_correspond(a->type, b->type);
}

a_routine *overridden_in_class(a_type *class_type, const a_routine *routine)
{
  a_symbol *symbol = functions_named_as(class_type, routine);
  if (symbol == nullptr) return nullptr;
  bool is_set = symbol->kind == sk_overloaded_function;
  if (is_set) symbol = overloads_of_symbol(symbol);
  for (; symbol != nullptr; symbol = is_set ? symbol->next_same_name : nullptr) {
    if (symbol->kind != sk_member_function) continue;
    a_routine *other = routine_of_symbol(symbol);
    if (other == nullptr || !other->is_virtual || other == routine) continue;
    if (has_same_signature(routine, other)) return other;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// Return types (C++ 10.3p5).

static a_type *target_of(a_type *type)
{
  return is_ptr_or_ref_type(type) ? type_pointed_to(type) : nullptr;
}

static bool same_kind_of_target(a_type *a, a_type *b)
{
  if (is_pointer_type(a) && is_pointer_type(b)) return true;
  return is_any_reference_type(a) && is_any_reference_type(b) &&
         is_rvalue_reference_type(a) == is_rvalue_reference_type(b);
}

static bool is_covariant(a_type *new_type, a_type *old_type)
{
  if (!same_kind_of_target(new_type, old_type)) return false;
  if (get_type_qualifiers(new_type) != get_type_qualifiers(old_type)) return false;
  a_type *new_target = target_of(new_type), *old_target = target_of(old_type);
  if (get_type_qualifiers(new_target) & ~get_type_qualifiers(old_target)) return false;
  if (!is_class_struct_union_type(new_target) || !is_class_struct_union_type(old_target)) {
    return false;
  }
  if (identical_types(skip_typerefs(new_target), skip_typerefs(old_target))) return true;
  a_base_class *base = find_base_class_of(new_target, old_target);
  return base != nullptr && !base->is_ambiguous && is_accessible_base_class(base);
}

// The types differ in qualifiers alone.
static bool differs_in_qualifiers(a_type *new_type, a_type *old_type)
{
  if (identical_types(make_unqualified_type(new_type), make_unqualified_type(old_type)))
    return true;
  if (!same_kind_of_target(new_type, old_type)) return false;
  a_type *new_target = target_of(new_type), *old_target = target_of(old_type);
  return is_void_type(new_target) ||
         identical_types(skip_typerefs(new_target), skip_typerefs(old_target));
}

static void check_return_types(a_virtual_check *check, a_routine *old)
{
  a_type *new_type = return_type_of(check->routine->type), *old_type = return_type_of(old->type);
  if (is_error_type(new_type) || is_error_type(old_type)) return;
  if (f_identical_types(new_type, old_type, ido_class_option_512)) return;
  if (is_template_dependent_type(new_type) || is_template_dependent_type(old_type)) return;
  if (is_covariant(new_type, old_type)) return;
  a_symbol *symbol = old->source_corresp.assoc_symbol;
  a_source_position position = check->symbol->position;
  if (differs_in_qualifiers(new_type, old_type)) {
    pos_syty_warning(ec_different_return_type_on_virtual_function_override, position, symbol,
                     old_type);
  } else {
    pos_syty_error(ec_bad_return_type_on_virtual_function_override, position, symbol, old_type);
  }
}

//---------------------------------------------------------------------------------------------
// What else an override must agree in.

static an_exception_specification *exception_specification_of(const a_routine *routine)
{
  return routine_supplement_of(skip_typerefs(routine->type))->exception_specification;
}

static void add_exception_types(an_exception_specification *spec,
                                const an_exception_specification *other)
{
  an_exception_specification_type **link = &spec->first_type;
  while (*link != nullptr)
    link = &(*link)->next;
  for (an_exception_specification_type *type = other->first_type; type; type = type->next) {
    *link = alloc_exception_specification_type();
    (*link)->type = type->type;
    link = &(*link)->next;
  }
}

// Adds what the destructor of a part throws; false when that is anything.
static bool add_exceptions_of_part(an_exception_specification *spec, a_type *type)
{
  type = skip_typerefs(skip_array_types(type));
  if (!kind_has_class_part(type->kind)) return true;
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(type);
  if (supplement == nullptr || supplement->destructor == nullptr) return true;
  an_exception_specification *other =
      exception_specification_of(routine_of_symbol(supplement->destructor));
  if (other == nullptr) return false;
  add_exception_types(spec, other);
  return true;
}

// An implicit destructor throws what those of its parts may (C++98 15.4p13).
static an_exception_specification *implicit_destructor_exceptions(a_type *class_type)
{
  an_exception_specification *spec = alloc_exception_specification();
  bool is_known = true;
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    if (base->is_direct || base->is_virtual) is_known &= add_exceptions_of_part(spec, base->type);
  }
  for (a_field *field = as_class(class_type).first_field; field; field = field->next)
    is_known &= add_exceptions_of_part(spec, field->type);
  return is_known ? spec : nullptr;
}

static void check_exceptions(a_virtual_check *check, a_routine *old)
{
  if (!exceptions_enabled) return;
  an_exception_specification *old_spec = exception_specification_of(old);
  if (old_spec == nullptr) return;
  an_exception_specification *new_spec = exception_specification_of(check->routine);
  if (new_spec == nullptr && check->routine->is_compiler_generated &&
      check->routine->special_kind == sfk_destructor) {
    new_spec = implicit_destructor_exceptions(check->scan->class_type);
    routine_supplement_of(skip_typerefs(check->routine->type))->exception_specification = new_spec;
  }
  if (!exception_spec_is_less_restrictive(new_spec, old_spec)) return;
  a_symbol *symbol = old->source_corresp.assoc_symbol;
  bool is_generated = check->routine->is_compiler_generated;
  an_error_severity severity = es_discretionary_error;
  if (is_generated) severity = strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning;
  pos_sy2_diagnostic(severity,
                     is_generated ? ec_generated_exception_spec_override_incompat
                                  : ec_exception_spec_override_incompat,
                     check->symbol->position, check->symbol, symbol);
}

static bool routine_has_attribute(const a_routine *routine, an_attribute_kind kind)
{
  return f_find_attribute(kind, routine->source_corresp.attributes) != nullptr;
}

static void check_special_forms(a_virtual_check *check, a_routine *old)
{
  a_source_position position = check->symbol->position;
  bool is_deleted = check->func_info->is_deleted;
  if (is_deleted != old->is_deleted && !check->routine->is_compiler_generated) {
    pos_error(is_deleted ? ec_deleted_function_overrides_nondeleted_function
                         : ec_nondeleted_function_overrides_deleted_function,
              position);
  }
  if (routine_has_attribute(old, ak_final)) {
    pos_sy_error(ec_override_of_final_function, position, old->source_corresp.assoc_symbol);
  }
}

static void check_override(a_virtual_check *check, a_routine *old)
{
  // What an intermediate class overrode already was compared with that.
  a_type *old_class = parent_class_of(&old->source_corresp);
  bool is_behind = check->checked != nullptr &&
                   find_base_class_of(parent_class_of(&check->checked->source_corresp), old_class);
  if (is_behind || check->checked == old) return;
  check->checked = old;
  if (check->routine->special_kind != sfk_destructor) check_return_types(check, old);
  check_exceptions(check, old);
  check_special_forms(check, old);
}

static bool overrides_in_base(a_virtual_check *check, a_base_class *base)
{
  if (!as_class(base->type).has_virtual_functions) return false;
  a_routine *old = overridden_in_class(base->type, check->routine);
  if (old == nullptr) return false;
  if (check->routine->is_static_member) {
    if (check->checked == nullptr)
      pos_error(ec_virtual_static_not_allowed, check->symbol->position);
    check->checked = old;
    return false;
  }
  check_override(check, old);
  return true;
}

//---------------------------------------------------------------------------------------------
// The function.

void note_virtual_function(a_class_scan_state *scan)
{
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(scan->class_type);
  as_class(scan->class_type).has_virtual_functions = true;
  scan->not_aggregate = true;
  scan->needs_default_constructor = true;
  supplement->has_trivial_copy_assignment = supplement->has_trivial_copy_constructor = false;
}

static void check_virtual_specifier(a_virtual_check *check)
{
  if (!(check->state->specifier_flags & sf_is_virtual)) return;
  a_source_position position = check->state->virtual_position;
  if (check->routine->special_kind == sfk_constructor) {
    pos_error(ec_virtual_not_allowed, position);
  } else if (check->scan->class_type->kind == tk_union) {
    pos_error(ec_virtual_not_allowed, position);
  } else if (!check->routine->is_static_member) {
    check->routine->is_virtual = true;
  }
}

// A class without a name can't have the function defined later (C++ 9.1).
static void check_unnamed_class(a_virtual_check *check)
{
  a_func_info_block *func_info = check->func_info;
  bool is_defined = func_info->is_definition || func_info->is_pure;
  if (is_defined || check->routine->is_compiler_generated) return;
  if (check->scan->class_type->source_corresp.name != nullptr) return;
  pos_sy_error(ec_unnamed_class_virtual_function_def_missing, check->symbol->position,
               check->symbol);
}

void settle_virtual(a_class_scan_state *scan, a_decl_parse_state *state,
                    a_func_info_block *func_info, a_symbol *symbol)
{
  a_virtual_check check = {scan, state, func_info, symbol, routine_of_symbol(symbol), nullptr};
  if (check.routine->type->kind != tk_routine) return;
  check_virtual_specifier(&check);
  bool overrides = false;
  a_base_class *base = class_supplement_of(scan->class_type)->base_classes;
  for (; base != nullptr && check.routine->special_kind != sfk_constructor; base = base->next)
    overrides |= overrides_in_base(&check, base);
  if (overrides) {
    check.routine->is_virtual = check.routine->overrides_base_function = true;
    bool is_marked = routine_has_attribute(check.routine, ak_override);
    bool class_checks =
        f_find_attribute(ak_base_check, scan->class_type->source_corresp.attributes) != nullptr;
    if (class_checks && !is_marked && !check.routine->is_compiler_generated) {
      pos_error(ec_missing_override_attr_in_base_check_class, symbol->position);
    }
  }
  if (!check.routine->is_virtual) return;
  check_unnamed_class(&check);
  note_virtual_function(scan);
}
