// decls_linkage.cpp - storage class and linkage of a declared name; the entity that it means.
// Rule:    one entity with linkage has one a_variable or a_routine, whatever the number of scopes
//          that declare it.  A symbol of name space 5 remembers what a block declared extern.
// See:     C99 6.2.2, 6.2.7, 6.9.2.
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "parse/decls_private.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"

bool symbol_is_object_or_routine(const a_symbol *symbol)
{
  return symbol->kind == sk_variable || symbol->kind == sk_static_data_member ||
         symbol->kind == sk_routine || symbol->kind == sk_member_function ||
         symbol->kind == sk_extern_variable || symbol->kind == sk_extern_routine;
}

a_type *type_of_linked_symbol(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_variable:
  case sk_static_data_member: return variable_of_symbol(symbol)->type;
  case sk_routine:
  case sk_member_function: return routine_of_symbol(symbol)->type;
  case sk_extern_variable:
  case sk_extern_routine: return symbol->variant.extern_entity.type;
  default: return error_type();
  }
}

void set_type_of_linked_symbol(a_symbol *symbol, a_type *type)
{
  switch (symbol->kind) {
  case sk_variable:
  case sk_static_data_member: variable_of_symbol(symbol)->type = type; return;
  case sk_routine:
  case sk_member_function: routine_of_symbol(symbol)->type = type; return;
  case sk_extern_variable:
    symbol->variant.extern_entity.type = type;
    if (symbol->variant.extern_entity.entity.variable) {
      symbol->variant.extern_entity.entity.variable->type = type;
    }
    return;
  case sk_extern_routine:
    symbol->variant.extern_entity.type = type;
    if (symbol->variant.extern_entity.entity.routine) {
      symbol->variant.extern_entity.entity.routine->type = type;
    }
    return;
  default: return;
  }
}

//---------------------------------------------------------------------------------------------
// The decision record.

static bool scope_kind_is_function_level(a_scope_kind kind)
{
  return kind == sck_function || kind == sck_block || kind == sck_condition;
}

void init_decision(a_decl_decision *decision, a_symbol_locator *locator, a_decl_parse_state *state,
                   a_func_info_block *func_info, uint32_t flags)
{
  *decision = {};
  decision->locator = locator;
  decision->state = state;
  decision->routine = func_info;
  decision->type = state->declared_type;
  decision->storage_class = state->effective_storage_class;
  decision->is_definition = (flags & rdf_definition) != 0;
  decision->is_tentative = (flags & rdf_tentative) != 0;
  decision->is_implicit = (flags & rdf_implicit) != 0;
  a_scope_stack_entry *entry = &scope_stack[decl_scope_level];
  decision->in_class = entry->kind == sck_class;
  bool in_function = scope_kind_is_function_level(entry->kind);
  decision->at_block_level = in_function && decision->storage_class != sc_static;
  decision->name_linkage = (a_name_linkage_kind)top_scope()->name_linkage;
  decision->has_explicit_linkage = top_scope()->name_linkage_is_explicit;
  decision->in_implicit_extern_c = decision->name_linkage == nlk_c;
  decision->lookup_depth = -1;
  bool declares_external = func_info != nullptr || decision->storage_class == sc_extern;
  if (!in_function) {
    decision->lookup_depth = decl_scope_level;
  } else if (declares_external) {
    decision->lookup_depth = C_dialect == 2 ? depth_innermost_namespace_scope : 0;
  }
}

//---------------------------------------------------------------------------------------------
// The prior declaration.

static bool has_linkage(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_routine:
  case sk_member_function:
  case sk_extern_routine:
  case sk_extern_variable:
  case sk_static_data_member: return true;
  case sk_variable: {
    a_variable *variable = variable_of_symbol(symbol);
    if (variable->is_external_in_block) return true;
    return !variable->source_corresp.is_local && variable->storage_class != sc_auto &&
           variable->storage_class != sc_register;
  }
  default: return false;
  }
}

static bool is_internal(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_variable: return variable_of_symbol(symbol)->storage_class == sc_static;
  case sk_routine: return routine_of_symbol(symbol)->storage_class == sc_static;
  case sk_extern_variable: {
    a_variable *variable = symbol->variant.extern_entity.entity.variable;
    return variable && variable->storage_class == sc_static;
  }
  case sk_extern_routine: {
    a_routine *routine = symbol->variant.extern_entity.entity.routine;
    return routine && routine->storage_class == sc_static;
  }
  default: return false;
  }
}

