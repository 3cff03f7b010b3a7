// symbol_links.h - what the files of the symbol table share among themselves.
#pragma once
#include "parse/symbol_tbl.h"

a_symbol_header *header_for_error_symbol();
a_symbol_header *make_unnamed_header();
void hash_remove(a_hash_table *table, const void *key);
// Keeps a symbol that was taken off all chains on its header's removed_symbols, for the rules on the
// uniqueness of identifiers.
void keep_removed_symbol(a_symbol *symbol);

// The record behind the symbol of a class, null where a type has none (errors, other kinds).
a_class_symbol_supplement *class_supplement_of_type(a_type *class_type);
