// preproc_private.h - what the files of the directives share among themselves.
#pragma once
#include "errors/error_codes.h"
#include "lex/preproc.h"

// Where the "#" of the directive being carried out stands.
extern a_source_position pos_of_directive;

// Reads the word behind "#".
a_pp_directive_kind scan_directive_keyword();
// Skips the rest of the line; the current token is then tok_newline (or the end of the source).
void flush_directive();
// The same, with message 14 at warning level, or the discretionary one of strict mode, if a token stands
// there.  Nothing is said in K&R preprocessing.
void flush_extra_tokens();
// The same for directives whose extra text is an error: 14 at the directive, unless it has an error already.
void finish_directive_line();
// The rest of the line as a null-terminated string, until the next call; moves to the end of the line.
const char *rest_of_directive_line();
// Symbol header of the current token, an identifier fetched as a preprocessing token.
a_symbol_header *header_of_pp_identifier();

void proc_if();
void proc_ifdef(bool negated);
void proc_elif();
void proc_else();
void proc_endif();
void proc_include(bool is_next);
void proc_line(bool is_digit_form);

// Something other than a conditional stands in the file: it can't be wholly inside a guard.
void note_unguarded_text();
