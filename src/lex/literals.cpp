// literals.cpp - numbers: from the spelling to a value of the target.
// Uses:    target integers and floating point (consts/).
// Rule:    no host arithmetic decides a value; faults go back to the caller, who places the message.
// Entry:   conv_integer_literal, conv_float_literal.
// See:     C99 6.4.4.1, 6.4.4.2; strings and characters are in string_literals.cpp.
#include "lex/literals.h"

#include <cstring>

#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "lex/lexical.h"

//---------------------------------------------------------------------------------------------
// Integers
//---------------------------------------------------------------------------------------------

enum a_size_suffix : unsigned char { sfx_none, sfx_long, sfx_long_long, sfx_int40 };

struct an_integer_literal {
  int radix;
  bool is_unsigned;
  a_size_suffix suffix;
  bool too_large; // for 64 bits
  bool non_decimal;
  unsigned long long value;
  char *start;
  char *end; // behind the last digit
  an_error_code code;
  char *code_loc;
};

static void literal_fault(an_integer_literal *literal, an_error_code code, char *loc)
{
  if (literal->code != ec_no_error) return;
  literal->code = code;
  literal->code_loc = loc;
}

// "i40" and its kin: the letter is looked for from the front, as hexadecimal digits hold no "i".
static void take_size_suffix(an_integer_literal *literal)
{
  char *letter = literal->start;
  while (letter < literal->end && *letter != 'i' && *letter != 'I')
    ++letter;
  if (letter == literal->end) return;
  unsigned bits = 0, digits = 0;
  char *loc = letter + 1;
  for (; loc < literal->end && is_digit_char(*loc); ++loc, ++digits) {
    if (digits < 3) bits = bits * 10 + (unsigned)(*loc - '0');
  }
  if (digits > 3 || bits != 40) literal_fault(literal, ec_bad_suffix, letter);
  for (; loc < literal->end; ++loc) {
    if (*loc == 'u' || *loc == 'U') {
      literal->is_unsigned = true;
    } else {
      literal_fault(literal, ec_bad_suffix, loc);
    }
  }
  literal->suffix = sfx_int40;
  literal->end = letter;
}

static void take_letter_suffixes(an_integer_literal *literal)
{
  char *end = literal->end;
  char last_long = 0;
  for (; end > literal->start; --end) {
    char c = end[-1];
    if (c == 'u' || c == 'U') {
      literal->is_unsigned = true;
    } else if (c == 'l' || c == 'L') {
      if (last_long != 0 && last_long != c && strict_ansi_mode) {
        literal_fault(literal, ec_bad_suffix, end - 1);
      }
      if (literal->suffix == sfx_none) {
        literal->suffix = sfx_long;
      } else if (literal->suffix == sfx_long) {
        literal->suffix = sfx_long_long;
      }
      last_long = c;
    } else {
      break;
    }
  }
  literal->end = end;
}

static unsigned digit_value(char c)
{
  if (is_digit_char(c)) return (unsigned)(c - '0');
  return (unsigned)((c | 0x20) - 'a') + 10;
}

static void accumulate_value(an_integer_literal *literal)
{
  const char *loc = literal->start;
  unsigned radix = (unsigned)literal->radix;
  if (radix == 16 || radix == 2) loc += 2;
  unsigned long long value = 0;
  for (; loc < literal->end; ++loc) {
    unsigned digit = digit_value(*loc);
    if (radix == 8 && digit > 7 && C_dialect != 1) {
      literal_fault(literal, ec_bad_octal_digit, const_cast<char *>(loc));
      return;
    }
    unsigned long long product;
    if (__builtin_mul_overflow(value, (unsigned long long)radix, &product) ||
        __builtin_add_overflow(product, (unsigned long long)digit, &value)) {
      literal->too_large = true;
      value = product + digit;
    }
  }
  literal->value = value;
}

static bool fits(const an_integer_literal *literal, an_integer_kind kind)
{
  an_integer_value value;
  set_unsigned_integer_value(&value, literal->value);
  return le_max_integer_value_of_kind(&value, false, kind);
}

// In #if: the widest type of the right signedness.
static an_integer_kind kind_in_pp_if(an_integer_literal *literal)
{
  if (literal->too_large) literal_fault(literal, ec_integer_too_large, literal->start);
  if (literal->is_unsigned) return targ_uintmax_kind;
  if (literal->non_decimal && !fits(literal, targ_intmax_kind)) return targ_uintmax_kind;
  return targ_intmax_kind;
}

