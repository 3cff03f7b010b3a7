// error.h - the error engine: every diagnostic of the front end is issued through it.
// A caller names the message by ec_<tag>, gives a severity or takes the entry point's, and passes
// the inserts.  Catastrophes, command-line errors and internal errors don't return.
#pragma once
#include <cstdio>
#include "errors/error_codes.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

// ---- State.  Defaults are set by error_early_init; options change them before error_init. ----

extern FILE *f_error;                     // destination, the standard error stream
extern bool error_output_is_interactive;  // somebody watches: each message is written at once; by cfe
extern a_source_position error_position;  // where entry points without pos_ report; the scanner
                                          // keeps it at the current token
extern an_error_severity error_threshold; // lowest severity shown
extern int error_limit;                   // errors after which the run stops
extern int context_limit;                 // instantiation context lines shown; 0 means all
extern an_error_severity strict_ansi_error_severity;
extern an_error_severity strict_ansi_discretionary_severity;
extern an_error_severity anachronism_error_severity;
extern an_error_severity misra_required_severity;
extern an_error_severity misra_advisory_severity;
extern bool brief_diagnostics; // one line a diagnostic, no source line
extern bool do_not_wrap_diagnostics;
extern bool display_error_number;
extern bool display_error_context_on_catastrophe;
extern bool display_template_typedefs_in_diagnostics;
extern bool warning_as_error_mode;
extern unsigned long total_remarks;
extern unsigned long total_warnings;
extern unsigned long total_errors;
extern unsigned long total_catastrophes;
extern const char *curr_command_line_macro_def; // set while a macro of the command line is scanned

inline constexpr int DEFAULT_CONTEXT_LIMIT = 10;
inline constexpr int MAX_ERROR_OUTPUT_LINE_LENGTH = 79;
// The position of messages that have no line at all.
inline constexpr a_source_position no_line_position = {0, 1};

// ---- The catalogue ----

extern const char *const error_texts[num_error_codes];
inline const char *error_text(an_error_code code)
{
  return error_texts[code];
}
// The code of a tag, or -1.
int error_code_for_tag(const char *tag);

// ---- Diagnostics without inserts ----

void remark(an_error_code code);
void warning(an_error_code code);
void error(an_error_code code);
void diagnostic(an_error_severity severity, an_error_code code);
[[noreturn]] void catastrophe(an_error_code code);
void pos_remark(an_error_code code, a_source_position pos);
void pos_warning(an_error_code code, a_source_position pos);
void pos_error(an_error_code code, a_source_position pos);
void pos_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos);
// An error, and the tokens up to a stop token are skipped.
void syntax_error(an_error_code code);

// ---- With inserts, at error_position ----

void str_remark(an_error_code code, const char *text);
void str_warning(an_error_code code, const char *text);
void str_error(an_error_code code, const char *text);
void st_diagnostic(an_error_severity severity, an_error_code code, const char *text);
void sym_remark(an_error_code code, a_symbol *symbol);
void sym_warning(an_error_code code, a_symbol *symbol);
void sym_error(an_error_code code, a_symbol *symbol);
void sym_diagnostic(an_error_severity severity, an_error_code code, a_symbol *symbol);
void type_warning(an_error_code code, a_type *type);
void type_error(an_error_code code, a_type *type);
void type_diagnostic(an_error_severity severity, an_error_code code, a_type *type);
[[noreturn]] void str_catastrophe(an_error_code code, const char *text);
[[noreturn]] void strstr_catastrophe(an_error_code code, const char *text1, const char *text2);
[[noreturn]] void str_errno_catastrophe(an_error_code code, const char *text, int errno_value);

// ---- With inserts, at a given position ----

