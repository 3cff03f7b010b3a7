// exprutil.cpp - the context of the expression being scanned.
// Owns:    expr_stack, curr_expr_ref_entries, the free lists of reference entries and cached
//          operands.
// Uses:    symbol_ref.h to record a reference once its class is known, error.h.
// Rule:    an entry lives in the frame of the scan routine that pushed it; a diagnostic of an
//          expression is
//          issued through expr_pos_*, so that a trial scan stays silent and only notes it.
// Entry:   push_expr_stack, pop_expr_stack, ref_entry, change_ref_kinds, flush_ref_entries_except.
#include "parse/exprutil.h"

#include <cstring>

#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "mem/mem_manage.h"
#include "mem/registered_vars.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"

an_expr_stack_entry *expr_stack;
a_ref_entry *curr_expr_ref_entries;
a_source_position curr_construct_end_position;

static a_ref_entry *avail_ref_entries;
static a_cached_operand *avail_cached_operands;

// -------------------------------------------------------------------------------------------------
// Expression stack

static void inherit_from_previous_entry(an_expr_stack_entry *entry)
{
  an_expr_stack_entry *previous = entry->previous;
  entry->implicit_reference_marks = previous->implicit_reference_marks;
  entry->entity_list_head = previous->entity_list_head;
  entry->entity_list_tail = previous->entity_list_tail;
  entry->value_required = previous->value_required;
  entry->code_is_generated = previous->code_is_generated;
  entry->in_typeof_or_decltype = previous->in_typeof_or_decltype;
  entry->conditionally_evaluated = previous->conditionally_evaluated;
  entry->sfinae_context |= previous->sfinae_context;
  entry->suppress_errors |= previous->suppress_errors;
  entry->record_rescan_info |= previous->record_rescan_info;
  entry->in_aggregate_constant_prescan |= previous->in_aggregate_constant_prescan;
}

// Only C++ has temporaries that die at the end of a full expression.
static void push_lifetime_of_full_expression(an_expr_stack_entry *entry, bool force_own_lifetime)
{
  if (long_lifetime_temps && !force_own_lifetime) {
    entry->enclosing_lifetime = curr_object_lifetime;
  } else if (entry->expression_kind > ek_constant) {
    entry->object_lifetime = push_object_lifetime(iek_none, nullptr, olk_expression);
  } else {
    entry->enclosing_lifetime = curr_object_lifetime;
  }
}

void push_expr_stack(an_expression_kind kind, an_expr_stack_entry *entry, bool force_own_lifetime,
                     bool no_lifetime)
{
  memset(entry, 0, sizeof *entry);
  entry->previous = expr_stack;
  entry->expression_kind = kind;
  entry->saved_ref_entries = curr_expr_ref_entries;
  curr_expr_ref_entries = nullptr;
  entry->value_required = true;
  entry->code_is_generated = true;
  entry->scope_number = depth_scope_stack >= 0 ? scope_stack[depth_scope_stack].number : -1;
  entry->record_rescan_info =
      cpp11_sfinae_enabled && kind != ek_preprocessing && in_template_context();
  if (entry->previous != nullptr) inherit_from_previous_entry(entry);
  if (kind < ek_normal) {
    entry->favor_constant_result = true;
    entry->value_required = true;
    entry->code_is_generated = true;
  } else if (kind == ek_unevaluated) {
    entry->value_required = false;
    entry->code_is_generated = false;
    entry->unevaluated = true;
  }
  if (C_dialect == 2 && entry->previous == nullptr && !no_lifetime) {
    push_lifetime_of_full_expression(entry, force_own_lifetime);
  }
  expr_stack = entry;
}

void pop_expr_stack()
{
  an_expr_stack_entry *entry = expr_stack;
  if (entry->object_lifetime != nullptr) pop_object_lifetime();
  flush_ref_entries_except(nullptr, nullptr);
  curr_expr_ref_entries = entry->saved_ref_entries;
  if (entry->rescan_control_block != nullptr && entry->error_was_suppressed) {
    entry->rescan_control_block->failed = true;
  }
  expr_stack = entry->previous;
  if (expr_stack == nullptr) return;
  expr_stack->entity_list_tail = entry->entity_list_tail;
  if (expr_stack->sfinae_context && entry->error_was_suppressed)
    expr_stack->error_was_suppressed = true;
}

