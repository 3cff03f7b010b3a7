// decls_routine.cpp - declarations of functions: the function path of a declaration, decl_routine,
// the reconciliation of types, main.
// Rule:    a function has one a_routine however many blocks and files of the unit declare it.
// See:     C99 6.7.4, 6.7.5.3p15, 6.9.1; inline rules of GNU C89 are marked "GNU".
#include <cstring>

#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "errors/misra_hooks.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/sections.h"
#include "lex/token_cache.h"
#include "parse/attribute.h"
#include "parse/class_decl.h"
#include "parse/decls_private.h"
#include "parse/expr.h"
#include "parse/func_def.h"
#include "parse/lookup.h"
#include "parse/qn_pragma.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_ref.h"

//---------------------------------------------------------------------------------------------
// main.

static bool is_char_pointer_pointer(a_type *type)
{
  if (!is_pointer_type(type)) return false;
  type = type_pointed_to(type);
  if (!is_pointer_type(type)) return false;
  type = skip_typerefs(type_pointed_to(type));
  return type->kind == tk_integer && as_integer(type).int_kind == plain_char_int_kind &&
         !as_integer(type).is_enum;
}

static void check_main_parameters(a_type *type)
{
  int number = 0;
  for (a_param_type *param = param_types_of(type); param; param = param->next) {
    ++number;
    if (number == 1 && !identical_types(make_unqualified_type(param->type), integer_type(ik_int))) {
      pos_remark(ec_main_first_param_not_int, param->position);
    } else if (number == 2 && !is_char_pointer_pointer(param->type)) {
      pos_remark(ec_main_second_param_wrong_type, param->position);
    } else if (number == 3) {
      pos_remark(ec_main_wrong_num_params, param->position);
    }
  }
}

void check_main_function(a_func_info_block *func_info, a_type *type, a_storage_class *storage,
                         bool *is_inline, a_source_position *position)
{
  if (is_error_type(type)) return;
  if (!identical_types(return_type_of(type), integer_type(ik_int)) &&
      !is_error_type(return_type_of(type)) && strict_ansi_mode) {
    pos_diagnostic(strict_ansi_error_severity, ec_bad_return_type_on_main, *position);
  }
  if (C_dialect == 2 || strict_ansi_mode) {
    if (func_info && func_info->is_deleted) pos_error(ec_deleted_main, *position);
    if (*is_inline) {
      pos_error(ec_inline_main, *position);
      *is_inline = false;
    }
  }
  if (C_dialect == 2 && *storage == sc_static) {
    pos_error(ec_static_not_allowed, *position);
    *storage = sc_unspecified;
  }
  check_main_parameters(type);
}

static bool names_main(const a_symbol_locator *locator, const a_decl_parse_state *state)
{
  if (locator->header == nullptr || locator->header->length != 4) return false;
  if (memcmp(locator->header->identifier, "main", 4) != 0) return false;
  if (scope_stack[decl_scope_level].kind != sck_file) return false;
  a_storage_class storage = state->storage_class;
  return C_dialect == 2 || storage == sc_unspecified || storage == sc_extern;
}

//---------------------------------------------------------------------------------------------
// Types of several declarations.

// MISRA 16.4: the names in declaration and definition are the same.
static void check_parameter_names(a_type *old_type, a_type *new_type)
{
  if (!check_misra_c_2004) return;
  a_param_type *old_param = param_types_of(old_type);
  a_param_type *new_param = param_types_of(new_type);
  for (; old_param && new_param; old_param = old_param->next, new_param = new_param->next) {
    if (old_param->name == nullptr || new_param->name == nullptr) continue;
    if (strcmp(old_param->name, new_param->name) == 0) continue;
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_16_4, new_param->position);
    return;
  }
}

// 308: behind a parameter with a default argument all have one.
static void check_for_gap_in_default_arguments(a_type *type)
{
  bool seen = false;
  for (a_param_type *param = param_types_of(type); param; param = param->next) {
    if (param->has_default_arg) {
      seen = true;
    } else if (seen) {
      pos_error(ec_default_arg_not_at_end, param->position);
      return;
    }
  }
}

// Default arguments of both declarations go into the list of `to` (C++ 8.3.6p4).
static void merge_default_arguments(a_type *from, a_type *to)
{
  a_param_type *from_param = param_types_of(from);
  a_param_type *to_param = param_types_of(to);
  bool added = false;
  for (; from_param && to_param; from_param = from_param->next, to_param = to_param->next) {
    if (!from_param->has_default_arg) continue;
    if (to_param->has_default_arg) {
      pos_error(ec_default_arg_already_defined, from_param->position.seq > to_param->position.seq
                                                    ? from_param->position
                                                    : to_param->position);
      continue;
    }
    to_param->has_default_arg = true;
    to_param->default_arg_expr = from_param->default_arg_expr;
    to_param->default_arg_unevaluated = from_param->default_arg_unevaluated;
    added = true;
  }
  if (added) check_for_gap_in_default_arguments(to);
}

