// error.cpp - the error engine: entry points and the road that every diagnostic takes.
// Owns:    the engine's settings and counters.
// Uses:    error_severity (is it shown), error_render (its text), error_output (its lines).
// Rule:    a message that isn't shown costs a table look-up; rendering comes after the decision.
// Entry:   pos_error and its family, issue_diagnostic.
#include "errors/error_private.h"
#include <cerrno>
#include <cstring>
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "mem/check.h"
#include "mem/registered_vars.h"

FILE *f_error;
bool error_output_is_interactive = true;
a_source_position error_position;
an_error_severity error_threshold;
int error_limit;
int context_limit;
an_error_severity strict_ansi_error_severity;
an_error_severity strict_ansi_discretionary_severity;
an_error_severity anachronism_error_severity;
an_error_severity misra_required_severity;
an_error_severity misra_advisory_severity;
bool brief_diagnostics;
bool do_not_wrap_diagnostics;
bool display_error_number;
bool display_error_context_on_catastrophe;
bool display_template_typedefs_in_diagnostics;
bool warning_as_error_mode;
unsigned long total_remarks;
unsigned long total_warnings;
unsigned long total_errors;
unsigned long total_catastrophes;
const char *curr_command_line_macro_def;
an_error_hooks error_hooks;

static bool catastrophe_in_progress;
static bool internal_error_in_progress;

// ---- Contexts: the instantiations around a diagnostic ----

static void issue_context_line(an_error_code code, a_diagnostic_part part, const a_diagnostic &main,
                               const a_diag_inserts *inserts)
{
  issue_diagnostic({code, main.severity, part, main.pos, nullptr, inserts});
}

static void issue_one_context(int number, bool alone, const a_diagnostic &main)
{
  a_diag_context context = {};
  error_hooks.get_context(number, &context);
  a_diag_inserts inserts = {};
  inserts.sy[0] = context.symbol;
  inserts.pos[0] = context.point;
  inserts.instantiation[0] = context.instantiation;
  inserts.st[0] = context.file_name;
  issue_context_line(alone ? context.alone : context.among, alone ? dp_context_line : dp_added_line,
                     main, &inserts);
}

// A stretch in the middle of a long chain is only counted.
static void issue_contexts(int count, const a_diagnostic &main)
{
  bool truncating = context_limit > 0 && count > context_limit + 1;
  int half = context_limit / 2;
  if (count != 1) issue_context_line(ec_detected_during, dp_context_line, main, nullptr);
  for (int number = 1; number <= count; number++) {
    if (truncating && number == half + 1) {
      char text[24];
      snprintf(text, sizeof text, "%d", count - 2 * half);
      a_diag_inserts inserts = {};
      inserts.st[0] = text;
      issue_context_line(ec_contexts_not_shown, dp_added_line, main, &inserts);
      number = count - half;
    } else {
      issue_one_context(number, count == 1, main);
    }
  }
  issue_context_line(ec_no_error, dp_context_end, main, nullptr);
}

// ---- The road ----

// The fault lies in a macro given on the command line: that is what is reported.
[[noreturn]] static void report_command_line_macro()
{
  a_diag_inserts inserts = {};
  inserts.st[0] = error_text(ec_bad_cmd_line_macro);
  inserts.st[1] = curr_command_line_macro_def;
  curr_command_line_macro_def = nullptr;
  issue_diagnostic({ec_bad_cmd_line_macro, es_command_line_error, dp_complete, no_line_position,
                    "%s1%s2", &inserts});
  term_compilation(es_command_line_error);
}

static void note_catastrophe()
{
  if (catastrophe_in_progress) {
    fprintf(f_error, "%s\n", error_text(ec_w_catastrophe_loop));
    term_compilation(es_catastrophe);
  }
  catastrophe_in_progress = true;
}

void issue_diagnostic(const a_diagnostic &given)
{
  a_diagnostic diagnostic = given;
  if (!diagnostic_is_shown(diagnostic.code, diagnostic.part, &diagnostic.severity,
                           &diagnostic.pos)) {
    return;
  }
  if (curr_command_line_macro_def != nullptr) report_command_line_macro();
  bool is_first_part = diagnostic.part == dp_complete || diagnostic.part == dp_start;
  if (is_first_part && diagnostic.severity == es_catastrophe) note_catastrophe();

  bool has_text = diagnostic.part != dp_end && diagnostic.part != dp_context_end;
  const char *text = diagnostic.text != nullptr ? diagnostic.text : error_text(diagnostic.code);
  const a_message_piece *pieces =
      render_template(has_text ? text : "", diagnostic.inserts, diagnostic.pos);
  int contexts = 0;
  bool closes_main_text = diagnostic.part == dp_complete || diagnostic.part == dp_end;
  bool context_wanted =
      diagnostic.severity != es_catastrophe || display_error_context_on_catastrophe;
  if (closes_main_text && context_wanted && error_hooks.count_contexts != nullptr) {
    contexts = error_hooks.count_contexts(diagnostic.pos);
  }
  output_diagnostic(diagnostic, pieces, contexts != 0);
  end_rendering();
  end_diagnostic(diagnostic, contexts != 0);
  if (contexts != 0) issue_contexts(contexts, diagnostic);
}

