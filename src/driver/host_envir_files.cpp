// host_envir_files.cpp - opening, closing, deleting files.
// Owns:    the table of output files that aren't finished yet.
// Rule:    an output never goes over the primary source file, whatever the name's form; output
//          that a failing run leaves unfinished is deleted, so that no build takes it for good.
// Entry:   see host_envir.h.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include "driver/host_envir.h"
#include "driver/host_envir_internal.h"
#include "errors/error.h"
#include "mem/mem_manage.h"

//-------------------------------------------------------------------------------------------------
// Unfinished output.

struct an_unfinished_file {
  FILE *stream;
  const char *name;
};

static constexpr unsigned max_unfinished_files = 16;
static volatile an_unfinished_file unfinished_files[max_unfinished_files];

// A device or a pipe is none of ours to delete.
static void note_output_file(const char *name, FILE *stream)
{
  struct stat status;
  if (fstat(fileno(stream), &status) != 0 || !S_ISREG(status.st_mode)) return;
  for (volatile an_unfinished_file &file : unfinished_files) {
    if (file.name != nullptr) continue;
    file.stream = stream;
    file.name = copy_of_string(name);
    return;
  }
}

static void forget_output_file(const FILE *stream)
{
  for (volatile an_unfinished_file &file : unfinished_files) {
    if (file.stream != stream) continue;
    file.name = nullptr;
    file.stream = nullptr;
  }
}

void delete_unfinished_output_files()
{
  for (volatile an_unfinished_file &file : unfinished_files) {
    if (file.name != nullptr) unlink(file.name);
    file.name = nullptr;
  }
}

//-------------------------------------------------------------------------------------------------
// Opening.

static FILE *failed(an_open_file_result *result, unsigned bits, int error_number)
{
  *result = {(unsigned char)bits, error_number};
  return nullptr;
}

FILE *fopen_with_result(const char *name, const char *mode, an_open_file_result *result)
{
  *result = {};
  if (*name == '\0') return failed(result, off_bad_name, 0);
  struct stat status;
  if (stat(name, &status) != 0) {
    if (errno != ENOENT) return failed(result, off_system_error, errno);
    if (*mode == 'r') return failed(result, off_not_found, errno);
  } else if (S_ISDIR(status.st_mode)) {
    return failed(result, off_directory, EISDIR);
  } else if (!S_ISREG(status.st_mode) && *mode == 'r') {
    return failed(result, off_not_regular, 0);
  }
  FILE *stream = fopen(name, mode);
  if (stream == nullptr) {
    return failed(result, errno == ENOENT ? off_not_found : off_system_error, errno);
  }
  return stream;
}

FILE *open_input_file(const char *name, bool binary, an_open_file_result *result)
{
  return fopen_with_result(name, binary ? "rb" : "r", result);
}

static bool is_primary_source_file(const char *name)
{
  const char *source = primary_source_file_name;
  return source != nullptr && (strcmp(name, source) == 0 || fn_samefile(name, source));
}

FILE *open_output_file(const char *name, bool binary, bool update, an_open_file_result *result)
{
  if (is_primary_source_file(name)) return failed(result, off_bad_name, 0);
  const char *mode = update ? (binary ? "w+b" : "w+") : (binary ? "wb" : "w");
  return fopen_with_result(name, mode, result);
}

// Bytes are the only kind of source, so nothing has to be looked at in advance.  One stat of the
// open stream replaces the one of the name.
FILE *open_source_file(const char *name, an_open_file_result *result,
                       a_unicode_source_kind_tag *kind)
{
  *kind = 0;
  *result = {};
  if (*name == '\0') return failed(result, off_bad_name, 0);
  struct stat status;
  if (stat(name, &status) != 0) {
    return failed(result, errno == ENOENT ? off_not_found : off_system_error, errno);
  }
  if (S_ISDIR(status.st_mode)) return failed(result, off_directory, EISDIR);
  if (!S_ISREG(status.st_mode)) return failed(result, off_not_regular, 0);
  FILE *stream = fopen(name, "r");
  if (stream == nullptr) return failed(result, off_system_error, errno);
  return stream;
}

FILE *reopen_source_file(const char *name, a_unicode_source_kind_tag *kind)
{
  an_open_file_result result;
  return open_source_file(name, &result, kind);
}

bool close_output_file(FILE *stream, an_open_file_result *result)
{
  *result = {};
  errno = 0;
  bool failed_before = ferror(stream) != 0;
  bool flush_failed = fflush(stream) != 0;
  int error_number = errno;
  if (stream == stdout || stream == stderr) return !failed_before && !flush_failed;
  if (fclose(stream) != 0) {
    if (error_number == 0) error_number = errno;
  } else if (!failed_before && !flush_failed) {
    return true;
  }
  *result = {off_system_error, error_number};
  return false;
}

//-------------------------------------------------------------------------------------------------
// Opening with a report.

