// scope_end.cpp - the end of a scope: unlinking its symbols and what is said about each of them.
// Owns:    the list of references out of inline functions.
// Entry:   wrapup_scope, record_ref_within_inline_function.
#include "driver/flags.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/decls.h"
#include "parse/scope_stk.h"
#include "parse/scope_stk_parts.h"
#include "parse/symbol_links.h"

//---------------------------------------------------------------------------------------------
// References of inline functions (C99 6.7.4p3)

struct an_inline_function_reference {
  an_inline_function_reference *next;
  a_routine *routine;
  a_symbol *symbol;
  a_source_position position;
  bool is_definition; // a modifiable static object is defined in it
};
static an_inline_function_reference *inline_function_references;
static an_inline_function_reference **inline_function_references_end = &inline_function_references;

void record_ref_within_inline_function(a_routine *routine, a_symbol *symbol,
                                       const a_source_position *position, bool is_definition)
{
  an_inline_function_reference *reference =
      (an_inline_function_reference *)alloc_in_region(0, sizeof(*reference));
  *reference = {nullptr, routine, symbol, *position, is_definition};
  *inline_function_references_end = reference;
  inline_function_references_end = &reference->next;
}

void report_references_of_inline_functions()
{
  an_error_severity severity =
      strict_ansi_mode ? strict_ansi_discretionary_severity : es_discretionary_error;
  for (an_inline_function_reference *reference = inline_function_references; reference;
       reference = reference->next) {
    a_routine *routine = reference->routine;
    if (routine->storage_class == sc_static || !routine->inline_definition_only) continue;
    pos_diagnostic(severity,
                   reference->is_definition ? ec_static_variable_in_inline_function
                                            : ec_bad_linkage_of_ref_within_inline_function,
                   reference->position);
  }
  init_end_of_scope_state();
}

void init_end_of_scope_state()
{
  inline_function_references = nullptr;
  inline_function_references_end = &inline_function_references;
}

//---------------------------------------------------------------------------------------------
// Severities and marks

// A warning, but a remark at file level for what an include file declares.
static an_error_severity file_level_severity(const a_symbol *symbol)
{
  bool at_file_level = depth_scope_stack >= 0 && top_scope()->kind == sck_file;
  return at_file_level && seq_is_in_include_file(symbol->position.seq) ? es_remark : es_warning;
}

static void report_unreferenced(a_symbol *symbol)
{
  pos_sy_diagnostic(file_level_severity(symbol), ec_declared_but_not_referenced, symbol->position,
                    symbol);
}

static void report_never_defined(a_symbol *symbol)
{
  pos_sy_error(ec_never_defined, symbol->position, symbol);
}

static bool is_in_unnamed_namespace(a_symbol *symbol)
{
  if (C_dialect != 2) return false;
  a_namespace *name_space = parent_namespace_for_symbol(symbol);
  for (; name_space; name_space = parent_namespace_of(&name_space->source_corresp)) {
    if (name_space->source_corresp.name == nullptr) return true;
  }
  return false;
}

// __unused__ on the type, at any typeref or at its end.
static bool type_is_marked_unused(a_type *type)
{
  for (; type->kind == tk_typeref; type = as_typeref(type).referenced_type) {
    if (type->is_unused) return true;
  }
  return type->is_unused;
}

static bool symbol_is_referenced(const a_symbol *symbol, const a_source_correspondence *corresp)
{
  return symbol->referenced || corresp->referenced;
}

//---------------------------------------------------------------------------------------------
// Variables

static bool has_side_effect_initializer(a_variable *variable)
{
  return variable->init_kind == initk_dynamic &&
         dynamic_init_has_side_effects(dynamic_initializer_of(variable));
}

static bool is_constructed(a_variable *variable)
{
  return variable->init_kind == initk_dynamic &&
         dynamic_initializer_of(variable)->kind == dik_constructor;
}

static void check_parameter_symbol(a_symbol *symbol, a_variable *variable)
{
  a_routine *routine = curr_routine();
  if (symbol_is_referenced(symbol, &variable->source_corresp)) {
    return;
  }
  bool in_main = routine != nullptr && (routine->is_main || routine == il_header.main_routine);
  if (in_main || variable->is_unused || variable->is_compiler_generated ||
      type_is_marked_unused(variable->type)) {
    return;
  }
  pos_sy_remark(ec_unreferenced_function_param, symbol->position, symbol);
}