// ---- Entry points without inserts ----

void pos_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos)
{
  issue_diagnostic({code, severity, dp_complete, pos, nullptr, nullptr});
}

void pos_remark(an_error_code code, a_source_position pos)
{
  pos_diagnostic(es_remark, code, pos);
}

void pos_warning(an_error_code code, a_source_position pos)
{
  pos_diagnostic(es_warning, code, pos);
}

void pos_error(an_error_code code, a_source_position pos)
{
  pos_diagnostic(es_error, code, pos);
}

void diagnostic(an_error_severity severity, an_error_code code)
{
  pos_diagnostic(severity, code, error_position);
}

void remark(an_error_code code)
{
  pos_diagnostic(es_remark, code, error_position);
}

void warning(an_error_code code)
{
  pos_diagnostic(es_warning, code, error_position);
}

void error(an_error_code code)
{
  pos_diagnostic(es_error, code, error_position);
}

void catastrophe(an_error_code code)
{
  pos_diagnostic(es_catastrophe, code, error_position);
  term_compilation(es_catastrophe);
}

void syntax_error(an_error_code code)
{
  error(code);
  if (error_hooks.flush_tokens != nullptr) error_hooks.flush_tokens();
}

void embedded_cplusplus_noncompliance_diagnostic(a_source_position pos, an_error_code code)
{
  pos_diagnostic(es_discretionary_error, code, pos);
}

// ---- With inserts, at a given position ----

#define UNPAREN(...) __VA_ARGS__
#define ISSUE(severity, part, inserts)                                                             \
  a_diag_inserts slots = {UNPAREN inserts};                                                        \
  issue_diagnostic({code, severity, part, pos, nullptr, &slots})

#define FORM(name, parameters, inserts)                                                            \
  void pos_##name##_diagnostic(an_error_severity severity, an_error_code code,                     \
                               a_source_position pos, UNPAREN parameters)                          \
  {                                                                                                \
    ISSUE(severity, dp_complete, inserts);                                                         \
  }                                                                                                \
  void pos_##name##_remark(an_error_code code, a_source_position pos, UNPAREN parameters)          \
  {                                                                                                \
    ISSUE(es_remark, dp_complete, inserts);                                                        \
  }                                                                                                \
  void pos_##name##_warning(an_error_code code, a_source_position pos, UNPAREN parameters)         \
  {                                                                                                \
    ISSUE(es_warning, dp_complete, inserts);                                                       \
  }                                                                                                \
  void pos_##name##_error(an_error_code code, a_source_position pos, UNPAREN parameters)           \
  {                                                                                                \
    ISSUE(es_error, dp_complete, inserts);                                                         \
  }                                                                                                \
  void pos_##name##_catastrophe(an_error_code code, a_source_position pos, UNPAREN parameters)     \
  {                                                                                                \
    ISSUE(es_catastrophe, dp_complete, inserts);                                                   \
    term_compilation(es_catastrophe);                                                              \
  }                                                                                                \
  void pos_##name##_start_diagnostic(an_error_severity severity, an_error_code code,               \
                                     a_source_position pos, UNPAREN parameters)                    \
  {                                                                                                \
    ISSUE(severity, dp_start, inserts);                                                            \
  }                                                                                                \
  void pos_##name##_start_remark(an_error_code code, a_source_position pos, UNPAREN parameters)    \
  {                                                                                                \
    ISSUE(es_remark, dp_start, inserts);                                                           \
  }                                                                                                \
  void pos_##name##_start_warning(an_error_code code, a_source_position pos, UNPAREN parameters)   \
  {                                                                                                \
    ISSUE(es_warning, dp_start, inserts);                                                          \
  }                                                                                                \
  void pos_##name##_start_error(an_error_code code, a_source_position pos, UNPAREN parameters)     \
  {                                                                                                \
    ISSUE(es_error, dp_start, inserts);                                                            \
  }
#include "errors/error_forms.def"

void pos_str2_catastrophe(an_error_code code, a_source_position pos, const char *text1,
                          const char *text2)
{
  pos_st2_catastrophe(code, pos, text1, text2);
}

void pos2_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                     a_source_position insert)
{
  ISSUE(severity, dp_complete, (.pos = {insert}));
}

