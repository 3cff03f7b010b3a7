// class_wrapup.cpp - what is done with a class behind its last member: checks of the members, implicit
// members, layout, the tables of virtual functions.
// Rule:    the steps depend on each other in the order of wrap_up_class; messages stand at the class.
// Entry:   check_members, wrap_up_class.
// See:     C99 6.7.2.1; C++ 8.5.1, 10.3, 10.4, 12.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/layout.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// The members.

static bool misra_wants_complete_members()
{
  return check_misra_c_2004 &&
         misra_c_2004_generate_diagnostic(ec_misra_c_2004_18_1, misra_required_severity);
}

// Only the last member of a structure may be without bound, behind a named one (C99 6.7.2.1p2).
static void check_flexible_array(a_class_scan_state *scan)
{
  a_field *first = as_class(scan->class_type).first_field;
  bool is_union = scan->class_type->kind == tk_union;
  for (a_field *field = first; field; field = field->next) {
    if (!field->is_flexible_array) continue;
    a_source_position position = field->source_corresp.decl_position;
    bool well_placed = field->next == nullptr && !is_union && field != first;
    bool gnu_place = (gcc_mode || gpp_mode) && (field->next == nullptr || is_union);
    if (!well_placed && !gnu_place) {
      pos_error(ec_incomplete_type_not_allowed, position);
      field->type = error_type();
      field->is_flexible_array = false;
      continue;
    }
    bool misra_reports = misra_wants_complete_members();
    if (misra_reports) pos_diagnostic(misra_required_severity, ec_misra_c_2004_18_1, position);
    if (!flexible_array_members_allowed && !gcc_mode && !gpp_mode && !c99_mode) {
      an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
      if (severity >= es_error || !misra_reports) {
        pos_diagnostic(severity, ec_incomplete_type_not_allowed, position);
      }
    } else if (report_gnu_extensions && !c99_mode) {
      pos_warning(ec_flexible_array_is_nonstandard, position);
    }
    as_class(scan->class_type).has_flexible_array = true;
  }
}

static bool has_no_named_member(const a_class_scan_state *scan)
{
  return C_dialect != 2 && !scan->any_named_member;
}

void check_members(a_class_scan_state *scan, a_source_position position)
{
  a_class_type_part &part = as_class(scan->class_type);
  if (has_no_named_member(scan) && !part.has_empty_body) {
    pos_diagnostic(strict_ansi_mode ? strict_ansi_discretionary_severity : es_warning,
                   ec_no_named_fields, position);
  }
  check_flexible_array(scan);
}

static void pack_fields(a_type *class_type)
{
  if (!as_class(class_type).is_packed && !pack_all_structs) return;
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    if (is_error_type(field->type)) continue;
    field->is_packed_field = true;
    field->type = f_make_qualified_type(field->type, tq_packed, -1);
  }
}

// Whether an object of the class may be assigned to, and what its members say of it.
static void gather_field_facts(a_type *class_type)
{
  a_class_type_part &part = as_class(class_type);
  for (a_field *field = part.first_field; field; field = field->next) {
    a_type *type = skip_array_types(field->type);
    if (is_const_qualified(field->type)) part.has_const_field = true;
    if (is_volatile_qualified(field->type)) part.has_volatile_field = true;
    type = skip_typerefs(type);
    if (!is_class_struct_union_type(type)) continue;
    part.has_const_field |= as_class(type).has_const_field;
    part.has_volatile_field |= as_class(type).has_volatile_field;
    if (as_class(type).has_flexible_array && field->next == nullptr) part.has_flexible_array = true;
  }
}

//---------------------------------------------------------------------------------------------
// Members that can't be given a value later, bases that can't be deleted through.

static void add_uninitialized_members(a_type *class_type)
{
  for (a_field *field = as_class(class_type).first_field; field; field = field->next) {
    if (field->is_anonymous_union_field) {
      add_uninitialized_members(skip_typerefs(field->type));
      continue;
    }
    a_symbol *symbol = field->source_corresp.assoc_symbol;
    if (field->source_corresp.name == nullptr || symbol == nullptr) continue;
    if (is_any_reference_type(field->type)) {
      sym_add_diag_info(ec_reference_entity, symbol);
    } else if (is_const_qualified(field->type)) {
      sym_add_diag_info(ec_const_entity, symbol);
    }
  }
}

static void check_uninitialized_members(a_class_scan_state *scan,
                                        const a_class_symbol_supplement *supplement)
{
  a_type *class_type = scan->class_type;
  if (!scan->needs_constructor_for_member || supplement->constructors != nullptr) return;
  if (class_type->kind == tk_union || class_supplement_of(class_type)->is_closure) return;
  pos_sy_start_warning(ec_no_ctor_but_const_or_ref_member, error_position,
                       class_type->source_corresp.assoc_symbol);
  add_uninitialized_members(class_type);
  end_error();
}

