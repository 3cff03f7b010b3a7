// cmd_line_options.cpp - the handlers of the options that do more than set one flag.
// Owns:    the lists that options fill: the shell's words, the mode requests.
// Uses:    options.def names each handler; cmd_line.cpp calls it with the row and the argument.
// Rule:    a handler sets what its option says and no more; consequences of modes come later.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include "check/misra.h"
#include "driver/cfe.h"
#include "driver/cmd_line.h"
#include "driver/cmd_line_internal.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/rov_util.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il_enums.h"
#include "lex/macro.h"
#include "lex/source_input.h"
#include "mem/mem_manage.h"

bool dialect_was_given;
char **shell_opts;
void (*pch_option_hook)(an_option_id id, int value, const char *argument);
bool (*check_ulp_hook)(const char *argument);
bool (*ulp_severity_hook)(const char *argument);
bool (*ulp_standalone_mode_hook)(const char *argument);

[[noreturn]] static void invalid_option()
{
  str_command_line_error(ec_cl_invalid_option, curr_option_text);
}

// The place of the argument among the words; any other word is an invalid option.
template <size_t count> static int choice(const char *const (&words)[count], const char *argument)
{
  for (size_t i = 0; i < count; i++) {
    if (strcmp(words[i], argument) == 0) return int(i);
  }
  invalid_option();
}

//-------------------------------------------------------------------------------------------------
// Language and mode.

static void set_dialect(int dialect)
{
  C_dialect = dialect;
  dialect_was_given = true;
}

static void lower_threshold_to(an_error_severity severity)
{
  if (error_threshold > severity) error_threshold = severity;
}

void process_strict(const an_option_kind &option, const char *)
{
  strict_ansi_mode = true;
  bool errors = option.id == opt_strict;
  strict_ansi_error_severity = errors ? es_error : es_warning;
  strict_ansi_discretionary_severity = errors ? es_discretionary_error : es_warning;
  lower_threshold_to(strict_ansi_error_severity);
}

void process_relaxed(const an_option_kind &, const char *)
{
  strict_ansi_mode = false;
}

void process_old_c(const an_option_kind &, const char *)
{
  set_dialect(1);
  strict_ansi_mode = false;
}

void process_language(const an_option_kind &option, const char *)
{
  if (option.id == opt_cplusplus) {
    set_dialect(2);
  } else if (C_dialect == 2) {
    set_dialect(0);
  }
}

void process_c89(const an_option_kind &, const char *)
{
  set_dialect(0);
  c99_mode = false;
}

void process_c99(const an_option_kind &option, const char *)
{
  set_dialect(0);
  c99_mode = option.value;
}

void process_svr4(const an_option_kind &option, const char *)
{
  set_dialect(0);
  SVR4_C_mode = option.value;
}

void process_cfront(const an_option_kind &option, const char *)
{
  set_dialect(2);
  cfront_2_1_mode = option.id == opt_cfront_2_1;
  cfront_3_0_mode = !cfront_2_1_mode;
  bool strict_seen = option_seen[opt_strict];
  if (!strict_seen) strict_ansi_mode = false;
  if (cfront_3_0_mode || strict_seen) suppress_code_generation();
}

void process_gcc(const an_option_kind &option, const char *)
{
  gnu_mode_requested = true;
  gnu_mode_value = option.value;
}

void process_gplusplus(const an_option_kind &option, const char *)
{
  set_dialect(2);
  gpp_mode = option.value;
}

void process_gnu_version(const an_option_kind &, const char *argument)
{
  int version = number_in_option(argument);
  if (version < 30200 || version >= 1000000) {
    str_command_line_error(ec_cl_invalid_gnu_version, argument);
  }
  gnu_version = version;
}

void process_msvc_target_version(const an_option_kind &, const char *argument)
{
  msvc_target_version_number = number_in_option(argument);
}

void process_friend_injection(const an_option_kind &option, const char *)
{
  friend_class_injection_enabled = option.value;
  friend_function_injection_enabled = option.value;
}

void process_openmp_side(const an_option_kind &option, const char *)
{
  openmp_mode = true;
  openmp_mode_host = option.id == opt_openmp_host;
  openmp_mode_device = !openmp_mode_host;
}

//-------------------------------------------------------------------------------------------------
// Preprocessing.

