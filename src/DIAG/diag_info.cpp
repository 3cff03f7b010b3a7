// diag_info.cpp - the message table: look-up by code, change of severities.
// Owns:    diag_info_table, the map by code.
// Rule:    a message that isn't discretionary keeps its severity.
#include "DIAG/diag_info.h"
#include <map>
#include "DIAG/diag.h"

enum { NONE = 0, INTERNAL = 1, FIXED = 2 };

DIAG_INFO diag_info_table[] = {
#define MESSAGE(code, severity, flags, text)                                                       \
  {code, text, nullptr, severity, ((flags)&INTERNAL) != 0, ((flags)&FIXED) != 0},
#include "DIAG/diag_messages.def"
    {0, nullptr, nullptr, dc_SUPPRESSED, false, false},
};

static std::map<int, DIAG_INFO *> map_by_code()
{
  std::map<int, DIAG_INFO *> rows;
  for (DIAG_INFO *row = diag_info_table; row->code != 0; row++)
    rows[row->code] = row;
  return rows;
}

DIAG_INFO *DIAGNOSTIC::get_info(int code)
{
  static std::map<int, DIAG_INFO *> const rows = map_by_code();
  auto found = rows.find(code);
  return found == rows.end() ? nullptr : found->second;
}

// Advice and fatal messages keep their severity, and nothing is turned into a message of a kind
// that means something else than a fault.
static bool may_become(DIAG_INFO const *row, dc_SEVERITY severity)
{
  if (row->fixed || row->internal) return false;
  if (row->severity == dc_ADVICE || row->severity == dc_FATAL) return false;
  return severity != dc_NO_ERROR && severity != dc_ADVICE && severity != dc_DEBUG;
}

static void change_severity(DIAG_INFO *row, dc_SEVERITY severity)
{
  if (may_become(row, severity)) row->severity = severity;
}

void DIAGNOSTIC::override_severity(int code, dc_SEVERITY severity)
{
  if (DIAG_INFO *row = get_info(code)) change_severity(row, severity);
}

void DIAGNOSTIC::override_severity(dc_SEVERITY from, dc_SEVERITY severity)
{
  for (DIAG_INFO *row = diag_info_table; row->code != 0; row++) {
    if (row->severity == from) change_severity(row, severity);
  }
}

void DIAGNOSTIC::override_severity(char const *list, dc_SEVERITY severity)
{
  if (!list) return;
  enum { BEYOND_ALL_CODES = 1000000 };
  int code = 0;
  for (char const *p = list;; p++) {
    if (*p >= '0' && *p <= '9') {
      if (code < BEYOND_ALL_CODES) code = code * 10 + (*p - '0');
    } else if (*p == ',' || *p == '\0') {
      override_severity(code, severity);
      code = 0;
    }
    if (*p == '\0') return;
  }
}