static void transfer_context(bool full, an_expr_stack_entry *from, an_expr_stack_entry *to)
{
  to->implicit_reference_marks = from->implicit_reference_marks;
  to->entity_list_head = from->entity_list_head;
  to->entity_list_tail = from->entity_list_tail;
  if (!full) return;
  to->value_required = from->value_required;
  to->code_is_generated = from->code_is_generated;
  to->in_typeof_or_decltype = from->in_typeof_or_decltype;
  to->conditionally_evaluated = from->conditionally_evaluated;
  to->sfinae_context |= from->sfinae_context;
  to->suppress_errors |= from->suppress_errors;
  to->record_rescan_info |= from->record_rescan_info;
  to->in_aggregate_constant_prescan |= from->in_aggregate_constant_prescan;
}

void transfer_context_from_enclosing_expr_stack_entry(bool full, an_expr_stack_entry *old_entry,
                                                      an_expr_stack_entry *new_entry)
{
  if (old_entry == nullptr) return;
  if (full || old_entry->keep_context_across_push) {
    transfer_context(true, old_entry, new_entry);
  } else if (new_entry->rescan_control_block != nullptr) {
    if (new_entry->rescan_control_block == old_entry->rescan_control_block) {
      transfer_context(true, old_entry, new_entry);
    }
  } else if (new_entry->scope_number == old_entry->scope_number && new_entry->scope_number != -1) {
    transfer_context(false, old_entry, new_entry);
  }
}

// -------------------------------------------------------------------------------------------------
// Diagnostics that a trial scan suppresses

bool expr_error_should_be_issued()
{
  if (expr_stack == nullptr || !expr_stack->suppress_errors) return true;
  expr_stack->error_was_suppressed = true;
  return false;
}

bool expr_diagnostic_should_be_issued(an_error_severity severity, an_error_code code)
{
  if (expr_stack == nullptr || !expr_stack->suppress_errors) return true;
  if (is_effective_error(code, severity, error_position)) expr_stack->error_was_suppressed = true;
  return false;
}

bool expr_access_checking_should_be_done()
{
  if (expr_stack == nullptr || !expr_stack->sfinae_context) return true;
  return cpp11_sfinae_enabled && !cpp11_sfinae_ignore_access;
}

void expr_pos_error(an_error_code code, a_source_position pos)
{
  if (expr_error_should_be_issued()) pos_error(code, pos);
}

void expr_pos_warning(an_error_code code, a_source_position pos)
{
  if (expr_diagnostic_should_be_issued(es_warning, code)) pos_warning(code, pos);
}

void expr_pos_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos)
{
  if (expr_diagnostic_should_be_issued(severity, code)) pos_diagnostic(severity, code, pos);
}

void expr_pos_ty_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            a_type *type)
{
  if (expr_diagnostic_should_be_issued(severity, code))
    pos_ty_diagnostic(severity, code, pos, type);
}

void expr_pos_ty2_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                             a_type *type1, a_type *type2)
{
  if (!expr_diagnostic_should_be_issued(severity, code)) return;
  pos_opt_ty2_diagnostic(severity, code, pos, type1, type2);
}

void expr_pos_sy_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            a_symbol *symbol)
{
  if (expr_diagnostic_should_be_issued(severity, code))
    pos_sy_diagnostic(severity, code, pos, symbol);
}

void expr_pos_st_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            const char *text)
{
  if (expr_diagnostic_should_be_issued(severity, code))
    pos_st_diagnostic(severity, code, pos, text);
}

// -------------------------------------------------------------------------------------------------
// References

// Uses of these kinds are told apart (read, written, address taken) only when the operand is
// consumed.
static bool reference_is_classified_later(a_symbol *symbol)
{
  switch (symbol->kind) {
  case sk_constant:
  case sk_variable:
  case sk_field:
  case sk_static_data_member:
  case sk_member_function:
  case sk_routine:
  case sk_overloaded_function: return true;
  default: return false;
  }
}