// The declaration of the name at file scope, whether or not an inner one hides it.
static a_symbol *file_scope_symbol(a_symbol_locator *locator)
{
  for (a_symbol *symbol = locator->header->active_symbols; symbol;
       symbol = symbol->next_same_name) {
    if (symbol->scope_number != scope_stack[0].number) continue;
    if (name_space_for_symbol_kind[symbol->kind] == nsk_ordinary) return symbol;
  }
  return nullptr;
}

static bool is_linked_entity(a_symbol *symbol)
{
  if (symbol == nullptr) return false;
  if (symbol->kind == sk_overloaded_function) return !symbol->is_class_member;
  return symbol_is_object_or_routine(symbol) && has_linkage(symbol);
}

// A block-scope declaration of something external: the same block's, a visible one, the file's, or
// what another block declared.
static void find_prior_of_block_extern(a_decl_decision *decision)
{
  a_symbol_locator copy = *decision->locator;
  copy.symbol = nullptr;
  decision->prior_symbol = curr_scope_id_lookup(&copy, lo_none);
  copy = *decision->locator;
  copy.symbol = nullptr;
  a_symbol *visible = normal_id_lookup(&copy, lo_type_only);
  if (!is_linked_entity(visible)) {
    visible = file_scope_symbol(decision->locator);
    if (!is_linked_entity(visible)) visible = nullptr;
  }
  if (C_dialect == 2 && visible != nullptr && visible->kind == sk_overloaded_function) {
    visible = find_function_of_type(visible, decision->type);
  }
  decision->visible_symbol = visible;
  decision->prior_extern_symbol = find_external_symbol(decision->locator->header);
}

// Which function of the name this is; a new one joins the set that `overload_head` leads to.
static void settle_overloads(a_decl_decision *decision)
{
  a_symbol *prior = decision->prior_symbol;
  if (prior == nullptr || C_dialect != 2) return;
  bool is_function = prior->kind == sk_overloaded_function || is_routine_symbol(prior);
  decision->prior_symbol = prior_among_overloads(decision);
  if (is_function && decision->prior_symbol == nullptr) decision->overload_head = prior;
}

static void find_prior(a_decl_decision *decision)
{
  if (C_dialect == 2 && has_written_qualifier(decision->locator)) {
    decision->is_qualified = true;
    decision->at_block_level = false;
    decision->is_unusable =
        decision->locator->header == nullptr || !find_prior_of_qualified_name(decision);
    return;
  }
  if (decision->locator->header == nullptr || decision->locator->is_qualified) return;
  if (decision->at_block_level && decision->lookup_depth >= 0) {
    find_prior_of_block_extern(decision);
    return;
  }
  a_symbol_locator copy = *decision->locator;
  copy.symbol = nullptr;
  decision->prior_symbol = curr_scope_id_lookup(&copy, lo_none);
  if (decision->routine != nullptr) settle_overloads(decision);
  // A predeclared function is a function of another file: it is no prior declaration of anything
  // else.
  bool same_function = decision->routine && decision->storage_class != sc_static;
  if (decision->prior_symbol != nullptr && !same_function &&
      is_unused_predeclared_function(decision->prior_symbol)) {
    decision->prior_symbol = nullptr;
  }
  if (decision->lookup_depth >= 0 && decision->prior_symbol == nullptr &&
      decision->overload_head == nullptr) {
    decision->prior_extern_symbol = find_external_symbol(decision->locator->header);
  }
}

a_symbol *earlier_declaration(const a_decl_decision *decision)
{
  if (decision->prior_symbol != nullptr) return decision->prior_symbol;
  if (decision->visible_symbol != nullptr) return decision->visible_symbol;
  a_symbol *external = decision->prior_extern_symbol;
  return external != nullptr ? external->variant.extern_entity.symbol : nullptr;
}

//---------------------------------------------------------------------------------------------
// Linkage.

static an_id_linkage_kind linkage_by_specifiers(const a_decl_decision *decision)
{
  const a_decl_parse_state *state = decision->state;
  if (decision->storage_class == sc_static) return idl_internal;
  if (decision->routine && (state->specifier_flags & sf_is_inline) && !extern_inline_allowed &&
      C_dialect == 2) {
    return idl_internal;
  }
  bool is_cpp_const = C_dialect == 2 && !decision->routine &&
                      decision->storage_class != sc_extern && decision->prior_symbol == nullptr &&
                      !decision->at_block_level && !decision->has_explicit_linkage &&
                      is_const_qualified(decision->type) && !is_volatile_qualified(decision->type);
  return is_cpp_const ? idl_internal : idl_external;
}

