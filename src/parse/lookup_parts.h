// lookup_parts.h - what the files of name lookup share among themselves, and the hooks of lookup.
#pragma once
#include "parse/lookup.h"
#include "parse/scope_stk.h"

a_symbol *target_of_symbol(a_symbol *symbol);
a_symbol *finish_lookup(a_symbol *symbol, a_symbol_locator *locator, unsigned options);
// Adds what the using directives that apply at the entry find to the entry's own symbol.
a_symbol *add_using_directive_results(a_scope_stack_entry *entry, a_symbol_locator *locator,
                                      unsigned options, a_symbol *own);
// Adds a function, or all of a set, to a synthesized overload set, unless it is there.
void append_projection_to_set(a_symbol *set, a_symbol *symbol);
// A class with base classes is open on the lookup chain.
bool in_scope_with_bases();

// Declares the entity of an extern declaration in a closed block anew in the current scope; installed
// by the declaration parser.  Returns the new symbol.
extern a_symbol *(*redeclare_external_symbol_hook)(a_symbol *extern_symbol, a_symbol_locator *locator);
// The limit of an instantiation's template; installed by the template module.
extern uint32_t (*instantiation_decl_seq_hook)();
