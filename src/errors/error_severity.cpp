// error_severity.cpp - is a diagnostic shown, and as what?
// Owns:    the overrides by code, the severity ranges by position, the once-only marks, the table
//          that keeps one diagnostic from coming again with every instantiation.
// Uses:    the map from sequence numbers to files (source_input), for system headers.
#include "errors/error_private.h"
#include <cstring>
#include "lex/source_input.h"

// From `pos` on the code has this severity; 0 means the one that the call gives.
struct a_severity_range {
  a_severity_range *next;
  a_source_position pos;
  an_error_severity severity;
};

struct a_prototype_diagnostic {
  a_prototype_diagnostic *next;
  an_error_code code;
  an_error_severity severity;
  a_column_number column;
  a_seq_number seq;
  unsigned long scope;
  long count;
};

// A message that is shown once a line.
struct a_line_message {
  a_seq_number seq;
  an_error_code code;
};

static constexpr unsigned num_prototype_chains = 983;

// All tables are zero at the start of the run; options write them before error_init.
static an_error_severity severity_override[num_error_codes];
static an_error_severity default_severity_override[num_error_codes]; // what es_default restores
static bool issue_once[num_error_codes];
static bool already_issued[num_error_codes];
static a_severity_range *severity_ranges[num_error_codes];
static a_severity_range *severity_ranges_tail[num_error_codes];
static a_prototype_diagnostic **prototype_diagnostics; // made when the first one is recorded
static a_line_message *line_messages;                  // sorted
static size_t num_line_messages;
static size_t size_of_line_messages;

// The decision for the parts behind a start.
static a_source_position kept_pos;
static an_error_severity kept_severity;
static bool kept_is_shown;

// ---- Severity of a code at a position ----

static bool is_not_after(a_source_position a, a_source_position b)
{
  return a.seq < b.seq || (a.seq == b.seq && a.column <= b.column);
}

static an_error_severity severity_of_range(const a_severity_range *range, a_source_position pos)
{
  an_error_severity severity = range->severity;
  while ((range = range->next) != nullptr && is_not_after(range->pos, pos)) {
    severity = range->severity;
  }
  return severity;
}

an_error_severity effective_severity(an_error_code code, an_error_severity severity,
                                     a_source_position pos)
{
  if (severity >= es_error) return severity;
  const a_severity_range *ranges = severity_ranges[code];
  // A pragma speaks for what stands behind it, however late that is reported.
  an_error_severity override = ranges != nullptr && !is_null_position(pos)
                                   ? severity_of_range(ranges, pos)
                                   : severity_override[code];
  return override != es_default ? override : severity;
}

static bool reaches_threshold(an_error_severity severity, a_source_position pos)
{
  if (severity < error_threshold) return false;
  int threshold = error_threshold;
  if (!is_null_position(pos) && severity < es_error && seq_is_in_system_header(pos.seq)) {
    threshold = es_error;
  } else if (curr_command_line_macro_def != nullptr) {
    threshold = es_discretionary_error;
  }
  return severity >= threshold;
}

// ---- Shown once ----

static bool is_once_a_line(an_error_code code)
{
  return code >= ec_ulp_5_1 && code <= ec_ulp_6_1;
}

