// decl_inits_internal.h - what the files of the initializers share.
#pragma once
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/decl_inits.h"

// The whole of one initializer.
struct an_init_walk {
  bool is_static;          // static storage duration
  bool constants_required; // static, or in the braces of an automatic aggregate of C89
  bool some_dynamic;       // a value was no constant
  bool error_seen;
  bool excess_reported;
  bool comma_taken;                   // an inner level without braces took the comma that ends it
  bool is_object_with_flexible_array; // values for the array at the end of the object
  bool const_member_unset;            // a const member got no value
  bool elision_reported;              // MISRA 9.2, in the list at hand
  int brace_depth;                    // open braces
  int level_depth;                    // open levels, with braces or without
};

// Reports a list without braces for an aggregate; false: it is an error, and the value is to be
// dropped.
bool missing_braces_are_tolerated(a_source_position pos);

// Reads the initializer of an object of *type at the current token: the value as a constant tree
// (an error constant
// after an error), *type completed.  The current token is `{` or the first value.
void scan_object_initializer(a_type **type, an_init_walk *walk, a_constant *constant);
// A scalar or whole value, in braces or not.
void scan_scalar_initializer(a_type *type, an_init_walk *walk, a_constant *constant);
// Makes the constant an element that is evaluated at run time.
void make_dynamic_element(an_expr_node *expr, a_type *type, an_init_walk *walk,
                          a_constant *constant);
// True at a string literal (or, with braces, the `{` before one) that initializes all of an array
// of *type.
bool string_initializes_array(a_type *type, bool behind_brace);
void scan_string_initializer(a_type **type, an_init_walk *walk, a_constant *constant);
// Does the token behind a value end the initializer?
bool token_ends_initializer(unsigned token);
