// source_input_internal.h - what the files of source_input share among themselves.
#pragma once
#include "lex/source_input.h"

// Size of the blocks in which files are read.  A block is followed by a sentinel and slack, since the
// line reader loads whole chunks.
inline constexpr unsigned long input_block_size = 0x10000;
char *alloc_input_block();

void emit_curr_source_line();
// Makes the two texts the current line, before any file is open.
void set_curr_source_line_text(const char *text, unsigned long length, const char *more_text);

// While a macro call is collected and the line is left: deletes its rest in the line.
void delete_collected_source_in_line();
// The line is left: releases the modifications that end with it.
void drop_source_line_modifs_of_line();
void source_line_modifs_reset();

// A line was read: remembers whether it is recorded as N or S.
void note_kind_of_output_line();
// A text was put in front of the current line: the outputs get it although they may have the line.
void note_start_text();

// Is the record that of a "??/" which continued the line?  Nothing of it stands in the line, and the
// splice's record follows.
inline bool is_trigraph_of_splice(const an_orig_line_modif *m)
{
  const an_orig_line_modif *next = m->next;
  return m->kind == olm_trigraph && next != nullptr && next->kind == olm_splice
         && next->location == m->location;
}

void positions_trans_unit_init();

void input_files_one_time_init();
void input_files_trans_unit_init();
void pp_output_one_time_init();
void pp_output_trans_unit_init();