void process_preproc_only(const an_option_kind &option, const char *)
{
  do_preprocessing_only = true;
  switch (option.id) {
  case opt_dependencies: list_makefile_dependencies = true; return;
  case opt_trace_includes: list_included_files = true; return;
  case opt_list_macros: list_macro_definitions = true; return;
  case opt_preproc_macros: list_macros = true; return;
  case opt_preprocess: gen_line_info_in_pp_output = true; break;
  case opt_comments: keep_comments_in_pp_output = true; break;
  default: break;
  }
  generate_pp_output = true;
}

void process_include_directory(const an_option_kind &option, const char *argument)
{
  if (strcmp(argument, "-") == 0) {
    end_user_include_search_path(); // the current file's directory stays the first for quotes
  } else {
    add_to_include_search_path(argument, option.id == opt_sys_include);
  }
}

void add_to_def_undef_list(const char *text, a_def_from_cmd_line **head, a_def_from_cmd_line **tail,
                           bool is_undef)
{
  auto *entry = static_cast<a_def_from_cmd_line *>(alloc_general(sizeof(a_def_from_cmd_line)));
  *entry = {nullptr, text, is_undef};
  if (*head == nullptr) {
    *head = entry;
  } else {
    (*tail)->next = entry;
  }
  *tail = entry;
}

void process_macro_option(const an_option_kind &option, const char *argument)
{
  add_to_def_undef_list(argument, &defs_from_cmd_line, &end_defs_from_cmd_line,
                        option.id == opt_undefine_macro);
}

void process_preinclude(const an_option_kind &option, const char *argument)
{
  bool macros_only = option.id == opt_preinclude_macros;
  a_preinclude_file *file = alloc_preinclude_file();
  file->next = nullptr;
  file->file_name = argument;
  a_preinclude_file **head = macros_only ? &macro_preinclude_file_list : &preinclude_file_list;
  a_preinclude_file **tail =
      macros_only ? &end_macro_preinclude_file_list : &end_preinclude_file_list;
  *(*head == nullptr ? head : &(*tail)->next) = file;
  *tail = file;
}

void process_multibyte_chars(const an_option_kind &option, const char *)
{
  multibyte_chars_in_source_enabled = option.value;
  if (option.value) set_multibyte_locale();
}

//-------------------------------------------------------------------------------------------------
// Messages.

void process_threshold(const an_option_kind &option, const char *)
{
  error_threshold = option.id == opt_remarks ? es_remark : es_discretionary_error;
}

void process_error_limit(const an_option_kind &, const char *argument)
{
  int limit = number_in_option(argument);
  if (limit == 0) str_command_line_error(ec_cl_invalid_error_limit, argument);
  error_limit = limit;
}

void process_context_limit(const an_option_kind &, const char *argument)
{
  int limit = number_in_option(argument);
  if (limit == 1) limit = 2;
  context_limit = limit & ~1;
}

static void set_severity_of_item(const char *item, an_error_severity severity)
{
  bool is_number = item[strspn(item, "0123456789")] == '\0';
  if (is_number) {
    if (set_severity_for_error_number(number_in_option(item), severity, nullptr, true)) {
      str_command_line_error(ec_cl_invalid_error_number, item);
    }
  } else if (set_severity_for_error_tag(item, severity, nullptr, true)) {
    str_command_line_error(ec_cl_invalid_error_tag, item);
  }
}

void process_diag(const an_option_kind &option, const char *argument)
{
  an_error_severity severity = option.id == opt_diag_suppress  ? es_none
                               : option.id == opt_diag_remark  ? es_remark
                               : option.id == opt_diag_warning ? es_warning
                               : option.id == opt_diag_error   ? es_discretionary_error
                                                               : es_once;
  char *item = static_cast<char *>(alloc_general(strlen(argument) + 1));
  const char *p = argument;
  do {
    char *end = item;
    for (; *p != '\0' && *p != ','; p++) {
      if (*p != ' ' && *p != '\t') *end++ = *p;
    }
    *end = '\0';
    if (end != item) set_severity_of_item(item, severity);
  } while (*p++ == ',');
}

void process_buffer_diagnostics(const an_option_kind &, const char *)
{
  static char buffer[256];
  setvbuf(stderr, buffer, _IOLBF, sizeof buffer);
}

//-------------------------------------------------------------------------------------------------
// Checkers.  Their own readers of rule lists are installed by the checkers.

static void check_rule_list(bool (*reader)(const char *), const an_option_kind &option,
                            const char *argument, an_error_code code)
{
  if (reader != nullptr && !reader(argument)) str_command_line_error(code, option.name);
}

