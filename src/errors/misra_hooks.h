// misra_hooks.h - how the floors below reach the MISRA-C:2004 checker.
// When check_misra_c_2004 (driver/flags.h) is off, a hook costs the test of that flag and nothing is called.
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

struct a_misra_hooks {
#define HOOK(result, name, parameters) result(*name) parameters;
#include "errors/misra_hooks.def"
};
extern a_misra_hooks misra_hooks; // filled by misra_early_init
