// pragma_handlers.cpp - pragmas of the language standard and of GNU.
// Owns:    the stack of default visibilities.
// Entry:   check_for_stdc_pragmas, gcc_pragma.
// See:     C99 6.10.6, 7.12.2, 7.6.1, 7.3.4.
#include "lex/pragma_handlers.h"

#include <cstring>

#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

unsigned curr_max_member_alignment;
a_pack_alignment_state *pack_alignment_stack;
unsigned char curr_default_ELF_visibility;

struct a_visibility_stack_entry {
  a_visibility_stack_entry *next;
  unsigned char saved_visibility;
};
static a_visibility_stack_entry *visibility_stack, *avail_visibility_entries;

//---------------------------------------------------------------------------------------------
// STDC
//---------------------------------------------------------------------------------------------

static const char *curr_identifier()
{
  return curr_token == tok_identifier ? locator_for_curr_id.header->identifier : "";
}

static an_stdc_pragma_kind stdc_pragma_kind(const char *name)
{
  if (strcmp(name, "FP_CONTRACT") == 0) return stdck_fp_contract;
  if (strcmp(name, "FENV_ACCESS") == 0) return stdck_fenv_access;
  if (strcmp(name, "CX_LIMITED_RANGE") == 0) return stdck_cx_limited_range;
  return stdck_none;
}

static an_stdc_pragma_state stdc_pragma_setting(const char *name)
{
  if (strcmp(name, "ON") == 0) return sps_on;
  if (strcmp(name, "OFF") == 0) return sps_off;
  if (strcmp(name, "DEFAULT") == 0) return sps_default;
  return sps_none;
}

// Reads name and setting; false after a complaint.
static bool scan_stdc_pragma(an_stdc_pragma_kind *kind, an_stdc_pragma_state *setting)
{
  *kind = stdc_pragma_kind(curr_identifier());
  if (*kind == stdck_none) {
    pos_diagnostic(strict_ansi_error_severity, ec_unrecognized_stdc_pragma, pos_curr_token);
    return false;
  }
  get_token();
  *setting = stdc_pragma_setting(curr_identifier());
  if (*setting == sps_none) {
    pos_diagnostic(strict_ansi_error_severity, ec_bad_stdc_pragma_arg, pos_curr_token);
    return false;
  }
  get_token();
  return true;
}

static void apply_stdc_setting(an_stdc_pragma_kind kind, an_stdc_pragma_state setting)
{
  switch (kind) {
  case stdck_fp_contract: curr_fp_contract_state = setting; break;
  case stdck_fenv_access: curr_fenv_access_state = setting; break;
  case stdck_cx_limited_range: curr_cx_limited_range_state = setting; break;
  case stdck_none: break;
  }
}

static void proc_stdc_pragma(a_pending_pragma *pragma)
{
  an_stdc_pragma_kind kind;
  an_stdc_pragma_state setting;
  begin_rescan_of_pragma_tokens(pragma);
  bool good = scan_stdc_pragma(&kind, &setting);
  wrapup_rescan_of_pragma_tokens(!good);
  if (!good) return;
  create_il_entry_for_pragma(pragma, nullptr, nullptr);
  if (pragma->il_pragma != nullptr) {
    pragma->il_pragma->stdc_pragma = kind;
    pragma->il_pragma->stdc_setting = setting;
  }
  apply_stdc_setting(kind, setting);
}

void check_for_stdc_pragmas()
{
  a_pending_pragma **link = &curr_token_pragmas;
  while (*link != nullptr) {
    a_pending_pragma *pragma = *link;
    if (pragma->description->kind != pragk_stdc) {
      link = &pragma->next;
      continue;
    }
    *link = pragma->next;
    a_pending_pragma *rest = curr_token_pragmas;
    curr_token_pragmas = nullptr;
    proc_stdc_pragma(pragma);
    free_pending_pragma(pragma);
    curr_token_pragmas = rest;
    if (rest != nullptr) {
      rest->near_end = nullptr;
      any_initial_get_token_tests_needed = true;
    }
    link = &curr_token_pragmas;
  }
}

