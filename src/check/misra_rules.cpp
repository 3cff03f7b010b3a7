// misra_rules.cpp - which rules are checked, and how severe a violation is.
// Rule:    the state of a rule is the severity override of its code, so that pragmas act by position
//          and every other way to change a severity works on rules as well.
// Entry:   process_check_misra, process_misra_severity, misra_c_2004_set_rules,
//          misra_c_2004_offset_to_error_code.
#include <cstring>
#include "check/misra.h"
#include "driver/flags.h"
#include "errors/error.h"
#include "mem/mem_manage.h"

static constexpr int last_section = 20;
static constexpr int last_subsection = 17;

//---------------------------------------------------------------------------------------------
// The table.

struct a_misra_rule {
  a_misra_rule_kind kind;
  an_error_code code; // ec_no_error: there is no check of that number
  an_error_code code_with_name;
};

static constexpr int place_of_rule(int section, int subsection)
{
  return section * (last_subsection + 1) + subsection;
}

static a_misra_rule look_up_rule(int section, int subsection)
{
  constexpr a_misra_rule_kind R = misra_required;
  constexpr a_misra_rule_kind A = misra_advisory;
  if (subsection > last_subsection) return {R, ec_no_error, ec_no_error};
  switch (place_of_rule(section, subsection)) {
#define RULE(section, subsection, kind, code, code_with_name)                                      \
  case place_of_rule(section, subsection):                                                         \
    return {kind, code, code_with_name};
#include "check/misra_rules.def"
  default: return {R, ec_no_error, ec_no_error};
  }
}

static an_error_severity severity_of_kind(a_misra_rule_kind kind)
{
  return kind == misra_required ? misra_required_severity : misra_advisory_severity;
}

an_error_code misra_c_2004_offset_to_error_code(int section, int subsection,
                                                an_error_severity *severity,
                                                a_misra_rule_kind *rule_kind, bool with_name)
{
  a_misra_rule rule = look_up_rule(section, subsection);
  if (rule.code == ec_no_error) return ec_no_error;
  *severity = severity_of_kind(rule.kind);
  *rule_kind = rule.kind;
  return with_name ? rule.code_with_name : rule.code;
}

//---------------------------------------------------------------------------------------------
// Changing rules.

// Both forms of a rule go together.
static void set_severity_of_rule(a_misra_rule rule, an_error_severity severity,
                                 const a_source_position *pos, bool from_option)
{
  set_severity_for_error_number(rule.code, severity, pos, from_option);
  if (rule.code_with_name == rule.code) return;
  set_severity_for_error_number(rule.code_with_name, severity, pos, from_option);
}

void misra_c_2004_set_rules(int first_section, int last_section, int first_subsection,
                            int last_subsection, const a_source_position *pos, bool from_option,
                            bool is_reset, bool enable, bool required, bool advisory)
{
  for (int section = first_section; section <= last_section; ++section) {
    for (int subsection = first_subsection; subsection <= last_subsection; ++subsection) {
      a_misra_rule rule = look_up_rule(section, subsection);
      if (rule.code == ec_no_error) continue;
      if (!(rule.kind == misra_required ? required : advisory)) continue;
      an_error_severity severity = severity_of_kind(rule.kind);
      if (is_reset) severity = es_default;
      if (!enable) severity = es_none;
      set_severity_of_rule(rule, severity, pos, from_option);
    }
  }
}

// The severity that a word stands for; es_default for any other word.
static an_error_severity severity_of_word(const char *word)
{
  if (strcmp(word, "error") == 0) return es_discretionary_error;
  if (strcmp(word, "warning") == 0) return es_warning;
  if (strcmp(word, "remark") == 0) return es_remark;
  if (strcmp(word, "suppress") == 0) return es_none;
  return es_default;
}

