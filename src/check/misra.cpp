// misra.cpp - the frame of the MISRA-C:2004 checker.
// Owns:    the diagnostics that wait for a position.
// Uses:    the rules (misra_rules), the table of names (misra_identifiers), the checks of the other
//          misra_ files.
// Entry:   misra_early_init, pragma_misra_action, misra_push_diagnostic, misra_flush_diagnostics.
#include "check/misra.h"
#include <cstring>
#include "driver/flags.h"
#include "errors/error.h"
#include "il/il_exprs.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/token_cache.h"
#include "mem/mem_manage.h"

struct a_deferred_diagnostic {
  an_error_severity severity;
  an_error_code code;
  a_source_position pos;
};

static a_deferred_diagnostic *misra_deferred_diagnostics;
static size_t num_deferred;
static size_t room_for_deferred;
static a_source_position misra_diagnostic_position;

//---------------------------------------------------------------------------------------------
// Diagnostics that wait for a position.

void misra_set_diagnostic_pos(a_source_position pos)
{
  misra_diagnostic_position = pos;
}

void misra_push_diagnostic(an_error_severity severity, an_error_code code,
                           const a_source_position *pos)
{
  if (num_deferred == room_for_deferred) {
    size_t room = room_for_deferred * 2 + 16;
    misra_deferred_diagnostics = reinterpret_cast<a_deferred_diagnostic *>(
        realloc_buffer(reinterpret_cast<char *>(misra_deferred_diagnostics),
                       room_for_deferred * sizeof *misra_deferred_diagnostics,
                       room * sizeof *misra_deferred_diagnostics));
    room_for_deferred = room;
  }
  misra_deferred_diagnostics[num_deferred++] = {severity, code,
                                                pos != nullptr ? *pos : misra_diagnostic_position};
}

bool misra_flush_diagnostics(a_source_position pos)
{
  bool any_error = false;
  for (size_t i = 0; i < num_deferred; ++i) {
    const a_deferred_diagnostic &entry = misra_deferred_diagnostics[i];
    pos_diagnostic(entry.severity, entry.code, is_null_position(entry.pos) ? pos : entry.pos);
    if (entry.severity >= es_error) any_error = true;
  }
  num_deferred = 0;
  return any_error;
}

void misra_drop_diagnostics()
{
  num_deferred = 0;
}

//---------------------------------------------------------------------------------------------
// The command line.

// A fault of a macro of the command line ends the run; a violation of a rule doesn't.
void misra_c_cmdline_macro_diagnostic(an_error_code code, an_error_severity severity)
{
  const char *definition = curr_command_line_macro_def;
  size_t length = strcspn(definition, "=( \t");
  char *text = static_cast<char *>(alloc_general(length + 3));
  memcpy(text, ": ", 2);
  memcpy(text + 2, definition, length);
  text[length + 2] = '\0';
  curr_command_line_macro_def = nullptr;
  misra_command_line_diagnostic(severity, code, text);
  curr_command_line_macro_def = definition;
  free_general(text, length + 3);
}

//---------------------------------------------------------------------------------------------
// Pragmas.

// The rule list in ("...") as text; null if that is not what stands there.
static char *scan_rule_list()
{
  if (curr_token != tok_lparen) return nullptr;
  get_token();
  if (curr_token != tok_string_literal || const_for_curr_token.char_kind != chk_char) {
    return nullptr;
  }
  const a_constant_string &string = string_of(&const_for_curr_token);
  char *text = static_cast<char *>(alloc_in_region(0, string.length));
  memcpy(text, string.text, string.length);
  get_token();
  return text;
}

static void pragma_misra_action(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  if (!check_misra_c_2004) return;
  bool is_reset = pragma->description->kind == pragk_reset_misra;
  bool is_bad = true;
  begin_rescan_of_pragma_tokens(pragma);
  char *list = scan_rule_list();
  if (list != nullptr && curr_token == tok_rparen) {
    process_check_misra(list, &pragma->position, &is_bad, false, is_reset);
    get_token();
  }
  if (is_bad) pos_error(ec_bad_pragma_format, pragma->position);
  wrapup_rescan_of_pragma_tokens(is_bad);
}

//---------------------------------------------------------------------------------------------
// Start and end.

void misra_check_language_version()
{
  diagnostic(misra_required_severity, ec_misra_c_2004_1_1);
  misra_c_2004_set_rules(1, 1, 1, 1, nullptr, false, false, false, true, false); // once is enough
}

void misra_early_init()
{
  misra_hooks = {
#define HOOK(result, name, parameters) name,
#include "errors/misra_hooks.def"
  };
  target_pragma_handlers.pragma_misra_action = pragma_misra_action;
  misra_c_2004_set_rules(0, 20, 0, 17, nullptr, true, false, false, true, true);
}
