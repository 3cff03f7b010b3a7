// pragma_binding.cpp - pragmas meet what they concern: tokens, constructs, scopes, IL entries.
// Owns:    the pragma lists of the scope stack's entries.
// Uses:    pending pragmas (lex/pragma.h).
// Rule:    a pragma that finds no construct of its kind is reported at its row's severity and dropped.
// Entry:   process_curr_token_pragmas, select_curr_construct_pragmas, process_curr_construct_pragmas.
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

//---------------------------------------------------------------------------------------------
// Lists
//---------------------------------------------------------------------------------------------

static a_pending_pragma **end_of_list(a_pending_pragma **list)
{
  while (*list != nullptr)
    list = &(*list)->next;
  return list;
}

static void append_pragmas(a_pending_pragma **list, a_pending_pragma *pragmas)
{
  *end_of_list(list) = pragmas;
}

// Those that wait for the next construct of the current scope.
static a_pending_pragma **construct_pragmas()
{
  return &top_scope()->pending_pragma_list;
}

static void complain(const a_pending_pragma *pragma, an_error_code code)
{
  an_error_severity severity = pragma->description->misplaced_severity;
  if (severity != es_none) pos_diagnostic(severity, code, pragma->position);
}

// What the pragma has to stand in front of.
static an_error_code misplacement_code(const a_pending_pragma *pragma)
{
  switch (pragma->description->flags & (prf_declaration | prf_statement)) {
  case prf_declaration: return ec_pragma_must_precede_declaration;
  case prf_statement: return ec_pragma_must_precede_statement;
  default: return ec_pragma_must_precede_decl_or_stmt;
  }
}

static void call_handler(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)
{
  a_pragma_handler *handler = pragma->description->handler;
  if (handler != nullptr) handler(pragma, symbol, statement);
}

static bool is_added_to_il(const a_pending_pragma *pragma)
{
  return (pragma->description->flags & prf_add_to_il) != 0;
}

static bool il_at_file_scope(const a_pending_pragma *pragma)
{
  return (pragma->description->flags & prf_il_at_file_scope) != 0;
}

//---------------------------------------------------------------------------------------------
// At a token
//---------------------------------------------------------------------------------------------

// Returns true if the scope is to keep the pragma.
static bool process_token_pragma(a_pending_pragma *pragma)
{
  switch (pragma->description->phase) {
  case pragma_curr_construct: complain(pragma, misplacement_code(pragma)); return false;
  case pragma_immediate:
    if (pragma->already_processed) return false;
    break;
  case pragma_curr_token: break;
  case pragma_end_of_scope: return depth_scope_stack >= 0;
  case pragma_no_phase:
  case pragma_at_directive: return false;
  }
  if (is_added_to_il(pragma)) add_pragma_to_il(pragma, iek_none, nullptr, il_at_file_scope(pragma));
  call_handler(pragma, nullptr, nullptr);
  return false;
}

void process_curr_token_pragmas()
{
  a_pending_pragma *list = curr_token_pragmas;
  a_pending_pragma *kept = nullptr;
  a_pending_pragma **end = &kept;
  curr_token_pragmas = nullptr;
  while (list != nullptr) {
    a_pending_pragma *pragma = list;
    list = pragma->next;
    pragma->next = nullptr;
    if (process_token_pragma(pragma)) {
      *end = pragma;
      end = &pragma->next;
    } else {
      free_pending_pragma(pragma);
    }
  }
  if (kept != nullptr) append_pragmas(&top_scope()->pending_pragmas, kept);
}

//---------------------------------------------------------------------------------------------
// Before and after a construct
//---------------------------------------------------------------------------------------------

bool select_curr_construct_pragmas(bool keep)
{
  if (depth_scope_stack < 0) return false;
  if (!keep && total_errors > 0) discard_curr_construct_pragmas();
  if (curr_token_pragmas != nullptr) {
    a_pending_pragma **link = &curr_token_pragmas;
    a_pending_pragma **end = end_of_list(construct_pragmas());
    while (*link != nullptr) {
      a_pending_pragma *pragma = *link;
      if (pragma->description->phase != pragma_curr_construct) {
        link = &pragma->next;
        continue;
      }
      *link = pragma->next;
      pragma->next = nullptr;
      *end = pragma;
      end = &pragma->next;
    }
    if (curr_token_pragmas != nullptr) {
      curr_token_pragmas->near_end = nullptr;
      process_curr_token_pragmas();
    }
  }
  return *construct_pragmas() != nullptr;
}

static void bind_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)
{
  unsigned char flags = pragma->description->flags;
  bool fits = ((flags & prf_declaration) != 0 && symbol != nullptr) ||
              ((flags & prf_statement) != 0 && statement != nullptr);
  if (!fits) {
    complain(pragma, flags & prf_declaration ? ec_pragma_must_precede_declaration
                                             : ec_pragma_must_precede_statement);
    return;
  }
  if (is_added_to_il(pragma)) create_il_entry_for_pragma(pragma, symbol, statement);
  call_handler(pragma, symbol, statement);
}

void process_curr_construct_pragmas(a_symbol *symbol, a_statement *statement)
{
  a_pending_pragma *list = extract_curr_construct_pragmas();
  while (list != nullptr) {
    a_pending_pragma *pragma = list;
    list = pragma->next;
    bind_pragma(pragma, symbol, statement);
    free_pending_pragma(pragma);
  }
}

