// class_routine.cpp - declarations of member functions: names, types and kinds of special members, and
// the set of functions that a name stands for.
// Rule:    the routine belongs to the class whatever is wrong with it; an error leaves out at most the
//          symbol.
// Entry:   decl_member_function, set_return_type_of_special_member.
// See:     C++ 9.3, 12, 13.1, 13.5.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/class_private.h"
#include "parse/decls.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

// One declaration of a member function.
struct a_member_function {
  a_class_scan_state *scan;
  a_decl_parse_state *state;
  a_symbol_locator *locator;
  a_func_info_block *func_info;
  a_type *class_type;
  a_class_symbol_supplement *supplement; // of the class's symbol
  a_type *type;
  a_symbol *symbol;
  a_routine *routine;
  bool is_static;
  bool is_implicit;
  bool is_constructor;
  bool is_destructor;
};

//---------------------------------------------------------------------------------------------
// Names and types of special members.

void set_return_type_of_special_member(a_decl_parse_state *state, const a_symbol_locator *locator)
{
  a_type *type = skip_typerefs(state->declared_type);
  if (type->kind != tk_routine || locator->header == nullptr) return;
  bool is_constructor = locator->header->is_constructor_name;
  bool is_destructor = locator->is_destructor_name;
  if (!is_constructor && !is_destructor && !locator->is_conversion_name) return;
  bool was_written =
      !(state->specifier_flags & (sf_is_constructor_name | sf_is_destructor_or_conversion)) &&
      (state->specifier_flags & sf_has_type_specifier);
  if (was_written && !state->is_synthesized) {
    pos_error(is_constructor  ? ec_return_type_on_constructor
              : is_destructor ? ec_return_type_on_destructor
                              : ec_return_type_on_conversion_function,
              locator->position);
  }
  as_routine(type).return_type =
      locator->is_conversion_name ? locator->conversion_type : void_type();
  bool has_params = param_types_of(type) != nullptr || routine_supplement_of(type)->has_ellipsis;
  if (is_destructor && has_params) {
    pos_error(ec_too_many_params_for_destructor, locator->position);
    routine_supplement_of(type)->param_types = nullptr;
    routine_supplement_of(type)->has_ellipsis = false;
  }
}

static void settle_name(a_member_function *member)
{
  a_symbol_locator *locator = member->locator;
  a_symbol *class_symbol = member->class_type->source_corresp.assoc_symbol;
  bool names_class = locator->header == class_symbol->header && !class_symbol->header->is_unnamed;
  if (names_class) change_class_locator_into_constructor_locator(locator, class_symbol);
  locator->symbol = nullptr;
  member->is_constructor = locator->header->is_constructor_name;
  member->is_destructor = locator->is_destructor_name;
}

static bool is_allocation_name(const a_symbol_header *header)
{
  return header->is_opname && header->opname_kind >= onk_new &&
         header->opname_kind <= onk_array_delete;
}

static void settle_static(a_member_function *member)
{
  a_decl_parse_state *state = member->state;
  const a_symbol_header *header = member->locator->header;
  member->is_static = state->storage_class == sc_static;
  if (is_allocation_name(header)) {
    member->is_static = true;
    return;
  }
  if (!member->is_static) return;
  a_source_position position = member->locator->position;
  if (member->is_constructor || member->is_destructor) {
    pos_error(ec_storage_class_not_allowed, state->storage_class_position);
    member->is_static = false;
  } else if (header->is_conversion_name) {
    pos_error(ec_bad_conversion_function_decl, position);
    member->is_static = false;
  } else if (header->is_opname) {
    pos_error(ec_static_member_operator_not_allowed, position);
    member->is_static = false;
  } else if (state->specifier_flags & sf_is_virtual) {
    pos_error(ec_virtual_static_not_allowed, position);
    state->specifier_flags &= ~(uint32_t)sf_is_virtual;
  }
}