#define UNPAREN(...) __VA_ARGS__
#define FORM(name, parameters, inserts)                                                            \
  void pos_##name##_remark(an_error_code code, a_source_position pos, UNPAREN parameters);         \
  void pos_##name##_warning(an_error_code code, a_source_position pos, UNPAREN parameters);        \
  void pos_##name##_error(an_error_code code, a_source_position pos, UNPAREN parameters);          \
  void pos_##name##_diagnostic(an_error_severity severity, an_error_code code,                     \
                               a_source_position pos, UNPAREN parameters);                         \
  [[noreturn]] void pos_##name##_catastrophe(an_error_code code, a_source_position pos,            \
                                             UNPAREN parameters);                                  \
  void pos_##name##_start_remark(an_error_code code, a_source_position pos, UNPAREN parameters);   \
  void pos_##name##_start_warning(an_error_code code, a_source_position pos, UNPAREN parameters);  \
  void pos_##name##_start_error(an_error_code code, a_source_position pos, UNPAREN parameters);    \
  void pos_##name##_start_diagnostic(an_error_severity severity, an_error_code code,               \
                                     a_source_position pos, UNPAREN parameters);
#include "errors/error_forms.def"
#undef UNPAREN

[[noreturn]] void pos_str2_catastrophe(an_error_code code, a_source_position pos, const char *text1,
                                       const char *text2);
// The second position is an insert.
void pos2_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                     a_source_position insert);
void pos2_sy_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                        a_source_position insert, a_symbol *symbol);
void pos_st2_sy_diagnostic(an_error_code code, a_source_position pos, an_error_severity severity,
                           const char *text1, const char *text2, a_symbol *symbol);
void pos_st3_sy2_diagnostic(an_error_code code, a_source_position pos, an_error_severity severity,
                            const char *text1, const char *text2, const char *text3,
                            a_symbol *symbol1, a_symbol *symbol2);
// The types are used only if the message has an insert.
void pos_opt_ty2_error(an_error_code code, a_source_position pos, a_type *type1, a_type *type2);
void pos_opt_ty2_warning(an_error_code code, a_source_position pos, a_type *type1, a_type *type2);
void pos_opt_ty2_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos,
                            a_type *type1, a_type *type2);

// ---- Diagnostics of several lines: one start (also the pos_<x>_start_ forms), lines, one end ----

void pos_start_error(an_error_code code, a_source_position pos);
void pos_start_warning(an_error_code code, a_source_position pos);
void pos_start_remark(an_error_code code, a_source_position pos);
void pos_start_diagnostic(an_error_severity severity, an_error_code code, a_source_position pos);
void add_diag_info(an_error_code code);
void str_add_diag_info(an_error_code code, const char *text);
void sym_add_diag_info(an_error_code code, a_symbol *symbol);
void ty_add_diag_info(an_error_code code, a_type *type);
void add_diag_info_with_pos_insert(an_error_code code, a_source_position pos);
void end_error();

// ---- Command line ----

[[noreturn]] void command_line_error(an_error_code code);
// The text and the argument are joined.
[[noreturn]] void str_command_line_error(an_error_code code, const char *argument);
void start_command_line_error(an_error_code code, const char *argument);
[[noreturn]] void end_command_line_error();
void misra_command_line_diagnostic(an_error_severity severity, an_error_code code,
                                   const char *argument);

// ---- Queries ----

// Whether the diagnostic would have a severity above warning at that position.
bool is_effective_error(an_error_code code, an_error_severity severity, a_source_position pos);
// The severity with which it would be reported at error_position; false if it would not be shown.
bool reported_error_severity(an_error_code code, an_error_severity severity,
                             an_error_severity *result);
// Whether an option or pragma has made the message a warning, or silenced it.
bool treat_as_warning(an_error_code code);
bool treat_as_none(an_error_code code);
// Whether the effective severity at error_position is other than es_none.
bool misra_c_2004_generate_diagnostic(an_error_code code, an_error_severity severity);
bool ulp_generate_diagnostic(an_error_code code, an_error_severity severity);

// ---- Changing severities ----

// Both return true if there is no such message.  A null pos gives no range.
bool set_severity_for_error_number(int code, an_error_severity severity,
                                   const a_source_position *pos, bool from_option);
bool set_severity_for_error_tag(const char *tag, an_error_severity severity,
                                const a_source_position *pos, bool from_option);

// ---- Deferred diagnostics share the duplicate check ----

bool find_prototype_diagnostic(an_error_code code, an_error_severity severity,
                               a_source_position pos);