a_pending_pragma *extract_curr_construct_pragmas()
{
  if (depth_scope_stack < 0) return nullptr;
  a_pending_pragma *list = *construct_pragmas();
  *construct_pragmas() = nullptr;
  return list;
}

void reactivate_curr_construct_pragmas(a_pending_pragma *list)
{
  append_pragmas(construct_pragmas(), list);
}

void discard_curr_construct_pragmas()
{
  free_pending_pragma_list(extract_curr_construct_pragmas());
}

void end_of_scope_pragma_processing(a_pending_pragma *list)
{
  for (a_pending_pragma *pragma = list; pragma != nullptr; pragma = pragma->next) {
    complain(pragma, ec_pragma_may_not_be_used_here);
  }
  free_pending_pragma_list(list);
}

void cannot_bind_to_curr_construct()
{
  end_of_scope_pragma_processing(extract_curr_construct_pragmas());
}

//---------------------------------------------------------------------------------------------
// By the name of the entity
//---------------------------------------------------------------------------------------------

// Moves the pragmas of the kind from the list to the end of *found.
static void take_pragmas_of_kind(a_pending_pragma **list, a_pragma_kind_tag kind,
                                 a_pending_pragma **found)
{
  while (*list != nullptr) {
    a_pending_pragma *pragma = *list;
    if (pragma->description->kind != kind) {
      list = &pragma->next;
      continue;
    }
    *list = pragma->next;
    pragma->next = nullptr;
    append_pragmas(found, pragma);
  }
}

a_pending_pragma *extract_specific_pragmas(a_pragma_kind_tag kind, a_symbol *symbol,
                                           a_statement *statement, bool this_scope_only)
{
  a_pending_pragma *found = nullptr;
  a_pragma_kind_description *description = pragma_description_for_pragma_kind[kind];
  if (description == nullptr || depth_scope_stack < 0) return nullptr;
  if (description->phase == pragma_curr_construct) {
    take_pragmas_of_kind(construct_pragmas(), kind, &found);
  } else {
    for (int depth = depth_scope_stack; depth >= 0; --depth) {
      take_pragmas_of_kind(&scope_stack[depth].pending_pragmas, kind, &found);
      if (this_scope_only) break;
    }
  }
  for (a_pending_pragma *pragma = found; pragma != nullptr; pragma = pragma->next) {
    if (is_added_to_il(pragma)) create_il_entry_for_pragma(pragma, symbol, statement);
  }
  return found;
}

//---------------------------------------------------------------------------------------------
// IL records
//---------------------------------------------------------------------------------------------

static bool scope_keeps_pragmas(a_scope_kind kind)
{
  switch (kind) {
  case sck_file:
  case sck_namespace:
  case sck_function:
  case sck_block:
  case sck_class: return true;
  default: return false;
  }
}

static int depth_of_pragma_scope(bool at_file_scope)
{
  if (at_file_scope) return 0;
  int depth = depth_scope_stack;
  while (depth > 0 && !scope_keeps_pragmas(scope_stack[depth].kind))
    --depth;
  return depth;
}

// Those of a statement are kept by the statement, in the order of the source, and move with it.
static void add_to_pragmas_of_statement(a_pragma *record, a_statement *statement)
{
  a_pragma **link = &statement->pragmas;
  while (*link != nullptr)
    link = &(*link)->next;
  *link = record;
  statement->has_associated_pragma = true;
}

void add_pragma_to_il(a_pending_pragma *pragma, unsigned char entry_kind, char *entry,
                      bool at_file_scope)
{
  if (depth_scope_stack < 0) return;
  if (top_scope()->in_template_prototype) return;
  bool is_for_statement = entry_kind == iek_statement;
  a_pragma *record = alloc_pragma(pragma->description->kind, entry);
  record->position = pragma->position;
  record->directive_position = pragma->directive_position;
  record->text = pragma->text;
  record->il_flag = (pragma->description->flags2 & prf2_il_flag) != 0;
  record->comment_form = (pragma->description->flags2 & prf2_comment_form) != 0;
  record->entity_kind = (an_il_entry_kind)entry_kind;
  record->entity = entry;
  record->is_bound = entry != nullptr;
  pragma->il_pragma = record;
  if (is_for_statement) {
    add_to_pragmas_of_statement(record, (a_statement *)entry);
    return;
  }
  if (entry != nullptr) {
    // It goes where the entity is: the record of a local one ends with its function.
    a_source_correspondence *corresp = (a_source_correspondence *)entry;
    corresp->assoc_pragmas_present = true;
    at_file_scope = !corresp->is_local;
  }
  add_to_pragma_list(record, depth_of_pragma_scope(at_file_scope));
}

void create_il_entry_for_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)
{
  if (statement != nullptr) {
    add_pragma_to_il(pragma, iek_statement, (char *)statement, false);
    return;
  }
  an_il_entry_kind kind = iek_none;
  void *entry = symbol == nullptr ? nullptr : il_entry_for_symbol_null_okay(symbol, &kind);
  add_pragma_to_il(pragma, kind, (char *)entry, il_at_file_scope(pragma));
}
