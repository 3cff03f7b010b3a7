// host_envir.h - what depends on the host: search lists and names of files, files, environment,
// locale. Every floor may use it; it uses mem/ and errors/ only, and asks the scanner through a
// hook.
#pragma once
#include <cstddef>
#include <cstdio>
#include <ctime>
#include "errors/error.h"

struct a_text_buffer;
struct an_include_file_history;

typedef unsigned char a_unicode_source_kind_tag; // always 0: only byte sources are read

// ---- Search lists ----

struct a_directory_name_entry {
  const char *dir_name; // shared by f_directory_of, so that equal names are equal pointers
  bool is_system;       // files found here are system headers
  a_directory_name_entry *next;
};

extern a_directory_name_entry *incl_search_path, *end_incl_search_path; // #include "..."
// The element of the same list where the search for <...> starts, and the mark: the last entry
// before "-", null without one.
extern a_directory_name_entry *sys_incl_search_path;
extern a_directory_name_entry *end_of_user_incl_search_path;
extern bool put_dir_of_each_opened_source_file_on_incl_search_path;
extern bool stack_referenced_include_directories;
extern a_directory_name_entry *template_search_path;
extern const char *current_directory_name;
extern const char *primary_source_file_name;
extern const char *dir_name_of_primary_source_file;
extern const char *zok_base_directory;

void add_to_include_search_path(const char *dir, bool is_system);
void add_to_front_of_include_search_path(const char *dir, a_directory_name_entry **head,
                                         a_directory_name_entry **tail);
void add_to_specified_include_search_path(const char *dir, bool is_system,
                                          a_directory_name_entry **head,
                                          a_directory_name_entry **tail);
// Appends the directories of the variable C_DIR.
void add_environment_include_search_path();
void add_default_include_search_path(a_directory_name_entry **head, a_directory_name_entry **tail);
// Removes each non-system entry that names a system entry's directory, with warning 2088.  A mark
// on such an entry moves to the one before.
void remove_duplicate_system_includes(a_directory_name_entry **marker);
// Ends the part of the path that <...> doesn't see; the option word "-".
void end_user_include_search_path();
// Points sys_incl_search_path behind that mark, or at the whole list.
void settle_system_include_search_path();
// The head of the list stands for the directory of the current file: entering one, leaving one for
// the file whose directory is given, changing it in place.
void push_primary_include_search_dir(const char *dir, bool is_system);
void pop_primary_include_search_dir(const char *dir, bool is_system);
void change_primary_include_search_dir(const char *dir);
void add_to_template_search_path(const char *dir);

// ---- Finding and opening source files ----

// How a source file is asked for.
struct a_source_file_request {
  const char *name;
  bool use_search_path;
  bool is_include;
  bool angle_bracket;
  bool search_after_current_dir; // #include_next
  bool try_name_first;           // try the name as it stands before the search
  bool failure_is_not_fatal;     // severity discretionary error instead of catastrophe
  bool input_is_open;            // some file is being read already: "-" is an ordinary name
  a_directory_name_entry *current_dir_entry; // through which the current file was found, or null
};
struct an_opened_source_file {
  FILE *file;                        // null if suppressed
  const char *file_name;             // as printed
  const char *full_name;             // with which it was opened
  a_directory_name_entry *dir_entry; // through which it was found, or null
  an_include_file_history *history;  // as the hook gave it
  a_unicode_source_kind_tag unicode_kind;
  bool suppressed; // guarded or once-only: not opened at all
};

// Resolves and opens a source file.  True with *opened filled (stream or suppressed); false after
// the report of a failure that isn't fatal.  Catastrophe 184 for an empty search list.
bool open_file_for_input(const a_source_file_request &request, an_opened_source_file *opened);
// Installed by the scanner: says whether a file need not be read again, and hands back its history
// record.
extern bool (*suppress_subsequent_include_hook)(const char *name, an_include_file_history **history,
                                                bool create, bool is_system);

FILE *fopen_with_result(const char *name, const char *mode, an_open_file_result *result);
FILE *open_input_file(const char *name, bool binary, an_open_file_result *result);
// Refuses (off_bad_name) the name of the primary source file.
FILE *open_output_file(const char *name, bool binary, bool update, an_open_file_result *result);
FILE *open_source_file(const char *name, an_open_file_result *result,
                       a_unicode_source_kind_tag *kind);
FILE *reopen_source_file(const char *name, a_unicode_source_kind_tag *kind);
// Closes and tells whether all was written; errno of the failure in result->error_number.
bool close_output_file(FILE *stream, an_open_file_result *result);
// The same with the report of a failure: a catastrophe at error_position, or with
// off_report_command_line in `flags` a command-line error.  Failures whose bits are in `flags` are
// tolerated: null in silence.
// kind_code describes the file (ec_file_kind_...).
FILE *open_input_file_with_error_handling(const char *name, bool binary, unsigned flags,
                                          an_error_code kind_code);
FILE *open_output_file_with_error_handling(const char *name, bool binary, bool update,
                                           unsigned flags, an_error_code kind_code);
FILE *open_source_file_with_error_handling(const char *name, unsigned flags,
                                           an_open_file_result *result,
                                           a_unicode_source_kind_tag *kind);