static bool is_exempt_from_use_check(a_variable *variable)
{
  return variable->is_unused || variable->is_used || variable->no_common ||
         variable->alias_target != nullptr || variable->cleanup_routine != nullptr ||
         type_is_marked_unused(variable->type) || is_or_contains_error_type(variable->type) ||
         is_template_dependent_type(variable->type) || variable->is_compiler_generated;
}

static void check_use_of_variable(a_symbol *symbol, a_variable *variable)
{
  if (is_exempt_from_use_check(variable) || is_constructed(variable)) return;
  bool referenced = symbol_is_referenced(symbol, &variable->source_corresp);
  // Storing into an array element or through a volatile object is a use.
  bool only_set =
      referenced && !symbol->address_or_read && !is_or_contains_volatile(variable->type);
  if (referenced && !only_set) return;
  an_error_severity severity =
      has_side_effect_initializer(variable) ? es_remark : file_level_severity(symbol);
  pos_sy_diagnostic(severity, referenced ? ec_set_but_not_used : ec_declared_but_not_referenced,
                    symbol->position, symbol);
}

// A tentative definition whose array type nothing completed has one element (C99 6.9.2p2).
static void complete_tentative_array(a_symbol *symbol, a_variable *variable)
{
  if (C_dialect == 1 && variable->storage_class == sc_unspecified) {
    variable->storage_class = sc_extern;
    variable->is_definition = false;
    return;
  }
  a_type *copy = copy_type(skip_typerefs(variable->type));
  as_array(copy).bound.number_of_elements = 1;
  copy->size = 0;
  set_type_size(copy);
  a_type_qualifier_set qualifiers = f_get_type_qualifiers(variable->type, true);
  variable->type = f_make_qualified_type(copy, qualifiers);
  pos_sy_remark(ec_array_size_one_assumed, symbol->position, symbol);
}

// What a definition of C without initializer still lacks at the end of the file.
static void check_tentative_definition(a_symbol *symbol, a_variable *variable)
{
  if (variable->storage_class == sc_extern || variable->init_kind != initk_none ||
      variable->source_corresp.is_local || variable->alias_target != nullptr) {
    return;
  }
  if (is_const_qualified(variable->type) && !variable->has_initializer) {
    pos_sy_remark(ec_has_no_initializer_on_const, symbol->position, symbol);
  }
  if (is_error_type(variable->type) || !is_incomplete_type(variable->type)) return;
  if (is_incomplete_array_type(variable->type) &&
      !is_incomplete_type(array_element_type(variable->type))) {
    complete_tentative_array(symbol, variable);
  } else {
    pos_st_error(ec_var_retained_incomp_type, symbol->position, symbol->header->identifier);
  }
}

static void check_variable_symbol(a_symbol *symbol)
{
  a_variable *variable = variable_of_symbol(symbol);
  if (variable == nullptr) return;
  if (symbol->is_parameter || variable->is_parameter) {
    check_parameter_symbol(symbol, variable);
    return;
  }
  // A block's extern declaration speaks for an object that the file may still complete.
  if (C_dialect != 2 && top_scope()->kind == sck_file) check_tentative_definition(symbol, variable);
  bool unnamed = is_in_unnamed_namespace(symbol);
  if (variable->storage_class == sc_extern) {
    if (!unnamed || variable->source_corresp.name_linkage == nlk_c) return;
    if (symbol_is_referenced(symbol, &variable->source_corresp))
      report_never_defined(symbol);
    else
      report_unreferenced(symbol);
    return;
  }
  if (variable->storage_class == sc_unspecified && !unnamed) return;
  bool at_file_level = !variable->source_corresp.is_local;
  if (C_dialect == 2 && at_file_level && is_const_qualified(variable->type) &&
      seq_is_in_include_file(symbol->position.seq)) {
    return;
  }
  check_use_of_variable(symbol, variable);
}

//---------------------------------------------------------------------------------------------
// Routines

static bool is_hook_function(a_routine *routine)
{
  return is_hook_function_hook != nullptr && is_hook_function_hook(routine);
}

// Old and GNU C take the missing static function from elsewhere.
static void make_routine_external(a_symbol *symbol, a_routine *routine)
{
  routine->storage_class = sc_extern;
  routine->source_corresp.name_linkage = nlk_c;
  if (gcc_mode) {
    pos_sy_warning(ec_undefined_static_function_treated_as_extern, symbol->position, symbol);
  }
}