// Enters the pair; false if it was there.
static bool enter_line_message(a_seq_number seq, an_error_code code)
{
  size_t low = 0;
  size_t high = num_line_messages;
  while (low < high) {
    size_t middle = (low + high) / 2;
    const a_line_message &entry = line_messages[middle];
    if (entry.seq == seq && entry.code == code) return false;
    if (entry.seq < seq || (entry.seq == seq && entry.code < code)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (num_line_messages == size_of_line_messages) {
    size_t new_length = size_of_line_messages * 2 + 64;
    line_messages = reinterpret_cast<a_line_message *>(realloc_buffer(
        reinterpret_cast<char *>(line_messages), size_of_line_messages * sizeof *line_messages,
        new_length * sizeof *line_messages));
    size_of_line_messages = new_length;
  }
  memmove(line_messages + low + 1, line_messages + low,
          (num_line_messages - low) * sizeof *line_messages);
  line_messages[low] = {seq, code};
  num_line_messages++;
  return true;
}

static bool suppressed_as_issued(an_error_code code, an_error_severity severity)
{
  bool was_issued = already_issued[code];
  already_issued[code] = true;
  return was_issued && issue_once[code] && severity <= es_warning;
}

// ---- Shown once for all instantiations ----

static unsigned prototype_chain(an_error_code code, an_error_severity severity,
                                a_source_position pos)
{
  return unsigned(((unsigned long)pos.seq + 1) * code * (severity + 1u) * (pos.column + 1u) %
                  num_prototype_chains);
}

static a_prototype_diagnostic *look_up_prototype(an_error_code code, an_error_severity severity,
                                                 a_source_position pos)
{
  if (prototype_diagnostics == nullptr) return nullptr;
  a_prototype_diagnostic *entry = prototype_diagnostics[prototype_chain(code, severity, pos)];
  while (entry != nullptr && !(entry->code == code && entry->severity == severity &&
                               entry->seq == pos.seq && entry->column == pos.column)) {
    entry = entry->next;
  }
  return entry;
}

bool find_prototype_diagnostic(an_error_code code, an_error_severity severity,
                               a_source_position pos)
{
  a_prototype_diagnostic *entry = look_up_prototype(code, severity, pos);
  if (entry == nullptr) return false;
  bool in_template = false;
  unsigned long scope = error_hooks.curr_scope_identity(&in_template);
  if (entry->scope != scope) {
    entry->scope = scope;
    entry->count = 0;
    return true;
  }
  return ++entry->count <= error_limit;
}

void record_prototype_diagnostic(an_error_code code, an_error_severity severity,
                                 a_source_position pos)
{
  if (prototype_diagnostics == nullptr) {
    size_t size = num_prototype_chains * sizeof *prototype_diagnostics;
    prototype_diagnostics = static_cast<a_prototype_diagnostic **>(alloc_in_region(0, size));
    memset(prototype_diagnostics, 0, size);
  }
  bool in_template = false;
  unsigned long scope = error_hooks.curr_scope_identity != nullptr
                            ? error_hooks.curr_scope_identity(&in_template)
                            : 0;
  a_prototype_diagnostic **chain = &prototype_diagnostics[prototype_chain(code, severity, pos)];
  auto *entry = static_cast<a_prototype_diagnostic *>(alloc_in_region(0, sizeof(**chain)));
  *entry = {*chain, code, severity, pos.column, pos.seq, scope, 0};
  *chain = entry;
}

static bool suppressed_as_duplicate(an_error_code code, an_error_severity severity,
                                    a_source_position pos)
{
  if (error_hooks.curr_scope_identity == nullptr) return false;
  bool in_template = false;
  if (error_hooks.curr_scope_identity(&in_template) == 0) return false;
  if (look_up_prototype(code, severity, pos) != nullptr) {
    return find_prototype_diagnostic(code, severity, pos);
  }
  if (in_template) record_prototype_diagnostic(code, severity, pos);
  return false;
}

// ---- The decision ----

static bool decide(an_error_code code, an_error_severity *severity, a_source_position pos)
{
  *severity = effective_severity(code, *severity, pos);
  if (!reaches_threshold(*severity, pos)) return false;
  if (is_once_a_line(code) && !enter_line_message(pos.seq, code)) return false;
  if (suppressed_as_issued(code, *severity)) return false;
  return !suppressed_as_duplicate(code, *severity, pos);
}

bool diagnostic_is_shown(an_error_code code, a_diagnostic_part part, an_error_severity *severity,
                         a_source_position *pos)
{
  switch (part) {
  case dp_complete: return decide(code, severity, *pos);
  case dp_start:
  case dp_context_line:
    kept_is_shown = decide(code, severity, *pos);
    kept_pos = *pos;
    kept_severity = *severity;
    return kept_is_shown;
  case dp_added_line:
  case dp_end:
  case dp_context_end: break;
  }
  *pos = kept_pos;
  *severity = kept_severity;
  return kept_is_shown;
}

// ---- Queries ----

bool is_effective_error(an_error_code code, an_error_severity severity, a_source_position pos)
{
  return effective_severity(code, severity, pos) > es_warning;
}

bool reported_error_severity(an_error_code code, an_error_severity severity,
                             an_error_severity *result)
{
  *result = effective_severity(code, severity, error_position);
  return reaches_threshold(*result, error_position);
}

bool treat_as_warning(an_error_code code)
{
  return severity_override[code] == es_warning;
}

bool treat_as_none(an_error_code code)
{
  return severity_override[code] == es_none;
}

bool misra_c_2004_generate_diagnostic(an_error_code code, an_error_severity severity)
{
  return effective_severity(code, severity, error_position) != es_none;
}

bool ulp_generate_diagnostic(an_error_code code, an_error_severity severity)
{
  return effective_severity(code, severity, error_position) != es_none;
}

// ---- Requests ----

static a_severity_range *append_range(int code, a_source_position pos, an_error_severity severity)
{
  auto *range = static_cast<a_severity_range *>(alloc_in_region(0, sizeof(a_severity_range)));
  *range = {nullptr, pos, severity};
  if (severity_ranges_tail[code] == nullptr) {
    severity_ranges[code] = range;
  } else {
    severity_ranges_tail[code]->next = range;
  }
  severity_ranges_tail[code] = range;
  return range;
}

static void request_severity(int code, an_error_severity severity, const a_source_position *pos,
                             bool from_option)
{
  if (severity == es_once) {
    // Once means once in the run, not once behind the pragma: there is no range to record.
    issue_once[code] = true;
    return;
  }
  if (severity == es_default) {
    severity_override[code] = default_severity_override[code];
  } else {
    severity_override[code] = severity;
    if (from_option) default_severity_override[code] = severity;
  }
  if (pos == nullptr) return;
  if (severity_ranges[code] == nullptr) {
    append_range(code, null_source_position, default_severity_override[code]);
  }
  append_range(code, *pos, severity_override[code]);
}

bool set_severity_for_error_number(int code, an_error_severity severity,
                                   const a_source_position *pos, bool from_option)
{
  if (code < 1 || code >= num_error_codes) return true;
  request_severity(code, severity, pos, from_option);
  return false;
}

bool set_severity_for_error_tag(const char *tag, an_error_severity severity,
                                const a_source_position *pos, bool from_option)
{
  int code = error_code_for_tag(tag);
  if (code < 0) return true;
  set_severity_for_error_number(code, severity, pos, from_option);
  return false;
}

// ---- Initialisation ----

void severity_init()
{
  prototype_diagnostics = nullptr;
  num_line_messages = 0;
  memset(already_issued, 0, sizeof already_issued);
}
