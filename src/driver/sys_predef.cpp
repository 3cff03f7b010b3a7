// sys_predef.cpp - predefined macros of the target, intrinsic functions, GNU built-in functions.
// Owns:    the tables made of target_macros.def, builtins.def and intrinsics.def;
//          builtin_va_list_type.
// Uses:    the header hook of the symbol table: a function's name is looked up here when the run
//          meets the spelling for the first time.
// Rule:    the tables are constant and sorted at compile time, so that what a source never
//          mentions costs nothing; types are made from one-letter signatures on the first mention.
// Entry:   enter_system_specific_predefined_macros_and_assertions,
//          enter_system_specific_predeclared_symbols, declare_builtin_va_list_type.
#include "driver/sys_predef.h"
#include <cstdio>
#include <cstring>
#include <string_view>
#include "driver/flags.h"
#include "driver/rov_util.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il_alloc.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "lex/macro.h"
#include "mem/mem_manage.h"
#include "parse/symbol_tbl.h"

//-------------------------------------------------------------------------------------------------
// Macros.

static void enter_fixed_macro(const char *name, const char *value)
{
  enter_predef_macro(value, name, true, false);
}

static const struct {
  const char *name, *value;
} target_macros[] = {
#define TARGET_MACRO(name, value) {name, value},
#include "driver/target_macros.def"
};

static const char *value_of_large_model_option()
{
  if (targ_code_access_model != 1) return "0";
  switch (targ_data_access_model) {
  case 0: return "1";
  case 1: return "3";
  case 2: return "2";
  default: return "0";
  }
}

static void enter_memory_model_macros()
{
  if (targ_code_access_model == 0 && targ_data_access_model == 0) {
    enter_fixed_macro("_SMALL_MODEL", "1");
  } else {
    enter_fixed_macro("_LARGE_MODEL", "1");
    enter_fixed_macro("_LARGE_MODEL_OPTION", value_of_large_model_option());
  }
}

static void enter_abi_macros()
{
  if (is_eabi) {
    enter_fixed_macro("__QN_EABI__", "1");
    enter_fixed_macro("__QN_ELFABI__", "1");
  }
  if (is_dsbt) enter_fixed_macro("__DSBT__", "1");
  if (thread_local_storage_specifier_enabled) {
    enter_fixed_macro("__QN_TLS__", "1");
    if (use_libc_tls) enter_fixed_macro("__QN_USE_TLS", "1");
  }
}

void TRG_enter_system_specific_macros()
{
  // The language's own __STDC__ isn't always 1.
  bool stdc_varies = stdc_zero_in_system_headers || stdc_zero_in_nonstrict_mode;
  for (const auto &macro : target_macros) {
    if (stdc_varies && strcmp(macro.name, "__STDC__") == 0) continue;
    // A level that builds choose for themselves on the command line.
    bool is_setting = strcmp(macro.name, "_FORTIFY_SOURCE") == 0;
    enter_predef_macro(macro.value, macro.name, !is_setting, false);
  }
  enter_fixed_macro(targ_little_endian ? "_LITTLE_ENDIAN" : "_BIG_ENDIAN", "1");
  enter_abi_macros();
  enter_fixed_macro(targ_precisionof_long == 32 ? "__QN_32BIT_LONG__" : "__QN_40BIT_LONG__", "1");
  if (targ_predefine_memory_model_macros) enter_memory_model_macros();
  enter_fixed_macro("__SIZE_T_TYPE__", "unsigned");
  enter_fixed_macro("__PTRDIFF_T_TYPE__", "int");
  enter_fixed_macro("__WCHAR_T_TYPE__",
                    targ_sizeof_wchar_t == 4 ? "unsigned int" : "unsigned short");
}

void enter_system_specific_predefined_macros_and_assertions()
{
  static char version[24], wchar_bits[8];
  snprintf(version, sizeof version, "%d%03d%03d", tool_version_major, tool_version_minor,
           tool_version_patch);
  enter_fixed_macro("__QN_COMPILER_VERSION__", version);
  enter_fixed_macro("__COMPILER_VERSION__", version);
  if (asm_header_mode) enter_fixed_macro("__ASM_HEADER__", "1");
  if (virtual_encoding_mode) enter_fixed_macro("__VIRTUAL_ENCODING__", "1");
  TRG_enter_system_specific_macros();
  enter_fixed_macro(targ_little_endian ? "__little_endian__" : "__big_endian__", "1");
  enter_fixed_macro("__QN_STRICT_ANSI_MODE__", strict_ansi_mode ? "1" : "0");
  snprintf(wchar_bits, sizeof wchar_bits, "%u", targ_sizeof_wchar_t * targ_char_bit);
  enter_fixed_macro("__QN_WCHAR_T_BITS__", wchar_bits);
  enter_fixed_macro("__QN_GNU_ATTRIBUTE_SUPPORT__", "1");
  enter_fixed_macro("__QN_STRICT_FP_MODE__", relaxed_fp ? "0" : "1");
}