a_ref_entry *ref_entry(a_symbol *symbol, a_source_position pos)
{
  bool evaluated = expr_stack == nullptr || expr_stack->code_is_generated;
  unsigned kind =
      expr_stack != nullptr && expr_stack->implicit_reference_marks ? rk_implicit_plain : rk_plain;
  if (expr_stack == nullptr || !evaluated || !reference_is_classified_later(symbol)) {
    record_symbol_reference(kind, symbol, &pos, evaluated);
    return nullptr;
  }
  a_ref_entry *entry = avail_ref_entries;
  if (entry != nullptr) {
    avail_ref_entries = entry->next_in_expression;
  } else {
    entry = (a_ref_entry *)alloc_in_region(0, sizeof(a_ref_entry));
  }
  entry->ref_kind = kind;
  entry->recorded = false;
  entry->is_kept = false;
  entry->symbol = symbol;
  entry->source_corresp = source_corresp_entry_for_symbol(symbol);
  entry->position = pos;
  entry->next_in_operand = nullptr;
  entry->next_in_expression = curr_expr_ref_entries;
  curr_expr_ref_entries = entry;
  return entry;
}

void add_ref_entry_to_operand(a_ref_entry *entry, an_operand *operand)
{
  if (entry == nullptr) return;
  if (operand->last_ref_entry == nullptr) {
    operand->ref_entries = entry;
  } else {
    operand->last_ref_entry->next_in_operand = entry;
  }
  operand->last_ref_entry = entry;
}

// "Address taken" is a property of the variable too: register variables of C may not have it.
static void note_address_taken(a_ref_entry *entry)
{
  if (entry->symbol->kind != sk_variable && entry->symbol->kind != sk_static_data_member) return;
  a_variable *variable = variable_of_symbol(entry->symbol);
  if (variable == nullptr) return;
  bool is_register =
      C_dialect != 2 && variable->declared_register && variable->storage_class == sc_register;
  if (is_register && !is_array_type(variable->type)) {
    if (SVR4_C_mode && !(strict_ansi_mode && strict_ansi_error_severity >= es_error)) {
      expr_pos_warning(ec_address_of_register_variable, entry->position);
      variable->storage_class = sc_auto;
    } else {
      expr_pos_error(ec_address_of_register_variable, entry->position);
    }
  }
  set_variable_address_taken(variable);
}

void change_ref_kinds(a_ref_entry *entries, unsigned kind)
{
  for (a_ref_entry *entry = entries; entry != nullptr; entry = entry->next_in_operand) {
    entry->ref_kind = (entry->ref_kind & ~(unsigned)rk_classification_mask) | kind;
    if (kind == rk_address_taken) note_address_taken(entry);
  }
}

void change_some_ref_kinds(a_ref_entry *entries, unsigned from_kind, unsigned kind)
{
  for (a_ref_entry *entry = entries; entry != nullptr; entry = entry->next_in_operand) {
    bool unclassified = (entry->ref_kind & rk_classification_mask) == 0;
    if (from_kind == rk_plain ? !unclassified : (entry->ref_kind & from_kind) == 0) continue;
    entry->ref_kind = (entry->ref_kind & ~(unsigned)rk_classification_mask) | kind;
    if (kind == rk_address_taken) note_address_taken(entry);
  }
}

void change_operand_refs_to_error(an_operand *operand)
{
  change_ref_kinds(operand->ref_entries, rk_error);
}

void operand_will_not_be_used_because_of_error(an_operand *operand)
{
  change_operand_refs_to_error(operand);
}

static void record_ref_entry(a_ref_entry *entry)
{
  if (entry->recorded || (entry->ref_kind & rk_error) != 0) return;
  entry->recorded = true;
  record_symbol_reference(entry->ref_kind, entry->symbol, &entry->position, true);
}

static void mark_kept(a_ref_entry *entries, bool is_kept)
{
  for (a_ref_entry *entry = entries; entry != nullptr; entry = entry->next_in_operand)
    entry->is_kept = is_kept;
}