static void take_parameter_names(a_type *from, a_type *to)
{
  a_param_type *from_param = param_types_of(from);
  a_param_type *to_param = param_types_of(to);
  for (; from_param && to_param; from_param = from_param->next, to_param = to_param->next) {
    to_param->name = from_param->name;
    to_param->qualifiers = from_param->qualifiers;
    to_param->declared_register = from_param->declared_register;
    to_param->declared_entities = from_param->declared_entities;
  }
}

// C++: both types are the same.  The first stays, since calls refer to it, and learns what a definition
// says of its parameters.
static void reconcile_cplusplus_types(a_routine *routine, a_type *new_type, bool is_definition)
{
  a_type *old_type = skip_typerefs(routine->type);
  new_type = skip_typerefs(new_type);
  if (old_type == new_type || old_type->kind != tk_routine || new_type->kind != tk_routine) return;
  if (old_type != routine->type) {
    // The first came from a typedef and isn't the function's own.
    merge_default_arguments(old_type, new_type);
    routine_supplement_of(new_type)->this_class = routine_supplement_of(old_type)->this_class;
    routine->type = new_type;
    return;
  }
  merge_default_arguments(new_type, old_type);
  if (is_definition) take_parameter_names(new_type, old_type);
}

bool reconcile_routine_types(a_routine *routine, a_type *new_type, bool is_definition,
                             bool in_same_file_scope, a_decl_parse_state *state)
{
  a_type *old_type = routine->type;
  if (is_error_type(old_type) || is_error_type(new_type)) return true;
  if (!f_types_are_compatible(old_type, new_type, tco_error_types | tco_ignore_linkage)) {
    return false;
  }
  check_parameter_names(old_type, new_type);
  if (C_dialect == 2) {
    reconcile_cplusplus_types(routine, new_type, is_definition);
  } else {
    routine->type = composite_type(new_type, old_type);
  }
  (void)in_same_file_scope, (void)state;
  return true;
}

// 538 and 543: exception specifications of two declarations (C++).
void check_exception_specification(a_type *new_type, a_symbol *old_symbol,
                                   a_source_position *position, bool is_redeclaration)
{
  if (C_dialect != 2 || !exceptions_enabled || !is_routine_symbol(old_symbol)) return;
  a_routine *routine = routine_of_symbol(old_symbol);
  if (routine->is_compiler_generated) return;
  a_type *old_type = skip_typerefs(routine->type);
  new_type = skip_typerefs(new_type);
  if (old_type->kind != tk_routine || new_type->kind != tk_routine) return;
  an_exception_specification *old_spec = routine_supplement_of(old_type)->exception_specification;
  an_exception_specification *new_spec = routine_supplement_of(new_type)->exception_specification;
  if (old_spec == new_spec || (old_spec == nullptr && new_spec == nullptr)) return;
  an_error_severity severity = gpp_mode && old_symbol->is_predeclared ? es_warning : es_error;
  if (new_spec == nullptr) {
    pos_sy_diagnostic(severity,
                      is_redeclaration ? ec_omitted_exception_specification
                                       : ec_omitted_exception_specification_on_specialization,
                      *position, old_symbol);
    return;
  }
  if (old_spec && same_exception_spec(old_spec, new_spec)) return;
  pos_stsy_diagnostic(severity,
                      is_redeclaration ? ec_incompatible_exception_specification
                                       : ec_bad_exception_specification_for_specialization,
                      *position, "", old_symbol);
}

bool check_operator_function_params(a_type *, a_type *, a_symbol_locator *)
{
  return true;
}

void check_constituent_types_have_linkage(a_symbol *, a_source_position *, bool)
{
}

//---------------------------------------------------------------------------------------------
// The routine of a decision.

static a_routine *make_routine_for(a_decl_decision *decision, a_symbol *symbol)
{
  a_routine *routine = alloc_routine();
  routine->type = decision->type;
  routine->storage_class = decision->storage_class;
  routine_of_symbol(symbol) = routine;
  if (decision->at_block_level) {
    set_source_corresp_with_scope_depth(&routine->source_corresp, symbol, decision->lookup_depth);
    symbol->declared_at_block_scope = true;
  } else {
    set_source_corresp(&routine->source_corresp, symbol);
  }
  int depth = decision->lookup_depth >= 0 ? decision->lookup_depth : decl_scope_level;
  add_to_routines_list(routine, depth);
  if (decision->locator->is_opname) {
    set_routine_special_kind(routine, sfk_operator);
    routine->special.operator_kind = decision->locator->header->opname_kind;
  }
  return routine;
}

