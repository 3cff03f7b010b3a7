// macro_predef.cpp - macros that exist before the first line: predefined ones, those of the predefined
// macro file, -D and -U.
// Owns:    defs_from_cmd_line, predef_macro_mode_values.
// Entry:   init_predefined_macros, enter_predef_macro.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include "consts/const_ints.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/sys_predef.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "lex/lexical.h"
#include "lex/macro_internal.h"
#include "lex/lex_private.h"
#include "lex/source_input_internal.h"
#include "mem/mem_manage.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"

a_def_from_cmd_line *defs_from_cmd_line, *end_defs_from_cmd_line;
unsigned char predef_macro_mode_values[pmm_last];

static const char *const predef_macro_mode_names[pmm_last] = {nullptr,     "gnu",    "gcc", "gpp",
                                                              "microsoft", "strict", "cpp", "all"};

void set_predef_macro_mode(a_predef_macro_mode mode, int value)
{
  predef_macro_mode_values[mode] = (unsigned char)value;
}

//---------------------------------------------------------------------------------------------
// Entering.

// The encoded list of a value: one text, with separators between tokens that touch.
static const unsigned char *encode_predef_value(const char *value)
{
  size_t length = strlen(value);
  // A separator takes two bytes, and each token has at least one.
  unsigned char *list = (unsigned char *)alloc_in_region(0, length * 3 + size_of_item + 1);
  unsigned char *to = list + size_of_item;
  const char *p = value;
  while (*p != 0) {
    const char *end = end_of_plain_pp_token(p);
    if (end == p) ++end;
    memcpy(to, p, end - p);
    to += end - p;
    p = end;
    bool white = *p == ' ';
    while (*p == ' ')
      ++p;
    if (*p == 0) break;
    if (white) {
      *to++ = ' ';
    } else {
      *to++ = 0;
      *to++ = lesc_token_separator;
    }
  }
  unsigned long text_length = to - list - size_of_item;
  if (text_length == 0) {
    list[0] = rli_end;
    return list;
  }
  list[0] = rli_text;
  list[1] = (unsigned char)text_length;
  list[2] = (unsigned char)(text_length >> 8);
  list[3] = (unsigned char)(text_length >> 16);
  *to = rli_end;
  return list;
}

static size_t length_of_predef_list(const unsigned char *list)
{
  return *list == rli_end ? 1 : size_of_item + operand_of_item(list) + 1;
}

static bool same_predef_value(const a_macro_def *def, const unsigned char *list)
{
  return def->object_like && def->replacement != nullptr &&
         memcmp(def->replacement, list, length_of_predef_list(list)) == 0;
}

a_symbol *enter_predef_macro(const char *value, const char *name, bool cannot_redefine,
                             bool no_pch_use)
{
  a_symbol_locator locator = cleared_locator;
  locator.header = find_symbol_header(name, (uint32_t)strlen(name));
  const unsigned char *list = value == nullptr ? nullptr : encode_predef_value(value);
  a_symbol *symbol = find_macro_symbol(locator.header);
  if (symbol != nullptr) {
    if (list == nullptr || !same_predef_value(macro_def_of_symbol(symbol), list)) {
      str_catastrophe(ec_bad_predef_macro_redef, name);
    }
    return symbol;
  }
  symbol = enter_symbol(sk_macro, &locator, depth_scope_stack < 0 ? -1 : 0, true);
  a_macro_def *def = (a_macro_def *)alloc_in_region(0, sizeof(a_macro_def));
  clear_macro_def(def);
  def->cannot_redefine = cannot_redefine;
  def->no_pch_use = no_pch_use;
  def->predefined = true;
  def->replacement = list;
  macro_def_of_symbol(symbol) = def;
  def->il_macro = make_il_macro(symbol);
  return symbol;
}

static void enter_builtin_macro(const char *name, a_builtin_macro builtin)
{
  a_symbol *symbol = enter_predef_macro(nullptr, name, true, false);
  macro_def_of_symbol(symbol)->builtin = builtin;
}

static void enter_number_macro(const char *name, long value, bool cannot_redefine)
{
  char text[24];
  snprintf(text, sizeof text, "%ld", value);
  enter_predef_macro(text, name, cannot_redefine, false);
}

static void enter_one(bool condition, const char *name)
{
  if (condition) enter_predef_macro("1", name, true, false);
}

//---------------------------------------------------------------------------------------------
// The fixed list.

// The texts of __DATE__ and __TIME__, from what ctime gives: "Sun Nov 22 21:31:24 2026".
static void make_date_and_time(const char *date_and_time, char *date, char *time)
{
  snprintf(date, 16, "\"%.6s %.4s\"", date_and_time + 4, date_and_time + 20);
  snprintf(time, 16, "\"%.8s\"", date_and_time + 11);
}