// The type is the member's own: it says whose `this` it takes.
static void settle_type(a_member_function *member)
{
  a_decl_parse_state *state = member->state;
  if (!member->func_info->type_from_declarator && !member->is_implicit) {
    state->declared_type = copy_routine_type_with_param_types(state->declared_type);
  }
  set_return_type_of_special_member(state, member->locator);
  member->type = skip_typerefs(state->declared_type);
  if (member->type->kind != tk_routine) return;
  a_routine_type_supplement *supplement = routine_supplement_of(member->type);
  if (member->is_static && supplement->this_qualifiers != 0) {
    pos_error(ec_function_qualifier_on_static_member, member->locator->position);
    supplement->this_qualifiers = 0;
  }
  if (member->is_constructor || member->is_destructor) supplement->this_qualifiers = 0;
  supplement->this_class = member->is_static ? nullptr : member->class_type;
  supplement->is_prototyped = true;
}

//---------------------------------------------------------------------------------------------
// The symbol.

static a_symbol *prior_symbol(a_member_function *member)
{
  if (member->is_constructor) return member->supplement->constructors;
  if (member->is_destructor) return member->supplement->destructor;
  a_symbol_locator copy = *member->locator;
  copy.symbol = nullptr;
  return curr_scope_id_lookup(&copy, lo_none);
}

// The function of the same name that the new one can't be told from (C++ 13.1).
static a_symbol *clashing_function(a_member_function *member, a_symbol *prior)
{
  bool is_set = prior->kind == sk_overloaded_function;
  a_symbol *old = is_set ? overloads_of_symbol(prior) : prior;
  for (; old != nullptr; old = is_set ? old->next_same_name : nullptr) {
    if (!is_routine_symbol(old)) continue;
    a_routine *routine = routine_of_symbol(old);
    if (!same_parameter_types(routine->type, member->type)) continue;
    bool either_static = routine->is_static_member || member->is_static;
    if (either_static || this_param_types_correspond(routine->type, member->type)) return old;
  }
  return nullptr;
}

// Reports a function that can't be declared beside those of its name; true when that is so.
static bool check_redeclaration(a_member_function *member, a_symbol *prior)
{
  a_symbol *old = clashing_function(member, prior);
  if (old == nullptr) return false;
  bool old_is_static = routine_of_symbol(old)->is_static_member;
  a_type *old_type = routine_of_symbol(old)->type;
  if (old_is_static != member->is_static) {
    pos_error(ec_static_nonstatic_with_same_param_types, member->locator->position);
  } else if (!conflicts_with_previous_function_decl(member->type, old,
                                                    &member->locator->position)) {
    pos_sy_error(ec_member_function_redeclaration, member->locator->position, old);
  }
  (void)old_type;
  return true;
}

static void set_mixed_static_nonstatic_flag(a_symbol *set)
{
  bool any_static = false, any_nonstatic = false;
  for (a_symbol *symbol = overloads_of_symbol(set); symbol; symbol = symbol->next_same_name) {
    if (!is_routine_symbol(symbol) || routine_of_symbol(symbol) == nullptr) continue;
    bool is_static = routine_of_symbol(symbol)->is_static_member;
    any_static |= is_static;
    any_nonstatic |= !is_static;
  }
  set->variant.overloaded_function.mixed_static_nonstatic = any_static && any_nonstatic;
}

// A symbol outside of all chains takes a function that can't be declared.
static a_symbol *replacement_symbol(a_member_function *member)
{
  a_symbol_locator locator = *member->locator;
  clear_qualifier_from_locator(&locator);
  locator.is_qualified = true;
  return enter_symbol(sk_member_function, &locator, depth_scope_stack, true);
}

static void remember_special_member(a_member_function *member, a_symbol *symbol)
{
  a_symbol_header *header = member->locator->header;
  if (member->is_constructor) {
    member->supplement->constructors = symbol;
  } else if (member->is_destructor) {
    member->supplement->destructor = symbol;
  } else if (header->is_opname && header->opname_kind == onk_assign) {
    member->supplement->assignment_operator = symbol;
  }
}

static a_symbol *enter_member_symbol(a_member_function *member)
{
  // The default constructor that does nothing has a place of its own.
  if (member->state->implicit_member_form & imf_trivial_default) return replacement_symbol(member);
  a_symbol *prior = prior_symbol(member);
  bool is_function =
      prior != nullptr && (is_routine_symbol(prior) || prior->kind == sk_overloaded_function);
  if (is_function && check_redeclaration(member, prior)) return replacement_symbol(member);
  if (!is_function) {
    a_symbol *symbol = enter_symbol(sk_member_function, member->locator, depth_scope_stack, false);
    if (!symbol->not_entered) remember_special_member(member, symbol);
    return symbol;
  }
  a_symbol *set = nullptr;
  a_symbol *symbol =
      enter_overloaded_symbol(sk_member_function, member->locator, depth_scope_stack, prior, &set);
  remember_special_member(member, set);
  return symbol;
}