static a_symbol *replacement_symbol(a_decl_decision *decision)
{
  a_symbol_locator locator = *decision->locator;
  locator.is_qualified = true;
  a_symbol *symbol = enter_symbol(sk_routine, &locator, decl_scope_level, true);
  make_routine_for(decision, symbol);
  return symbol;
}

static a_symbol *incompatible_with(a_decl_decision *decision, a_symbol *prior)
{
  pos_sy_error(ec_not_compatible_with_previous_decl, decision->locator->position, prior);
  return replacement_symbol(decision);
}

// A declaration that doesn't fit one that the compiler or a call made is believed.
static bool new_type_replaces(a_decl_decision *decision, a_symbol *prior, a_routine *routine)
{
  if (routine->is_builtin || prior->is_predeclared) {
    pos_sy_warning(ec_not_compatible_with_builtin, decision->locator->position, prior);
    routine->is_builtin = false;
    routine->special.builtin_function_kind = 0;
  } else if (prior->is_implicit_routine || routine->is_implicitly_declared) {
    pos_sy_diagnostic(gcc_mode ? es_warning : es_error, ec_decl_incompatible_with_previous_use,
                      decision->locator->position, prior);
    routine->is_implicitly_declared = false;
  } else {
    return false;
  }
  routine->type = decision->type;
  return true;
}

// GNU: a definition without a type of a function that was declared void.
static bool takes_void_return(a_decl_decision *decision, a_symbol *prior, a_routine *routine)
{
  if (!gcc_mode || !decision->routine->type_was_missing) return false;
  a_type *old_type = skip_typerefs(routine->type);
  a_type *new_type = skip_typerefs(decision->type);
  if (old_type->kind != tk_routine || new_type->kind != tk_routine) return false;
  if (!is_void_type(as_routine(old_type).return_type)) return false;
  as_routine(new_type).return_type = as_routine(old_type).return_type;
  if (!reconcile_routine_types(routine, new_type, decision->is_definition, true, decision->state)) {
    return false;
  }
  pos_sy_warning(ec_not_compatible_with_previous_decl, decision->locator->position, prior);
  return true;
}

// GNU: an identifier list whose declared types are those of an earlier prototype makes a definition by the
// prototype, though the types that such a list passes differ from them.
static bool takes_prototype(a_decl_decision *decision, a_routine *routine)
{
  if (!gcc_mode || !decision->is_definition || !decision->routine->is_old_style) return false;
  a_type *old_type = skip_typerefs(routine->type);
  a_type *new_type = skip_typerefs(decision->type);
  if (old_type->kind != tk_routine || new_type->kind != tk_routine) return false;
  const a_routine_type_supplement *prototype = routine_supplement_of(old_type);
  if (!prototype->is_prototyped || prototype->has_ellipsis ||
      !f_types_are_compatible(as_routine(old_type).return_type, as_routine(new_type).return_type,
                              0)) {
    return false;
  }
  a_param_type *wanted = param_types_of(old_type);
  a_param_type *found = param_types_of(new_type);
  for (; wanted != nullptr && found != nullptr; wanted = wanted->next, found = found->next) {
    if (!f_types_are_compatible(wanted->type, make_unqualified_type(found->orig_type), 0))
      return false;
  }
  if (wanted != nullptr || found != nullptr) return false;
  decision->routine->is_old_style = false;
  return true;
}

static bool merge_types(a_decl_decision *decision, a_symbol *prior, a_routine *routine)
{
  if (reconcile_routine_types(routine, decision->type, decision->is_definition, true,
                              decision->state)) {
    return true;
  }
  if (takes_prototype(decision, routine)) return true;
  return takes_void_return(decision, prior, routine) || new_type_replaces(decision, prior, routine);
}

// MISRA 8.11: every declaration of what has internal linkage says `static`.
static void check_static_is_repeated(const a_decl_decision *decision, a_symbol *prior)
{
  if (!check_misra_c_2004 || decision->state->storage_class == sc_static) return;
  pos_sy_diagnostic(misra_required_severity, ec_misra_c_2004_8_11, decision->locator->position,
                    prior);
}

// C99 6.2.2p7.
static void reconcile_linkage(a_decl_decision *decision, a_symbol *prior, a_routine *routine)
{
  bool was_internal = routine->storage_class == sc_static;
  bool is_internal = decision->storage_class == sc_static;
  if (is_internal && !was_internal) {
    an_error_severity severity = strict_ansi_mode ? strict_ansi_error_severity : es_warning;
    pos_sy_diagnostic(severity, ec_linkage_conflict, decision->locator->position, prior);
    routine->storage_class = sc_static;
  }
  if (was_internal) check_static_is_repeated(decision, prior);
  decision->linkage = routine->storage_class == sc_static ? idl_internal : idl_external;
}

