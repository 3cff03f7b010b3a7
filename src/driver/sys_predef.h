// sys_predef.h - what exists before the first source line: macros, intrinsics and built-in functions.
#pragma once

struct a_symbol;
struct a_type;
struct a_expr_node;
struct an_expr_node;

// Enters the tool chain's macros and the GNU-compatible list.  None of them can be redefined.
void enter_system_specific_predefined_macros_and_assertions();
// Enters the fixed list and the macros that depend on settings.  Called by the former.
void TRG_enter_system_specific_macros();

// Declares intrinsic functions (unless no_intrinsics), hook functions and, in GNU modes, the built-in
// functions.  Names are entered when the scanner first meets them: see declare_predeclared_function.
void enter_system_specific_predeclared_symbols();
// If `name` (`length` bytes) is the name of a function that is predeclared in the present mode and wasn't
// entered yet, declares it at file scope and returns its symbol; null otherwise.
a_symbol *declare_predeclared_function(const char *name, unsigned length);

// Sets builtin_va_list_type: the va_list declared so far, or __zok_va_list, or the built-in type.
void declare_builtin_va_list_type(bool is_cstdarg);
extern a_type *builtin_va_list_type;    // written by declare_builtin_va_list_type
extern a_type *type_underlying_va_list;  // the target's own type of va_list, null until it is needed

// Numbers of the predeclared functions, as a routine's builtin_function_kind holds them: the rows of
// builtins.def, then those of intrinsics.def.
enum a_builtin_function_kind : unsigned short {
  bfk_none,
#define BUILTIN(id, name, type, flags) bfk_##id,
#include "driver/builtins.def"
  bfk_first_intrinsic,
  bfk_before_intrinsics = bfk_first_intrinsic - 1,
#define INTRINSIC(id, name, type, form, silicon) bfk_##id,
#include "driver/intrinsics.def"
  bfk_last
};

// Name of the function of that kind; null for bfk_none.
const char *name_of_builtin_function(a_builtin_function_kind kind);
// True for the string parameter of an external function interface intrinsic: the string stays literal.
bool keep_literal_string_in_efi_intrinsic(a_builtin_function_kind kind, const an_expr_node *expr);