// An alias is defined where its target is; a weak reference may stay without definition.
static bool stands_for_another(a_routine *routine)
{
  return f_find_attribute(ak_alias, routine->source_corresp.attributes) != nullptr ||
         routine->weak_state == ws_weakref;
}

static void check_static_routine(a_symbol *symbol, a_routine *routine)
{
  if (stands_for_another(routine)) return;
  bool referenced = symbol_is_referenced(symbol, &routine->source_corresp);
  if (!routine_defined(routine) && referenced) {
    if (C_dialect == 1 || (gcc_mode && !strict_ansi_mode))
      make_routine_external(symbol, routine);
    else
      report_never_defined(symbol);
    return;
  }
  bool exempt = is_hook_function(routine) || routine->is_prototype_instance || routine->is_unused ||
                routine->is_used || routine->is_constructor_attr || routine->is_destructor_attr ||
                routine->alias_target != nullptr ||
                (routine->is_inline && seq_is_in_include_file(symbol->position.seq));
  if (!referenced && !exempt) report_unreferenced(symbol);
}

static void check_inline_routine(a_symbol *symbol, a_routine *routine)
{
  if (routine_defined(routine)) return;
  bool referenced = symbol_is_referenced(symbol, &routine->source_corresp);
  if (C_dialect == 2) {
    if (!referenced) return;
    an_error_severity severity = gcc_mode || gpp_mode ? es_warning : es_error;
    pos_sy_diagnostic(severity, ec_extern_inline_never_defined, symbol->position, symbol);
  } else if (c99_mode && strict_ansi_mode) {
    pos_sy_diagnostic(referenced ? es_discretionary_error : strict_ansi_discretionary_severity,
                      ec_inline_never_defined, symbol->position, symbol);
  }
}

static void check_routine_symbol(a_symbol *symbol)
{
  a_routine *routine = routine_of_symbol(symbol);
  if (routine == nullptr || routine->is_builtin || symbol->is_predeclared) return;
  // A block-scope declaration speaks for a function of the file.
  if (symbol->declared_at_block_scope) return;
  if (routine->storage_class == sc_static)
    check_static_routine(symbol, routine);
  else if (routine->is_inline)
    check_inline_routine(symbol, routine);
}

//---------------------------------------------------------------------------------------------
// Others

static void check_label_symbol(a_symbol *symbol)
{
  a_label *label = label_of_symbol(symbol);
  if (label == nullptr || label->is_compiler_generated) return;
  bool referenced = symbol->referenced || label->address_taken;
  if (!label->is_defined) {
    if (referenced) report_never_defined(symbol);
  } else if (!referenced && !label->is_unused) {
    report_unreferenced(symbol);
  }
}

static bool is_namespace_level_scope(a_scope_kind kind)
{
  return kind == sck_file || kind == sck_namespace;
}

// C++: members of a class in an unnamed namespace can be defined nowhere else.
static void check_members_of_local_class(a_symbol *symbol, a_scope_kind kind)
{
  if (C_dialect != 2 || !is_namespace_level_scope(kind) || !is_in_unnamed_namespace(symbol)) return;
  a_symbol *member = class_supplement_of_symbol(symbol)->pointers_block.symbols;
  for (; member != nullptr; member = member->next_in_scope) {
    if (member->kind != sk_member_function) continue;
    a_routine *routine = routine_of_symbol(member);
    if (routine == nullptr || routine_defined(routine) || routine->is_compiler_generated ||
        routine->is_pure_virtual) {
      continue;
    }
    bool referenced = symbol_is_referenced(member, &routine->source_corresp);
    an_error_severity severity =
        referenced || strict_ansi_mode ? es_discretionary_error : es_remark;
    pos_sy_diagnostic(severity,
                      routine->is_virtual ? ec_virtual_function_never_defined : ec_never_defined,
                      member->position, member);
  }
}