static unsigned precision_of(an_integer_kind kind)
{
  uint64_t size, precision;
  unsigned alignment;
  get_integer_size_and_alignment(kind, &size, &precision, &alignment);
  return (unsigned)precision;
}

static void sign_extend_literal(an_integer_literal *literal, an_integer_kind kind)
{
  unsigned shift = 64 - precision_of(kind);
  literal->value = (unsigned long long)((long long)(literal->value << shift) >> shift);
}

// Old C has no unsigned literals: what doesn't fit a signed kind is taken by its bits.
static an_integer_kind kind_in_old_c(an_integer_literal *literal)
{
  if (literal->suffix == sfx_none && !literal->too_large) {
    if (fits(literal, literal->non_decimal ? ik_unsigned_int : ik_int)) {
      if (literal->non_decimal) sign_extend_literal(literal, ik_int);
      return ik_int;
    }
  }
  static const an_integer_kind wide_kinds[] = {ik_long, ik_long_long};
  for (an_integer_kind kind : wide_kinds) {
    if (literal->too_large || !fits(literal, unsigned_int_kind_of[kind])) continue;
    if (!fits(literal, kind)) literal->non_decimal = true;
    sign_extend_literal(literal, kind);
    return kind;
  }
  pos_warning(ec_integer_too_large, pos_curr_token);
  unsigned bits = precision_of(ik_long_long);
  if (bits < 64) literal->value &= ((unsigned long long)1 << bits) - 1;
  sign_extend_literal(literal, ik_long_long);
  return ik_long_long;
}

// The kinds that a literal tries in turn, up to ik_none.
struct a_literal_ladder {
  an_integer_kind kinds[7];
};

static const a_literal_ladder decimal_ladders[] = {
    {{ik_int, ik_long, ik_unsigned_long, ik_long_long, ik_none}},
    {{ik_long, ik_unsigned_long, ik_long_long, ik_none}},
    {{ik_long_long, ik_none}},
    {{ik_int40, ik_unsigned_int40, ik_long_long, ik_none}},
};
static const a_literal_ladder non_decimal_ladders[] = {
    {{ik_int, ik_unsigned_int, ik_long, ik_unsigned_long, ik_long_long, ik_unsigned_long_long,
      ik_none}},
    {{ik_long, ik_unsigned_long, ik_long_long, ik_unsigned_long_long, ik_none}},
    {{ik_long_long, ik_unsigned_long_long, ik_none}},
    {{ik_int40, ik_unsigned_int40, ik_long_long, ik_unsigned_long_long, ik_none}},
};
static const a_literal_ladder unsigned_ladders[] = {
    {{ik_unsigned_int, ik_unsigned_long, ik_unsigned_long_long, ik_none}},
    {{ik_unsigned_long, ik_unsigned_long_long, ik_none}},
    {{ik_unsigned_long_long, ik_none}},
    {{ik_unsigned_int40, ik_unsigned_long_long, ik_none}},
};

// A decimal literal that doesn't fit long long.
static an_integer_kind kind_beyond_long_long(an_integer_literal *literal)
{
  if (!fits(literal, ik_unsigned_long_long)) {
    literal_fault(literal, ec_integer_too_large, literal->start);
  } else if (c99_mode) {
    pos_warning(ec_c99_constant_in_unsigned_long_long_range, pos_curr_token);
  }
  return ik_unsigned_long_long;
}

static an_integer_kind kind_by_ladder(an_integer_literal *literal)
{
  if (literal->too_large) {
    literal_fault(literal, ec_integer_too_large, literal->start);
    return ik_long_long;
  }
  const a_literal_ladder *ladders = literal->is_unsigned   ? unsigned_ladders
                                    : literal->non_decimal ? non_decimal_ladders
                                                           : decimal_ladders;
  bool plain_long = literal->suffix == sfx_none || literal->suffix == sfx_long;
  bool skip_unsigned_long =
      long_long_promotion_allowed && !literal->non_decimal && !literal->is_unsigned && plain_long;
  an_integer_kind found = ik_none;
  for (an_integer_kind kind : ladders[literal->suffix].kinds) {
    if (kind == ik_none) break;
    if (kind == ik_unsigned_long && skip_unsigned_long) continue;
    if (!fits(literal, kind)) continue;
    found = kind;
    break;
  }
  bool reaches_long_long = found == ik_none || found >= ik_long_long;
  if (reaches_long_long && strict_ansi_mode && plain_long && !long_long_is_standard) {
    literal_fault(literal, ec_integer_too_large, literal->start);
  }
  return found == ik_none ? kind_beyond_long_long(literal) : found;
}

