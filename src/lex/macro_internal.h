// macro_internal.h - what the files of the macro module share among themselves and with source_input.
#pragma once
#include "driver/flags.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/source_input.h"

//---------------------------------------------------------------------------------------------
// The expansion buffer.

extern char *expansion_buffer;
extern char *next_free_in_expansion_buffer;
extern unsigned num_texts_in_expansion_buffer; // modifications whose text is in the buffer

// Starts over in the buffer if no text in it is in use.
inline void reset_expansion_buffer_if_unused()
{
  if (num_texts_in_expansion_buffer == 0) next_free_in_expansion_buffer = expansion_buffer;
}
// Makes room for `need` bytes at next_free_in_expansion_buffer, which may move with all that points
// into the buffer.  Catastrophe 2022 if the size can't be counted.
void ensure_expansion_buffer_space(unsigned long need);
// Marks the modification's text as one that keeps the buffer in use.
void note_text_in_expansion_buffer(a_source_line_modif *modif);

a_concatenation_record *alloc_concatenation_record(char *location);
void free_concatenation_records(a_concatenation_record *list);

//---------------------------------------------------------------------------------------------
// Calls.

struct an_arg_text {
  char *text;
  unsigned length;
  unsigned capacity;
};

// An argument of a call; records and their texts are kept on a free list.
struct a_macro_arg {
  a_macro_arg *next;
  an_arg_text raw;      // the tokens as spelled, ended by the escape lesc_end_of_modif
  an_arg_text expanded; // the same with macros expanded, ended alike
  // An argument that begins in replacement text and ends behind it is expanded in two parts.
  a_source_line_modif *first_context;  // the text where it began; null: in the line
  a_source_line_modif *second_context; // the text where it went on, from offset rescan_offset
  unsigned rescan_offset;
  bool is_split : 1;        // the first text was left
  bool is_empty_arg : 1;    // empty, and a real argument (not the whole of an empty list)
  bool may_hold_macros : 1; // some identifier may be expanded
  bool is_expanded : 1;     // `expanded` is up to date
};

inline constexpr unsigned directly_reached_args = 50;
// Calls in arguments of calls, each of which takes stack.
inline constexpr int max_macro_nesting = 1000;

// One call of a macro while it is worked on.
struct a_macro_call {
  a_symbol *symbol;
  a_macro_def *macro;
  a_source_position position; // of the name
  unsigned name_length;
  unsigned arg_count;
  a_macro_arg *first_arg;
  a_macro_arg *last_arg;
  a_macro_arg *args[directly_reached_args]; // the first of them once more
  a_concatenation_record *concatenations;
};

a_macro_arg *arg_of_call(const a_macro_call *call, unsigned number); // numbered from 1

// Reads the arguments from behind the "(" to the ")", which becomes the current token.  Returns false if
// it is missing.  Issues 55, 56, 77.
bool collect_macro_args(a_macro_call *call);
// The text of an argument with its macros expanded.
const an_arg_text *expanded_text_of_arg(const a_macro_call *call, a_macro_arg *arg);
void release_macro_args(a_macro_call *call);

// Did white space stand before the current token?  In K&R mode a comment is none.
inline bool white_space_separates()
{
  return pcc_preprocessing_mode ? kind_of_white_space_skipped & ws_blank
                                : kind_of_white_space_skipped != 0;
}
// Appends the spelling of the current token, with what separates it from the one before.
void append_curr_token(an_arg_text *text, bool mark_comma);
void ensure_arg_text_space(an_arg_text *text, unsigned long need);

// Writes the replacement of a call to the expansion buffer and attaches it in place of the source from
// `from` to curr_char_loc, which then stands at its start.
void substitute_macro_call(a_macro_call *call, char *from);
void attach_expansion(a_macro_call *call, char *from, char *first_char, char *last_char);

// The current token names a macro without text: see macro_invocation.
a_token_kind invoke_builtin_macro(a_macro_call *call, bool *expansion_attached);

// K&R mode: bytes of replacement text attached since the last name of a macro in the line itself.
extern unsigned long text_of_outermost_call;

// Looks for a "(" behind the name of a function-like macro and moves curr_char_loc to it.  If there is
// none, everything is as it was, or the name was attached again in front of the line that was reached.
bool find_lparen_of_call(a_macro_call *call);

// K&R mode: scans the replacement text of the call that was attached last again at once.
void rescan_replacement_text();
// In such a rescan a call met the end of the text before its ")": the text is then left as it was.
// Returns false outside rescans.
bool abandon_rescan();

//---------------------------------------------------------------------------------------------
// Definitions.

inline unsigned long operand_of_item(const unsigned char *item)
{
  return item[1] | (unsigned long)item[2] << 8 | (unsigned long)item[3] << 16;
}
inline constexpr unsigned size_of_item = 4;
inline constexpr unsigned long max_item_operand = 0xFFFFFF;

// The walk of MISRA-C:2004's rules along a replacement list; zeroed at the start.  Both are called only while
// check_misra_c_2004 is set.
struct a_misra_macro_check {
  unsigned char state;
  int parens, brackets, braces;   // open
  int operators;                  // # and ## so far
  a_source_position open_param;   // a parameter behind "(", of which the next token says whether it is enclosed
  bool behind_lparen : 1;
  bool behind_operator : 1;
};
// Of the current token: 1430, 1481, 1482.
void note_token_for_misra(a_misra_macro_check *check, bool is_param, bool function_like);
// The body's end, which is the current token; `name` is the place of the macro's name: 1428, 1430, 1461.
void finish_misra_check_of_macro(a_misra_macro_check *check, bool function_like, a_source_position name);

// The end of the preprocessing token at `p`, or `p` itself where only the scanner can tell.
const char *end_of_plain_pp_token(const char *p);
a_macro *make_il_macro(a_symbol *symbol); // adds the IL's record of the definition

void process_defs_from_cmd_line();
void read_predefined_macro_file();
// __COUNTER__'s next value; reset for each translation unit.
extern unsigned long counter_macro_value;
extern int stdc_macro_value;