static void check_destructors_of_bases(a_type *class_type)
{
  if (!as_class(class_type).has_virtual_functions) return;
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    a_class_symbol_supplement *supplement = class_symbol_supplement_of(base->type);
    if (!base->is_direct || supplement == nullptr) continue;
    a_symbol *destructor = supplement->destructor;
    if (destructor != nullptr && routine_of_symbol(destructor)->is_virtual) continue;
    pos_ty_remark(ec_base_class_with_nonvirtual_dtor, base->position, base->type);
  }
}

//---------------------------------------------------------------------------------------------
// operator new and operator delete.

static a_symbol *allocation_function(a_type *class_type, int opname_kind)
{
  a_symbol_locator locator = cleared_locator;
  locator.position = error_position;
  make_opname_locator(opname_kind, &locator, &error_position);
  return class_qualified_id_lookup(&locator, class_type, lo_none);
}

static bool is_own_function(a_symbol *symbol, a_type *class_type)
{
  return symbol != nullptr && symbol->is_class_member && symbol->parent.class_type == class_type;
}

static a_symbol *first_function_of(a_symbol *symbol)
{
  return symbol->kind == sk_overloaded_function ? overloads_of_symbol(symbol) : symbol;
}

static a_symbol *next_function_of(a_symbol *set, a_symbol *symbol)
{
  return set->kind == sk_overloaded_function ? symbol->next_same_name : nullptr;
}

// The types of the parameters from `a` and `b` on are the same.
static bool same_rest_of_params(a_param_type *a, a_param_type *b)
{
  for (; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (!identical_types(make_unqualified_type(a->type), make_unqualified_type(b->type)))
      return false;
  }
  return a == b;
}

// Without more parameters: (void *) or, in a class, (void *, size_t).
static bool is_default_delete(a_routine *routine)
{
  a_param_type *first = param_types_of(routine->type);
  if (first == nullptr || routine_supplement_of(skip_typerefs(routine->type))->has_ellipsis) {
    return false;
  }
  a_param_type *second = first->next;
  if (second == nullptr) return true;
  return second->next == nullptr && is_integral_type(second->type) &&
         int_kind_of_type(second->type) == targ_size_t_int_kind;
}

static a_symbol *default_delete(a_symbol *set)
{
  if (set == nullptr) return nullptr;
  for (a_symbol *s = first_function_of(set); s != nullptr; s = next_function_of(set, s)) {
    if (is_routine_symbol(s) && is_default_delete(routine_of_symbol(s))) return s;
  }
  return nullptr;
}

// The operator delete that is called when the initialization behind this operator new fails.
static bool has_corresponding_delete(a_symbol *set, a_routine *new_routine)
{
  a_param_type *placement = param_types_of(new_routine->type);
  if (placement != nullptr) placement = placement->next;
  if (placement == nullptr) return default_delete(set) != nullptr;
  if (set == nullptr) return false;
  for (a_symbol *s = first_function_of(set); s != nullptr; s = next_function_of(set, s)) {
    if (!is_routine_symbol(s)) continue;
    a_param_type *params = param_types_of(routine_of_symbol(s)->type);
    if (params != nullptr && same_rest_of_params(params->next, placement)) return true;
  }
  return false;
}

static void check_each_new(a_symbol *new_set, a_symbol *delete_set, const char *brackets)
{
  for (a_symbol *s = first_function_of(new_set); s != nullptr; s = next_function_of(new_set, s)) {
    if (!is_routine_symbol(s) || has_corresponding_delete(delete_set, routine_of_symbol(s)))
      continue;
    pos_stsy_remark(ec_no_corresponding_member_delete, s->position, brackets, s);
  }
}

static void check_allocation_functions(a_type *class_type)
{
  a_symbol *new_set = allocation_function(class_type, onk_new);
  a_symbol *delete_set = allocation_function(class_type, onk_delete);
  bool has_new = is_own_function(new_set, class_type);
  bool has_delete = is_own_function(delete_set, class_type);
  if (exceptions_enabled) {
    if (has_new) check_each_new(new_set, delete_set, "");
    a_symbol *array_new = allocation_function(class_type, onk_array_new);
    if (!is_own_function(array_new, class_type)) return;
    check_each_new(array_new, allocation_function(class_type, onk_array_delete), "[]");
    return;
  }
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  if (has_new && default_delete(delete_set) == nullptr) {
    pos_sy_remark(ec_class_with_op_new_but_no_op_delete, error_position, symbol);
  } else if (has_delete && new_set == nullptr && default_delete(delete_set) != nullptr) {
    pos_sy_remark(ec_class_with_op_delete_but_no_op_new, error_position, symbol);
  }
}

