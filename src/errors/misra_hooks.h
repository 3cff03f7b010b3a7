// misra_hooks.h - how the floors below reach the MISRA-C:2004 checker.
// When check_misra_c_2004 (driver/flags.h) is off, a hook costs the test of that flag.
// Severities of the two classes: misra_required_severity, misra_advisory_severity (errors/error.h).
#pragma once
#include <cstddef>
#include "errors/error_codes.h"
#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/source_position.h"

// What the standard library declares a name as; also the bits of check_for_invalid_identifier.
enum an_ansi_c_identifier_kind : unsigned char {
  ansi_c_none = 0,
  ansi_c_header = 1,
  ansi_c_type = 2,
  ansi_c_function = 4,
  ansi_c_function_macro = 16,
  ansi_c_object = 32, // an object-like macro, or a variable
  ansi_c_macro = ansi_c_function_macro | ansi_c_object,
};

// What becomes of the value of a full expression.
enum a_misra_expr_use : unsigned char {
  meu_value,
  meu_condition, // it controls a statement
  meu_statement, // it is dropped
  meu_return,
};

// How an operand comes to be converted.
enum a_misra_conversion_use : unsigned char {
  mcu_assignment, // or initialization
  mcu_operation,  // operand of an operator, or right side of a compound assignment
  mcu_argument,
  mcu_return,
};

// Counters of a for statement whose body is being read.
struct a_misra_loop_counters {
  int count;
  a_variable *variables[8];
};

struct a_misra_hooks {
#define HOOK(result, name, parameters) result(*name) parameters;
#include "errors/misra_hooks.def"
};
extern a_misra_hooks misra_hooks; // filled by misra_early_init