void process_misra_rules(const an_option_kind &option, const char *argument)
{
  bool is_bad;
  process_check_misra(argument, nullptr, &is_bad, true, false);
  if (is_bad) str_command_line_error(ec_misra_invalid_rules, option.name);
}

void process_misra_level(const an_option_kind &option, const char *argument)
{
  process_misra_severity(option.id == opt_misra_required ? misra_required : misra_advisory,
                         argument, nullptr);
}

void process_power_advice(const an_option_kind &option, const char *argument)
{
  lower_threshold_to(es_advisory);
  check_ulp = true;
  check_rule_list(check_ulp_hook, option, argument, ec_ulp_invalid_rules);
}

void process_power_advice_severity(const an_option_kind &option, const char *argument)
{
  check_rule_list(ulp_severity_hook, option, argument, ec_ulp_invalid_rules);
}

void process_ulp_standalone(const an_option_kind &option, const char *argument)
{
  ulp_standalone_ext = true;
  check_rule_list(ulp_standalone_mode_hook, option, argument, ec_ulp_invalid_rules);
}

//-------------------------------------------------------------------------------------------------
// Templates and precompiled headers.

void process_instantiate(const an_option_kind &, const char *argument)
{
  static const char *const words[] = {"none", "all", "used", "local"};
  for (int mode = 0; mode < 4; mode++) {
    if (strcmp(argument, words[mode]) == 0) {
      instantiation_mode = mode;
      return;
    }
  }
  str_command_line_error(ec_cl_invalid_instantiation_mode, argument);
}

void process_pending_instantiations(const an_option_kind &, const char *argument)
{
  int limit = number_in_option(argument);
  max_pending_instantiations = limit == 0 ? -1 : limit;
}

void process_vtbl(const an_option_kind &option, const char *)
{
  virtual_function_table_definition = option.id == opt_suppress_vtbl ? 1 : 2;
}

static const char *name_of_directory(const char *argument, an_error_code code)
{
  if (!is_directory(argument)) str_command_line_error(code, argument);
  return argument;
}

void process_pch_dir(const an_option_kind &, const char *argument)
{
  pch_dir_name = name_of_directory(argument, ec_cl_invalid_pch_directory);
}

void process_instantiation_dir(const an_option_kind &, const char *argument)
{
  instantiation_dir_name = name_of_directory(argument, ec_cl_invalid_instantiation_directory);
}

void process_base_dir(const an_option_kind &, const char *argument)
{
  zok_base_directory = name_of_directory(argument, ec_cl_invalid_zok_base_directory);
}

void process_pch_file(const an_option_kind &option, const char *argument)
{
  if (!okay_as_output_file(argument)) {
    output_file_open_error(true, ec_file_kind_precompiled_header, argument, es_command_line_error);
  }
  if (option.id == opt_create_pch) {
    create_precompiled_header = true;
    pch_output_file_name = argument;
  } else {
    use_precompiled_header = true;
    pch_input_file_name = argument;
  }
}

//-------------------------------------------------------------------------------------------------
// Target.

void process_abi(const an_option_kind &, const char *argument)
{
  is_eabi = strcmp(argument, "eabi") == 0;
  if (!is_eabi) return;
  targ_max_bit_field_size = targ_precisionof_long_long;
  targ_supports_non_int_bit_field = true;
  targ_unnamed_bit_field_affects_struct_alignment = true;
}

void process_align_structs(const an_option_kind &, const char *argument)
{
  unsigned alignment = unsigned(number_in_option(argument));
  if (alignment < targ_minimum_struct_alignment || (alignment & (alignment - 1)) != 0) {
    str_command_line_error(ec_cl_invalid_align_structs, argument);
  }
  targ_minimum_struct_alignment = alignment;
  unsigned &size = targ_sizeof_ptr_to_member_function;
  unsigned &own = targ_alignof_ptr_to_member_function;
  if (alignment > own) own = alignment;
  size = (size + own - 1) & ~(own - 1);
}

void process_array_alignment(const an_option_kind &, const char *argument)
{
  int alignment = number_in_option(argument);
  if (alignment >= 5) targ_top_aryaln = unsigned(alignment);
}

void process_pack_alignment(const an_option_kind &, const char *argument)
{
  int alignment = number_in_option(argument);
  if (!is_acceptable_pack_alignment(unsigned(alignment))) {
    str_command_line_error(ec_bad_pack_alignment, argument);
  }
  default_max_member_alignment = alignment;
}