void process_misra_severity(a_misra_rule_kind rule_kind, const char *text,
                            const a_source_position *pos)
{
  an_error_severity severity = severity_of_word(text);
  if (severity == es_default) return;
  (rule_kind == misra_required ? misra_required_severity : misra_advisory_severity) = severity;
  for (int section = 1; section <= last_section; ++section) {
    for (int subsection = 1; subsection <= last_subsection; ++subsection) {
      a_misra_rule rule = look_up_rule(section, subsection);
      if (rule.code == ec_no_error || rule.kind != rule_kind || treat_as_none(rule.code)) continue;
      set_severity_of_rule(rule, severity, pos, true);
    }
  }
}

//---------------------------------------------------------------------------------------------
// Rule lists.

struct a_rule_specifier {
  int first_section;
  int last_section;
  int first_subsection;
  int last_subsection;
  bool negated;
};

// Reads digits at *p; false if there is none.  Numbers past every rule are all alike.
static bool read_number(const char **p, int *number)
{
  const char *start = *p;
  *number = 0;
  for (; **p >= '0' && **p <= '9'; ++*p) {
    if (*number < 1000) *number = *number * 10 + (**p - '0');
  }
  return *p != start;
}

// A number in the middle of a specifier: a "-" in its place negates the whole.
static bool read_further_number(const char **p, int *number, bool *negated)
{
  if (**p == '-' && !*negated) {
    *negated = true;
    ++*p;
  }
  return read_number(p, number);
}

// N, N-M, N.K or N.K-L.  Returns whether all of the text was read.
static bool read_specifier(const char *p, a_rule_specifier *specifier)
{
  specifier->first_subsection = 0;
  specifier->last_subsection = last_subsection;
  if (!read_number(&p, &specifier->first_section)) return false;
  specifier->last_section = specifier->first_section;
  int *last = &specifier->last_section;
  if (*p == '.') {
    ++p;
    if (!read_further_number(&p, &specifier->first_subsection, &specifier->negated)) return false;
    specifier->last_subsection = specifier->first_subsection;
    last = &specifier->last_subsection;
  }
  if (*p == '-') {
    ++p;
    if (!read_further_number(&p, last, &specifier->negated)) return false;
  }
  return *p == '\0';
}

// One entry of a list; false if it can't be read.
static bool apply_entry(const char *entry, const a_source_position *pos, bool from_option,
                        bool is_reset)
{
  a_rule_specifier specifier = {0, last_section, 0, last_subsection, false};
  bool required = true;
  bool advisory = true;
  if (*entry == '-') {
    specifier.negated = true;
    ++entry;
  }
  if (strcmp(entry, "none") == 0) {
    if (is_reset) return false;
    specifier.negated = !specifier.negated;
  } else if (strcmp(entry, "required") == 0) {
    advisory = false;
  } else if (strcmp(entry, "advisory") == 0) {
    required = false;
  } else if (strcmp(entry, "all") != 0 && !read_specifier(entry, &specifier)) {
    return false;
  }
  if (specifier.negated && is_reset) return false;
  if (specifier.last_section > last_section) specifier.last_section = last_section;
  if (specifier.last_subsection > last_subsection) specifier.last_subsection = last_subsection;
  misra_c_2004_set_rules(specifier.first_section, specifier.last_section,
                         specifier.first_subsection, specifier.last_subsection, pos, from_option,
                         is_reset, !specifier.negated, required, advisory);
  return true;
}

void process_check_misra(const char *text, const a_source_position *pos, bool *is_bad,
                         bool from_option, bool is_reset)
{
  check_misra_c_2004 = true;
  *is_bad = false;
  char *entry = static_cast<char *>(alloc_general(strlen(text) + 1));
  const char *p = text;
  do {
    char *end = entry;
    for (; *p != '\0' && *p != ','; ++p) {
      if (*p != ' ' && *p != '\t') *end++ = *p;
    }
    *end = '\0';
    if (!apply_entry(entry, pos, from_option, is_reset)) *is_bad = true;
  } while (*p++ == ',');
  free_general(entry, strlen(text) + 1);
}