//---------------------------------------------------------------------------------------------
// The attributes base_check and hiding.

static bool corresp_has_attribute(const a_source_correspondence *corresp, an_attribute_kind kind)
{
  return corresp != nullptr && f_find_attribute(kind, corresp->attributes) != nullptr;
}

static bool is_injected_class_name(const a_symbol *symbol)
{
  return symbol->kind == sk_type && symbol->variant.type.is_tag_typedef;
}

static bool name_is_in_a_base(a_type *class_type, a_symbol *symbol)
{
  a_base_class *base = class_supplement_of(class_type)->base_classes;
  for (; base != nullptr; base = base->next) {
    a_class_symbol_supplement *supplement = class_symbol_supplement_of(base->type);
    a_symbol *found = find_symbol_list_in_table(&supplement->pointers_block, symbol->header);
    for (; found != nullptr; found = found->next_in_bucket) {
      if (!is_injected_class_name(found)) return true;
    }
  }
  return false;
}

static void check_hiding(a_type *class_type, a_symbol *symbol, bool class_checks)
{
  if (is_injected_class_name(symbol) || symbol->header->is_constructor_name) return;
  a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
  bool is_marked = corresp_has_attribute(corresp, ak_hiding);
  if (!is_marked && !class_checks) return;
  bool overrides = is_routine_symbol(symbol) && routine_of_symbol(symbol)->overrides_base_function;
  bool is_generated = is_routine_symbol(symbol) && routine_of_symbol(symbol)->is_compiler_generated;
  bool hides = name_is_in_a_base(class_type, symbol);
  if (is_marked && overrides) {
    pos_error(ec_hiding_attr_on_nonhiding_member, symbol->position);
  } else if (is_marked && !hides) {
    pos_error(ec_hiding_attr_on_unhidden_member, symbol->position);
  } else if (!is_marked && hides && !overrides && !is_generated) {
    pos_error(ec_hiding_attr_required, symbol->position);
  }
}

static void check_hiding_of_members(a_type *class_type, const a_class_symbol_supplement *supplement)
{
  if (!cpp11_mode) return;
  bool class_checks = corresp_has_attribute(&class_type->source_corresp, ak_base_check);
  for (a_symbol *s = supplement->pointers_block.symbols; s != nullptr; s = s->next_in_scope) {
    if (s->kind != sk_overloaded_function) {
      check_hiding(class_type, s, class_checks);
      continue;
    }
    for (a_symbol *f = overloads_of_symbol(s); f != nullptr; f = f->next_same_name)
      check_hiding(class_type, f, class_checks);
  }
}

//---------------------------------------------------------------------------------------------
// The class.

static void finish_special_members(a_class_scan_state *scan, a_class_symbol_supplement *supplement)
{
  if (C_dialect == 2) {
    check_uninitialized_members(scan, supplement);
    check_destructors_of_bases(scan->class_type);
    declare_implicit_members(scan);
  }
  supplement->is_pod = supplement->is_aggregate && !scan->not_pod;
}

static void finish_virtual_functions(a_type *class_type,
                                     const a_class_symbol_supplement *supplement)
{
  assign_virtual_function_numbers(class_type);
  build_overriders(class_type);
  determine_whether_abstract(class_type);
  check_allocation_functions(class_type);
  check_hiding_of_members(class_type, supplement);
  check_hidden_virtual_functions(class_type);
}

void wrap_up_class(a_class_scan_state *scan)
{
  a_type *class_type = scan->class_type;
  a_symbol *symbol = class_type->source_corresp.assoc_symbol;
  a_class_symbol_supplement *supplement = class_supplement_of_symbol(symbol);
  a_source_position saved_position = error_position;
  if (may_be_added_to_types_list(class_type, decl_scope_level)) {
    move_to_end_of_types_list(class_type);
  }
  error_position = symbol->position;
  supplement->is_aggregate = !scan->not_aggregate;
  supplement->has_members = scan->any_named_member;
  finish_special_members(scan, supplement);
  supplement->first_member = supplement->pointers_block.symbols;
  pack_fields(class_type);
  gather_field_facts(class_type);
  do_class_layout(class_type);
  if (C_dialect == 2) finish_virtual_functions(class_type, supplement);
  as_class(class_type).is_incomplete_until_end = false;
  error_position = saved_position;
}