void add_to_symbol_list(a_symbol_list_entry **list, a_symbol *symbol)
{
  while (*list != nullptr)
    list = &(*list)->next;
  *list = (a_symbol_list_entry *)alloc_in_region(0, sizeof(a_symbol_list_entry));
  **list = {nullptr, symbol};
}

//---------------------------------------------------------------------------------------------
// The routine.

// Members of a class that other files can't name belong to this file alone.
static bool class_has_external_linkage(a_type *class_type)
{
  for (; class_type != nullptr; class_type = parent_class_of(&class_type->source_corresp)) {
    if (class_type->source_corresp.is_local) return false;
    a_namespace *name_space = parent_namespace_of(&class_type->source_corresp);
    for (; name_space; name_space = parent_namespace_of(&name_space->source_corresp)) {
      if (name_space->source_corresp.name == nullptr) return false;
    }
  }
  return true;
}

static void set_special_kind(a_member_function *member)
{
  a_routine *routine = member->routine;
  a_symbol_header *header = member->locator->header;
  if (member->is_constructor) {
    set_routine_special_kind(routine, sfk_constructor);
  } else if (member->is_destructor) {
    set_routine_special_kind(routine, sfk_destructor);
  } else if (header->is_conversion_name) {
    set_routine_special_kind(routine, sfk_conversion);
  } else if (header->is_opname) {
    set_routine_special_kind(routine, sfk_operator);
    routine->special.operator_kind = header->opname_kind;
  }
}

static void make_member_routine(a_member_function *member)
{
  a_routine *routine = alloc_routine();
  member->routine = routine;
  routine_of_symbol(member->symbol) = routine;
  routine->type = member->type;
  bool is_external = class_has_external_linkage(member->class_type);
  routine->storage_class = is_external ? sc_unspecified : sc_static;
  routine->is_static_member = member->is_static;
  routine->is_explicit = (member->state->specifier_flags & sf_is_explicit) != 0;
  routine->is_compiler_generated = member->is_implicit;
  set_source_corresp(&routine->source_corresp, member->symbol);
  set_class_membership(&routine->source_corresp, member->class_type);
  routine->source_corresp.access = top_scope()->current_access;
  routine->source_corresp.name_linkage = is_external ? nlk_cplusplus : nlk_internal;
  if (routine->source_corresp.name == nullptr) {
    set_source_corresp_name(&routine->source_corresp, member->locator->header);
  }
  set_special_kind(member);
  add_to_routines_list(routine, depth_scope_stack);
  if (member->type->kind == tk_routine) {
    routine_supplement_of(member->type)->assoc_routine = routine;
  }
  bool is_inline = (member->state->specifier_flags & sf_is_inline) != 0;
  if (member->func_info->has_body || member->is_implicit) {
    routine->inline_in_class = is_inline = true;
  }
  if (is_inline) set_inline_flag(routine, true);
}

//---------------------------------------------------------------------------------------------
// What the class learns of its special members.

static void note_constructor(a_member_function *member)
{
  a_class_symbol_supplement *supplement = member->supplement;
  a_routine *routine = member->routine;
  bool is_written = !routine->is_compiler_generated;
  if (is_written && !routine->is_defaulted) member->scan->not_aggregate = true;
  if (is_default_constructor(routine)) {
    routine->is_trivial_default_constructor = routine->is_defaulted;
    if (routine->is_defaulted) {
      supplement->trivial_default_constructor = member->symbol;
    } else {
      supplement->has_nontrivial_default_constructor = true;
    }
    if (is_written) supplement->has_user_default_constructor = true;
    if (is_written && !routine->is_defaulted) {
      supplement->has_user_provided_default_constructor = true;
      member->scan->not_pod = true;
    }
  }
  if (!is_copy_constructor(routine, member->class_type)) return;
  routine->is_copy_constructor = true;
  supplement->has_copy_constructor = true;
  a_type *param = type_pointed_to(param_types_of(routine->type)->type);
  if (is_const_qualified(param)) supplement->copy_constructor_takes_const = true;
  if (is_written && !routine->is_defaulted) supplement->has_user_copy_constructor = true;
}

