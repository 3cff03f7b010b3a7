// pragma.cpp - pragmas: the table of what this run knows, reading the line, the records.
// Owns:    pragma_kind_descriptions, the free list of pending pragmas.
// Uses:    token caches; what binds a pragma to constructs and scopes is in parse/pragma_binding.cpp.
// Rule:    a pragma is read where it stands, and acts when its phase says so.
// Entry:   look_up_pragma_id, record_pragma, process_immediate_pragmas.
// See:     C99 6.10.6, 6.10.9.
#include "lex/pragma.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "lex/cached_token.h"
#include "lex/lexical.h"
#include "lex/pragma_handlers.h"
#include "lex/preproc.h"
#include "lex/source_input.h"
#include "mem/check.h"
#include "mem/mem_manage.h"

a_pragma_kind_description *pragma_kind_descriptions;
a_pragma_kind_description *pragma_description_for_pragma_kind[pragk_last];

const char *const pragma_ids[pragk_last] = {
#define PRAGMA_ID(kind, name) name,
#include "lex/pragmas.def"
};

a_target_pragma_handlers target_pragma_handlers;

static a_pending_pragma *avail_pending_pragmas;
static a_text_buffer *pragma_text_buffer;
static bool immediate_pragma_waits; // in curr_token_pragmas

//---------------------------------------------------------------------------------------------
// Records
//---------------------------------------------------------------------------------------------

a_pending_pragma *alloc_pending_pragma(a_pragma_kind_description *description)
{
  a_pending_pragma *pragma = avail_pending_pragmas;
  if (pragma != nullptr) {
    avail_pending_pragmas = pragma->next;
  } else {
    pragma = (a_pending_pragma *)alloc_in_region(0, sizeof *pragma);
  }
  memset((void *)pragma, 0, sizeof *pragma);
  pragma->description = description;
  clear_token_cache(&pragma->tokens, true);
  return pragma;
}

void free_pending_pragma(a_pending_pragma *pragma)
{
  if (pragma->owns_tokens) discard_token_cache(&pragma->tokens);
  pragma->next = avail_pending_pragmas;
  avail_pending_pragmas = pragma;
}

void free_pending_pragma_list(a_pending_pragma *list)
{
  while (list != nullptr) {
    a_pending_pragma *next = list->next;
    free_pending_pragma(list);
    list = next;
  }
}

// The copies share the tokens of the originals, which own them.
a_pending_pragma *make_copy_of_pragma_list(a_pending_pragma *list)
{
  a_pending_pragma *copies = nullptr;
  a_pending_pragma **link = &copies;
  for (; list != nullptr; list = list->next) {
    a_pending_pragma *copy = alloc_pending_pragma(list->description);
    a_pending_pragma *free_link = copy->next;
    *copy = *list;
    copy->next = free_link;
    copy->owns_tokens = true;
    copy->near_end = nullptr;
    clear_token_cache(&copy->tokens, true);
    copy_tokens_from_cache(&list->tokens, 0, ~0u, true, &copy->tokens);
    copy->next = nullptr;
    *link = copy;
    link = &copy->next;
  }
  return copies;
}

static void append_to_curr_token_pragmas(a_pending_pragma *pragma)
{
  a_pending_pragma *head = curr_token_pragmas;
  a_pending_pragma **link =
      head != nullptr && head->near_end != nullptr ? &head->near_end->next : &curr_token_pragmas;
  while (*link != nullptr)
    link = &(*link)->next;
  pragma->next = nullptr;
  *link = pragma;
  curr_token_pragmas->near_end = pragma;
  if (pragma->description->phase == pragma_immediate) immediate_pragma_waits = true;
  any_initial_get_token_tests_needed = true;
}

void add_curr_token_pseudo_pragma(a_pragma_kind_tag kind, a_source_position position,
                                  unsigned count)
{
  a_pragma_kind_description *description = pragma_description_for_pragma_kind[kind];
  if (description == nullptr || do_preprocessing_only) return;
  a_pending_pragma *pragma = alloc_pending_pragma(description);
  pragma->position = pragma->directive_position = position;
  pragma->varargs_count = count;
  append_to_curr_token_pragmas(pragma);
}

//---------------------------------------------------------------------------------------------
// Reading
//---------------------------------------------------------------------------------------------

a_pragma_kind_description *look_up_pragma_id(a_source_position *position)
{
  get_token();
  *position = pos_curr_token;
  if (curr_token != tok_identifier) return nullptr;
  if (variadic_macros_allowed && len_of_curr_token == 11 &&
      memcmp(start_of_curr_token, "__VA_ARGS__", 11) == 0) {
    pos_error(ec_VA_ARGS_not_allowed, pos_curr_token);
  }
  a_pragma_kind_description *description = pragma_kind_descriptions;
  for (; description != nullptr; description = description->next) {
    const char *name = pragma_ids[description->kind];
    if (strlen(name) == len_of_curr_token &&
        memcmp(name, start_of_curr_token, len_of_curr_token) == 0) {
      return description;
    }
  }
  return nullptr;
}

