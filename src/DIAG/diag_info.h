// diag_info.h - severities and the rows of the tool chain's message table.
#pragma once

// Severities in rising order.  A value outside of the range is printed as "(unknown)".
enum dc_SEVERITY : int {
#define SEVERITY(name, word) name,
#include "DIAG/diag_severities.def"
};

// One message.
struct DIAG_INFO {
  int         code;      // 0 in the row that ends the table
  char const *std_msg;   // printf format
  char const *vrb_msg;   // the long form, or null
  dc_SEVERITY severity;  // changed by DIAGNOSTIC::override_severity
  bool        internal;  // a fault of the tool, not of its user
  bool        fixed;     // not discretionary: the severity stays
};

// The messages in rising order of code, behind them a row with code 0.
extern DIAG_INFO diag_info_table[];
