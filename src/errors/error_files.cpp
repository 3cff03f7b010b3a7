// error_files.cpp - failures of files as diagnostics.
#include <cstring>
#include "errors/error_private.h"

static const char *reason_of(const an_open_file_result *result)
{
  if (result == nullptr) return nullptr;
  if (result->bits & off_bad_name) return error_text(ec_w_invalid_file_name);
  if (result->bits & off_directory) return error_text(ec_w_is_a_directory);
  if (result->bits & off_not_regular) return error_text(ec_w_not_a_regular_file);
  if (result->bits & off_system_error) return strerror(result->errno_value);
  return nullptr;
}

void file_open_error(an_error_severity severity, an_error_code kind_code, const char *name,
                     const an_open_file_result *result)
{
  const char *reason = reason_of(result);
  a_source_position pos = severity == es_command_line_error ? no_line_position : error_position;
  pos_ststst_diagnostic(severity,
                        reason != nullptr ? ec_cannot_open_file_reason : ec_cannot_open_file, pos,
                        error_text(kind_code), name, reason);
}

void output_file_open_error(bool for_command_line, an_error_code kind_code, const char *name,
                            an_error_severity severity)
{
  an_open_file_result result = {off_bad_name, 0};
  file_open_error(for_command_line ? es_command_line_error : severity, kind_code, name, &result);
}

void file_write_error(an_error_code kind_code, int errno_value)
{
  if (errno_value != 0) {
    strstr_catastrophe(ec_file_write_error_errno, error_text(kind_code), strerror(errno_value));
  }
  str_catastrophe(ec_file_write_error, error_text(kind_code));
}
