// diag_pragma.cpp - the pragmas that change severities of messages from their place on.
// Uses:    severities (errors/error.h).
// Entry:   diag_pragma.
#include <cstring>

#include "consts/const_ints.h"
#include "errors/error.h"
#include "il/il_entities.h"
#include "lex/lexical.h"
#include "lex/pragma.h"
#include "lex/pragma_handlers.h"
#include "parse/symbol_tbl.h"

static an_error_severity severity_of_pragma(a_pragma_kind_tag kind)
{
  switch (kind) {
  case pragk_diag_suppress: return es_none;
  case pragk_diag_remark: return es_remark;
  case pragk_diag_warning: return es_warning;
  case pragk_diag_error: return es_discretionary_error;
  case pragk_diag_once: return es_once;
  default: return es_default;
  }
}

// One element of the list.
static void proc_diag_argument(an_error_severity severity)
{
  a_source_position position = pos_curr_token;
  if (curr_token == tok_int_constant && const_for_curr_token.kind == ck_integer) {
    bool overflow;
    long long number = value_of_integer_constant(&const_for_curr_token, &overflow);
    if (overflow || number < 1 || number > 2611 ||
        set_severity_for_error_number((int)number, severity, &position, false)) {
      pos_warning(ec_invalid_error_number, position);
    }
  } else if (curr_token == tok_identifier) {
    const char *tag = locator_for_curr_id.header->identifier;
    if (set_severity_for_error_tag(tag, severity, &position, false)) {
      pos_st_warning(ec_invalid_error_tag, position, tag);
    }
  } else {
    pos_warning(ec_exp_error_argument, position);
  }
}

void diag_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  an_error_severity severity = severity_of_pragma(pragma->description->kind);
  bool bad_list = false;
  begin_rescan_of_pragma_tokens(pragma);
  if (curr_token == tok_assign) get_token();
  for (;;) {
    proc_diag_argument(severity);
    if (curr_token != tok_end_of_source) get_token();
    if (curr_token == tok_end_of_source) break;
    if (curr_token != tok_comma) {
      pos_warning(ec_exp_comma, pos_curr_token);
      bad_list = true;
      break;
    }
    get_token();
  }
  wrapup_rescan_of_pragma_tokens(bad_list);
}
