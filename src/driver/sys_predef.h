// sys_predef.h - what exists before the first source line: macros, intrinsics and built-in
// functions.
#pragma once

struct a_symbol;
struct a_type;

// Numbers of the predeclared functions, as a routine's builtin_function_kind holds them: the rows
// of builtins.def (bfk_), then those of intrinsics.def (bfi_).
enum a_builtin_function_kind : unsigned short {
  bfk_none,
#define BUILTIN(name, signature) bfk_##name,
#include "driver/builtins.def"
#define INTRINSIC(name, signature, form, silicon_class) bfi_##name,
#include "driver/intrinsics.def"
  bfk_entry_hook,
  bfk_exit_hook,
  bfk_last
};

inline bool is_gnu_builtin_kind(unsigned kind)
{
  return kind != bfk_none && kind <= bfk_unreachable;
}

// How a predeclared function is placed and marked.
enum a_predeclared_form : unsigned char {
  pf_builtin, // GNU built-in
  pf_library, // in namespace std as well
  pf_intrinsic,
  pf_special, // the code generator treats it apart
  pf_hook     // called by generated code
};

// Enters the tool chain's macros and the GNU-compatible list.  None of them can be redefined.
void enter_system_specific_predefined_macros_and_assertions();
// Enters the fixed list and the macros that depend on settings.  Called by the former.
void TRG_enter_system_specific_macros();

// Makes the intrinsic functions (unless no_intrinsics), the hook functions and, in GNU modes, the
// built-in functions known.  A function is declared at file scope when its name first occurs, which
// nobody can tell from a declaration here.
void enter_system_specific_predeclared_symbols();

// Sets builtin_va_list_type, once: the va_list declared so far, or __zok_va_list, or va_list as the
// name of the target's type, which is declared then.
void declare_builtin_va_list_type(bool is_cstdarg);
extern a_type *builtin_va_list_type; // written by declare_builtin_va_list_type

// Name of the function of that kind; null for bfk_none.
const char *name_of_builtin_function(a_builtin_function_kind kind);
a_predeclared_form form_of_builtin_function(a_builtin_function_kind kind);
// True if the first argument of the function is a string that stays literal: an intrinsic of the
// external function interface.
bool keep_literal_string_in_efi_intrinsic(a_builtin_function_kind kind);
