// literals.h - from the spelling of a literal to a constant in target form.
// The converters read the current token (start_of_curr_token to end_of_curr_token) and write
// const_for_curr_token; a fault comes back in two out-arguments, so that the scanner places the message.
#pragma once
#include "errors/error_codes.h"
#include "il/il_enums.h"
#include "il/il_fwd.h"
#include "lex/tokens.h"

// *err is 0 on success, otherwise a message that is due at *err_loc; the constant is then the error
// constant.  Warnings about the value are issued directly.
void conv_integer_literal(int radix, an_error_code *err, char **err_loc);
void conv_float_literal(bool is_hex, an_error_code *err, char **err_loc);
// `length` is the scanner's count of resulting characters.
void conv_char_literal(unsigned long length, an_error_code *err, char **err_loc);
void conv_string_literal(unsigned long length, an_error_code *err, char **err_loc);

// State of a walk over the characters of a string or character constant.
struct a_char_conversion_state {
  char **loc;                   // the read pointer
  unsigned pending_count;       // units of an earlier character that wait in `pending`
  const unsigned char *pending; // the next of them
  unsigned pending_surrogate;   // second half of a pair, 0 for none
  unsigned char buffer[8];      // bytes of one character in UTF-8
  bool is_16_bits;              // the destination's elements have 16 bits
  char *fault_loc;              // where the character began for which a code came back
};

// Takes one character, or the next unit of the one before, into *result, cut to `mask`.  `narrow` is
// set for a plain literal.  Returns 0 or the code of an error that is due at state->fault_loc; issues
// warnings 194, 924, 2551, 27 itself.
an_error_code conv_single_char(a_char_conversion_state *state, bool process_escapes,
                               unsigned long *result, unsigned long mask, bool narrow);
void clear_char_conversion_state(a_char_conversion_state *state, char **loc);

// The current token is a string: joins it with the strings that follow.  With `allow_function_names`
// a token such as __FUNCTION__ counts as a string.  Issues 1563.
void concat_adjacent_string_literals(bool allow_function_names);
// Joins all strings of the cache into its first token; frees the others.
void concat_string_literals(a_token_cache *cache, a_char_kind kind);
// Turns a plain string constant into a wide one in place.
void widen_string_literal(a_constant *constant);

// Installed by the expression parser: makes the current token, the name of the function, a string.
// Returns false if it is no such token.
extern bool (*token_is_function_name_string_literal_hook)();