static void enter_stdc()
{
  if (stdc_zero_in_system_headers) {
    stdc_macro_value = stdc_zero_in_nonstrict_mode ? strict_ansi_mode : 1;
    enter_builtin_macro("__STDC__", bim_stdc);
    return;
  }
  bool is_one = !stdc_zero_in_nonstrict_mode || strict_ansi_mode;
  bool cannot_redefine = strict_ansi_mode && C_dialect == 0;
  enter_predef_macro(is_one ? "1" : "0", "__STDC__", cannot_redefine, false);
}

static void enter_macros_of_c()
{
  enter_predef_macro(c99_mode ? "199901L" : "199409L", "__STDC_VERSION__", true, false);
  enter_one(c99_mode, "__STDC_HOSTED__");
}

static void enter_macros_of_cplusplus()
{
  bool is_old = gpp_mode || cfront_2_1_mode || cfront_3_0_mode;
  enter_predef_macro(is_old ? "1" : "199711L", "__cplusplus", false, false);
  enter_one(cpp11_mode, "__STDC_HOSTED__");
  enter_one(report_embedded_cplusplus_noncompliance, "__embedded_cplusplus");
  enter_one(wchar_t_is_keyword, "_WCHAR_T");
  enter_one(char16_t_and_char32_t_are_keywords, "__CHAR16_T_AND_CHAR32_T");
  enter_one(bool_is_keyword, "_BOOL");
  enter_one(array_new_and_delete_enabled, "__ARRAY_OPERATORS");
  enter_one(exceptions_enabled, "__EXCEPTIONS");
  enter_one(rtti_enabled, "__rtti_enabled__");
  enter_one(true, "__PLACEMENT_DELETE");
  enter_one(true, "__ZOK_RUNTIME_USES_NAMESPACES");
  enter_one(true, "__ZOK_IA64_ABI");
  enter_one(true, "__ZOK_IA64_ABI_VARIANT_CTORS_AND_DTORS_RETURN_THIS");
  enter_one(implicit_using_std, "__ZOK_IMPLICIT_USING_STD");
}

static void enter_version_macro(int major, int minor, int patch)
{
  char text[64];
  int length =
      snprintf(text, sizeof text, "\"ZOK %s %d.%d", gpp_mode ? "g++" : "gcc", major, minor);
  if (patch != 0) length += snprintf(text + length, sizeof text - length, ".%d", patch);
  snprintf(text + length, sizeof text - length, " mode\"");
  enter_predef_macro(text, "__VERSION__", true, false);
}

static void enter_macros_of_gnu()
{
  int minor = gnu_version % 10000 / 100;
  int patch = gnu_version % 100;
  enter_one(gpp_mode && rtti_enabled && gnu_version >= 40300, "__GXX_RTTI");
  if (gcc_mode && gnu_version > 40102) {
    enter_one(true, std_c99_inlining ? "__GNUC_STDC_INLINE__" : "__GNUC_GNU_INLINE__");
  }
  enter_number_macro("__GNUC_MINOR__", minor, false);
  enter_number_macro("__GNUC_PATCHLEVEL__", patch, false);
  enter_version_macro(gnu_version / 10000, minor, patch);
  if (gnu_version > 40399) {
    enter_predef_macro(int_kind_name_full(targ_char16_t_int_kind), "__CHAR16_TYPE__", true, false);
    enter_predef_macro(int_kind_name_full(targ_char32_t_int_kind), "__CHAR32_TYPE__", true, false);
  }
}

static void enter_macros_of_runtime()
{
  const char *entry = int_kind_name_full(targ_ia64_vtable_entry_int_kind);
  enter_predef_macro(int_kind_name_full(ik_short), "__ZOK_DELTA_TYPE", true, false);
  enter_predef_macro(entry, "__ZOK_IA64_VTABLE_ENTRY_TYPE", true, false);
  enter_predef_macro(int_kind_name_full(ik_short), "__ZOK_VIRTUAL_FUNCTION_INDEX_TYPE", true,
                     false);
  static const struct {
    const char *name;
    int value;
  } rows[] = {{"__ZOK_LOWER_VARIABLE_LENGTH_ARRAYS", 0},
              {"__ZOK_IA64_ABI_USE_VARIANT_ARRAY_COOKIES", 0},
              {"__ZOK_ABI_COMPATIBILITY_VERSION", 310},
              {"__ZOK_ABI_CHANGES_FOR_RTTI", 1},
              {"__ZOK_ABI_CHANGES_FOR_ARRAY_NEW_AND_DELETE", 1},
              {"__ZOK_ABI_CHANGES_FOR_PLACEMENT_DELETE", 1},
              {"__ZOK_BSD", 0},
              {"__ZOK_SYSV", 0},
              {"__ZOK_ANSIC", 1}};
  for (auto &row : rows)
    enter_number_macro(row.name, row.value, true);
}

