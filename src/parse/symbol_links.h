// symbol_links.h - what the files of the symbol table share among themselves.
#pragma once
#include "parse/symbol_tbl.h"

a_symbol_header *header_for_error_symbol();
a_symbol_header *make_unnamed_header();
void hash_remove(a_hash_table *table, const void *key);
