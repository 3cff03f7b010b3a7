// decls_overload.cpp - which of several functions a declaration means, and what a qualified name
// declares.
// Rule:    in C++ a declaration with the same parameter types declares the same function; one with
//          others is another function of the set.
// Entry:   find_function_of_type, find_prior_of_qualified_name, conflicts_with_previous_function_decl.
// See:     C++ 13.1, 3.4.3, 8.3.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "parse/class_decl.h"
#include "parse/decls_private.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"

//---------------------------------------------------------------------------------------------
// Signatures

static bool same_parameter(const a_param_type *a, const a_param_type *b)
{
  return identical_types(make_unqualified_type(a->type), make_unqualified_type(b->type));
}

bool same_parameter_types(a_type *a, a_type *b)
{
  a = skip_typerefs(a);
  b = skip_typerefs(b);
  if (a->kind != tk_routine || b->kind != tk_routine)
    return a->kind == tk_error || b->kind == tk_error;
  if (routine_supplement_of(a)->has_ellipsis != routine_supplement_of(b)->has_ellipsis)
    return false;
  a_param_type *p = param_types_of(a), *q = param_types_of(b);
  for (; p != nullptr && q != nullptr; p = p->next, q = q->next) {
    if (!same_parameter(p, q)) return false;
  }
  return p == nullptr && q == nullptr;
}

bool this_param_types_correspond(a_type *a, a_type *b)
{
  a = skip_typerefs(a);
  b = skip_typerefs(b);
  if (a->kind != tk_routine || b->kind != tk_routine) return true;
  return routine_supplement_of(a)->this_qualifiers == routine_supplement_of(b)->this_qualifiers;
}

static a_symbol *function_behind(a_symbol *symbol)
{
  return symbol->kind == sk_projection ? projected_symbol_of(symbol) : symbol;
}

a_symbol *find_function_of_type(a_symbol *symbol, a_type *type)
{
  if (symbol == nullptr) return nullptr;
  bool is_set = symbol->kind == sk_overloaded_function;
  a_symbol *member = is_set ? overloads_of_symbol(symbol) : symbol;
  for (; member != nullptr; member = is_set ? member->next_same_name : nullptr) {
    a_symbol *function = function_behind(member);
    if (!is_routine_symbol(function)) continue;
    a_type *other = routine_of_symbol(function)->type;
    if (same_parameter_types(other, type) && this_param_types_correspond(other, type))
      return member;
  }
  return nullptr;
}

// Both have C linkage: there is one function of the name.
static bool both_have_c_linkage(a_symbol *symbol, const a_decl_decision *decision)
{
  return decision->name_linkage == nlk_c && symbol->kind == sk_routine &&
         routine_of_symbol(symbol)->source_corresp.name_linkage == nlk_c;
}

bool conflicts_with_previous_function_decl(a_type *new_type, a_symbol *old_symbol,
                                           a_source_position *position)
{
  a_type *old_type = routine_of_symbol(old_symbol)->type;
  if (is_error_type(new_type) || is_error_type(old_type)) return false;
  if (identical_types(return_type_of(new_type), return_type_of(old_type))) return false;
  pos_error(ec_return_type_cannot_distinguish_functions, *position);
  return true;
}

a_symbol *prior_among_overloads(a_decl_decision *decision)
{
  a_symbol *prior = decision->prior_symbol;
  if (C_dialect != 2 || prior == nullptr) return prior;
  bool is_set = prior->kind == sk_overloaded_function;
  if (!is_set && !is_routine_symbol(prior)) return prior;
  a_symbol *match = find_function_of_type(prior, decision->type);
  if (match != nullptr) return match;
  if (!is_set && (prior->is_predeclared || routine_of_symbol(prior)->is_implicitly_declared)) {
    return prior;
  }
  a_symbol *member = is_set ? overloads_of_symbol(prior) : prior;
  for (; member != nullptr; member = is_set ? member->next_same_name : nullptr) {
    if (!both_have_c_linkage(member, decision)) continue;
    pos_sy_error(ec_overloaded_function_linkage, decision->locator->position, member);
    decision->name_linkage = nlk_cplusplus;
    break;
  }
  return nullptr;
}

//---------------------------------------------------------------------------------------------
// Qualified names

static bool scope_encloses_namespace(a_namespace *name_space)
{
  a_scope_stack_entry *entry = decl_scope();
  if (entry->kind == sck_file) return true;
  for (; name_space != nullptr; name_space = parent_namespace_of(&name_space->source_corresp)) {
    if (name_space == entry->assoc_namespace) return true;
  }
  return false;
}

// The namespace in which a class, or the outermost class around it, is declared; null: the global one.
static a_namespace *namespace_of_class(a_type *class_type)
{
  for (;;) {
    a_type *parent = parent_class_of(&class_type->source_corresp);
    if (parent == nullptr) return parent_namespace_of(&class_type->source_corresp);
    class_type = parent;
  }
}