// GNU: a definition behind one that was `extern inline` takes its place; calls made so far keep the
// old one.
static bool replaces_extern_inline(a_decl_decision *decision, a_symbol *prior, a_routine *routine)
{
  if (C_dialect == 2 || !gcc_mode || !routine->inline_definition_only) return false;
  pos_sy_warning(ec_already_defined, decision->locator->position, prior);
  a_routine *copy = alloc_routine();
  a_routine *old = routine;
  a_routine *next = copy->next;
  *copy = *old;
  copy->next = next;
  copy->region_number = 0;
  copy->is_defined = false;
  copy->is_inline = false;
  copy->inline_definition_only = false;
  copy->always_inline = false;
  copy->gnu_inline = false;
  routine_of_symbol(prior) = copy;
  prior->defined = false;
  set_source_corresp(&copy->source_corresp, prior);
  copy->source_corresp.referenced = old->source_corresp.referenced;
  add_to_routines_list(copy, 0);
  return true;
}

// Outside of its class a member function is only defined (C++ 9.3p2), and only if the class declares it.
static bool redeclaration_of_member_ok(a_decl_decision *decision, a_symbol *prior,
                                       a_routine *routine)
{
  if (!decision->is_qualified || prior->kind != sk_member_function) return true;
  if (decision->state->specifier_flags & sf_is_friend) return true;
  if (routine->is_compiler_generated) {
    pos_error(ec_definition_of_implicitly_declared_function, decision->locator->position);
    return false;
  }
  if (!decision->is_definition) {
    pos_sy_error(ec_member_function_redecl_outside_class, decision->locator->position, prior);
    return false;
  }
  return true;
}

static a_symbol *redeclare(a_decl_decision *decision, a_symbol *prior)
{
  if (!is_routine_symbol(prior)) return incompatible_with(decision, prior);
  a_routine *routine = routine_of_symbol(prior);
  if (C_dialect == 2 &&
      conflicts_with_previous_function_decl(decision->type, prior, &decision->locator->position)) {
    return replacement_symbol(decision);
  }
  if (!redeclaration_of_member_ok(decision, prior, routine)) return replacement_symbol(decision);
  if (C_dialect == 2) {
    check_exception_specification(decision->type, prior, &decision->locator->position, true);
  }
  if (!merge_types(decision, prior, routine)) return incompatible_with(decision, prior);
  if (decision->is_definition && (routine->is_defined || prior->defined) &&
      !replaces_extern_inline(decision, prior, routine)) {
    pos_sy_error(ec_already_defined, decision->locator->position, prior);
    return replacement_symbol(decision);
  }
  routine = routine_of_symbol(prior);
  if (prior->kind != sk_member_function) reconcile_linkage(decision, prior, routine);
  if (!(decision->state->specifier_flags & sf_is_friend)) prior->is_invisible = false;
  decision->locator->symbol = prior;
  return prior;
}

// At file scope, behind a declaration in a block.
static a_symbol *declare_known_external(a_decl_decision *decision, a_symbol *external)
{
  if (external->kind != sk_extern_routine) return incompatible_with(decision, external);
  a_routine *routine = external->variant.extern_entity.entity.routine;
  bool was_implicit = routine->is_implicitly_declared;
  if (!reconcile_routine_types(routine, decision->type, decision->is_definition, true,
                               decision->state)) {
    pos_sy_diagnostic(was_implicit && gcc_mode ? es_warning : es_error,
                      ec_decl_incompatible_with_previous_use, decision->locator->position,
                      external);
    if (!was_implicit) return replacement_symbol(decision);
    routine->type = decision->type;
  }
  external->variant.extern_entity.type = routine->type;
  routine->is_implicitly_declared = false;
  reconcile_linkage(decision, external, routine);
  a_symbol *symbol = enter_symbol(sk_routine, decision->locator, decl_scope_level, false);
  routine_of_symbol(symbol) = routine;
  if (symbol->not_entered) return symbol;
  bool referenced = routine->source_corresp.referenced;
  set_source_corresp(&routine->source_corresp, symbol);
  routine->source_corresp.referenced = referenced;
  symbol->referenced |= referenced;
  external->variant.extern_entity.symbol = symbol;
  return symbol;
}