// `static` behind a declaration with external linkage, `inline` behind a use.
static void check_change_of_routine(a_decl_decision *decision, a_symbol *prior)
{
  if (prior->kind != sk_routine) return;
  a_routine *routine = routine_of_symbol(prior);
  bool in_use = routine->is_defined || routine->source_corresp.referenced;
  if (!in_use || !(decision->state->specifier_flags & sf_is_inline) || routine->is_inline) return;
  if (C_dialect == 2) {
    pos_sy_warning(ec_called_function_redeclared_inline, decision->locator->position, prior);
  }
}

// C99 6.2.2p4 and p5: extern (and a function without storage class) follows the visible
// declaration.
static void follow_prior_linkage(a_decl_decision *decision)
{
  a_symbol *prior = decision->visible_symbol ? decision->visible_symbol : decision->prior_symbol;
  if (prior == nullptr || !symbol_is_object_or_routine(prior))
    prior = decision->prior_extern_symbol;
  if (prior == nullptr || !symbol_is_object_or_routine(prior) || !has_linkage(prior)) return;
  check_change_of_routine(decision, prior);
  bool follows = decision->storage_class == sc_extern ||
                 (decision->routine && decision->storage_class == sc_unspecified);
  if (follows && is_internal(prior)) decision->linkage = idl_internal;
}

void find_storage_and_linkage(a_decl_decision *decision)
{
  find_prior(decision);
  if (decision->lookup_depth < 0) {
    decision->linkage = idl_none;
    return;
  }
  decision->linkage = linkage_by_specifiers(decision);
  follow_prior_linkage(decision);
  if (decision->linkage == idl_internal) {
    decision->storage_class = sc_static;
  } else if (decision->routine) {
    bool unspecified = decision->is_definition || decision->storage_class == sc_unspecified;
    decision->storage_class = unspecified ? sc_unspecified : sc_extern;
  } else {
    decision->storage_class = decision->is_definition ? sc_unspecified : sc_extern;
  }
}

void set_name_linkage(a_decl_decision *decision, a_symbol *symbol, a_source_correspondence *corresp)
{
  if (decision->linkage == idl_none) return;
  if (decision->linkage == idl_internal) {
    corresp->name_linkage = nlk_internal;
    return;
  }
  unsigned old = corresp->name_linkage;
  unsigned linkage = decision->name_linkage;
  if (old == nlk_none || old == nlk_internal) {
    corresp->name_linkage = linkage;
  } else if (old != linkage && decision->has_explicit_linkage) {
    an_error_severity severity = decision->routine  ? es_error
                                 : strict_ansi_mode ? strict_ansi_error_severity
                                                    : es_warning;
    if (!(gpp_mode && decision->in_class)) {
      pos_sy_diagnostic(severity, ec_incompatible_linkage_specifier, decision->locator->position,
                        symbol);
    }
  }
}

//---------------------------------------------------------------------------------------------
// Types of one entity in several declarations.

// The types of an extern symbol and a further declaration.
bool reconcile_external_symbol_types(a_symbol *symbol, a_source_position *position, a_type *type,
                                     an_error_severity severity)
{
  a_type *old_type = type_of_linked_symbol(symbol);
  if (is_error_type(old_type) || is_error_type(type)) return true;
  if (!f_types_are_compatible(old_type, type, tco_error_types)) {
    pos_sy_diagnostic(severity, ec_decl_incompatible_with_previous_use, *position, symbol);
    return false;
  }
  set_type_of_linked_symbol(symbol, composite_type(type, old_type));
  return true;
}

bool reconcile_static_data_member_types(a_symbol *symbol, a_type *type, a_source_position *position)
{
  a_variable *variable = variable_of_symbol(symbol);
  if (!f_types_are_compatible(variable->type, type, tco_error_types | tco_array_bounds)) {
    pos_sy_error(ec_not_compatible_with_previous_decl, *position, symbol);
    return false;
  }
  variable->type = composite_type(type, variable->type);
  return true;
}

unsigned visibility_with_default(unsigned visibility, const a_source_correspondence *corresp)
{
  bool external = corresp->name_linkage == nlk_c || corresp->name_linkage == nlk_cplusplus;
  if (visibility != vis_unspecified || !external) return visibility;
  return curr_default_ELF_visibility;
}

void set_asm_name(a_decl_parse_state *state, const char **asm_name, bool was_defined)
{
  if (state->asm_name == nullptr) return;
  bool same = *asm_name && strcmp(*asm_name, state->asm_name) == 0;
  if (same) return;
  if (*asm_name) {
    pos_warning(ec_asm_name_conflict, state->asm_name_position);
    return;
  }
  if (gcc_mode && was_defined) {
    pos_warning(ec_asm_name_after_definition, state->asm_name_position);
    return;
  }
  *asm_name = state->asm_name;
}
