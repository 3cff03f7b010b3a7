// cmd_line.cpp - the option table, the option reader and the frame of the command line's
// processing.
// Owns:    option_table, option_seen, the state of the reader.
// Uses:    option files (host_envir), the handlers (cmd_line_options), the rules (cmd_line_modes).
// Rule:    an option only notes what was asked for; what modes imply is settled after the last one,
//          and what was seen beats what a mode implies.
// Entry:   cmd_line_early_init, proc_command_line.
#include "driver/cmd_line.h"
#include <cstdlib>
#include <cstring>
#include "driver/cfe.h"
#include "driver/cmd_line_internal.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/rov_util.h"
#include "driver/target.h"
#include "errors/error.h"
#include "lex/macro.h"

#define OPTION(id, name, letter, value, argument, pch, action, help)                               \
  {opt_##id, name, letter, value, argument, ENABLED_##action, pch, sizeof(name) - 1, action, help},
#define OPTION_ALSO OPTION
#define SETS(f)                                                                                    \
  oa_set_flag,                                                                                     \
  {                                                                                                \
    .flag = &f                                                                                     \
  }
#define CLEARS(f)                                                                                  \
  oa_clear_flag,                                                                                   \
  {                                                                                                \
    .flag = &f                                                                                     \
  }
#define NAMES(f)                                                                                   \
  oa_store_name,                                                                                   \
  {                                                                                                \
    .text = &f                                                                                     \
  }
#define CALLS(f)                                                                                   \
  oa_call,                                                                                         \
  {                                                                                                \
    .handler = f                                                                                   \
  }
#define NOT_OFFERED                                                                                \
  oa_call,                                                                                         \
  {                                                                                                \
    .handler = nullptr                                                                             \
  }
#define ENABLED_SETS(f) true
#define ENABLED_CLEARS(f) true
#define ENABLED_NAMES(f) true
#define ENABLED_CALLS(f) true
#define ENABLED_NOT_OFFERED false
constinit const an_option_kind option_table[] = {
#include "driver/options.def"
};
constexpr unsigned max_options = 494;
constinit const unsigned option_table_length = sizeof option_table / sizeof option_table[0];
static_assert(sizeof option_table / sizeof option_table[0] <= max_options);

// An abbreviation reaches the row only when it has at least so many letters.
static const struct {
  an_option_id id;
  unsigned least_length;
} least_abbreviations[] = {
    {opt_instantiation_dir, sizeof "instantiati" - 1},
};

bool option_seen[opt_last];
const char *primary_source_file_argument;
FILE *opt_cmdfile_stream;
const char *curr_option_text;

static const char *curr_option_arg;     // argument of the option just read, or null
static const char *rest_of_short_group; // letters left of a word of short options, or null
static int next_sys_arg;                // index of the next word in sys_argv

//-------------------------------------------------------------------------------------------------
// Words.

const char *next_option_word()
{
  if (opt_cmdfile_stream != nullptr) {
    if (const char *word = fnextopt(opt_cmdfile_stream)) return word;
    fclose(opt_cmdfile_stream);
    opt_cmdfile_stream = nullptr;
  }
  return next_sys_arg < sys_argc ? sys_argv[next_sys_arg++] : nullptr;
}

int number_in_option(const char *text)
{
  long long value = 0;
  const char *p = text;
  for (; *p >= '0' && *p <= '9'; p++) {
    value = value * 10 + (*p - '0');
    if (value > 0x7FFFFFFF) break;
  }
  if (p == text || *p != '\0') str_command_line_error(ec_cl_invalid_number, text);
  return int(value);
}

void divert_option_reader(const char *words, a_saved_option_reader *saved)
{
  static char *one_word[2];
  *saved = {sys_argc, sys_argv, next_sys_arg, rest_of_short_group};
  one_word[0] = const_cast<char *>(words);
  sys_argc = 1;
  sys_argv = one_word;
  next_sys_arg = 0;
  rest_of_short_group = nullptr;
}

void resume_option_reader(const a_saved_option_reader &saved)
{
  sys_argc = saved.argc;
  sys_argv = saved.argv;
  next_sys_arg = saved.next;
  rest_of_short_group = saved.rest_of_group;
}

//-------------------------------------------------------------------------------------------------
// Reading one option.

[[noreturn]] static void invalid_option()
{
  str_command_line_error(ec_cl_invalid_option, curr_option_text);
}

static bool abbreviation_reaches(const char *text, size_t length, const an_option_kind &option)
{
  if (strncmp(option.name, text, length) != 0) return false;
  for (const auto &entry : least_abbreviations) {
    if (entry.id == option.id && length < entry.least_length) return false;
  }
  return true;
}

[[noreturn]] static void ambiguous_option(const char *text, size_t length)
{
  char *written = static_cast<char *>(malloc(length + 1));
  memcpy(written, text, length);
  written[length] = '\0';
  start_command_line_error(ec_cl_ambiguous_option, written);
  for (const an_option_kind &option : option_table) {
    if (abbreviation_reaches(text, length, option)) {
      str_add_diag_info(ec_candidate_option, option.name);
    }
  }
  end_command_line_error();
}

static const an_option_kind *find_long_option(const char *text, size_t length)
{
  for (const an_option_kind &option : option_table) {
    if (option.name_length == length && memcmp(option.name, text, length) == 0) return &option;
  }
  const an_option_kind *found = nullptr;
  for (const an_option_kind &option : option_table) {
    if (!abbreviation_reaches(text, length, option)) continue;
    if (found != nullptr) ambiguous_option(text, length);
    found = &option;
  }
  if (found == nullptr) invalid_option();
  return found;
}

static const an_option_kind *find_short_option(char letter)
{
  for (const an_option_kind &option : option_table) {
    if (option.short_name == letter) return &option;
  }
  invalid_option();
}

static void use_option(const an_option_kind *option)
{
  option_seen[option->id] = true;
  if (!option->enabled) invalid_option();
}

static void take_argument_from_next_word()
{
  curr_option_arg = next_option_word();
  if (curr_option_arg == nullptr) invalid_option();
}

static const an_option_kind *read_short_option(const char *letters)
{
  static char text[3] = "-";
  text[1] = *letters;
  curr_option_text = text;
  const an_option_kind *option = find_short_option(*letters++);
  use_option(option);
  rest_of_short_group = *letters != '\0' ? letters : nullptr;
  if (option->takes_argument) {
    curr_option_arg = rest_of_short_group;
    rest_of_short_group = nullptr;
    if (curr_option_arg == nullptr) take_argument_from_next_word();
  }
  return option;
}

static const an_option_kind *read_long_option(const char *word)
{
  const char *text = word + 2;
  size_t length = strcspn(text, "=");
  curr_option_text = word;
  if (length == 0) invalid_option();
  const an_option_kind *option = find_long_option(text, length);
  use_option(option);
  if (option->takes_argument) {
    if (text[length] != '=') {
      take_argument_from_next_word();
    } else {
      curr_option_arg = text + length + 1;
      if (*curr_option_arg == '\0') invalid_option();
    }
  }
  return option;
}

// The next option with its argument in curr_option_arg; null at the end or at the source file's
// name, behind which nothing is read.
static const an_option_kind *read_option()
{
  curr_option_arg = nullptr;
  if (rest_of_short_group != nullptr) return read_short_option(rest_of_short_group);
  const char *word = next_option_word();
  if (word == nullptr) return nullptr;
  while (*word == ' ' || (*word >= '\t' && *word <= '\r'))
    word++;
  if (word[0] != '-' || word[1] == '\0') { // a lone "-" is the standard input
    primary_source_file_argument = word;
    return nullptr;
  }
  return word[1] == '-' ? read_long_option(word) : read_short_option(word + 1);
}

static void carry_out_option(const an_option_kind &option)
{
  if (option.is_pch_relevant && pch_option_hook != nullptr) {
    pch_option_hook(option.id, option.value, curr_option_arg);
  }
  switch (option.action) {
  case oa_set_flag: *option.target.flag = option.value != 0; break;
  case oa_clear_flag: *option.target.flag = option.value == 0; break;
  case oa_store_name: *option.target.text = curr_option_arg; break;
  case oa_call: option.target.handler(option, curr_option_arg); break;
  }
}

void read_options()
{
  while (const an_option_kind *option = read_option())
    carry_out_option(*option);
}

//-------------------------------------------------------------------------------------------------
// The frame.

void print_banner(FILE *stream)
{
  fprintf(stream, "%-*.*s", 40, 40, tool_title);
  fprintf(stream, "%s\n", tool_version_text);
}

static void settle_search_paths()
{
  if (!openmp_mode_host) add_environment_include_search_path();
  add_default_include_search_path(&incl_search_path, &end_incl_search_path);
  if ((gcc_mode || gpp_mode) && gnu_version > 30299) {
    remove_duplicate_system_includes(&end_of_user_incl_search_path);
  }
  settle_system_include_search_path();
}

static void settle_primary_source_file()
{
  if (primary_source_file_argument == nullptr || *primary_source_file_argument == '\0') {
    command_line_error(ec_cl_missing_source_file_name);
  }
  primary_source_file_name = primary_source_file_argument;
  if (!put_dir_of_each_opened_source_file_on_incl_search_path) return;
  dir_name_of_primary_source_file = f_directory_of(primary_source_file_name, true);
  add_to_front_of_include_search_path(dir_name_of_primary_source_file, &incl_search_path,
                                      &end_incl_search_path);
}

void suppress_code_generation()
{
  suppress_back_end = true;
  suppress_il_file_write = true;
  suppress_il_lowering = true;
}

static void settle_preprocessing()
{
  pp_output_file_needed = do_preprocessing_only;
  if (list_macro_definitions) generate_pp_output = false;
  if (no_preproc_only) {
    do_preprocessing_only = false;
    return;
  }
  if (!do_preprocessing_only) return;
  suppress_code_generation();
  bool lists_names =
      list_makefile_dependencies || list_included_files || list_macro_definitions || list_macros;
  if (lists_names && error_threshold == es_warning) error_threshold = es_discretionary_error;
}

static FILE *open_named_output(const char *name, an_error_code kind_code)
{
  if (name == nullptr) return nullptr;
  return open_output_file_with_error_handling(name, false, false, off_report_command_line,
                                              kind_code);
}

static void open_files_of_options()
{
  f_raw_listing = open_named_output(raw_listing_file_name, ec_file_kind_raw_listing);
  f_xref_info = open_named_output(xref_file_name, ec_file_kind_xref);
  if (FILE *stream = open_named_output(error_file_name, ec_w_error)) f_error = stream;
}

static void settle_predefined_macro_modes()
{
  set_predef_macro_mode(pmm_gnu, gcc_mode || gpp_mode);
  set_predef_macro_mode(pmm_gcc, gcc_mode);
  set_predef_macro_mode(pmm_gpp, gpp_mode);
  set_predef_macro_mode(pmm_microsoft, 0);
  set_predef_macro_mode(pmm_cpp, C_dialect == 2);
  set_predef_macro_mode(pmm_strict, strict_ansi_mode);
  set_predef_macro_mode(pmm_all, 1);
}

// Messages that are weaker than their call sites say, unless an option asks for them.
static void set_default_severities()
{
  static const struct {
    an_error_code code;
    an_error_severity severity;
  } defaults[] = {
      {ec_ilp64_will_narrow, es_remark},
      {ec_microsoft_ptr_sign_extension, es_remark},
      {ec_impl_narrowing_64_bit_int, es_none},
      {ec_expl_narrowing_64_bit_int, es_none},
      {ec_pointer_conversion_to_same_size_int, es_none},
  };
  for (const auto &row : defaults) {
    set_severity_for_error_number(row.code, row.severity, nullptr, true);
  }
}

void proc_command_line(int argc, char **argv)
{
  sys_argc = argc;
  sys_argv = argv;
  next_sys_arg = 1;
  set_default_severities();
  read_options();
  reconcile_dialect();
  settle_search_paths();
  settle_primary_source_file();
  settle_preprocessing();
  open_files_of_options();
  settle_predefined_macro_modes();
}

void cmd_line_early_init()
{
#define FLAG(type, name, initial, meaning) name = initial;
#include "driver/flags.def"
  memset(option_seen, 0, sizeof option_seen);
  primary_source_file_argument = nullptr;
  opt_cmdfile_stream = nullptr;
  rest_of_short_group = nullptr;
  dialect_was_given = false;
}
