// il_to_str_private.h - what the files of il_to_str share.
#pragma once
#include "il/il_to_str.h"

inline void put(const char *text, an_il_to_str_output_control_block *block)
{
  block->output_text(text, block);
}

// For a piece that may not be split from the one before.
inline void put_no_break(const char *text, an_il_to_str_output_control_block *block)
{
  (block->output_text_no_break != nullptr ? block->output_text_no_break
                                          : block->output_text)(text, block);
}

void put_number(unsigned long long number, an_il_to_str_output_control_block *block);
// A quoted string with its characters escaped.
void put_quoted(const char *text, an_il_to_str_output_control_block *block);
// A cast: "(", the type, ")".
void put_cast(a_type *type, an_il_to_str_output_control_block *block);
bool source_is_c();