static a_symbol *enter_block_symbol(a_decl_decision *decision, a_routine *routine)
{
  a_symbol *symbol = enter_local_symbol(sk_routine, decision->locator);
  routine_of_symbol(symbol) = routine;
  symbol->declared_at_block_scope = true;
  return symbol;
}

// In a block: the symbol is the block's, the routine is the file's.
static a_symbol *declare_in_block(a_decl_decision *decision)
{
  a_symbol *prior = decision->prior_symbol;
  if (prior && is_routine_symbol(prior)) return redeclare(decision, prior);
  a_symbol *visible = decision->visible_symbol;
  if (visible) {
    if (!is_routine_symbol(visible)) return incompatible_with(decision, visible);
    a_routine *routine = routine_of_symbol(visible);
    if (!merge_types(decision, visible, routine)) return incompatible_with(decision, visible);
    if (routine->storage_class == sc_static) check_static_is_repeated(decision, visible);
    return enter_block_symbol(decision, routine);
  }
  a_symbol *external = decision->prior_extern_symbol;
  if (external && external->kind == sk_extern_routine) {
    a_routine *routine = external->variant.extern_entity.entity.routine;
    if (!merge_types(decision, external, routine)) {
      pos_sy_error(ec_decl_incompatible_with_previous_use, decision->locator->position, external);
      return replacement_symbol(decision);
    }
    external->variant.extern_entity.type = routine->type;
    return enter_block_symbol(decision, routine);
  }
  if (external) return incompatible_with(decision, external);
  a_symbol *symbol = enter_local_symbol(sk_routine, decision->locator);
  a_routine *routine = make_routine_for(decision, symbol);
  a_symbol_locator copy = *decision->locator;
  external = enter_extern_symbol(sk_extern_routine, &copy);
  external->variant.extern_entity.symbol = symbol;
  external->variant.extern_entity.type = decision->type;
  external->variant.extern_entity.entity.routine = routine;
  return symbol;
}

// C++: a further function of the name, with other parameter types.
static a_symbol *add_overload(a_decl_decision *decision)
{
  a_symbol *set = nullptr;
  a_symbol *symbol = enter_overloaded_symbol(sk_routine, decision->locator, decl_scope_level,
                                             decision->overload_head, &set);
  make_routine_for(decision, symbol);
  return symbol;
}

static a_symbol *symbol_for_routine(a_decl_decision *decision)
{
  if (decision->is_unusable) return replacement_symbol(decision);
  if (decision->at_block_level) return declare_in_block(decision);
  a_symbol *prior = decision->prior_symbol;
  if (prior && (is_routine_symbol(prior) || prior->kind == sk_variable)) {
    return redeclare(decision, prior);
  }
  if (decision->prior_extern_symbol) {
    return declare_known_external(decision, decision->prior_extern_symbol);
  }
  if (decision->overload_head) return add_overload(decision);
  a_symbol *symbol = enter_symbol(sk_routine, decision->locator, decl_scope_level, false);
  make_routine_for(decision, symbol);
  return symbol;
}

//---------------------------------------------------------------------------------------------
// Inline.

// Whether this declaration alone leaves the function without an external definition: `extern
// inline` by the GNU rule, `inline` without `extern` by C99's (6.7.4p6).
static bool asks_for_no_external_copy(const a_decl_decision *decision, const a_routine *routine)
{
  const a_decl_parse_state *state = decision->state;
  if (!(state->specifier_flags & sf_is_inline) || routine->storage_class == sc_static) return false;
  bool gnu_rule = gnu_c89_inlining || routine->gnu_inline;
  bool is_extern = state->storage_class == sc_extern;
  if (gnu_rule) return is_extern;
  return std_c99_inlining && !is_extern;
}

static bool asks_for_gnu_inline(const a_decl_parse_state *state)
{
  return f_find_attribute(ak_gnu_inline, state->specifiers_attributes) != nullptr ||
         f_find_attribute(ak_gnu_inline, state->declarator_attributes) != nullptr;
}

// GNU: all inline declarations of a function agree on the rule by which it is inline.
static void check_gnu_inline_agrees(const a_decl_decision *decision, a_symbol *symbol,
                                    const a_routine *routine)
{
  const a_decl_parse_state *state = decision->state;
  bool both_inline = routine->is_inline && (state->specifier_flags & sf_is_inline);
  if (!symbol->declared || !both_inline || !gcc_mode) return;
  bool asks = asks_for_gnu_inline(state);
  if (asks == routine->gnu_inline) return;
  pos_sy_error(asks ? ec_first_decl_not_gnu_inline : ec_missing_gnu_inline_attr_on_redeclaration,
               decision->locator->position, symbol);
}