// Reads are recorded before writes: in `x = x + 1` the value is used before it is set.
void flush_ref_entries_except(a_ref_entry *result, a_ref_entry *selector)
{
  if (curr_expr_ref_entries == nullptr) return;
  mark_kept(result, true);
  mark_kept(selector, true);
  // The list holds the newest entry first; reversing it gives the order of the source.
  a_ref_entry *in_order = nullptr;
  while (curr_expr_ref_entries != nullptr) {
    a_ref_entry *entry = curr_expr_ref_entries;
    curr_expr_ref_entries = entry->next_in_expression;
    entry->next_in_expression = in_order;
    in_order = entry;
  }
  for (a_ref_entry *entry = in_order; entry != nullptr; entry = entry->next_in_expression) {
    if (!entry->is_kept && (entry->ref_kind & rk_modified) == 0) record_ref_entry(entry);
  }
  while (in_order != nullptr) {
    a_ref_entry *entry = in_order;
    in_order = entry->next_in_expression;
    if (entry->is_kept) {
      entry->next_in_expression = curr_expr_ref_entries;
      curr_expr_ref_entries = entry;
    } else {
      record_ref_entry(entry);
      entry->next_in_expression = avail_ref_entries;
      avail_ref_entries = entry;
    }
  }
  mark_kept(result, false);
  mark_kept(selector, false);
}

void record_entity_defined_in_expression(an_il_entry_kind kind, void *entity)
{
  if (expr_stack == nullptr || expr_stack->entity_list_head == nullptr) return;
  an_il_entity_list_entry *entry = alloc_il_entity_list_entry(kind, entity);
  expr_stack->entity_list_tail->next = entry;
  expr_stack->entity_list_tail = entry;
}

// -------------------------------------------------------------------------------------------------
// Expression cache: operands that were scanned before their context was known

void add_operand_to_expression_cache(an_operand *operand, bool at_head, bool take_lifetime,
                                     an_expression_cache *cache)
{
  a_cached_operand *entry = avail_cached_operands;
  if (entry != nullptr) {
    avail_cached_operands = entry->next;
  } else {
    entry = (a_cached_operand *)alloc_in_region(0, sizeof(a_cached_operand));
  }
  entry->operand = *operand;
  entry->object_lifetime = nullptr;
  if (take_lifetime && expr_stack->object_lifetime != nullptr) {
    entry->object_lifetime = expr_stack->object_lifetime;
    expr_stack->object_lifetime = nullptr;
  }
  if (at_head) {
    entry->next = cache->first;
    cache->first = entry;
    if (cache->last == nullptr) cache->last = entry;
  } else {
    entry->next = nullptr;
    if (cache->last == nullptr)
      cache->first = entry;
    else
      cache->last->next = entry;
    cache->last = entry;
  }
}

void fetch_operand_from_expression_cache(an_operand *operand)
{
  an_expression_cache *cache = expr_stack->expression_cache;
  a_cached_operand *entry = cache->first;
  check(entry != nullptr);
  cache->first = entry->next;
  if (cache->first == nullptr) cache->last = nullptr;
  *operand = entry->operand;
  if (entry->object_lifetime != nullptr) expr_stack->object_lifetime = entry->object_lifetime;
  entry->next = avail_cached_operands;
  avail_cached_operands = entry;
}

void free_expression_cache(an_expression_cache *cache)
{
  while (cache->first != nullptr) {
    a_cached_operand *entry = cache->first;
    cache->first = entry->next;
    entry->next = avail_cached_operands;
    avail_cached_operands = entry;
  }
  cache->last = nullptr;
}

// -------------------------------------------------------------------------------------------------

void exprutil_one_time_init()
{
  f_register_trans_unit_variable(&expr_stack, sizeof expr_stack, 0);
  f_register_trans_unit_variable(&curr_expr_ref_entries, sizeof curr_expr_ref_entries, 0);
  f_register_trans_unit_variable(&avail_ref_entries, sizeof avail_ref_entries, 0);
  f_register_trans_unit_variable(&avail_cached_operands, sizeof avail_cached_operands, 0);
}

void exprutil_init()
{
  avail_ref_entries = nullptr;
  avail_cached_operands = nullptr;
}

void exprutil_trans_unit_init()
{
  expr_stack = nullptr;
  curr_expr_ref_entries = nullptr;
}