//-------------------------------------------------------------------------------------------------
// The table of functions.

struct a_predeclared_function {
  std::string_view name;
  const char *signature;
  a_predeclared_form form;
  a_silicon_class silicon_class;
};

static constexpr a_predeclared_function functions[] = {
    {"", "", pf_builtin, rv_any_class},
#define BUILTIN(name, signature) {"__builtin_" #name, signature, pf_builtin, rv_any_class},
#include "driver/builtins.def"
#define INTRINSIC(name, signature, form, silicon_class) {#name, signature, form, silicon_class},
#include "driver/intrinsics.def"
};
static constexpr unsigned function_count = sizeof functions / sizeof functions[0];
static_assert(function_count == bfk_entry_hook);

// Kinds of the library and support functions, which host compilations have too.
static constexpr unsigned last_host_intrinsic = bfi___curfp;

struct a_function_index {
  unsigned short kinds[function_count];
};

// The kinds in the order of their names.
static consteval a_function_index sort_functions()
{
  a_function_index index = {};
  for (unsigned i = 0; i < function_count; i++)
    index.kinds[i] = (unsigned short)i;
  for (unsigned gap = function_count / 2; gap > 0; gap = gap == 2 ? 1 : gap * 5 / 11) {
    for (unsigned i = gap; i < function_count; i++) {
      unsigned short kind = index.kinds[i];
      unsigned j = i;
      for (; j >= gap && functions[kind].name < functions[index.kinds[j - gap]].name; j -= gap) {
        index.kinds[j] = index.kinds[j - gap];
      }
      index.kinds[j] = kind;
    }
  }
  return index;
}
static constexpr a_function_index functions_by_name = sort_functions();