// One that wasn't taken where a declaration begins.
void stdc_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  pos_diagnostic(strict_ansi_error_severity, ec_stdc_pragma_not_allowed_here, pragma->position);
}

//---------------------------------------------------------------------------------------------
// GCC
//---------------------------------------------------------------------------------------------

void push_ELF_visibility(unsigned char visibility)
{
  a_visibility_stack_entry *entry = avail_visibility_entries;
  if (entry != nullptr) {
    avail_visibility_entries = entry->next;
  } else {
    entry = (a_visibility_stack_entry *)alloc_in_region(0, sizeof *entry);
  }
  entry->saved_visibility = curr_default_ELF_visibility;
  entry->next = visibility_stack;
  visibility_stack = entry;
  curr_default_ELF_visibility = visibility;
}

bool pop_ELF_visibility()
{
  a_visibility_stack_entry *entry = visibility_stack;
  if (entry == nullptr) return false;
  visibility_stack = entry->next;
  curr_default_ELF_visibility = entry->saved_visibility;
  entry->next = avail_visibility_entries;
  avail_visibility_entries = entry;
  return true;
}

// Behind "visibility push".
static bool scan_visibility_push()
{
  get_token();
  if (curr_token != tok_lparen) {
    pos_warning(ec_exp_lparen, pos_curr_token);
    return false;
  }
  get_token();
  // "default" is a keyword elsewhere, but not in the tokens of a pragma.
  an_elf_visibility visibility = ELF_visibility_from_string(curr_identifier());
  if (visibility == vis_unspecified) {
    pos_warning(ec_unrecognized_visibility, pos_curr_token);
    return false;
  }
  get_token();
  push_ELF_visibility(visibility);
  if (curr_token != tok_rparen) {
    pos_warning(ec_exp_rparen, pos_curr_token);
    return false;
  }
  get_token();
  return true;
}

static bool scan_visibility_pragma()
{
  get_token();
  const char *word = curr_identifier();
  if (strcmp(word, "push") == 0) return scan_visibility_push();
  if (strcmp(word, "pop") != 0) {
    pos_warning(ec_unrecognized_gcc_visibility_pragma, pos_curr_token);
    return false;
  }
  if (!pop_ELF_visibility()) pos_warning(ec_ELF_visibility_stack_empty, pos_curr_token);
  get_token();
  return true;
}

void gcc_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  begin_rescan_of_pragma_tokens(pragma);
  bool good = false;
  if (strcmp(curr_identifier(), "visibility") == 0) {
    good = scan_visibility_pragma();
    if (good && curr_token != tok_end_of_source) {
      pos_warning(ec_extra_text_in_pp_directive, pos_curr_token);
    }
  } else {
    pos_warning(ec_unrecognized_gcc_pragma, pos_curr_token);
  }
  wrapup_rescan_of_pragma_tokens(true);
}

// The calls of the function are checked against the format in its last parameter before the ellipsis.
void record_arg_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *)
{
  if (symbol == nullptr || symbol->kind != sk_routine) return;
  a_routine *routine = routine_of_symbol(symbol);
  if (pragma->description->kind == pragk_printf_args)
    routine->checks_printf_args = true;
  else
    routine->checks_scanf_args = true;
}

//---------------------------------------------------------------------------------------------
// Pragmas whose modules aren't there yet: the record stays without effect.
//---------------------------------------------------------------------------------------------

void instantiation_pragma(a_pending_pragma *, a_symbol *, a_statement *)
{
}

void define_type_info_pragma(a_pending_pragma *, a_symbol *, a_statement *)
{
}

void omp_pragma(a_pending_pragma *, a_symbol *, a_statement *)
{
}