// The modes of reading, which differ by pragma.
struct a_pragma_reading {
  a_pragma_kind_description *description;
  bool from_operator;
  int open_parens;
  bool saved_expand_macros, saved_fetch_pp_tokens, saved_in_directive;
  bool saved_concatenation, saved_exp_header_name;
};

static bool has_flag(const a_pragma_reading *reading, a_pragma_flag flag)
{
  return (reading->description->flags & flag) != 0;
}

static void set_pragma_modes(a_pragma_reading *reading)
{
  reading->saved_expand_macros = expand_macros;
  reading->saved_fetch_pp_tokens = fetch_pp_tokens;
  reading->saved_in_directive = in_preprocessing_directive;
  reading->saved_concatenation = do_string_literal_concatenation;
  reading->saved_exp_header_name = exp_header_name;
  expand_macros = has_flag(reading, prf_expand_macros);
  fetch_pp_tokens = has_flag(reading, prf_raw_pp_tokens);
  in_preprocessing_directive = true;
  caching_pragma_tokens = true;
  recognize_keywords_in_pragma = do_string_literal_concatenation = has_flag(reading, prf_keywords);
  exp_header_name = (reading->description->flags2 & prf2_header_name) != 0;
}

static void restore_pragma_modes(const a_pragma_reading *reading)
{
  expand_macros = reading->saved_expand_macros;
  fetch_pp_tokens = reading->saved_fetch_pp_tokens;
  in_preprocessing_directive = reading->saved_in_directive;
  do_string_literal_concatenation = reading->saved_concatenation;
  exp_header_name = reading->saved_exp_header_name;
  caching_pragma_tokens = recognize_keywords_in_pragma = false;
}

// The text of a _Pragma ends where its string ends; it stands in a replacement text of its own.
static bool at_end_of_pragma()
{
  return curr_token == tok_newline || curr_token == tok_end_of_source;
}

// Reads the tokens as one string, with a blank where white space stood.
static const char *read_pragma_text(a_pragma_reading *reading)
{
  if (pragma_text_buffer == nullptr) pragma_text_buffer = alloc_text_buffer(300);
  reset_text_buffer(pragma_text_buffer);
  set_pragma_modes(reading);
  fetch_pp_tokens = true;
  for (get_token(); !at_end_of_pragma(); get_token()) {
    if (kind_of_white_space_skipped != 0 && pragma_text_buffer->size > 0) {
      add_char_to_text_buffer(pragma_text_buffer, ' ');
    }
    add_to_text_buffer(pragma_text_buffer, start_of_curr_token, len_of_curr_token);
  }
  restore_pragma_modes(reading);
  add_char_to_text_buffer(pragma_text_buffer, '\0');
  return copy_string_to_region(true, pragma_text_buffer->buffer);
}

static void read_pragma_tokens(a_pragma_reading *reading, a_pending_pragma *pragma)
{
  a_pending_pragma *waiting = curr_token_pragmas;
  curr_token_pragmas = nullptr; // they belong to the token behind the line
  set_pragma_modes(reading);
  for (get_token(); !at_end_of_pragma(); get_token())
    cache_curr_token(&pragma->tokens);
  terminate_token_cache(&pragma->tokens);
  restore_pragma_modes(reading);
  curr_token_pragmas = waiting;
  pragma->owns_tokens = true;
  if (has_flag(reading, prf_text_form)) {
    if (temp_text_buffer != nullptr) reset_text_buffer(temp_text_buffer);
    add_token_cache_to_string(&pragma->tokens);
    add_char_to_text_buffer(temp_text_buffer, '\0');
    pragma->text = copy_string_to_region(true, temp_text_buffer->buffer);
  }
}

static void skip_pragma()
{
  while (!at_end_of_pragma())
    get_token();
}

// The pragma was read inside its directive and acts at once.
static void run_pragma_at_directive(a_pending_pragma *pragma)
{
  a_pragma_kind_description *description = pragma->description;
  if (description->handler != nullptr) description->handler(pragma, nullptr, nullptr);
  if ((description->flags & prf_add_to_il) != 0) {
    add_pragma_to_il(pragma, iek_none, nullptr, true);
  }
  free_pending_pragma(pragma);
}

void record_pragma(a_pragma_kind_description *description,
                   const a_source_position *pos_of_directive, const a_source_position *pos_of_name,
                   bool from_operator)
{
  if (description == nullptr ||
      (do_preprocessing_only && description->phase != pragma_at_directive)) {
    if (description == nullptr && !do_preprocessing_only) {
      pos_warning(ec_unrecognized_pragma, *pos_of_name);
    }
    skip_pragma();
    return;
  }
  if (from_operator && description->phase == pragma_at_directive &&
      !(description->flags2 & prf2_in_operator)) {
    pos_error(ec_invalid_pragma_operator, *pos_of_name);
    skip_pragma();
    return;
  }
  a_pragma_reading reading = {};
  reading.description = description;
  reading.from_operator = from_operator;
  a_pending_pragma *pragma = alloc_pending_pragma(description);
  pragma->position = *pos_of_name;
  pragma->directive_position = *pos_of_directive;
  pragma->from_operator = from_operator;
  bool at_directive = description->phase == pragma_at_directive;
  if (has_flag(&reading, prf_raw_pp_tokens)) {
    pragma->text = read_pragma_text(&reading);
  } else {
    read_pragma_tokens(&reading, pragma);
  }
  if (at_directive) {
    run_pragma_at_directive(pragma);
  } else {
    append_to_curr_token_pragmas(pragma);
  }
}

