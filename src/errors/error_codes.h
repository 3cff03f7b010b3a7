// error_codes.h - the codes of all messages and the levels at which they are issued.
#pragma once

enum an_error_code : unsigned short {
#define MESSAGE(code, tag, text) ec_##tag = code,
#define PHRASE(code, name, text) ec_##name = code,
#define NO_MESSAGE(code)
#include "errors/messages.def"
  num_error_codes = 2612
};

enum an_error_severity : unsigned char {
  es_default, // only as a request: back to the option's level
  es_once,    // only as a request: issue once
  es_none,    // suppressed
  es_remark,
  es_advisory,
  es_warning,
  es_discretionary_error, // the last one that options and pragmas can change
  es_error,
  es_catastrophe,
  es_command_line_error,
  es_internal_error,
  num_error_severities
};