static void enter_builtin_macros()
{
  enter_builtin_macro("__LINE__", bim_line);
  enter_builtin_macro("__FILE__", bim_file);
  enter_builtin_macro("defined", bim_defined);
  enter_builtin_macro("__BASE_FILE__", bim_base_file);
  if (pragma_operator_allowed) enter_builtin_macro("_Pragma", bim_pragma);
  if (gcc_mode || gpp_mode) {
    enter_builtin_macro("__COUNTER__", bim_counter);
    enter_builtin_macro("__TIMESTAMP__", bim_timestamp);
  }
}

static void enter_date_and_time(const char *date_and_time)
{
  char date[16], time[16];
  make_date_and_time(date_and_time, date, time);
  enter_predef_macro(date, "__DATE__", true, true);
  enter_predef_macro(time, "__TIME__", true, true);
}

void init_predefined_macros(const char *date_and_time)
{
  enter_one(true, targ_has_signed_chars ? "__signed_chars__" : "__unsigned_chars__");
  if (openmp_mode) enter_predef_macro("200805", "_OPENMP", true, false);
  enter_date_and_time(date_and_time);
  if (C_dialect != 1) enter_stdc();
  if (C_dialect == 0) enter_macros_of_c();
  if (C_dialect == 2) enter_macros_of_cplusplus();
  enter_one(true, "__QN_INT40_T__");
  enter_one(c99_complex_enabled, "__QN_C99_COMPLEX_ENABLED__");
  enter_one(strict_ansi_mode && !long_long_is_standard, "__NO_LONG_LONG");
  enter_one(type_traits_helpers_enabled, "__ZOK_TYPE_TRAITS_ENABLED");
  enter_one(variadic_templates_enabled, "__VARIADIC_TEMPLATES");
  enter_one(true, "__zok_front_end__");
  enter_predef_macro("404", "__ZOK_VERSION__", true, false);
  enter_predef_macro(int_kind_name_full(targ_size_t_int_kind), "__ZOK_SIZE_TYPE__", true, false);
  enter_predef_macro(int_kind_name_full(targ_ptrdiff_t_int_kind), "__ZOK_PTRDIFF_TYPE__", true,
                     false);
  if (gcc_mode || gpp_mode) enter_macros_of_gnu();
  if (building_runtime) enter_macros_of_runtime();
  enter_builtin_macros();
  enter_system_specific_predefined_macros_and_assertions();
  if (use_predefined_macro_file) read_predefined_macro_file();
  process_defs_from_cmd_line();
}

void fixup_predefined_macros(const char *date_and_time)
{
  char date[16], time[16];
  make_date_and_time(date_and_time, date, time);
  for (const char *name : {"__DATE__", "__TIME__"}) {
    a_symbol *symbol = find_macro_symbol(find_symbol_header(name, 8));
    if (symbol == nullptr) continue;
    macro_def_of_symbol(symbol)->replacement =
        encode_predef_value(strcmp(name, "__DATE__") == 0 ? date : time);
  }
}

//---------------------------------------------------------------------------------------------
// The predefined macro file: lines of modes, cannot-redefine flag, name, value.

namespace {
struct a_predef_file_line {
  char *next;
  unsigned long number;
};
} // namespace

[[noreturn]] static void bad_predef_line(const a_predef_file_line *line, an_error_code reason)
{
  char number[24];
  snprintf(number, sizeof number, "%lu", line->number);
  strstr_catastrophe(ec_bad_predef_macro_line, number, error_text(reason));
}

static inline bool is_field_separator(char c)
{
  return c == ' ' || c == '\t';
}

// Takes the next field off the line, null-terminated; empty at the line's end.
static char *take_field(a_predef_file_line *line)
{
  char *p = line->next;
  while (is_field_separator(*p))
    ++p;
  char *field = p;
  while (*p != 0 && !is_field_separator(*p))
    ++p;
  if (*p != 0) *p++ = 0;
  line->next = p;
  return field;
}

// Does an entry of the list of modes hold?
static bool modes_apply(const a_predef_file_line *line, char *modes)
{
  bool applies = false;
  for (;;) {
    char *comma = strchr(modes, ',');
    if (comma != nullptr) *comma = 0;
    bool wanted = *modes != '!';
    if (!wanted) ++modes;
    if (*modes == 0) bad_predef_line(line, ec_missing_mode_after_comma);
    int mode = pmm_last - 1;
    while (mode > pmm_none && strcmp(predef_macro_mode_names[mode], modes) != 0)
      --mode;
    if (mode == pmm_none) str_catastrophe(ec_bad_macro_mode_name, modes);
    if ((predef_macro_mode_values[mode] == 1) == wanted) applies = true;
    if (comma == nullptr) return applies;
    modes = comma + 1;
  }
}