//---------------------------------------------------------------------------------------------
// Immediate pragmas
//---------------------------------------------------------------------------------------------

void process_immediate_pragmas()
{
  if (!immediate_pragma_waits) return; // each acts behind its own directive, before it can be moved
  immediate_pragma_waits = false;
  a_pending_pragma **link = &curr_token_pragmas;
  while (*link != nullptr) {
    a_pending_pragma *pragma = *link;
    if (pragma->description->phase != pragma_immediate || pragma->already_processed) {
      link = &pragma->next;
      continue;
    }
    *link = pragma->next;
    a_pending_pragma *rest = curr_token_pragmas;
    if (rest != nullptr) rest->near_end = nullptr;
    curr_token_pragmas = nullptr; // the handler's tokens are not those that the others wait for
    if ((pragma->description->flags & prf_add_to_il) != 0) {
      add_pragma_to_il(pragma, iek_none, nullptr, false);
    }
    if (pragma->description->handler != nullptr) {
      pragma->description->handler(pragma, nullptr, nullptr);
    }
    free_pending_pragma(pragma);
    curr_token_pragmas = rest;
    link = &curr_token_pragmas;
  }
  any_initial_get_token_tests_needed = curr_token_pragmas != nullptr ||
                                       cached_tokens_to_deliver != nullptr ||
                                       reusable_cache_stack != nullptr;
}

//---------------------------------------------------------------------------------------------
// The table
//---------------------------------------------------------------------------------------------

static void enter_pragma(a_pragma_kind_description description)
{
  a_pragma_kind_description *entry = (a_pragma_kind_description *)alloc_in_region(0, sizeof *entry);
  *entry = description;
  pragma_description_for_pragma_kind[entry->kind] = entry;
  bool comment_form = (entry->flags2 & prf2_comment_form) != 0;
  if (comment_form) return; // reached by kind only
  entry->next = pragma_kind_descriptions;
  pragma_kind_descriptions = entry;
}

// How the pragmas of the target are used: what their rows in pragmas.def say in short.
enum a_target_pragma_form : unsigned char {
  tpf_symbol,  // C: names its symbol, taken at the scope's end; C++: stands before the declaration
  tpf_c_only,  // the same without a C++ form
  tpf_literal, // names nothing: literals that are carried through
  tpf_set_section, // acts on all that follows
  tpf_loop,        // stands before a loop
  tpf_misra,       // changes the checker's rules from here on
  tpf_ulp,
  tpf_info, // carried through as text
};

static constexpr unsigned char macros_and_keywords = prf_expand_macros | prf_keywords;

static void enter_target_pragma(a_pragma_kind_tag kind, a_target_pragma_form form)
{
  a_pragma_kind_description row = {nullptr,    kind,   pragma_end_of_scope, macros_and_keywords, 0,
                                   es_warning, nullptr};
  switch (form) {
  case tpf_c_only:
    if (C_dialect == 2) return;
    row.flags |= prf_il_at_file_scope;
    break;
  case tpf_symbol:
    if (C_dialect == 2) {
      row.phase = pragma_curr_construct;
      row.flags |= prf_declaration;
      row.handler = process_cpp_pragma;
    } else {
      row.flags |= prf_il_at_file_scope;
    }
    break;
  case tpf_literal: row.flags |= prf_il_at_file_scope; break;
  case tpf_loop:
    row.phase = pragma_curr_construct;
    row.flags |= prf_statement;
    row.handler = process_cpp_pragma;
    break;
  case tpf_set_section:
    row.phase = pragma_at_directive;
    row.flags2 = prf2_in_operator;
    row.misplaced_severity = es_none;
    row.handler = process_set_section_pragma;
    break;
  case tpf_misra:
  case tpf_ulp:
    row.phase = pragma_immediate;
    row.misplaced_severity = es_error;
    row.handler =
        form == tpf_misra ? target_pragma_handlers.pragma_misra_action : pragma_ulp_action;
    break;
  case tpf_info:
    row.flags = prf_text_form;
    row.misplaced_severity = es_none;
    break;
  }
  enter_pragma(row);
}

void pragma_one_time_init()
{
  avail_pending_pragmas = nullptr;
  immediate_pragma_waits = false;
}

void pragma_init()
{
  pragma_kind_descriptions = nullptr;
  for (a_pragma_kind_description *&entry : pragma_description_for_pragma_kind)
    entry = nullptr;
#define PRAGMA(condition, kind, phase, handler, flags, flags2, severity)                           \
  if (condition) {                                                                                 \
    enter_pragma({nullptr, kind, phase, flags, flags2, severity, handler});                        \
  }
#include "lex/pragmas.def"
#define TARGET_PRAGMA(kind, form, handler) enter_target_pragma(kind, form);
#include "lex/pragmas.def"
}
