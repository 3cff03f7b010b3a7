// scope_stk_parts.h - what the files of the scope stack share among themselves.
#pragma once
#include "parse/scope_stk.h"

struct a_scope_push {
  a_scope_kind kind;
  int number;                    // -1: the next one
  unsigned flags;                // a_push_flag
  a_type *type;
  a_routine *routine;
  a_namespace *name_space;
  an_object_lifetime *lifetime;  // a lifetime that the scope takes over
};
void push_scope_full(const a_scope_push *push);

struct an_unexpanded_pack_reference {
  an_unexpanded_pack_reference *next;
  a_symbol *symbol;
  a_source_position position;
};

// End of a scope.
void report_references_of_inline_functions();
void decide_fate_of_function_body(a_scope_stack_entry *entry);
void lower_waiting_functions_if_possible();
void init_end_of_scope_state();
void reset_using_directives_at_pop(a_scope_stack_entry *entry);
