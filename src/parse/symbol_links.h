// symbol_links.h - what the files of the symbol table share among themselves.
#pragma once
#include "parse/symbol_tbl.h"

a_symbol_header *header_for_error_symbol();
a_symbol_header *make_unnamed_header();
void hash_remove(a_hash_table *table, const void *key);
// Rules on the uniqueness of identifiers; installed by the checker.
extern void (*check_symbol_uniqueness_hook)(a_symbol *symbol);