static void process_predef_file_line(a_predef_file_line *line)
{
  while (is_field_separator(*line->next))
    ++line->next;
  if (*line->next == 0 || *line->next == '#') return;
  bool applies = modes_apply(line, take_field(line));
  const char *flag = take_field(line);
  if (*flag == 0) bad_predef_line(line, ec_missing_cannot_redefine_flag);
  bool cannot_redefine = strcmp(flag, "yes") == 0;
  if (!cannot_redefine && strcmp(flag, "no") != 0) {
    bad_predef_line(line, ec_invalid_cannot_redefine_value);
  }
  const char *name = take_field(line);
  if (*name == 0) bad_predef_line(line, ec_missing_macro_name);
  while (is_field_separator(*line->next))
    ++line->next;
  if (applies) enter_predef_macro(line->next, name, cannot_redefine, false);
}

void read_predefined_macro_file()
{
  a_text_buffer *name = alloc_text_buffer(256);
  combine_dir_and_file_name(zok_base_directory, "lib", name);
  append_to_path_name(name, "predefined_macros.txt");
  FILE *file = fopen_with_error(name->buffer, "r", 0, ec_file_kind_predefined_macro);
  if (file == nullptr) return;
  a_predef_file_line line = {nullptr, 0};
  while ((line.next = read_line_from_file(file)) != nullptr) {
    ++line.number;
    process_predef_file_line(&line);
  }
  fclose(file);
}

//---------------------------------------------------------------------------------------------
// The command line.

static void define_from_cmd_line(const char *text)
{
  if (strchr(text, '\n') != nullptr) {
    str_command_line_error(ec_cl_invalid_macro_definition, text);
  }
  size_t length = strlen(text);
  const char *value = "";
  if (strchr(text, '=') == nullptr) value = gcc_mode || gpp_mode ? " 1" : "=1";
  set_curr_source_line_text(text, length, value);
  curr_command_line_macro_def = text;
  in_preprocessing_directive = true;
  fetch_pp_tokens = true;
  expand_macros = false;
  fixed_position_in_use = true;
  fixed_position = no_line_position;
  error_position = no_line_position;
  add_stop_token(tok_newline);
  proc_define();
  remove_stop_token(tok_newline);
  fixed_position_in_use = false;
  in_preprocessing_directive = false;
  fetch_pp_tokens = false;
  expand_macros = true;
  curr_command_line_macro_def = nullptr;
}

static void undefine_from_cmd_line(const char *text)
{
  bool okay = *text != 0;
  for (const char *p = text; *p != 0; ++p) {
    if (!is_id_char(*p)) okay = false;
  }
  a_symbol *symbol = nullptr;
  if (okay) symbol = find_macro_symbol(find_symbol_header(text, (uint32_t)strlen(text)));
  if (symbol != nullptr && macro_def_of_symbol(symbol)->cannot_redefine) okay = false;
  if (!okay) str_command_line_error(ec_cl_invalid_macro_undefinition, text);
  if (check_misra_c_2004 && strcmp(text, "_INLINE") != 0) {
    curr_command_line_macro_def = text;
    report_misra_rule(misra_required_severity, ec_misra_c_2004_19_6, no_line_position);
    curr_command_line_macro_def = nullptr;
  }
  if (symbol != nullptr) remove_symbol(symbol);
}

void process_defs_from_cmd_line()
{
  bool in_order = (gcc_mode || gpp_mode) && gnu_version >= 30000;
  for (int pass = 0; pass < (in_order ? 1 : 2); ++pass) {
    for (a_def_from_cmd_line *def = defs_from_cmd_line; def != nullptr; def = def->next) {
      if (!in_order && def->is_undef != (pass == 1)) continue;
      if (def->is_undef) {
        undefine_from_cmd_line(def->text);
      } else {
        define_from_cmd_line(def->text);
      }
    }
  }
}

//---------------------------------------------------------------------------------------------
// Listing.

void gen_pp_output_for_macro_definitions()
{
  for (a_macro *m = il_header.macros; m != nullptr; m = m->next) {
    a_symbol *symbol = m->source_corresp.assoc_symbol;
    if (symbol == nullptr || find_macro_symbol(symbol->header) != symbol) continue;
    const a_macro_def *def = macro_def_of_symbol(symbol);
    if (def->il_macro != m || def->no_pch_use || def->replacement == nullptr) continue;
    fprintf(f_pp_output, "%s\n", text_of_macro_definition(symbol));
  }
}
