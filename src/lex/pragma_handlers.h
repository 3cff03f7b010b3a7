// pragma_handlers.h - the handlers that rows of pragmas.def name, and the module of each.
#pragma once
#include "il/il_fwd.h"

#define PRAGMA_HANDLER(name)                                                                       \
  void name(a_pending_pragma *pragma, a_symbol *symbol, a_statement *statement)

// parse/pragma_handlers.cpp
PRAGMA_HANDLER(pack_pragma);
PRAGMA_HANDLER(stdc_pragma);
PRAGMA_HANDLER(gcc_pragma);
PRAGMA_HANDLER(record_arg_pragma);
// lex/diag_pragma.cpp
PRAGMA_HANDLER(diag_pragma);
// Templates, classes, OpenMP: their modules install these; without one the tokens are skipped.
PRAGMA_HANDLER(instantiation_pragma);
PRAGMA_HANDLER(define_type_info_pragma);
PRAGMA_HANDLER(omp_pragma);
// parse/qn_pragma.cpp: one that stands in front of its declaration or loop; the power advice
PRAGMA_HANDLER(process_cpp_pragma);
PRAGMA_HANDLER(pragma_ulp_action);
// lex/sections.cpp
PRAGMA_HANDLER(process_set_section_pragma);
// lex/preproc.cpp: once_pragma, hdrstop_or_no_pch_pragma (preproc.h).