static FILE *report_open_failure(const char *name, unsigned flags,
                                 const an_open_file_result &result, an_error_code kind_code)
{
  unsigned tolerated = flags & ~unsigned(off_report_command_line);
  if (!(result.bits & off_bad_name) && (result.bits & tolerated) != 0) return nullptr;
  bool for_command_line = (flags & off_report_command_line) != 0;
  file_open_error(for_command_line ? es_command_line_error : es_catastrophe, kind_code, name,
                  &result);
  return nullptr;
}

FILE *open_input_file_with_error_handling(const char *name, bool binary, unsigned flags,
                                          an_error_code kind_code)
{
  an_open_file_result result;
  if (FILE *stream = open_input_file(name, binary, &result)) return stream;
  return report_open_failure(name, flags, result, kind_code);
}

FILE *open_output_file_with_error_handling(const char *name, bool binary, bool update,
                                           unsigned flags, an_error_code kind_code)
{
  an_open_file_result result;
  FILE *stream = open_output_file(name, binary, update, &result);
  if (stream == nullptr) return report_open_failure(name, flags, result, kind_code);
  // What a build would go on with; listings tell of the failure itself and stay.
  bool is_for_next_stage = kind_code == ec_file_kind_generated_c ||
                           kind_code == ec_file_kind_pp_output || kind_code == ec_file_kind_il_1;
  if (is_for_next_stage) note_output_file(name, stream);
  return stream;
}

FILE *open_source_file_with_error_handling(const char *name, unsigned flags,
                                           an_open_file_result *result,
                                           a_unicode_source_kind_tag *kind)
{
  if (FILE *stream = open_source_file(name, result, kind)) return stream;
  return report_open_failure(name, flags, *result, ec_file_kind_source);
}

FILE *fopen_with_error(const char *name, const char *mode, unsigned flags, an_error_code kind_code)
{
  an_open_file_result result;
  if (FILE *stream = fopen_with_result(name, mode, &result)) return stream;
  return report_open_failure(name, flags, result, kind_code);
}

void close_output_file_with_error_handling(FILE **file, an_error_code kind_code)
{
  FILE *stream = *file;
  *file = nullptr;
  if (stream == nullptr) return;
  an_open_file_result result;
  if (!close_output_file(stream, &result)) file_write_error(kind_code, result.errno_value);
  forget_output_file(stream);
}

//-------------------------------------------------------------------------------------------------
// Temporary files and other services.

FILE *open_temp_file(bool binary)
{
  const char *dir = getenv("TMPDIR");
  char name[500];
  snprintf(name, sizeof name, "%s/rvparse_XXXXXX", dir != nullptr && *dir != '\0' ? dir : "/tmp");
  int descriptor = mkstemp(name);
  FILE *stream = nullptr;
  if (descriptor >= 0) {
    unlink(name);
    stream = fdopen(descriptor, binary ? "w+b" : "w+");
  }
  if (stream == nullptr) {
    str_errno_catastrophe(ec_cannot_open_temp_file_reason, name, errno);
  }
  return stream;
}

void close_temp_file(FILE *stream)
{
  fclose(stream);
}

bool okay_as_output_file(const char *name)
{
  if (*name == '\0' || is_primary_source_file(name)) return false;
  struct stat status;
  if (stat(name, &status) == 0) return S_ISREG(status.st_mode) && access(name, W_OK) == 0;
  if (errno != ENOENT) return false;
  const char *dir = f_directory_of(name, true);
  return access(*dir == '\0' ? "." : dir, W_OK) == 0;
}

bool delete_file(const char *name)
{
  return unlink(name) == 0;
}

bool is_directory(const char *name)
{
  struct stat status;
  return stat(name, &status) == 0 && S_ISDIR(status.st_mode);
}

bool is_regular_file(const char *name)
{
  struct stat status;
  return stat(name, &status) == 0 && S_ISREG(status.st_mode);
}

bool get_file_modification_time(const char *name, time_t *time)
{
  struct stat status;
  if (stat(name, &status) != 0) return false;
  *time = status.st_mtime;
  return true;
}

// ctime's text without the newline; the short form is "Mon dd hh:mm:ss yyyy".
const char *get_file_modification_time_string(const char *name, bool short_form)
{
  static char text[32];
  time_t time;
  if (!get_file_modification_time(name, &time)) return "";
  ctime_r(&time, text);
  text[strcspn(text, "\n")] = '\0';
  return short_form ? text + 4 : text;
}

bool file_is_empty(FILE *stream)
{
  struct stat status;
  return fstat(fileno(stream), &status) == 0 && status.st_size == 0;
}

char *read_line_from_file(FILE *stream)
{
  static a_text_buffer *buffer;
  if (buffer == nullptr) buffer = alloc_text_buffer(1024);
  reset_text_buffer(buffer);
  int c = getc(stream);
  if (c == EOF) return nullptr;
  for (; c != EOF && c != '\n'; c = getc(stream))
    add_char_to_text_buffer(buffer, char(c));
  add_char_to_text_buffer(buffer, '\0');
  return buffer->buffer;
}