void pos2_sy_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                        a_source_position insert, a_symbol *symbol)
{
  ISSUE(severity, dp_complete, (.pos = {insert}, .sy = {symbol}));
}

void pos_st2_sy_diagnostic(an_error_code code, a_source_position pos, an_error_severity severity,
                           const char *text1, const char *text2, a_symbol *symbol)
{
  ISSUE(severity, dp_complete, (.st = {text1, text2}, .sy = {symbol}));
}

void pos_st3_sy2_diagnostic(an_error_code code, a_source_position pos, an_error_severity severity,
                            const char *text1, const char *text2, const char *text3,
                            a_symbol *symbol1, a_symbol *symbol2)
{
  ISSUE(severity, dp_complete, (.st = {text1, text2, text3}, .sy = {symbol1, symbol2}));
}

static bool has_insert(an_error_code code)
{
  for (const char *p = strchr(error_text(code), '%'); p != nullptr; p = strchr(p + 2, '%')) {
    if (p[1] != '%') return true;
  }
  return false;
}

void pos_opt_ty2_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            a_type *type1, a_type *type2)
{
  if (has_insert(code)) {
    pos_ty2_diagnostic(severity, code, pos, type1, type2);
  } else {
    pos_diagnostic(severity, code, pos);
  }
}

void pos_opt_ty2_error(an_error_code code, a_source_position pos, a_type *type1, a_type *type2)
{
  pos_opt_ty2_diagnostic(es_error, code, pos, type1, type2);
}

void pos_opt_ty2_warning(an_error_code code, a_source_position pos, a_type *type1, a_type *type2)
{
  pos_opt_ty2_diagnostic(es_warning, code, pos, type1, type2);
}

// ---- With inserts, at error_position ----

void st_diagnostic(an_error_severity severity, an_error_code code, const char *text)
{
  pos_st_diagnostic(severity, code, error_position, text);
}

void str_remark(an_error_code code, const char *text)
{
  st_diagnostic(es_remark, code, text);
}

void str_warning(an_error_code code, const char *text)
{
  st_diagnostic(es_warning, code, text);
}

void str_error(an_error_code code, const char *text)
{
  st_diagnostic(es_error, code, text);
}

void sym_diagnostic(an_error_severity severity, an_error_code code, a_symbol *symbol)
{
  pos_sy_diagnostic(severity, code, error_position, symbol);
}

void sym_remark(an_error_code code, a_symbol *symbol)
{
  sym_diagnostic(es_remark, code, symbol);
}

void sym_warning(an_error_code code, a_symbol *symbol)
{
  sym_diagnostic(es_warning, code, symbol);
}

void sym_error(an_error_code code, a_symbol *symbol)
{
  sym_diagnostic(es_error, code, symbol);
}

void type_diagnostic(an_error_severity severity, an_error_code code, a_type *type)
{
  pos_ty_diagnostic(severity, code, error_position, type);
}

void type_warning(an_error_code code, a_type *type)
{
  type_diagnostic(es_warning, code, type);
}

void type_error(an_error_code code, a_type *type)
{
  type_diagnostic(es_error, code, type);
}

void str_catastrophe(an_error_code code, const char *text)
{
  pos_st_catastrophe(code, error_position, text);
}

void strstr_catastrophe(an_error_code code, const char *text1, const char *text2)
{
  pos_st2_catastrophe(code, error_position, text1, text2);
}

void str_errno_catastrophe(an_error_code code, const char *text, int errno_value)
{
  pos_st2_catastrophe(code, error_position, text, strerror(errno_value));
}

// ---- Diagnostics of several parts ----

void pos_start_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos)
{
  issue_diagnostic({code, severity, dp_start, pos, nullptr, nullptr});
}

void pos_start_remark(an_error_code code, a_source_position pos)
{
  pos_start_diagnostic(es_remark, code, pos);
}

void pos_start_warning(an_error_code code, a_source_position pos)
{
  pos_start_diagnostic(es_warning, code, pos);
}

void pos_start_error(an_error_code code, a_source_position pos)
{
  pos_start_diagnostic(es_error, code, pos);
}

static void add_line(an_error_code code, const a_diag_inserts *inserts)
{
  issue_diagnostic({code, es_default, dp_added_line, null_source_position, nullptr, inserts});
}

void add_diag_info(an_error_code code)
{
  add_line(code, nullptr);
}

void str_add_diag_info(an_error_code code, const char *text)
{
  a_diag_inserts inserts = {};
  inserts.st[0] = text;
  add_line(code, &inserts);
}

void sym_add_diag_info(an_error_code code, a_symbol *symbol)
{
  a_diag_inserts inserts = {};
  inserts.sy[0] = symbol;
  add_line(code, &inserts);
}

