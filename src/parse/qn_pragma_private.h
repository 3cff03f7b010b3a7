// qn_pragma_private.h - what the handlers of the target's pragmas share.
#pragma once
#include "errors/error.h"
#include "lex/pragma.h"
#include "parse/qn_pragma.h"
#include "parse/symbol_tbl.h"

// A handler reads the operands behind "(" or behind the symbol, checks what they are about and keeps the
// pragma.  It returns true after a fault in its syntax, which it has reported.  The symbol is null for
// pragmas that name none, the statement for all but those of loops.
typedef bool a_target_pragma_function(a_pending_pragma *pragma, a_symbol *symbol,
                                      a_statement *statement);
#define TARGET_PRAGMA_FUNCTION(name)                                                               \
  bool name(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)

// qn_pragma_data.cpp
TARGET_PRAGMA_FUNCTION(proc_data_section_pragma);
TARGET_PRAGMA_FUNCTION(proc_data_align_pragma);
TARGET_PRAGMA_FUNCTION(proc_struct_align_pragma);
TARGET_PRAGMA_FUNCTION(proc_mem_bank_pragma);
TARGET_PRAGMA_FUNCTION(proc_location_pragma);
TARGET_PRAGMA_FUNCTION(proc_noinit_persistent_pragma);
// qn_pragma_func.cpp
TARGET_PRAGMA_FUNCTION(proc_code_section_pragma);
TARGET_PRAGMA_FUNCTION(proc_keep_pragma);
TARGET_PRAGMA_FUNCTION(proc_weak_pragma);
TARGET_PRAGMA_FUNCTION(proc_function_pragma);
TARGET_PRAGMA_FUNCTION(proc_function_definition_pragma);
TARGET_PRAGMA_FUNCTION(proc_interrupt_threshold_pragma);
TARGET_PRAGMA_FUNCTION(proc_function_options_pragma);
TARGET_PRAGMA_FUNCTION(proc_interrupt_pragma);
TARGET_PRAGMA_FUNCTION(proc_memory_model_pragma);
// qn_pragma_loop.cpp
TARGET_PRAGMA_FUNCTION(proc_iterate_pragma);
TARGET_PRAGMA_FUNCTION(proc_unroll_pragma);
TARGET_PRAGMA_FUNCTION(proc_no_alias_pragma);
TARGET_PRAGMA_FUNCTION(proc_register_pragma);
TARGET_PRAGMA_FUNCTION(proc_info_pragma);

// State of the pragma whose operands are being read (qn_pragma.cpp).
extern bool suppress_extra_token_error; // a message was given already
extern bool had_open_paren;
extern bool wrapup_done;

inline const char *name_of_pragma(const a_pending_pragma *pragma)
{
  return pragma_ids[pragma->description->kind];
}
// The form of C, which names its symbol.
inline bool names_its_symbol(const a_pending_pragma *pragma)
{
  return pragma->description->phase == pragma_end_of_scope;
}

// --- Operands (qn_pragma.cpp) ----------------------------------------------------------------------

// Each reads one operand and returns false after a complaint.

// The comma behind the symbol (255); the form without a symbol has none.
bool scan_comma_behind_symbol(const a_pending_pragma *pragma);
bool scan_pragma_comma();
// A narrow, non-empty string literal (821); *text is a copy at file scope.
bool scan_pragma_string(const a_pending_pragma *pragma, const char **text);
// An integral constant expression; one that is no literal is written out by its value.
bool scan_pragma_constant(a_pending_pragma *pragma, a_constant *constant);
// The same as a number; 23 for one outside the range of long long.
bool scan_pragma_number(a_pending_pragma *pragma, long long *value);
// The closing parenthesis (18), a semicolon (66) and the end of the rescan.
bool end_of_pragma_operands(a_pending_pragma *pragma);

// --- Effects (qn_pragma.cpp) -----------------------------------------------------------------------

// Adds to the arguments of the record that keep_pragma makes; the text is copied.
void add_pragma_argument(const char *text);
// Makes the IL record, bound to the symbol's entity, to the statement or to nothing.
void keep_pragma(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement);
// The pragma has no effect: `code` with the pragma's name and the symbol, as a warning.
void report_wrong_entity(const a_pending_pragma *pragma, an_error_code code, a_symbol *symbol);
// What is reached from outside the source stays, although nothing in it refers to the symbol
// (qn_pragma_func.cpp).
void keep_static_entity(a_symbol *symbol);
// The bit goes to the entity by the way of declarations.
void add_decl_modifier(a_symbol *symbol, uint32_t modifier);

// --- Entities (qn_pragma.cpp) ----------------------------------------------------------------------

bool is_variable_symbol(const a_symbol *symbol);
bool is_function_definition(const a_symbol *symbol);
// A variable of file scope for which this unit has storage.
bool is_file_level_object_definition(a_symbol *symbol);
// A variable or static member that lives as long as the program.
bool has_static_storage(a_symbol *symbol);
// What data pragmas ask for: the former in C (824), the latter in C++ (1373).
bool check_data_symbol(const a_pending_pragma *pragma, a_symbol *symbol);