void process_unaligned_access(const an_option_kind &, const char *argument)
{
  unaligned_access = strcmp(argument, "on") == 0 || strcmp(argument, "1") == 0;
}

void process_long_precision(const an_option_kind &, const char *argument)
{
  bool is_short = strcmp(argument, "32") == 0;
  targ_precisionof_long = is_short ? 32 : 40;
  targ_sizeof_long = is_short ? 4 : 8;
  targ_alignof_long = targ_sizeof_long;
}

void process_wchar_bits(const an_option_kind &, const char *argument)
{
  targ_sizeof_wchar_t = number_in_option(argument) == 32 ? 4 : 2;
  targ_wchar_t_int_kind = targ_sizeof_wchar_t == targ_sizeof_int     ? ik_unsigned_int
                          : targ_sizeof_wchar_t == targ_sizeof_short ? ik_unsigned_short
                                                                     : ik_unsigned_long;
}

void process_data_model(const an_option_kind &, const char *argument)
{
  static const char *const words[] = {"near", "far", "far_aggregates", "small", "large",
                                      "huge", "flat"};
  targ_data_access_model = choice(words, argument);
  reset_internal_type_sizes();
}

void process_const_model(const an_option_kind &, const char *argument)
{
  static const char *const words[] = {"data", "far", "far_aggregates"};
  targ_const_access_model = choice(words, argument);
}

void process_code_model(const an_option_kind &, const char *argument)
{
  static const char *const words[] = {"near", "far", "flat", "small", "large"};
  targ_code_access_model = choice(words, argument);
}

void process_size_speed_goal(const an_option_kind &, const char *argument)
{
  static const char *const words[] = {"high_risk_performance", "medium_risk_performance",
                                      "low_risk_performance",  "low_risk_size",
                                      "medium_risk_size",      "high_risk_size"};
  targ_size_speed_goal = choice(words, argument);
}

void process_silicon_version(const an_option_kind &, const char *argument)
{
  targ_cpu_version = TRG_parse_versions(argument);
}

void process_visibility(const an_option_kind &option, const char *argument)
{
  a_symbol_visibility visibility = string_to_symbol_visibility(argument);
  if (visibility == sv_unknown) invalid_option();
  (option.id == opt_visibility ? targ_sym_default_visibility : targ_sym_export_visibility) =
      visibility;
}

void process_small_enum(const an_option_kind &, const char *)
{
  targ_enum_types_can_be_smaller_than_int = true;
}

void process_small_container(const an_option_kind &, const char *)
{
  targ_bit_field_container_size = 0;
}

void process_fp_mode(const an_option_kind &, const char *argument)
{
  relaxed_fp = strcmp(argument, "relaxed") == 0;
}

void process_float_operations_allowed(const an_option_kind &, const char *argument)
{
  static const char *const words[] = {"none", "all", "32", "64"};
  legal_float_precision = choice(words, argument);
}

void process_import_undef(const an_option_kind &, const char *argument)
{
  import_undef = strcmp(argument, "off") != 0;
}

void process_symdebug(const an_option_kind &option, const char *)
{
  symbolic_debug = option.id == opt_symdebug_dwarf ? 1 : 2;
}

//-------------------------------------------------------------------------------------------------
// Hook functions.

static a_hook_kind hook_of_option(const an_option_kind &option)
{
  bool is_entry = option.id == opt_entry_hook || option.id == opt_entry_parm;
  return is_entry ? hk_entry : hk_exit;
}

static bool is_identifier(const char *text)
{
  static const char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
  if (strchr(letters, *text) == nullptr || *text == '\0') return false;
  while (*text != '\0' && (strchr(letters, *text) != nullptr || (*text >= '0' && *text <= '9'))) {
    text++;
  }
  return *text == '\0';
}

void process_hook_name(const an_option_kind &option, const char *argument)
{
  if (!is_identifier(argument)) str_command_line_error(ec_cl_invalid_hook_name, argument);
  enable_hook(hook_of_option(option), argument, nullptr);
}

void process_hook_parameter(const an_option_kind &option, const char *argument)
{
  if (!is_hook_parameter(argument)) str_command_line_error(ec_cl_invalid_hook_parm, argument);
  enable_hook(hook_of_option(option), nullptr, argument);
}

//-------------------------------------------------------------------------------------------------
// Output and phases.