static unsigned find_function(std::string_view name)
{
  unsigned low = 0, high = function_count;
  while (low < high) {
    unsigned middle = (low + high) / 2;
    if (functions[functions_by_name.kinds[middle]].name < name) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (low == function_count) return bfk_none;
  unsigned kind = functions_by_name.kinds[low];
  return functions[kind].name == name ? kind : unsigned(bfk_none);
}

static bool is_offered(unsigned kind)
{
  if (kind < unsigned(bfi_abs)) {
    if (!gcc_mode && !gpp_mode) return false;
    return kind != bfk_unreachable || gnu_version >= 40400;
  }
  if (no_intrinsics) return false;
  if (openmp_mode_host && kind > last_host_intrinsic) return false;
  return silicon_offers(functions[kind].silicon_class);
}

const char *name_of_builtin_function(a_builtin_function_kind kind)
{
  if (kind == bfk_none) return nullptr;
  if (kind == bfk_entry_hook) return hook_of(hk_entry).name;
  if (kind == bfk_exit_hook) return hook_of(hk_exit).name;
  return functions[kind].name.data();
}

a_predeclared_form form_of_builtin_function(a_builtin_function_kind kind)
{
  return kind >= bfk_entry_hook ? pf_hook : functions[kind].form;
}

bool keep_literal_string_in_efi_intrinsic(a_builtin_function_kind kind)
{
  return kind >= bfi__efi_sw_l1 && kind <= bfi__efi_rdw_s2;
}

//-------------------------------------------------------------------------------------------------
// va_list.

a_type *builtin_va_list_type;
static a_type *type_underlying_va_list; // of this translation unit; null until it is needed

a_type *va_list_type()
{
  if (type_underlying_va_list == nullptr) {
    type_underlying_va_list = make_pointer_type(integer_type(ik_char));
  }
  return type_underlying_va_list;
}

// The built-in name stands for the type, so that generated text says it, too: from the start in the
// GNU modes, else when <stdarg.h> is included.
static void name_underlying_va_list()
{
  a_symbol *symbol = make_symbol_for_predeclared_type("__builtin_va_list", va_list_type());
  type_underlying_va_list = type_of_symbol(symbol);
}

static a_type *declared_type(const char *name)
{
  a_symbol_header *header = existing_symbol_header(name, uint32_t(strlen(name)));
  if (header == nullptr) return nullptr;
  for (a_symbol *symbol = header->active_symbols; symbol; symbol = symbol->next_same_name) {
    bool is_class = C_dialect == 2 && is_type_symbol(symbol);
    if (!symbol->is_class_member && (symbol->kind == sk_type || is_class)) {
      return type_of_symbol(symbol);
    }
  }
  return nullptr;
}

void declare_builtin_va_list_type(bool)
{
  if (builtin_va_list_type != nullptr) return;
  builtin_va_list_type = declared_type("va_list");
  if (builtin_va_list_type == nullptr) builtin_va_list_type = declared_type("__zok_va_list");
  if (builtin_va_list_type != nullptr) return;
  if (!(gcc_mode || gpp_mode)) name_underlying_va_list();
  a_symbol *symbol = make_symbol_for_predeclared_type("va_list", va_list_type());
  builtin_va_list_type = type_of_symbol(symbol);
}

//-------------------------------------------------------------------------------------------------
// Types from signatures.

static a_type *type_of_letter(char letter)
{
  switch (letter) {
  case 'v': return void_type();
  case 'i': return integer_type(ik_int);
  case 'u': return integer_type(ik_unsigned_int);
  case 'h': return integer_type(ik_short);
  case 'H': return integer_type(ik_unsigned_short);
  case 'l': return integer_type(ik_long);
  case 'm': return integer_type(ik_unsigned_long);
  case 'x': return integer_type(ik_long_long);
  case 'X': return integer_type(ik_unsigned_long_long);
  case 'z': return size_t_type();
  case 'Z': return integer_type(targ_ssize_t_int_kind);
  case 'f': return float_type(fk_float);
  case 'd': return float_type(fk_double);
  case 'e': return float_type(fk_long_double);
  case 'c': return integer_type(ik_char);
  case 'A': return va_list_type();
  case 'B': return make_reference_type(va_list_type());
  case 'G': return make_pointer_type(make_routine_type(void_type()));
  }
  unexpected_kind("letter of a signature");
}

static a_float_kind float_kind_of_letter(char letter)
{
  return letter == 'f' ? fk_float : letter == 'd' ? fk_double : fk_long_double;
}

// The type at *p, which moves behind it.
static a_type *scan_type(const char **p)
{
  char letter = *(*p)++;
  switch (letter) {
  case 'p': return make_pointer_type(void_type());
  case 'P': return make_ptr_to_const_type(void_type());
  case 'S': return make_pointer_type(type_of_letter('c'));
  case 's': return make_ptr_to_const_type(type_of_letter('c'));
  case 'V': return make_ptr_to_const_type(make_pointer_type(type_of_letter('c')));
  case '*': return make_pointer_type(scan_type(p));
  case '&': return make_reference_type(scan_type(p));
  case 'C': return complex_type(float_kind_of_letter(*(*p)++));
  case 'k': return make_reference_type(f_make_qualified_type(scan_type(p), tq_const));
  }
  return type_of_letter(letter);
}

static a_type *type_of_signature(const char *signature)
{
  const char *p = signature;
  if (p[0] == '&' && p[1] == 'k') p++; // a reference to const is one letter here
  a_type *type = make_routine_type(scan_type(&p));
  for (p++; *p != ')';) {
    if (*p == '.') {
      as_routine(type).routine_supplement->has_ellipsis = true;
      p++;
    } else {
      add_param_type(type, alloc_param_type(scan_type(&p)));
    }
  }
  return type;
}

//-------------------------------------------------------------------------------------------------
// Declaring.

static a_symbol *declare_function(const char *name, a_type *type, unsigned kind)
{
  return make_predeclared_function_symbol(name, type, kind);
}

// The spelling of `header` occurs for the first time.
static void declare_function_of_header(a_symbol_header *header)
{
  char first = header->identifier[0];
  bool may_be_one = first == '_' || first == 'a' || first == 'f' || first == 'l' || first == 'm';
  if (!may_be_one) return;
  unsigned kind = find_function({header->identifier, header->length});
  if (kind == bfk_none || !is_offered(kind)) return;
  int saved_region;
  switch_to_file_scope_region(&saved_region);
  declare_function(header->identifier, type_of_signature(functions[kind].signature), kind);
  switch_back_to_original_region(saved_region);
}

// Spellings that were met before, in options or macro names, won't be met for the first time again.
static void declare_functions_with_known_names()
{
  for (unsigned kind = 1; kind < function_count; kind++) {
    std::string_view name = functions[kind].name;
    if (a_symbol_header *header = existing_symbol_header(name.data(), uint32_t(name.size()))) {
      declare_function_of_header(header);
    }
  }
}

static void declare_hook_function(a_hook_kind hook_kind, a_builtin_function_kind kind)
{
  const a_hook &hook = hook_of(hook_kind);
  if (hook.name == nullptr) return;
  a_type *parameter = hook.parameter == hp_name      ? make_ptr_to_const_type(type_of_letter('c'))
                      : hook.parameter == hp_address ? type_of_letter('G')
                                                     : nullptr;
  a_symbol *symbol = declare_function(hook.name, make_routine_type(void_type(), parameter), kind);
  mark_as_needed(routine_of_symbol(symbol), iek_routine);
}

void enter_system_specific_predeclared_symbols()
{
  symbol_header_hook = nullptr;
  builtin_va_list_type = type_underlying_va_list = nullptr;
  if (do_preprocessing_only) return;
  if (gcc_mode || gpp_mode) name_underlying_va_list();
  if (!no_intrinsics) {
    declare_hook_function(hk_entry, bfk_entry_hook);
    declare_hook_function(hk_exit, bfk_exit_hook);
  }
  declare_functions_with_known_names();
  symbol_header_hook = declare_function_of_header;
}
