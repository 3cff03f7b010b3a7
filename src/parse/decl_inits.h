// decl_inits.h - initializers: what follows "=" or "(" behind a declarator, and what happens without one.
#pragma once
#include "il/il_fwd.h"
#include "lex/source_position.h"

// The initializer of the entity of decl_state.  The current token is the one behind "=" or "(" (is_parenthesized);
// on return it is the one behind the initializer.  Attaches the constant or the dynamic initialization to the
// variable, completes its array type, reports everything.  `end_pos` (may be null) receives the end.
void initializer(a_decl_parse_state *decl_state, a_source_position *pos, int linkage, bool is_parenthesized,
                 a_source_position *end_pos, a_decl_pos_block *pos_block);

// Default initialization of a definition without initializer (C++ classes; nothing to do in C).
void def_initializer(a_symbol *symbol, a_source_position *pos);

// Reports a reference or const object without initializer (254, 259).
void check_for_missing_initializer_full(a_symbol *symbol, a_type *type, bool is_local);

// Constructor prologue and destructor epilogue (C++).
void ctor_initializer(a_routine *routine, bool has_list);
void dtor_initializer(a_routine *routine);

// C99 compound literal of *type; the current token is "{".  The value is in `constant`, or in *out_dynamic_init when
// something isn't constant.  *type is replaced by the completed type of an array of unknown bound.
void scan_compound_literal_initializer(a_type **type, bool is_static, a_constant *constant, a_dynamic_init **out_dynamic_init);

// Whether the string constant fits an array of *type; completes an unknown bound (replaces *type).  With
// out_too_long a too long string passes and sets it.  The constant is cut to the bound.
bool check_string_constant_initializer_full(a_type **type, a_constant *constant, bool *out_too_long);

// Applies one dynamic initialization to every element of array_type; returns through out_init.
void repeat_nonconstant_init(a_dynamic_init *dynamic_init, a_type *array_type, a_type *element_type,
                             a_dynamic_init **out_init, unsigned long long count);
