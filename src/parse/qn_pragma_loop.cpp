// qn_pragma_loop.cpp - pragmas of the target in front of loops, and those that are only carried through.
// Uses:    operands and records of qn_pragma.cpp.
// Entry:   the functions that rows of lex/pragmas.def name.
#include <cstdint>
#include <cstdio>

#include "driver/flags.h"
#include "il/il_exprs.h"
#include "lex/lexical.h"
#include "parse/qn_pragma_private.h"

// ... in front of a loop, else 855.
static bool check_loop(const a_pending_pragma *pragma, const a_statement *statement)
{
  bool is_loop =
      statement->kind == stmk_for || statement->kind == stmk_while || statement->kind == stmk_do;
  if (!is_loop) {
    pos_st_warning(ec_pragma_must_precede_loop, pragma->position, name_of_pragma(pragma));
  }
  return is_loop;
}

static bool report_operand(const a_pending_pragma *pragma, an_error_code code)
{
  pos_st_warning(code, pragma->position, name_of_pragma(pragma));
  return true;
}

static void add_unsigned_argument(uint32_t value)
{
  char text[16];
  snprintf(text, sizeof text, "%u", value);
  add_pragma_argument(text);
}

static bool at_end_of_operands()
{
  return curr_token == tok_rparen || curr_token == tok_end_of_source || curr_token == tok_semicolon;
}

// A count of iterations; a negative one is the unsigned number of the same 32 bits.
static bool scan_iteration_count(a_pending_pragma *pragma, uint32_t *count)
{
  long long value;
  if (!scan_pragma_number(pragma, &value)) return false;
  if (value < INT32_MIN || value > UINT32_MAX) {
    pos_error(ec_integer_too_large, pragma->position);
    return false;
  }
  *count = (uint32_t)value;
  return true;
}

// Up to `most` counts, of which each may be left out.  Returns true after a complaint.
static bool scan_iteration_counts(a_pending_pragma *pragma, uint32_t *counts, int most,
                                  an_error_code wrong_number)
{
  if (at_end_of_operands()) return report_operand(pragma, wrong_number);
  for (int i = 0;; ++i) {
    if (i == most) return report_operand(pragma, wrong_number);
    bool is_left_out = curr_token == tok_comma || at_end_of_operands();
    if (!is_left_out && !scan_iteration_count(pragma, &counts[i])) return true;
    if (at_end_of_operands()) return false;
    if (!scan_pragma_comma()) return true;
  }
}

// MUST_ITERATE(min, max, multiple), PROB_ITERATE(min, max).
bool proc_iterate_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *statement)
{
  if (!check_loop(pragma, statement)) return true;
  bool has_multiple = pragma->description->kind == pragk_must_iterate;
  int most = has_multiple ? 3 : 2;
  uint32_t counts[3] = {0, UINT32_MAX, 1};
  if (scan_iteration_counts(pragma, counts, most,
                            has_multiple ? ec_pragma_requires_1or2or3_parms
                                         : ec_pragma_requires_1or2_parms) ||
      !end_of_pragma_operands(pragma)) {
    return true;
  }
  if (counts[0] > counts[1]) {
    report_operand(pragma, ec_pragma_arg_min_no_gt_max);
    return false;
  }
  if (!use_loop_pragmas || !use_iterate_pragmas) return false;
  for (int i = 0; i < most; ++i)
    add_unsigned_argument(counts[i]);
  keep_pragma(pragma, nullptr, statement);
  return false;
}

bool proc_unroll_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *statement)
{
  long long factor;
  if (!check_loop(pragma, statement)) return true;
  if (at_end_of_operands()) return report_operand(pragma, ec_pragma_requires_1_parm);
  if (!scan_pragma_number(pragma, &factor)) return true;
  if (!at_end_of_operands()) return report_operand(pragma, ec_pragma_requires_1_parm);
  if (factor <= 0) return report_operand(pragma, ec_pragma_parm_gt_zero);
  if (factor > UINT32_MAX) {
    pos_error(ec_integer_too_large, pragma->position);
    return true;
  }
  if (!end_of_pragma_operands(pragma)) return true;
  if (!use_loop_pragmas) return false;
  add_unsigned_argument((uint32_t)factor);
  keep_pragma(pragma, nullptr, statement);
  return false;
}

// LOOP_NO_ALIAS, NO_ALIAS_CLONE: no operand.
bool proc_no_alias_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *statement)
{
  if (!check_loop(pragma, statement)) return true;
  if (!at_end_of_operands()) return report_operand(pragma, ec_pragma_requires_1_parm);
  if (!end_of_pragma_operands(pragma)) return true;
  if (use_loop_pragmas) keep_pragma(pragma, nullptr, statement);
  return false;
}

//---------------------------------------------------------------------------------------------
// Carried through
//---------------------------------------------------------------------------------------------

// VCC_VREG("name", n), Cedar_REG("name", "register"): registers of an accelerator of another family.
bool proc_register_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  const char *text;
  long long number;
  if (!had_open_paren) {
    syntax_error(ec_exp_lparen);
    return true;
  }
  if (!scan_pragma_string(pragma, &text) || !scan_pragma_comma()) return true;
  add_pragma_argument(text);
  if (pragma->description->kind == pragk_cedar_reg) {
    if (!scan_pragma_string(pragma, &text)) return true;
    add_pragma_argument(text);
  } else {
    if (!scan_pragma_number(pragma, &number)) return true;
    char digits[24];
    snprintf(digits, sizeof digits, "%lld", number);
    add_pragma_argument(digits);
  }
  if (!end_of_pragma_operands(pragma)) return true;
  keep_pragma(pragma, nullptr, nullptr);
  return false;
}

// Its operands mean nothing here: the text goes through as it was scanned.
bool proc_info_pragma(a_pending_pragma *pragma, a_symbol *, a_statement *)
{
  suppress_extra_token_error = true;
  keep_pragma(pragma, nullptr, nullptr);
  return false;
}
