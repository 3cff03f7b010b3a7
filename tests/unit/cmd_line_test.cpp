// The command line: which flags a combination of options leaves, and which combinations are refused.
#include "driver/cmd_line.h"
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "driver/cfe.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il_enums.h"
#include "lex/macro.h"
#include "memory_fixture.h"

// Reads the options as a run of the program would; `words` are separated by blanks.
static void run(const std::string &words)
{
  static std::vector<std::vector<std::string>> kept;
  std::vector<std::string> list = {"rvparse"};
  size_t at = 0;
  while (at < words.size()) {
    size_t end = std::min(words.find(' ', at), words.size());
    if (end > at) list.push_back(words.substr(at, end - at));
    at = end + 1;
  }
  kept.push_back(list);
  std::vector<char *> argv;
  for (std::string &word : kept.back())
    argv.push_back(word.data());
  argv.push_back(nullptr);
  open_regions();
  host_envir_early_init();
  target_early_init();
  cmd_line_early_init();
  error_early_init();
  error_hooks.exit_compilation = exit_compilation;
  defs_from_cmd_line = end_defs_from_cmd_line = nullptr;
  proc_command_line(int(argv.size()) - 1, argv.data());
}

static long long value_of(const std::string &name)
{
#define FLAG(type, flag, initial, meaning)                                                         \
  if (name == #flag) return (long long)(intptr_t)flag;
#include "driver/flags.def"
#define TARGET_VALUE(type, value, initial, meaning)                                                \
  if (name == #value) return (long long)value;
#include "driver/target_values.def"
  ADD_FAILURE() << "no flag " << name;
  return 0;
}

struct a_mode_case {
  const char *words;
  std::vector<std::pair<const char *, long long>> flags;
};

static void expect_flags(const std::vector<a_mode_case> &cases)
{
  for (const a_mode_case &mode : cases) {
    run(mode.words);
    for (const auto &[name, value] : mode.flags)
      EXPECT_EQ(value_of(name), value) << mode.words << ": " << name;
  }
}

TEST(CommandLine, LanguageAndModes)
{
  expect_flags({
      {"x.c", {{"C_dialect", 0}, {"gcc_mode", 1}, {"gpp_mode", 0}, {"gnu_version", 40300}}},
      {"dir.cpp/x.i", {{"C_dialect", 0}, {"gcc_mode", 1}}},
      {"x.h", {{"C_dialect", 0}}},
      {"x.cpp", {{"C_dialect", 2}, {"gpp_mode", 1}, {"gcc_mode", 0}}},
      {"x", {{"C_dialect", 2}, {"gpp_mode", 1}}},
      {"-", {{"C_dialect", 2}}},
      {"--c -", {{"C_dialect", 0}, {"gcc_mode", 1}}},
      {"--c++ x.c", {{"C_dialect", 2}, {"gpp_mode", 1}}},
      {"--c++ --c x.cpp", {{"C_dialect", 0}, {"gcc_mode", 1}}},
      {"--strict x.c", {{"strict_ansi_mode", 1}, {"gcc_mode", 0}, {"trigraphs_allowed", 1}}},
      {"--strict --relaxed x.c", {{"strict_ansi_mode", 0}, {"gcc_mode", 1}}},
      {"-K x.c", {{"C_dialect", 1}, {"gcc_mode", 0}, {"pcc_preprocessing_mode", 1}}},
      {"--svr4 x.c", {{"SVR4_C_mode", 1}, {"gcc_mode", 0}, {"address_of_ellipsis_allowed", 1}}},
      {"--no_gcc x.c", {{"C_dialect", 0}, {"gcc_mode", 0}}},
      {"--no_g++ x.cpp", {{"C_dialect", 2}, {"gpp_mode", 0}, {"extended_friends_enabled", 1}}},
      {"--c99 x.cpp", {{"C_dialect", 0}, {"c99_mode", 1}, {"gcc_mode", 1}}},
      {"--c99 --no_c99 x.c", {{"c99_mode", 0}}},
  });
}

TEST(CommandLine, SeenBeatsMode)
{
  expect_flags({
      {"--c99 x.c", {{"vla_enabled", 1}, {"designators_allowed", 1}}},
      {"--c99 --no_gcc --no_vla --no_designators x.c",
       {{"vla_enabled", 0}, {"designators_allowed", 0}, {"compound_literals_allowed", 1}}},
      {"--c99 --no_vla x.c", {{"vla_enabled", 0}, {"designators_allowed", 1}}},
      {"--no_vla --c99 x.c", {{"vla_enabled", 0}}},
      {"--no_trigraphs --strict x.c", {{"trigraphs_allowed", 0}}},
      {"--strict --dollar x.c", {{"allow_dollar_in_id_chars", 1}}},
      {"--strict --long_long x.c", {{"long_long_is_standard", 1}}},
      {"--strict x.c",
       {{"long_long_is_standard", 0},
        {"designators_allowed", 0},
        {"check_concatenations", 1},
        {"restrict_keyword_enabled", 0}}},
      {"--strict --c99 x.c",
       {{"long_long_is_standard", 1},
        {"designators_allowed", 1},
        {"flexible_array_members_allowed", 1}}},
      {"--strict --extended_designators x.c",
       {{"extended_designators_allowed", 1}, {"designators_allowed", 1}}},
      {"--no_nonstd_gnu_keywords x.c", {{"nonstd_gnu_keywords_enabled", 0}}},
      {"--exceptions x.cpp", {{"exceptions_enabled", 1}}},
      {"x.cpp", {{"exceptions_enabled", 0}, {"do_dependent_name_processing", 1}}},
      {"--no_thread_local_storage x.c", {{"thread_local_storage_specifier_enabled", 0}}},
  });
}

TEST(CommandLine, GnuVersionIsTheMeasure)
{
  expect_flags({
      {"x.c",
       {{"gnu_c89_inlining", 1}, {"std_c99_inlining", 0}, {"long_long_promotion_allowed", 0}}},
      {"--c99 x.c",
       {{"gnu_c89_inlining", 0}, {"std_c99_inlining", 1}, {"long_long_promotion_allowed", 1}}},
      {"--c99 --gcc89_inlining x.c", {{"gnu_c89_inlining", 1}}},
      {"--c99 --gnu_version=40200 x.c", {{"gnu_c89_inlining", 1}}},
      {"--gnu_version=30200 x.c", {{"thread_local_storage_specifier_enabled", 0}}},
      {"--gnu_version=40000 x.cpp",
       {{"friend_class_injection_enabled", 1},
        {"type_traits_helpers_enabled", 0},
        {"cpp11_sfinae_enabled", 1}}},
      {"--gnu_version=30300 x.cpp",
       {{"do_dependent_name_processing", 0}, {"no_access_check_on_friend_declarator_ids", 1}}},
  });
}

TEST(CommandLine, OptionsWithEffectsOfTheirOwn)
{
  expect_flags({
      {"--inst=all x.cpp", {{"instantiation_mode", 1}}},
      {"-tused x.cpp", {{"instantiation_mode", 2}}},
      {"--pending_instantiations=0 x.cpp", {{"max_pending_instantiations", -1}}},
      {"--inst=local x.cpp", {{"automatic_instantiation_mode", 0}}},
      {"-EC x.c",
       {{"do_preprocessing_only", 1},
        {"generate_pp_output", 1},
        {"keep_comments_in_pp_output", 1},
        {"gen_line_info_in_pp_output", 1},
        {"suppress_back_end", 1}}},
      {"-P x.c", {{"gen_line_info_in_pp_output", 0}, {"generate_pp_output", 1}}},
      {"-M x.c",
       {{"list_makefile_dependencies", 1},
        {"generate_pp_output", 0},
        {"pp_output_file_needed", 1}}},
      {"--list_macros x.c", {{"list_macro_definitions", 1}, {"list_macros", 0}}},
      {"--preproc_macros x.c", {{"list_macros", 1}, {"list_macro_definitions", 0}}},
      {"-E --no_preproc_only x.c",
       {{"do_preprocessing_only", 0}, {"pp_output_file_needed", 1}, {"suppress_back_end", 0}}},
      {"-Dx=1 -Uy x.c -Dz", {{"C_dialect", 0}}},
      {"--long_precision_bits=32 x.c",
       {{"targ_sizeof_long", 4}, {"targ_alignof_long", 4}, {"targ_precisionof_long", 32}}},
      {"--long_precision_bits=40 x.c", {{"targ_sizeof_long", 8}, {"targ_precisionof_long", 40}}},
      {"--wchar_t_bits=32 x.c",
       {{"targ_sizeof_wchar_t", 4}, {"targ_wchar_t_int_kind", ik_unsigned_int}}},
      {"--abi=eabi x.c",
       {{"is_eabi", 1}, {"targ_max_bit_field_size", 64}, {"targ_supports_non_int_bit_field", 1}}},
      {"--mem_model:data=huge --mem_model:code=far x.c",
       {{"targ_data_access_model", 5}, {"targ_code_access_model", 1}}},
      {"-u --unsigned_bit_fields --big_endian x.c",
       {{"targ_has_signed_chars", 0},
        {"targ_plain_int_bit_field_is_unsigned", 1},
        {"targ_little_endian", 0}}},
      {"--align_structs=16 x.c",
       {{"targ_minimum_struct_alignment", 16},
        {"targ_alignof_ptr_to_member_function", 16},
        {"targ_sizeof_ptr_to_member_function", 16}}},
      {"--array_alignment=4 x.c", {{"targ_top_aryaln", 4}}},
      {"--array_alignment=8 x.c", {{"targ_top_aryaln", 8}}},
      {"--float_operations_allowed=64 --fp_mode=relaxed x.c",
       {{"legal_float_precision", 3}, {"relaxed_fp", 1}}},
      {"--set_flag=emulate_unsafe_gnu_abi_bugs x.cpp", {{"emulate_gnu_abi_bugs", 1}}},
      {"--embed_opts=2 --no --such x.c", {{"C_dialect", 0}}},
      {"--override_opts 1 --nonsense x.c", {{"C_dialect", 0}}},
  });
}

TEST(CommandLine, LimitsAndThresholds)
{
  run("--context_limit=1 x.c");
  EXPECT_EQ(context_limit, 2);
  run("--context_limit=5 x.c");
  EXPECT_EQ(context_limit, 4);
  run("--error_limit=7 x.c");
  EXPECT_EQ(error_limit, 7);
  run("-r x.c");
  EXPECT_EQ(error_threshold, es_remark);
  run("-w --strict_warnings x.c");
  EXPECT_EQ(error_threshold, es_warning);
  run("--strict x.c");
  EXPECT_EQ(strict_ansi_error_severity, es_error);
  EXPECT_EQ(strict_ansi_discretionary_severity, es_discretionary_error);
  run("-M x.c");
  EXPECT_EQ(error_threshold, es_discretionary_error);
}

TEST(CommandLine, DefinitionsKeepTheirOrderAndStopAtTheSource)
{
  run("-Da=1 -U b -Dc x.c -Dd");
  std::string all;
  for (const a_def_from_cmd_line *def = defs_from_cmd_line; def != nullptr; def = def->next) {
    all += (def->is_undef ? "-" : "+") + std::string(def->text) + " ";
  }
  EXPECT_EQ(all, "+a=1 -b +c ");
  EXPECT_STREQ(primary_source_file_name, "x.c");
}

static std::string search_path(const a_directory_name_entry *entry)
{
  std::string all;
  for (; entry != nullptr; entry = entry->next)
    all += std::string(entry->dir_name) + (entry->is_system ? "! " : " ");
  return all;
}

TEST(CommandLine, SearchPath)
{
  unsetenv("ROV_C_DIR");
  unsetenv("C_DIR");
  run("-Ia --sys_include=b src/x.c");
  EXPECT_EQ(search_path(incl_search_path), "src a b! ");
  EXPECT_EQ(search_path(sys_incl_search_path), "a b! ");
  run("-Ia -I- -Ib x.c");
  EXPECT_EQ(search_path(incl_search_path), " a b ");
  EXPECT_EQ(search_path(sys_incl_search_path), "b ");
  run("-I- -Ib x.c");
  EXPECT_EQ(search_path(sys_incl_search_path), "b ");
  setenv("C_DIR", " c ;; d;", 1);
  run("-Ia -I- x.c");
  EXPECT_EQ(search_path(sys_incl_search_path), "c d ");
  setenv("ROV_C_DIR", "e", 1);
  run("x.c");
  EXPECT_EQ(search_path(sys_incl_search_path), "e ");
  unsetenv("ROV_C_DIR");
  unsetenv("C_DIR");
  // A directory that is both stays a system directory; the mark moves to the entry before it.
  run("-w -Ia -Ib -I- --sys_include=./b x.c");
  EXPECT_EQ(search_path(incl_search_path), " a ./b! ");
  EXPECT_EQ(search_path(sys_incl_search_path), "./b! ");
}

TEST(CommandLine, Overrides)
{
  run("--opt_ansi=- --dollar --opt_opt=x.c:f -o3 --opt_cg=f -mv x.c");
  EXPECT_STREQ(get_opt_override(nullptr, (const a_source_position *)nullptr)->ansi_options,
               "--dollar");
  EXPECT_STREQ(get_opt_override("f", (const a_source_position *)nullptr)->cg_options, "-mv");
  EXPECT_STREQ(lookup_opt_override("x.c:f", false)->opt_options, "-o3");
  EXPECT_EQ(get_opt_override("g", (const a_source_position *)nullptr), nullptr);
  allow_dollar_in_id_chars = false;
  OPTION_STATE *state = process_opt_override(nullptr, (const a_source_position *)nullptr);
  ASSERT_NE(state, nullptr);
  EXPECT_TRUE(allow_dollar_in_id_chars);
  EXPECT_EQ(process_opt_override("f", (const a_source_position *)nullptr), nullptr);
}

struct an_error_case {
  const char *words;
  an_error_code code;
};

static const an_error_case errors[] = {
    {"", ec_cl_missing_source_file_name},
    {"--nonsense x.c", ec_cl_invalid_option},
    {"-- x.c", ec_cl_invalid_option},
    {"-Z x.c", ec_cl_invalid_option},
    {"-I", ec_cl_invalid_option},
    {"--define_macro= x.c", ec_cl_invalid_option},
    {"--embedded_c x.c", ec_cl_invalid_option},
    {"--instantiat=some x.cpp", ec_cl_invalid_instantiation_mode},
    {"--instantiati=all x.cpp", ec_cl_invalid_instantiation_directory},
    {"--error_limit=0 x.c", ec_cl_invalid_error_limit},
    {"--error_limit=1x x.c", ec_cl_invalid_number},
    {"--error_limit=2147483648 x.c", ec_cl_invalid_number},
    {"--inst=some x.cpp", ec_cl_invalid_instantiation_mode},
    {"--gnu_version=30199 x.c", ec_cl_invalid_gnu_version},
    {"--gnu_version=1000000 x.c", ec_cl_invalid_gnu_version},
    {"--diag_error=no_such_tag x.c", ec_cl_invalid_error_tag},
    {"--diag_error=9999 x.c", ec_cl_invalid_error_number},
    {"--pack_alignment=3 x.c", ec_bad_pack_alignment},
    {"--align_structs=0 x.c", ec_cl_invalid_align_structs},
    {"--set_flag=nonsense x.c", ec_cl_invalid_flag_name},
    {"--pch_dir=/no/such x.cpp", ec_cl_invalid_pch_directory},
    {"--entry_hook=1x x.c", ec_cl_invalid_hook_name},
    {"--exit_parm=all x.c", ec_cl_invalid_hook_parm},
    {"--opt_shell=1 a --opt_shell=1 b x.c", ec_cl_duplicate_shell_opts_list},
    {"--opt_ansi=f", ec_cl_missing_override_args},
    {"--opt_cmdfile=/no/such x.c", ec_cl_cannot_open_cmd_file},
    {"--strict --gcc x.c", ec_cl_incompatible_language_modes},
    {"--c++ --gcc x.c", ec_cl_incompatible_language_modes},
    {"--gcc --svr4 x.c", ec_cl_incompatible_language_modes},
    {"--g++ --c89 x.c", ec_cl_incompatible_language_modes},
    {"--c99 -K x.c", ec_cl_incompatible_language_modes},
    {"--svr4 --c++ x.c", ec_cl_SVR4_C_option_only_in_ansi_C},
    {"-K --strict x.c", ec_cl_strict_mode_incompatible_with_pcc},
    {"--svr4 --strict x.c", ec_cl_strict_mode_incompatible_with_SVR4},
    {"--cfront_3.0 --strict x.cpp", ec_cl_strict_mode_incompatible_with_cfront},
    {"--no_anachronisms x.c", ec_cl_anachronism_option_only_in_cplusplus},
    {"--no_exceptions x.c", ec_cl_exceptions_option_only_in_cplusplus},
    {"--no_bool x.c", ec_cl_bool_option_only_in_cplusplus},
    {"--type_traits_helpers x.c", ec_cl_type_traits_helpers_option_only_in_cplusplus},
    {"--no_designators x.cpp", ec_cl_designators_option_only_in_C},
    {"--gcc89_inlining x.cpp", ec_cl_gnu_c89_inlining_option_only_in_C},
    {"--strict --anachronisms x.cpp", ec_cl_strict_mode_incompatible_with_anachronisms},
    {"--strict --ignore_std x.cpp", ec_cl_strict_mode_incompatible_with_ignore_std},
    {"--strict --short_enums x.c", ec_cl_short_enums_requires_gcc_mode},
    {"--strict --report_gnu_extensions x.c", ec_cl_report_gnu_extensions_requires_gnu_mode},
    {"--inst=local -T x.cpp", ec_cl_tim_local_conflicts_with_auto_instantiation},
    {"--no_auto_type --no_auto_storage x.cpp", ec_cl_auto_cannot_be_disabled},
};

TEST(CommandLineDeathTest, Refusals)
{
  for (const an_error_case &bad : errors) {
    std::string text = error_text(bad.code);
    EXPECT_EXIT(run(bad.words), testing::ExitedWithCode(4), testing::HasSubstr(text.substr(0, 30)))
        << bad.words;
  }
}

TEST(CommandLineDeathTest, AmbiguousAbbreviationNamesAllCandidates)
{
  EXPECT_EXIT(run("--no_p x.c"), testing::ExitedWithCode(4),
              testing::AllOf(testing::HasSubstr("--no_p\""),
                             testing::HasSubstr("--no_pch_messages"),
                             testing::HasSubstr("--no_preproc_only"),
                             testing::HasSubstr("--no_parse_templates")));
}