void ty_add_diag_info(an_error_code code, a_type *type)
{
  a_diag_inserts inserts = {};
  inserts.ty[0] = type;
  add_line(code, &inserts);
}

void add_diag_info_with_pos_insert(an_error_code code, a_source_position pos)
{
  a_diag_inserts inserts = {};
  inserts.pos[0] = pos;
  add_line(code, &inserts);
}

void end_error()
{
  issue_diagnostic({ec_no_error, es_default, dp_end, null_source_position, nullptr, nullptr});
}

// ---- Command line ----

static void issue_command_line_text(an_error_code code, const char *argument,
                                    an_error_severity severity, a_diagnostic_part part)
{
  a_diag_inserts inserts = {};
  inserts.st[0] = error_text(code);
  inserts.st[1] = argument;
  issue_diagnostic({code, severity, part, no_line_position, "%s1%s2", &inserts});
}

void command_line_error(an_error_code code)
{
  str_command_line_error(code, nullptr);
}

void str_command_line_error(an_error_code code, const char *argument)
{
  issue_command_line_text(code, argument, es_command_line_error, dp_complete);
  term_compilation(es_command_line_error);
}

void start_command_line_error(an_error_code code, const char *argument)
{
  a_diag_inserts inserts = {};
  inserts.st[0] = argument;
  issue_diagnostic({code, es_command_line_error, dp_start, no_line_position, nullptr, &inserts});
}

void end_command_line_error()
{
  end_error();
  term_compilation(es_command_line_error);
}

void misra_command_line_diagnostic(an_error_severity severity, an_error_code code,
                                   const char *argument)
{
  issue_command_line_text(code, argument, severity, dp_complete);
}

void pch_message(an_error_code code, const char *text)
{
  if (suppress_pch_messages) return;
  fprintf(f_error, error_text(code), primary_source_file_name, text);
  putc('\n', f_error);
}

// ---- Internal errors ----

void internal_error_at(const char *text, const char *file, int line)
{
  if (internal_error_in_progress) {
    fprintf(f_error, "%s\n", error_text(ec_w_internal_error_loop));
    if (error_hooks.exit_compilation != nullptr) error_hooks.exit_compilation(es_internal_error);
    __builtin_abort();
  }
  internal_error_in_progress = true;
  const char *base = strrchr(file, '/');
  char place[64];
  snprintf(place, sizeof place, " (%.40s:%d)", base != nullptr ? base + 1 : file, line);
  a_diag_inserts inserts = {};
  inserts.st[0] = text;
  inserts.st[1] = place;
  if (f_error == nullptr) f_error = stderr;
  issue_diagnostic(
      {ec_no_error, es_internal_error, dp_complete, error_position, "%s1%s2", &inserts});
  term_compilation(es_internal_error);
}

// ---- Initialisation ----

static void out_of_memory_catastrophe()
{
  catastrophe(ec_out_of_memory);
}

static void program_too_large_catastrophe()
{
  catastrophe(ec_program_too_large);
}

static void mapped_memory_catastrophe()
{
  catastrophe(ec_unable_to_get_mapped_memory);
}

void error_early_init()
{
  if (f_error == nullptr) f_error = stderr;
  error_threshold = es_warning;
  error_limit = 100;
  context_limit = DEFAULT_CONTEXT_LIMIT;
  strict_ansi_error_severity = es_warning;
  strict_ansi_discretionary_severity = es_warning;
  anachronism_error_severity = es_error;
  misra_required_severity = es_warning;
  misra_advisory_severity = es_warning;
  brief_diagnostics = true;
  do_not_wrap_diagnostics = false;
  display_error_number = false;
  display_error_context_on_catastrophe = true;
  display_template_typedefs_in_diagnostics = false;
  warning_as_error_mode = false;
  curr_command_line_macro_def = nullptr;
  mem_manage_hooks.out_of_memory = out_of_memory_catastrophe;
  mem_manage_hooks.program_too_large = program_too_large_catastrophe;
  mem_manage_hooks.unable_to_get_mapped_memory = mapped_memory_catastrophe;
  output_init();
}

static a_pch_saved_variable saved_variables[] = {
    {&total_remarks, sizeof total_remarks, false},
    {&total_warnings, sizeof total_warnings, false},
    {&total_errors, sizeof total_errors, false},
    {nullptr, 0, false},
};

void error_one_time_init()
{
  if (precompiled_header_processing_required) register_pch_saved_variables(saved_variables);
}

void error_init()
{
  total_remarks = 0;
  total_warnings = 0;
  total_errors = 0;
  total_catastrophes = 0;
  severity_init();
}

void error_trans_unit_init()
{
  error_position = null_source_position;
}