void process_no_code_gen(const an_option_kind &, const char *)
{
  suppress_code_generation();
}

void process_asmheaders(const an_option_kind &, const char *)
{
  asm_header_mode = true;
  remove_unneeded_entities = false;
}

void process_keep_unneeded_types(const an_option_kind &, const char *argument)
{
  keep_unneeded_types = strcmp(argument, "true") == 0;
}

void process_set_flag(const an_option_kind &option, const char *argument)
{
  static const struct {
    const char *name;
    bool *flag;
  } flags[] = {
      {"suppress_inline_corresp_check", &suppress_inline_corresp_check},
      {"allow_anon_types_in_anon_unions", &allow_anon_types_in_anon_unions},
      {"emulate_gnu_abi_bugs", &emulate_gnu_abi_bugs},
      {"emulate_unsafe_gnu_abi_bugs", &emulate_unsafe_gnu_abi_bugs},
      {"warn_about_tail_padding_use", &warn_about_tail_padding_use},
      {"reuse_tail_padding", &targ_reuse_tail_padding},
      {"packing_applies_to_base_classes", &packing_applies_to_base_classes},
      {"stack_referenced_include_directories", &stack_referenced_include_directories},
      {"use_nonstd_partial_ordering", &use_nonstd_partial_ordering},
      {"no_checking_pragmas", &no_checking_pragmas},
      {"warn_on_try_statement", &warn_on_try_statement},
  };
  for (const auto &row : flags) {
    if (strcmp(row.name, argument) == 0) {
      *row.flag = option.id == opt_set_flag;
      return;
    }
  }
  str_command_line_error(ec_cl_invalid_flag_name, argument);
}

void process_help(const an_option_kind &, const char *)
{
  printf("Usage: %s [-options] filename\n\n", "<toolname>");
  printf("This tool is designed to be invoked by the compiler.");
  printf("\n");
  exit(0);
}

void process_zokversion(const an_option_kind &, const char *)
{
  fprintf(f_error, "Zokara C/C++ Front End, version %s (%s %s)\n", front_end_version_text, __DATE__,
          __TIME__);
}

void process_toolversion(const an_option_kind &, const char *)
{
  print_banner(stdout);
  buildid();
  exit(0);
}

void process_dump_configuration(const an_option_kind &, const char *)
{
  dump_configuration(f_error);
}

//-------------------------------------------------------------------------------------------------
// Words of the shell.

void process_option_file(const an_option_kind &, const char *argument)
{
  if (opt_cmdfile_stream != nullptr) str_command_line_error(ec_cl_cmd_file_in_use, argument);
  opt_cmdfile_stream = fopen(argument, "r");
  if (opt_cmdfile_stream != nullptr) return;
  const char *reason = strerror(errno);
  size_t size = strlen(argument) + strlen(reason) + sizeof "'': ";
  char *text = static_cast<char *>(alloc_general(size));
  snprintf(text, size, "'%s': %s", argument, reason);
  str_command_line_error(ec_cl_cannot_open_cmd_file, text);
}

void process_shell_options(const an_option_kind &, const char *argument)
{
  if (shell_opts != nullptr) command_line_error(ec_cl_duplicate_shell_opts_list);
  int count = number_in_option(argument);
  if (count >= sys_argc && opt_cmdfile_stream == nullptr) invalid_option();
  shell_opts = static_cast<char **>(alloc_general((size_t(count) + 1) * sizeof(char *)));
  for (int i = 0; i < count; i++) {
    const char *word = next_option_word();
    if (word == nullptr) invalid_option();
    shell_opts[i] = const_cast<char *>(word);
  }
  shell_opts[count] = nullptr;
}

void process_override_option(const an_option_kind &option, const char *argument)
{
  const char *value = next_option_word();
  if (value == nullptr) command_line_error(ec_cl_missing_override_args);
  OPT_OVERRIDE *record = lookup_opt_override(argument, true);
  switch (option.id) {
  case opt_opt_ansi: record->ansi_options = value; break;
  case opt_opt_opt: record->opt_options = value; break;
  default: record->cg_options = value; break;
  }
}

static void skip_words(const char *count_text)
{
  for (int count = number_in_option(count_text); count > 0; count--) {
    if (next_option_word() == nullptr) invalid_option();
  }
}

void process_embedded_options(const an_option_kind &, const char *argument)
{
  skip_words(argument);
}

void process_skipped_overrides(const an_option_kind &, const char *argument)
{
  skip_words(argument);
}