static void update_inline_state(a_decl_decision *decision, a_symbol *symbol, a_routine *routine)
{
  a_decl_parse_state *state = decision->state;
  bool first = !symbol->declared;
  bool is_inline = (state->specifier_flags & sf_is_inline) != 0;
  if (is_inline && !routine->is_inline) {
    if (!first && routine->source_corresp.referenced && C_dialect == 2) {
      pos_sy_warning(ec_called_function_redeclared_inline, decision->locator->position, symbol);
    }
    set_inline_flag(routine, true);
  }
  if (C_dialect == 2) return;
  bool asks = asks_for_no_external_copy(decision, routine);
  bool gnu_rule = gnu_c89_inlining || routine->gnu_inline;
  if (gnu_rule) {
    // The definition decides; a declaration may only promise.
    if (decision->is_definition || (first && asks)) routine->inline_definition_only = asks;
  } else {
    routine->inline_definition_only = first ? asks : routine->inline_definition_only && asks;
  }
}

//---------------------------------------------------------------------------------------------
// decl_routine.

void update_routine_decl_modifiers(a_routine *routine, a_decl_parse_state *state,
                                   a_source_position *)
{
  routine->decl_modifiers |= state->decl_modifiers;
  if (state->decl_modifiers & (dm_interrupt | dm_nmi_interrupt)) routine->is_interrupt = true;
  if (state->decl_modifiers & dm_thread) {
    pos_error(ec_cannot_use_thread_local_storage, state->declarator_range.start);
    routine->decl_modifiers &= ~(uint32_t)dm_thread;
  }
}

void update_dll_info_for_routine(a_routine *routine, a_decl_parse_state *state)
{
  routine->decl_modifiers |= state->decl_modifiers & (dm_dllimport | dm_dllexport | dm_notshared);
}

static bool has_prototyped_type(const a_routine *routine)
{
  a_type *type = skip_typerefs(routine->type);
  return type->kind == tk_routine && routine_supplement_of(type)->is_prototyped;
}

// MISRA 8.1: a prototype stands in front of a definition, but of main; 8.6: functions are declared
// at file scope; 8.8: in one file; 16.3: with names for all parameters.
static void misra_checks(const a_decl_decision *decision)
{
  if (!check_misra_c_2004 || decision->is_implicit) return;
  a_source_position position = decision->locator->position;
  a_symbol *earlier = earlier_declaration(decision);
  if (earlier != nullptr && (!is_routine_symbol(earlier) || !earlier->declared)) earlier = nullptr;
  bool has_prototype = earlier != nullptr && has_prototyped_type(routine_of_symbol(earlier));
  if (decision->is_definition && !has_prototype && !decision->routine->is_main) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_1, position);
  }
  if (decision->at_block_level) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_6, position);
  }
  if (!decision->is_definition && decision->linkage == idl_external && earlier != nullptr &&
      misra_hooks.symbol_in_different_header_file(position.seq, earlier)) {
    pos_diagnostic(misra_required_severity, ec_misra_c_2004_8_8, position);
  }
  if (decision->routine->type_from_declarator) misra_hooks.check_routine_params(decision->type);
}

// A qualified void means nothing; a definition may not return it and has a message of its own (C99 6.9.1p3).
static void check_void_return(const a_decl_decision *decision)
{
  if (C_dialect == 2 || !strict_ansi_mode || is_error_type(decision->type)) return;
  if (decision->is_definition) return;
  a_type *return_type = return_type_of(decision->type);
  if (!is_void_type(return_type) || get_type_qualifiers(return_type) == 0) return;
  pos_warning(ec_qualified_void_return_type, decision->locator->position);
}

// The type comes from a typedef that qualifies it: only members can have such a type.
static a_type *type_without_function_qualifiers(a_decl_decision *decision)
{
  a_type *type = skip_typerefs(decision->type);
  bool is_member = decision->in_class || decision->locator->qualifier_is_class;
  if (type->kind != tk_routine || routine_supplement_of(type)->this_qualifiers == 0 || is_member) {
    return decision->type;
  }
  pos_error(ec_bad_qualified_function_type, decision->locator->position);
  type = copy_type(type);
  routine_supplement_of(type)->this_qualifiers = 0;
  return type;
}

static void note_routine_facts(a_decl_decision *decision, a_symbol *symbol, a_routine *routine)
{
  if (decision->is_definition) {
    if (routine->storage_class == sc_extern) routine->storage_class = sc_unspecified;
  }
  if (decision->is_implicit) {
    routine->is_implicitly_declared = true;
    symbol->is_implicit_routine = true;
  }
  if (decision->routine && decision->routine->is_main) {
    routine->is_main = true;
    il_header.main_routine = routine;
  }
  a_type *type = skip_typerefs(routine->type);
  if (type->kind == tk_routine && routine_supplement_of(type)->assoc_routine == nullptr) {
    routine_supplement_of(type)->assoc_routine = routine;
  }
}