// A constructor whose only argument is the object itself would have to copy it first (C++ 12.8p3).
static void check_constructor_params(a_member_function *member)
{
  a_param_type *param = param_types_of(member->type);
  if (param == nullptr || is_any_reference_type(param->type)) return;
  if (param->next != nullptr && !param->next->has_default_arg) return;
  if (!identical_types(make_unqualified_type(param->type), member->class_type)) return;
  pos_ty2_error(ec_bad_constructor_param, member->locator->position, member->class_type,
                param->type);
  param->type = error_type();
}

static void note_special_member(a_member_function *member)
{
  a_routine *routine = member->routine;
  switch (routine->special_kind) {
  case sfk_constructor: note_constructor(member); break;
  case sfk_destructor:
    if (!routine->is_compiler_generated && !routine->is_defaulted) member->scan->not_pod = true;
    break;
  case sfk_conversion: {
    add_to_symbol_list(&member->supplement->conversion_functions, member->symbol);
    break;
  }
  case sfk_operator:
  case sfk_none: break;
  }
}

// A conversion to void, to the class itself or to its base happens without it (C++ 12.3.2p1).
static void check_conversion_target(a_member_function *member)
{
  if (!member->locator->is_conversion_name) return;
  a_type *target = member->locator->conversion_type;
  if (is_any_reference_type(target)) target = type_pointed_to(target);
  bool is_void = is_void_type(target);
  bool is_own = is_class_struct_union_type(target) &&
                is_same_class_or_base_class_thereof(target, member->class_type);
  if (is_void || is_own) {
    pos_sy_warning(ec_conversion_function_not_usable, member->locator->position, member->symbol);
  }
}

static void settle_pure(a_member_function *member)
{
  if (!member->func_info->is_pure) return;
  if (!member->routine->is_virtual) {
    pos_error(ec_pure_specifier_on_nonvirtual_function, member->func_info->pure_position);
    return;
  }
  member->routine->is_pure_virtual = true;
}

static void check_explicit(a_member_function *member)
{
  bool conversion_ok = cpp11_mode && member->locator->is_conversion_name;
  if (!member->routine->is_explicit || member->is_constructor || conversion_ok) return;
  pos_error(ec_explicit_not_allowed, member->locator->position);
  member->routine->is_explicit = false;
}

static void finish_member(a_member_function *member)
{
  a_decl_parse_state *state = member->state;
  a_func_info_block *func_info = member->func_info;
  state->symbol = member->symbol;
  update_routine_decl_modifiers(member->routine, state, &member->locator->position);
  attach_decl_attributes(state, false);
  if (state->asm_name != nullptr) member->routine->asm_name = state->asm_name;
  uint32_t flags = rdf_declaration;
  if (func_info->is_definition) flags |= rdf_definition;
  record_symbol_declaration(flags, member->symbol, &member->locator->position, nullptr);
  if (func_info->is_defaulted || func_info->is_deleted) {
    check_defaulted_or_deleted_function(state, func_info, member->symbol,
                                        &member->locator->position);
  }
}

void decl_member_function(a_class_scan_state *scan, a_decl_parse_state *state,
                          a_symbol_locator *locator, a_func_info_block *func_info, bool is_implicit)
{
  a_member_function member = {};
  member.scan = scan;
  member.state = state;
  member.locator = locator;
  member.func_info = func_info;
  member.class_type = scan->class_type;
  member.supplement = class_symbol_supplement_of(scan->class_type);
  member.is_implicit = is_implicit;
  func_info->is_first_declaration = true;
  settle_name(&member);
  settle_static(&member);
  settle_type(&member);
  check_operator_function_params(member.type, member.class_type, locator);
  if (member.is_constructor) check_constructor_params(&member);
  member.symbol = enter_member_symbol(&member);
  make_member_routine(&member);
  if (member.symbol->not_entered && member.symbol->is_class_member) {
    member.symbol->parent.class_type = member.class_type;
  }
  a_symbol *set = prior_symbol(&member);
  if (set != nullptr && set->kind == sk_overloaded_function) set_mixed_static_nonstatic_flag(set);
  settle_virtual(scan, state, func_info, member.symbol);
  settle_pure(&member);
  check_explicit(&member);
  check_conversion_target(&member);
  finish_member(&member);
  note_special_member(&member);
}