static void check_symbol_at_end_of_scope(a_symbol *symbol, a_scope_kind kind)
{
  switch (symbol->kind) {
  case sk_variable:
  case sk_static_data_member:
    if (symbol->kind == sk_variable) check_variable_symbol(symbol);
    break;
  case sk_routine: check_routine_symbol(symbol); break;
  case sk_label: check_label_symbol(symbol); break;
  case sk_overloaded_function: {
    a_symbol *member = overloads_of_symbol(symbol);
    for (; member != nullptr; member = member->next_same_name) {
      if (member->kind == sk_routine) check_routine_symbol(member);
    }
    break;
  }
  case sk_class_or_struct_tag:
  case sk_union_tag: check_members_of_local_class(symbol, kind); break;
  case sk_keyword:
  case sk_macro:
  case sk_constant:
  case sk_type:
  case sk_enum_tag:
  case sk_field:
  case sk_member_function:
  case sk_undefined:
  case sk_extern_variable:
  case sk_extern_routine:
  case sk_projection:
  case sk_parameter:
  case sk_class_template:
  case sk_function_template:
  case sk_namespace:
  case sk_namespace_projection:
  case sk_last: break;
  }
  if (decls_using_types_without_linkage_allowed && symbol->referenced &&
      (symbol->kind == sk_variable || symbol->kind == sk_routine)) {
    a_source_correspondence *corresp = source_corresp_entry_for_symbol(symbol);
    if (corresp != nullptr && corresp->name_linkage >= nlk_cplusplus) {
      check_constituent_types_have_linkage(symbol, &symbol->position, true);
    }
  }
}

//---------------------------------------------------------------------------------------------
// The scope

static bool goes_to_inactive_chain_at_end(a_scope_kind kind, bool is_reactivation)
{
  if (kind == sck_class || kind == sck_enum || kind == sck_template_declaration) return true;
  return is_namespace_level_scope(kind) && !is_reactivation;
}

// The message about a scope's symbols is wanted: at file and namespace level in the wrap-up pass.
static bool checks_are_due(a_scope_kind kind, bool is_reactivation, unsigned flags)
{
  if (in_template_context() || kind == sck_template_instantiation) return false;
  if (is_namespace_level_scope(kind)) return is_reactivation;
  return !(kind == sck_block && (flags & 0x8000));
}

static void end_symbol(a_symbol *symbol, a_scope_kind kind, bool is_reactivation, bool check_it)
{
  // What lost a conflict, or has no name, was reported where it stands.
  bool is_known = (symbol->on_active_chain || symbol->on_inactive_chain || symbol->not_entered) &&
                  symbol->header != header_for_error_symbol();
  if (check_it && is_known) check_symbol_at_end_of_scope(symbol, kind);
  if (symbol->kind == sk_extern_variable || symbol->kind == sk_extern_routine) return;
  if (kind == sck_file && !is_reactivation) return;
  bool was_linked = symbol->on_active_chain;
  unlink_symbol_from_symbol_table(symbol);
  if (!was_linked) return;
  if (goes_to_inactive_chain_at_end(kind, is_reactivation)) {
    add_symbol_to_inactive_list(symbol);
  } else if (check_misra_c_2004 && kind != sck_function_prototype) {
    keep_removed_symbol(symbol);
  }
}

static void mark_member_types(a_scope_kind kind, a_scope_pointers_block *block)
{
  if (!allow_anachronisms || kind != sck_class) return;
  for (a_symbol *symbol = block->symbols; symbol != nullptr; symbol = symbol->next_in_scope) {
    if (is_type_symbol(symbol)) symbol->header->member_type_seen = true;
  }
}

void wrapup_scope(a_scope *il_scope, a_scope_kind kind, a_scope_pointers_block *block,
                  bool is_reactivation, unsigned flags)
{
  mark_member_types(kind, block);
  if (kind == sck_file && is_reactivation) process_alias_fixup_list();
  if (kind != sck_namespace_extension && kind != sck_namespace_reactivation &&
      kind != sck_class_reactivation) {
    bool check_them = checks_are_due(kind, is_reactivation, flags);
    a_symbol *next;
    for (a_symbol *symbol = block->symbols; symbol != nullptr; symbol = next) {
      next = symbol->next_in_scope;
      end_symbol(symbol, kind, is_reactivation, check_them);
    }
    for (a_symbol *symbol = block->hidden_symbols_head; symbol; symbol = symbol->next_in_scope) {
      unlink_symbol_from_symbol_table(symbol);
    }
  }
  if (C_dialect == 2 && il_scope != nullptr &&
      (is_namespace_level_scope(kind) || kind == sck_class || kind == sck_function)) {
    perform_scheduled_routine_moves();
  }
}