void record_prototype_diagnostic(an_error_code code, an_error_severity severity,
                                 a_source_position pos);

// ---- Text ----

// Renders a type outside any message, without quotes.  The text stays until the next call.
const char *format_type_string(a_type *type, size_t *length);
// The text of the source line of a position, as it was written, in a buffer that the next call
// reuses; false if it can't be had.  With `only_if_cheap` no file is read: tells whether the line
// could be had, *text is null.
bool source_line_of_position(a_source_position pos, bool only_if_cheap, const char **text,
                             size_t *length);
// A line about a precompiled header, unless such messages are off; no diagnostic.
void pch_message(an_error_code code, const char *text);
void embedded_cplusplus_noncompliance_diagnostic(a_source_position pos, an_error_code code);

// ---- Files ----

enum an_open_file_failure : unsigned char { // bits of an_open_file_result::bits and of the flags
  off_not_found = 1,
  off_system_error = 2,
  off_not_regular = 4,
  off_directory = 8,
  off_bad_name = 16,           // in a result: the name can't be used
  off_report_command_line = 16 // in flags: report as a command-line error
};

struct an_open_file_result {
  unsigned char bits;
  int errno_value;
};

// kind_code names the description of the file (ec_file_kind_...).
void file_open_error(an_error_severity severity, an_error_code kind_code, const char *name,
                     const an_open_file_result *result);
void output_file_open_error(bool for_command_line, an_error_code kind_code, const char *name,
                            an_error_severity severity);
[[noreturn]] void file_write_error(an_error_code kind_code, int errno_value);

// ---- End of the run ----

void write_signoff();
// Sign-off and exit_compilation.
[[noreturn]] void term_compilation(an_error_severity severity);
// [[noreturn]] void internal_error_at(...) is declared in mem/check.h.

// ---- What higher floors install ----

struct a_diag_text; // the text of the insert that is being rendered

// Appends to the insert that is being rendered.
void put_to_insert(a_diag_text *text, const char *string, size_t length);
void put_str_to_insert(a_diag_text *text, const char *string);

struct a_symbol_insert_flags {
  bool full;               // %nf: return type and parameters
  bool no_kind_word;       // %no
  bool with_params;        // %np
  bool with_template_info; // %nt
  bool with_template_args; // %na
};

// One entry of the chain of contexts in which a diagnostic arose, innermost first.
struct a_diag_context {
  an_error_code alone; // the line's template when it is the only context
  an_error_code among; // the template among several
  a_symbol *symbol;
  const void *instantiation; // for %na
  a_source_position point;   // the point of instantiation
  const char *file_name;     // of a secondary translation unit
};

struct an_error_hooks {
  // Types and symbols: installed by the printer of the IL and the symbol table.
  void (*form_type)(a_type *type, a_diag_text *text);
  // The kind word's code, or ec_no_error for none.
  an_error_code (*symbol_kind_word)(a_symbol *symbol, bool full);
  // The qualified name with what the flags ask for, without quotes.
  void (*form_symbol)(a_symbol *symbol, a_symbol_insert_flags flags, a_diag_text *text);
  // The template argument list behind "based on template argument(s)"; returns the number.
  int (*form_template_args)(a_symbol *symbol, const void *instantiation, a_diag_text *text);
  a_source_position (*symbol_position)(a_symbol *symbol);
  // The other translation unit's file name, or null.
  const char *(*symbol_translation_unit)(a_symbol *symbol);
  // Contexts: the number of entries; fills entry number `index` (1 is the innermost).
  int (*count_contexts)(a_source_position pos);
  void (*get_context)(int index, a_diag_context *context);
  // The current scope's identity, 0 if no scope is open; and whether a template is being parsed.
  unsigned long (*curr_scope_identity)(bool *in_template);
  // Token skipping for syntax_error.
  void (*flush_tokens)();
  void (*cancel_il_file)();
  void (*exit_compilation)(an_error_severity severity); // doesn't return
};
extern an_error_hooks error_hooks;

// ---- Initialisation ----

void error_early_init();
void error_one_time_init();
void error_init();
void error_trans_unit_init();