void decl_routine(a_symbol_locator *locator, a_decl_parse_state *state,
                  a_func_info_block *func_info, uint32_t flags, an_id_linkage_kind *linkage,
                  a_symbol **extern_symbol, a_decl_pos_block *pos_block)
{
  a_func_info_block no_info;
  if (func_info == nullptr) {
    clear_func_info(&no_info);
    func_info = &no_info;
  }
  a_decl_decision decision;
  init_decision(&decision, locator, state, func_info, flags);
  decision.type = type_without_function_qualifiers(&decision);
  state->is_definition = decision.is_definition;
  check_void_return(&decision);
  find_storage_and_linkage(&decision);
  if (decision.lookup_depth < 0) decision.lookup_depth = decl_scope_level;
  misra_checks(&decision);
  a_symbol *symbol = symbol_for_routine(&decision);
  a_routine *routine = routine_of_symbol(symbol);
  if (C_dialect == 2 && !symbol->declared && is_function_type(decision.type)) {
    check_for_gap_in_default_arguments(decision.type);
  }
  state->symbol = symbol;
  locator->symbol = symbol;
  bool was_defined = routine->is_defined;
  note_routine_facts(&decision, symbol, routine);
  if (decision.is_definition || !symbol->declared)
    apply_routine_block_section_specification(routine);
  set_name_linkage(&decision, symbol, &routine->source_corresp);
  check_gnu_inline_agrees(&decision, symbol, routine);
  attach_decl_attributes(state, symbol->declared);
  update_inline_state(&decision, symbol, routine);
  uint32_t old_modifiers = routine->decl_modifiers;
  update_routine_decl_modifiers(routine, state, &locator->position);
  if (routine->decl_modifiers != old_modifiers)
    issue_modifier_pragmas(symbol, routine->decl_modifiers & ~old_modifiers);
  set_asm_name(state, &routine->asm_name, was_defined);
  routine->visibility = visibility_with_default(routine->visibility, &routine->source_corresp);
  a_decl_position_supplement *supplement =
      pos_block ? make_decl_pos_supplement(&routine->source_corresp, pos_block) : nullptr;
  record_symbol_declaration(flags & (rdf_declaration | rdf_definition), symbol, &locator->position,
                            supplement);
  if (linkage) *linkage = decision.linkage;
  if (extern_symbol) *extern_symbol = decision.prior_extern_symbol;
}

// `f(...)` with f undeclared: `extern int f();` in the innermost block (C89 6.3.2.2).
a_symbol *declare_implicit_routine(a_symbol_locator *locator)
{
  a_decl_parse_state state = null_decl_parse_state;
  state.start_position = locator->position;
  state.storage_class = state.effective_storage_class = sc_extern;
  a_type *type = alloc_type(tk_routine);
  as_routine(type).return_type = integer_type(ik_int);
  state.declared_type = state.type_specifier = state.bottom_type = type;
  a_func_info_block func_info;
  clear_func_info(&func_info);
  func_info.is_implicit = true;
  locator->symbol = nullptr;
  decl_routine(locator, &state, &func_info, rdf_declaration | rdf_implicit, nullptr, nullptr,
               nullptr);
  return state.symbol;
}

//---------------------------------------------------------------------------------------------
// The function path of a declaration.

// A member's storage class stands in its class.
static void check_storage_class_of_member(a_decl_parse_state *state)
{
  if (state->storage_class == sc_unspecified) return;
  bool tolerated = state->storage_class == sc_static && !extern_inline_allowed &&
                   (state->specifier_flags & sf_is_inline);
  pos_diagnostic(tolerated ? es_warning : es_error, ec_storage_class_not_allowed,
                 state->storage_class_position);
  state->storage_class = state->effective_storage_class = sc_unspecified;
}

static void check_function_storage_class(a_decl_parse_state *state)
{
  switch (state->effective_storage_class) {
  case sc_unspecified:
  case sc_extern:
  case sc_static: return;
  default: break;
  }
  pos_error(ec_bad_function_storage_class, state->storage_class_position);
  state->storage_class = state->effective_storage_class = sc_unspecified;
}

// C99 6.7.1p5: in a block a function has no storage class but extern.
static void check_block_storage_class(a_decl_parse_state *state)
{
  if (scope_stack[decl_scope_level].kind == sck_file || !in_function_scope()) return;
  if (state->effective_storage_class != sc_static) return;
  an_error_severity severity = es_none;
  if (C_dialect == 2) {
    severity = es_error;
  } else if (strict_ansi_mode) {
    severity = strict_ansi_error_severity;
  } else if (gcc_mode && gnu_version >= 40000) {
    severity = es_discretionary_error;
  }
  if (severity != es_none) {
    pos_diagnostic(severity, ec_block_scope_function_must_be_extern, state->storage_class_position);
  }
  state->effective_storage_class = gcc_mode && gnu_version < 30400 ? sc_unspecified : sc_extern;
}