FILE *fopen_with_error(const char *name, const char *mode, unsigned flags, an_error_code kind_code);
// Clears *file.  A failure of any write is catastrophe 1972 or 191.
void close_output_file_with_error_handling(FILE **file, an_error_code kind_code);
bool okay_as_output_file(const char *name);
// A file without a name; catastrophe 165 if none can be made.
FILE *open_temp_file(bool binary);
void close_temp_file(FILE *stream);
// Generated files that a failing run must not leave half written.  Safe in a signal handler.
void delete_unfinished_output_files();
bool delete_file(const char *name);
bool is_directory(const char *name);
bool is_regular_file(const char *name);
bool get_file_modification_time(const char *name, time_t *time);
const char *get_file_modification_time_string(const char *name, bool short_form);
// Next line in a shared buffer, without its newline; null at the end of the file.
char *read_line_from_file(FILE *stream);

// ---- Names ----

// Directory and file in one name, in `buffer` or, if null, in a shared one; terminated.
char *combine_dir_and_file_name(const char *dir, const char *file, a_text_buffer *buffer);
void append_to_path_name(a_text_buffer *buffer, const char *name);
// Replaces what is behind the last '.' of the last component of the name in the buffer, or adds it;
// the name is terminated before and after.
void replace_file_name_suffix(const char *suffix, a_text_buffer *buffer);
const char *suffix_of(const char *name);
const char *start_of_file_name(const char *name);
// The directory part of a name, shared: equal directories have equal pointers.  "" if there's none.
const char *f_directory_of(const char *name, bool in_general_heap);
bool is_absolute_file_name(const char *name);
// Absolute name with no ".", ".." and empty components, in a buffer that the next call but one
// reuses.
const char *normalize_file_name(const char *name);
int compare_dir_names(const char *a, const char *b, bool no_cwd);
const char *file_name_in_internal_encoding(const char *name);
const char *file_name_in_external_encoding(const char *name);
// Base name of `name` followed by '.' and `suffix`; newly allocated.
char *derived_name(const char *name, const char *suffix);
// With `for_c_string`, quotes, backslashes and unprintable characters are written as escapes.
void write_file_name_to_text_buffer(const char *name, a_text_buffer *buffer, bool for_c_string);
void write_file_name(const char *name, FILE *stream, bool for_c_string);
const char *format_file_name(const char *name);

// The family that the tool chain uses.  Results are in static buffers of 500 bytes.
void fn_split(const char *path, char **dir, char **base, char **ext);
char *fn_build(char *out, const char *dir, const char *base, const char *ext);
char *fn_addext(const char *name, const char *ext, bool force);
char *fn_delext(const char *name);
const char *fn_basename(const char *path);
bool fn_hasdir(const char *path);
bool fn_has_full_path(const char *path);
bool fn_has_relative_path(const char *path);
bool fn_matches_ext(const char *name, const char *ext);
bool fn_samefile(const char *a, const char *b);
int fn_strcmp(const char *a, const char *b);
bool fn_exists(const char *name);
bool fn_rename(const char *from, const char *to);
bool fn_delete(const char *name);
char *fn_tmpnam(char *out, const char *dir, const char *prefix);
const char *fn_get_working_dir();
bool fn_change_dir(const char *dir);
const char *fn_realname(const char *name);
bool fn_is_empty(const char *name);
bool file_is_empty(FILE *stream);
bool fn_is_user_specified_stream(const char *name);
bool fn_explicit_disable(const char *name);
FILE *user_specified_advice_stream(const char *name);

// ---- Environment, option files, module id ----

// Value of ROV_<name>, else of <name>, else null.
const char *get_environment(const char *name);
// Calls back for each element of the ';'-separated list in the variable.
void extract_paths(const char *name, void (*callback)(const char *element));
// For a variable that holds a single element: its text in *value and 1 in *count.
bool gen_envvar_warning(const char *name, const char **value, int *count);
// Next word of an option file, newly allocated; null at the end.
char *fnextopt(FILE *stream);

unsigned crc_32(const char *text, unsigned initial);
// The same for a file across runs and different between files; computed once and kept.
const char *make_module_id(const char *text);
void set_module_id(const char *id);
const char *get_module_id();
const char *generate_instantiation_output_file_name(const char *name);
void change_non_id_characters(char *text);

// ---- Characters ----

// Switches to the locale of the environment, once; catastrophe 923 if that fails.
void set_multibyte_locale();
// Bytes of the multibyte character at `text`; 1 for a byte that starts no valid sequence.
unsigned f_mbc_length(const char *text);
// Value of that character, its bytes in *length.
unsigned long mbc_to_wide_char(const char *text, unsigned *length);
const char *mbc_strchr(const char *text, char c);
// UTF-8 bytes of a code point in `out` (at least 4); returns their number.
unsigned unicode_to_utf8(unsigned long code, char *out);
// UTF-16 units of a code point in `out` (at least 2); returns their number.
unsigned ucn_to_utf16(unsigned long code, unsigned short *out);
// Character number `index` of a string whose characters have `char_size` target bytes.
unsigned long extract_character_from_string(const char *text, size_t index, unsigned char_size);
int smemcmp(const void *a, const void *b, size_t length);

// ---- Start-up, in the driver's order ----

void host_envir_early_init();
void host_envir_one_time_init();
void host_envir_init();
void host_envir_trans_unit_init();