static an_integer_kind kind_of_integer_literal(an_integer_literal *literal)
{
  if (in_pp_if_expression && (c99_mode || gcc_mode || gpp_mode)) return kind_in_pp_if(literal);
  if (C_dialect == 1 && !literal->is_unsigned && literal->suffix < sfx_long_long) {
    return kind_in_old_c(literal);
  }
  return kind_by_ladder(literal);
}

void conv_integer_literal(int radix, an_error_code *err, char **err_loc)
{
  an_integer_literal literal = {};
  literal.radix = radix;
  literal.non_decimal = radix != 10;
  literal.start = start_of_curr_token;
  literal.end = end_of_curr_token + 1;
  literal.code_loc = literal.start;
  take_size_suffix(&literal);
  if (literal.suffix == sfx_none) take_letter_suffixes(&literal);
  accumulate_value(&literal);
  an_integer_kind kind = ik_int;
  if (literal.code == ec_no_error) kind = kind_of_integer_literal(&literal);
  *err = literal.code;
  *err_loc = literal.code_loc;
  a_constant *constant = &const_for_curr_token;
  if (literal.code != ec_no_error) {
    set_error_constant(constant);
    return;
  }
  set_unsigned_integer_constant(constant, literal.value, kind);
  constant->from_literal = true;
  constant->is_nondecimal_literal = literal.non_decimal;
  constant->has_unsigned_suffix = literal.is_unsigned;
  constant->is_literal_zero =
      end_of_curr_token == start_of_curr_token && *start_of_curr_token == '0';
  constant->literal_is_unsuffixed_decimal = radix == 10 && literal.end == end_of_curr_token + 1;
}

//---------------------------------------------------------------------------------------------
// Floating point
//---------------------------------------------------------------------------------------------

static bool is_imaginary_letter(char c)
{
  return c == 'i' || c == 'I' || c == 'j' || c == 'J';
}

struct a_float_suffix {
  a_float_kind kind;
  bool is_imaginary;
  char *end; // behind the last character of the number itself
};

static a_float_suffix take_float_suffix(bool is_hex)
{
  a_float_suffix suffix = {fk_double, false, end_of_curr_token + 1};
  bool kind_seen = false;
  while (suffix.end > start_of_curr_token) {
    char c = suffix.end[-1];
    if (is_imaginary_letter(c) && !suffix.is_imaginary) {
      suffix.is_imaginary = true;
    } else if (!kind_seen && (c == 'f' || c == 'F' || c == 'l' || c == 'L')) {
      suffix.kind = c == 'f' || c == 'F' ? fk_float : fk_long_double;
      kind_seen = true;
    } else {
      break;
    }
    --suffix.end;
  }
  (void)is_hex;
  return suffix;
}

// Converts the text up to `end`; the two characters behind it are borrowed for the terminator.
static void convert_float_text(bool is_hex, const a_float_suffix *suffix, simul_fval *value,
                               bool *overflow, bool *inexact)
{
  char saved[2];
  memcpy(saved, suffix->end, 2);
  char last = suffix->end[-1];
  bool ends_in_exponent = last == '+' || last == '-' || last == 'p' || last == 'P' ||
                          (!is_hex && (last == 'e' || last == 'E'));
  if (ends_in_exponent) {
    suffix->end[0] = '0';
    suffix->end[1] = 0;
  } else {
    suffix->end[0] = 0;
  }
  if (is_hex) {
    fp_hex_string_to_float(suffix->kind, start_of_curr_token, value, overflow, inexact);
  } else {
    fp_string_to_float(suffix->kind, start_of_curr_token, value, overflow);
  }
  memcpy(suffix->end, saved, 2);
}

void conv_float_literal(bool is_hex, an_error_code *err, char **err_loc)
{
  a_float_suffix suffix = take_float_suffix(is_hex);
  simul_fval value;
  bool overflow = false, inexact = false;
  convert_float_text(is_hex, &suffix, &value, &overflow, &inexact);
  *err = ec_no_error;
  *err_loc = start_of_curr_token;
  a_constant *constant = &const_for_curr_token;
  if (overflow) {
    *err = ec_bad_float_value;
    set_error_constant(constant);
    return;
  }
  if (is_hex && inexact) pos_warning(ec_inexact_fp_conversion, pos_curr_token);
  if (suffix.is_imaginary) {
    simul_fval zero = pos_zero;
    set_complex_constant(constant, &zero, &value, suffix.kind);
  } else {
    clear_constant(constant, ck_float);
    constant->type = float_type(suffix.kind);
    float_of(constant) = value;
  }
  constant->from_literal = true;
}