// What belongs to a class or namespace is defined in a namespace around it (C++ 8.3p1).
static void check_place_of_definition(a_decl_decision *decision, a_symbol *symbol)
{
  const a_symbol_locator *locator = decision->locator;
  a_namespace *name_space = locator->qualifier_is_class
                                ? namespace_of_class(skip_typerefs(locator->qualifier.class_type))
                                : skip_namespace_aliases(locator->qualifier.name_space);
  bool in_namespace = decl_scope()->kind == sck_file || decl_scope()->kind == sck_namespace ||
                      decl_scope()->kind == sck_namespace_extension;
  bool local_class = locator->qualifier_is_class &&
                     skip_typerefs(locator->qualifier.class_type)->source_corresp.is_local;
  if (in_namespace && !local_class && scope_encloses_namespace(name_space)) return;
  if (gpp_mode && in_namespace) return;
  bool is_friend = decision->state->specifier_flags & sf_is_friend;
  if (is_friend) return;
  pos_sy_error(decision->is_definition ? ec_bad_scope_for_definition
                                       : ec_bad_scope_for_redeclaration,
               locator->position, symbol);
}

static void report_no_such_member(const a_symbol_locator *locator)
{
  const char *name = locator->header->identifier;
  a_symbol *parent = nullptr;
  if (locator->qualifier_is_class) {
    parent = skip_typerefs(locator->qualifier.class_type)->source_corresp.assoc_symbol;
  } else if (locator->qualifier.name_space != nullptr) {
    parent = skip_namespace_aliases(locator->qualifier.name_space)->source_corresp.assoc_symbol;
  }
  if (parent != nullptr) {
    pos_stsy_error(ec_not_a_member, locator->position, name, parent);
  } else {
    pos_st_error(ec_name_not_found_in_file_scope, locator->position, name);
  }
}

static a_symbol *look_up_in_class(const a_symbol_locator *locator, unsigned options)
{
  a_symbol_locator copy = *locator;
  clear_qualifier_from_locator(&copy);
  copy.symbol = nullptr;
  return class_qualified_id_lookup(&copy, locator->qualifier.class_type, options);
}

static a_symbol *look_up_in_namespace(const a_symbol_locator *locator)
{
  a_symbol_locator copy = *locator;
  clear_qualifier_from_locator(&copy);
  copy.symbol = nullptr;
  if (locator->qualifier.name_space == nullptr) {
    return file_scope_id_lookup(il_header.primary_scope, &copy, lo_friend_decl);
  }
  return namespace_qualified_id_lookup(&copy, locator->qualifier.name_space,
                                       lo_friend_decl | lo_no_seq_limit);
}

// The member itself, not one that is inherited or that a using-declaration brought in.
static a_symbol *find_class_member(const a_symbol_locator *locator)
{
  a_type *class_type = skip_typerefs(locator->qualifier.class_type);
  a_symbol *symbol = look_up_in_class(locator, lo_no_base_classes);
  if (symbol != nullptr && symbol->is_class_member &&
      !identical_types(symbol->parent.class_type, class_type)) {
    pos_sy2_error(ec_not_an_actual_member, locator->position, symbol,
                  class_type->source_corresp.assoc_symbol);
    return nullptr;
  }
  if (symbol != nullptr) return symbol;
  symbol = look_up_in_class(locator, lo_no_projection);
  if (symbol != nullptr) {
    pos_error(ec_inherited_member_not_allowed, locator->position);
  } else {
    report_no_such_member(locator);
  }
  return nullptr;
}

static a_symbol *find_member_of_qualifier(const a_symbol_locator *locator)
{
  if (locator->qualifier_is_class) {
    a_type *class_type = skip_typerefs(locator->qualifier.class_type);
    if (!is_class_struct_union_type(class_type)) {
      report_no_such_member(locator);
      return nullptr;
    }
    if (class_supplement_of(class_type)->class_scope == nullptr) {
      pos_ty_error(ec_incomplete_type_not_allowed, locator->position, class_type);
      return nullptr;
    }
    return find_class_member(locator);
  }
  a_symbol *symbol = look_up_in_namespace(locator);
  if (symbol == nullptr) report_no_such_member(locator);
  return symbol;
}

// A member function's type says whose `this` it takes; the declarator outside of the class can't know.
static void take_this_class(a_type *type, a_type *class_type)
{
  type = skip_typerefs(type);
  if (type->kind == tk_routine) routine_supplement_of(type)->this_class = class_type;
}

static a_symbol *settle_function(a_decl_decision *decision, a_symbol *symbol)
{
  a_symbol *match = find_function_of_type(symbol, decision->type);
  if (match == nullptr) {
    pos_sy_error(ec_not_compatible_with_previous_decl, decision->locator->position, symbol);
    return nullptr;
  }
  match = function_behind(match);
  a_routine *routine = routine_of_symbol(match);
  if (routine->type->kind == tk_routine) {
    take_this_class(decision->type, routine_supplement_of(routine->type)->this_class);
  }
  return match;
}

bool find_prior_of_qualified_name(a_decl_decision *decision)
{
  a_symbol *symbol = find_member_of_qualifier(decision->locator);
  if (symbol == nullptr) return false;
  if (decision->routine != nullptr) {
    bool is_function = is_routine_symbol(symbol) || symbol->kind == sk_overloaded_function;
    if (!is_function) {
      pos_sy_error(ec_not_compatible_with_previous_decl, decision->locator->position, symbol);
      return false;
    }
    symbol = settle_function(decision, symbol);
    if (symbol == nullptr) return false;
  } else if (symbol->kind == sk_field) {
    pos_error(ec_nonstatic_member_def_not_allowed, decision->locator->position);
    return false;
  } else if (symbol->kind != sk_static_data_member && symbol->kind != sk_variable) {
    pos_sy_error(ec_not_compatible_with_previous_decl, decision->locator->position, symbol);
    return false;
  }
  check_place_of_definition(decision, symbol);
  decision->prior_symbol = symbol;
  return true;
}
