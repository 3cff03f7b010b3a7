// lookup_access.cpp - may the context use a member: access along the paths of derivation, and checks
// that wait for the end of the declaration.
// Owns:    the free list of deferred access checks.
// Entry:   have_access_to_symbol, perform_deferred_access_checks_at_depth.
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "parse/lookup.h"
#include "parse/lookup_parts.h"
#include "parse/scope_stk.h"

struct a_deferred_access_check {
  a_deferred_access_check *next;
  a_symbol *symbol;
  a_symbol *naming_symbol;
  a_type *protected_class;
  a_source_position position;
  unsigned token_sequence;
  an_error_severity severity;
  an_error_code error_code;
};
static a_deferred_access_check *avail_deferred_access_checks;

//---------------------------------------------------------------------------------------------
// Privileges of the context

static bool routine_is_friend(a_routine *routine, a_type *class_type)
{
  a_routine_list_entry *entry = class_supplement_of(class_type)->friend_routines;
  for (; entry != nullptr; entry = entry->next) {
    if (entry->routine == routine) return true;
  }
  return false;
}

static bool class_is_friend(a_type *friend_type, a_type *class_type)
{
  a_class_list_entry *entry = class_supplement_of(class_type)->friend_classes;
  for (; entry != nullptr; entry = entry->next) {
    if (identical_types(entry->class_type, friend_type)) return true;
  }
  return false;
}

// A class gives its members, and those of classes nested in it, all its rights.
static bool class_has_privilege(a_type *context, a_type *class_type)
{
  for (; context != nullptr; context = parent_class_of(&context->source_corresp)) {
    if (identical_types(context, class_type) || class_is_friend(context, class_type)) return true;
  }
  return false;
}

bool have_member_access_privilege(a_type *class_type)
{
  class_type = skip_typerefs(class_type);
  for (int depth = depth_of_innermost_scope_that_affects_access_control; depth >= 0;
       depth = scope_stack[depth].saved_access_depth) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    if (entry->assoc_routine != nullptr) {
      if (routine_is_friend(entry->assoc_routine, class_type)) return true;
      a_type *parent = parent_class_of(&entry->assoc_routine->source_corresp);
      if (parent != nullptr && class_has_privilege(parent, class_type)) return true;
    }
    if (entry->assoc_type != nullptr && is_class_struct_union_type(entry->assoc_type) &&
        class_has_privilege(skip_typerefs(entry->assoc_type), class_type)) {
      return true;
    }
  }
  return false;
}

bool have_protected_member_access_privilege(a_type *class_type)
{
  class_type = skip_typerefs(class_type);
  for (int depth = depth_of_innermost_scope_that_affects_access_control; depth >= 0;
       depth = scope_stack[depth].saved_access_depth) {
    a_scope_stack_entry *entry = &scope_stack[depth];
    a_type *context = entry->assoc_type;
    if (entry->assoc_routine != nullptr) {
      context = parent_class_of(&entry->assoc_routine->source_corresp);
    }
    for (; context != nullptr && is_class_struct_union_type(context);
         context = parent_class_of(&context->source_corresp)) {
      if (is_same_class_or_base_class_thereof(class_type, context)) return true;
    }
  }
  return false;
}

//---------------------------------------------------------------------------------------------
// Access

bool is_accessible_base_class(a_base_class *base)
{
  a_base_class_derivation *derivation = base->derivations;
  for (; derivation != nullptr; derivation = derivation->next) {
    if (derivation->access == as_public) return true;
    if (have_member_access_privilege(base->derived_class)) return true;
    if (derivation->access == as_protected &&
        have_protected_member_access_privilege(base->derived_class)) {
      return true;
    }
  }
  return base->derivations == nullptr;
}

static bool access_passes(an_access_specifier access, a_type *class_type)
{
  if (access == as_public || class_type == nullptr) return true;
  if (access == as_inaccessible) return false;
  if (have_member_access_privilege(class_type)) return true;
  return access == as_protected && have_protected_member_access_privilege(class_type);
}

bool have_access_to_symbol(a_symbol *symbol)
{
  a_symbol *target = target_of_symbol(symbol);
  if (!target->is_class_member || (depth_scope_stack >= 0 && top_scope()->in_template_definition)) {
    return true;
  }
  if (target->kind == sk_overloaded_function || target->kind == sk_function_template) return true;
  if (access_passes(access_for_symbol(target), target->parent.class_type) &&
      (symbol == target || cfront_2_1_mode || cfront_3_0_mode)) {
    return true;
  }
  if (symbol->kind != sk_projection || !symbol->is_class_member) return false;
  if (access_passes(access_for_symbol(symbol), symbol->parent.class_type)) return true;
  // A member of the base may go through the base itself.
  a_base_class *base = symbol->variant.projection.base_class;
  return base != nullptr && access_passes(access_for_symbol(target), target->parent.class_type) &&
         is_accessible_base_class(base);
}

//---------------------------------------------------------------------------------------------
// Deferred checks

static void free_check(a_deferred_access_check *entry)
{
  entry->next = avail_deferred_access_checks;
  avail_deferred_access_checks = entry;
}

void perform_deferred_access_checks_at_depth(int depth)
{
  a_scope_stack_entry *scope = &scope_stack[depth];
  a_deferred_access_check *entry = scope->deferred_access_head, *next;
  a_deferred_access_check *kept_head = nullptr, *kept_tail = nullptr;
  a_symbol *last_failing = nullptr;
  a_source_position last_position = null_source_position;
  for (; entry != nullptr; entry = next) {
    next = entry->next;
    bool repeated = entry->symbol == last_failing && same_position(entry->position, last_position);
    bool failed = !repeated && !have_access_to_symbol(entry->symbol);
    if (failed) {
      last_failing = entry->symbol;
      last_position = entry->position;
    }
    if (failed && scope->keep_deferred_access_errors) {
      entry->next = nullptr;
      if (kept_tail != nullptr)
        kept_tail->next = entry;
      else
        kept_head = entry;
      kept_tail = entry;
      continue;
    }
    if (failed)
      pos_sy_diagnostic(entry->severity, entry->error_code, entry->position, entry->symbol);
    free_check(entry);
  }
  scope->deferred_access_head = kept_head;
  scope->deferred_access_tail = kept_tail;
}

void f_discard_deferred_access_checks()
{
  if (curr_deferred_access_scope < 0) return;
  a_scope_stack_entry *scope = &scope_stack[curr_deferred_access_scope];
  a_deferred_access_check *entry = scope->deferred_access_head, *next;
  for (; entry != nullptr; entry = next) {
    next = entry->next;
    free_check(entry);
  }
  scope->deferred_access_head = scope->deferred_access_tail = nullptr;
}
