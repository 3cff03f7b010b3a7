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

// C++: the temporaries of an initializer live to its end; what a reference is bound to outlives them.
struct an_init_lifetime {
  an_object_lifetime *lifetime; // null in C
};
void push_init_lifetime(an_init_lifetime *scope);
// `init` is what the object begins with, null after an error or for a constant.
void pop_init_lifetime(an_init_lifetime *scope, a_dynamic_init *init, a_type *type);

// The object begins with `init`: at the start of the program, at the first passing, or where the
// declaration stands.
void record_dynamic_initialization(a_variable *variable, a_dynamic_init *init,
                                   const a_source_position *pos);
// An aggregate, or array, whose class is destroyed.
void note_destructor_of_elements(a_dynamic_init *init, a_type *type, const a_source_position *pos);
// C++: `= value` or `(values)` of an object of a class; the current token is the one behind.  Null after
// an error.
a_dynamic_init *scan_class_initializer(a_type *type, bool is_parenthesized, a_source_position pos);