static bool body_follows(const a_func_info_block *func_info)
{
  switch (curr_token) {
  case tok_semicolon:
  case tok_comma:
  case tok_asm:
  case tok_gnu_asm:
  case tok_assign:
  case tok_lparen:
  case tok_end_of_source: return false;
  case tok_lbrace:
  case tok_try: return true;
  case tok_colon: return C_dialect == 2;
  default:
    // Declarations of the names of an identifier list.
    return C_dialect != 2 && func_info->is_old_style && func_info->param_ids != nullptr &&
           is_decl_start(0);
  }
}

static void missing_function_type(a_symbol_locator *locator, a_decl_parse_state *state,
                                  a_func_info_block *func_info)
{
  if (state->specifier_flags & sf_has_type_specifier) return;
  func_info->type_was_missing = true;
  if (state->bad_declaration || state->is_implicit_int) return;
  state->is_implicit_int = true;
  if (func_info->is_main && c99_mode) {
    pos_warning(ec_implicit_int_on_main, locator->position);
    return;
  }
  a_type *type;
  report_missing_type_specifier(&locator->position, &type, true, false, false, true);
}

static void define_function(a_symbol_locator *locator, a_decl_parse_state *state,
                            a_func_info_block *func_info, a_decl_pos_block *pos_block)
{
  missing_function_type(locator, state, func_info);
  func_info->is_definition = true;
  func_info->has_body = true;
  if (state->declarator_attributes) {
    pos_error(ec_attributes_in_rout_defn, state->declarator_attributes->position);
  }
  if (state->asm_name) {
    pos_error(ec_asm_name_in_rout_defn, state->asm_name_position);
    state->asm_name = nullptr;
  }
  function_definition(locator, state, func_info, pos_block);
}

static void after_function_declarator(a_symbol *symbol)
{
  if (curr_token == tok_lparen) {
    pos_error(ec_lparen_after_function, pos_curr_token);
    get_token();
    flush_to_closing_paren();
    if (curr_token == tok_rparen) get_token();
  } else if (curr_token == tok_assign) {
    pos_sy_error(ec_cannot_initialize, pos_curr_token, symbol);
    get_token();
    scan_and_discard_initializer_expression();
  }
}

bool routine_declaration(a_symbol_locator *locator, a_decl_parse_state *state,
                         a_func_info_block *func_info, bool body_allowed,
                         a_decl_pos_block *pos_block)
{
  if (C_dialect != 2 && state->type_qualifiers && is_function_type(state->type_specifier)) {
    pos_warning(ec_useless_type_qualifiers, state->qualified_position);
  }
  if (locator->qualifier_is_class) {
    set_return_type_of_special_member(state, locator);
    check_storage_class_of_member(state);
  }
  check_function_storage_class(state);
  bool is_inline = (state->specifier_flags & sf_is_inline) != 0;
  if (names_main(locator, state)) {
    func_info->is_main = true;
    check_main_function(func_info, state->declared_type, &state->effective_storage_class,
                        &is_inline, &locator->position);
    if (!is_inline) state->specifier_flags &= ~(uint32_t)sf_is_inline;
  }
  func_info->is_inline = is_inline;
  func_info->inline_position = state->inline_position;
  func_info->type_from_declarator = (state->declarator_flags & df_is_function) != 0;
  if (body_allowed && body_follows(func_info)) {
    define_function(locator, state, func_info, pos_block);
    return true;
  }
  missing_function_type(locator, state, func_info);
  if (func_info->is_old_style && func_info->param_ids) {
    pos_diagnostic(gcc_mode ? es_warning : es_error, ec_param_id_list_needs_function_def,
                   func_info->param_ids->position);
    a_type *type = skip_typerefs(state->declared_type);
    if (type->kind == tk_routine) routine_supplement_of(type)->is_old_style_definition = false;
  }
  check_block_storage_class(state);
  func_info->vla_fixups = nullptr;
  an_id_linkage_kind linkage = idl_none;
  decl_routine(locator, state, func_info, rdf_declaration, &linkage, nullptr, pos_block);
  if (in_function_scope()) record_entity_in_decl_stmt_if_needed(state->symbol);
  after_function_declarator(state->symbol);
  process_curr_construct_pragmas(state->symbol, nullptr);
  return false;
}
