// misra.h - the MISRA-C:2004 checker.
// A violation is an ordinary diagnostic whose severity is that of its rule's class.  Most rules are
// tested where the parser stands anyway; the functions that it calls for that are the rows of
// errors/misra_hooks.def, declared here as well.  check_misra_c_2004 says whether the checker is on.
#pragma once
#include "errors/error_codes.h"
#include "errors/misra_hooks.h"

#define HOOK(result, name, parameters) result name parameters;
#include "errors/misra_hooks.def"

// ---- The rules (misra_rules.cpp) ----

enum a_misra_rule_kind : unsigned char { misra_required = 1, misra_advisory = 3 };

// The code of a rule, or ec_no_error if no check knows it.  A rule with two messages gives with
// `with_name` the one that names the identifier.  Severity and kind of the rule's class are set
// only if there is a code.
an_error_code misra_c_2004_offset_to_error_code(int section, int subsection,
                                                an_error_severity *severity,
                                                a_misra_rule_kind *rule_kind, bool with_name);

// Changes the rules of the sections and subsections from first to last (both included) whose class
// is asked for: suppressed unless `enable`, with `is_reset` back to the state of the command line,
// else to the severity of the class.  From `pos` on, or if it is null everywhere; `from_option`
// makes it the state of the command line.
void misra_c_2004_set_rules(int first_section, int last_section, int first_subsection,
                            int last_subsection, const a_source_position *pos, bool from_option,
                            bool is_reset, bool enable, bool required, bool advisory);

// Applies a list of rule specifiers, and turns the checker on.  *is_bad is set if an entry can't be
// read; the others are applied all the same.
void process_check_misra(const char *text, const a_source_position *pos, bool *is_bad,
                         bool from_option, bool is_reset);

// Sets the severity of a class by its word, and that of its rules that are on.  An unknown word
// changes nothing.
void process_misra_severity(a_misra_rule_kind rule_kind, const char *text,
                            const a_source_position *pos);

// ---- Diagnostics that wait for a position (misra.cpp) ----

// Puts a diagnostic off until the end of the construct; a null `pos` stands for the position set
// before.
void misra_push_diagnostic(an_error_severity severity, an_error_code code,
                           const a_source_position *pos);

// ---- What several checks ask ----

// Whether two variables stand in the same scope (misra_symbols.cpp).
bool variables_in_same_scope(const a_variable *a, const a_variable *b);

// ---- The table of the standard library's names (misra_identifiers.cpp) ----

struct an_ansi_c_identifier {
  const char *name;
  const char *header;        // that declares it; null for none
  unsigned char kinds;       // bits of an_ansi_c_identifier_kind
  unsigned char section;     // of the rule that bans it, 0 if none does
  unsigned char subsection;
};

// The row of a name of `length` bytes, or null.
const an_ansi_c_identifier *lookup_ansi_c_identifier(const char *name, size_t length);
// Its kinds; ansi_c_none for a name that is not in the table.
unsigned ansi_c_identifier_kind(const char *name, size_t length);

// ---- Start and end ----

void misra_early_init();    // installs misra_hooks; all rules start suppressed
void misra_one_time_init(); // behind the command line, if the checker is on: makes the table
void misra_wrapup();        // frees it
// A unit with declarations begins; 1376 unless the mode is C90.
void misra_check_language_version();
// The end of a unit: 1475 for each structure or union of the scope that is incomplete, 1387 for
// each variable that one routine alone uses.
void misra_check_file_scope(a_scope *scope);
