// const_ints_kinds.cpp - integer kinds of the target with their limits, integer constants, decimal
// text.
// Owns:  the tables by kind; the static text buffers.
// Uses:  sizes and precisions of the target (target.h), integer arithmetic (const_ints.cpp).
// Entry: const_ints_init.
#include <cctype>
#include <cstdlib>
#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il_entities.h"
#include "il/types.h"

bool int_kind_is_signed[ik_none + 1] = {false, true,  false, true,  false, true,  false,
                                        true,  false, true,  false, true,  false, false};

const an_integer_kind unsigned_int_kind_of[ik_none + 1] = {
    ik_unsigned_char,      ik_unsigned_char,
    ik_unsigned_char,      ik_unsigned_short,
    ik_unsigned_short,     ik_unsigned_int,
    ik_unsigned_int,       ik_unsigned_long,
    ik_unsigned_long,      ik_unsigned_int40,
    ik_unsigned_int40,     ik_unsigned_long_long,
    ik_unsigned_long_long, ik_none};

an_integer_value max_integer_value_of_kind[ik_none];
an_integer_value min_integer_value_of_kind[ik_none];

static const char *const int_kind_names[ik_none] = {"char",
                                                    "signed char",
                                                    "unsigned char",
                                                    "short",
                                                    "unsigned short",
                                                    "int",
                                                    "unsigned int",
                                                    "long",
                                                    "unsigned long",
                                                    "__int40_t",
                                                    "unsigned __int40_t",
                                                    "long long",
                                                    "unsigned long long"};

const char *int_kind_name_full(an_integer_kind kind)
{
  if (kind >= ik_none) return "**BAD-INT-KIND**";
  return kind == plain_char_int_kind ? "char" : int_kind_names[kind];
}

void get_integer_size_and_alignment(an_integer_kind kind, uint64_t *size, uint64_t *precision,
                                    unsigned *alignment)
{
#define TAKE(name)                                                                                 \
  *size = targ_sizeof_##name;                                                                      \
  *precision = targ_precisionof_##name;                                                            \
  *alignment = targ_alignof_##name;                                                                \
  return
  switch (kind) {
  case ik_char:
  case ik_signed_char:
  case ik_unsigned_char:
    *size = 1;
    *precision = targ_char_bit;
    *alignment = 1;
    return;
  case ik_short:
  case ik_unsigned_short: TAKE(short);
  case ik_int:
  case ik_unsigned_int: TAKE(int);
  case ik_long:
  case ik_unsigned_long: TAKE(long);
  case ik_int40:
  case ik_unsigned_int40: TAKE(int40_t);
  case ik_long_long:
  case ik_unsigned_long_long: TAKE(long_long);
  case ik_none: break;
  }
#undef TAKE
  unexpected_kind("integer kind");
}

void const_ints_init()
{
  for (int i = 0; i < ik_none; i++) {
    an_integer_kind kind = an_integer_kind(i);
    uint64_t size, precision;
    unsigned alignment;
    get_integer_size_and_alignment(kind, &size, &precision, &alignment);
    bool is_signed = int_kind_is_signed[kind];
    make_integer_value_mask(&max_integer_value_of_kind[kind], int(precision) - is_signed);
    min_integer_value_of_kind[kind] = max_integer_value_of_kind[kind];
    if (is_signed)
      complement_integer_value(&min_integer_value_of_kind[kind]);
    else
      set_integer_value(&min_integer_value_of_kind[kind], 0);
  }
}

an_integer_kind int_kind_for_size_and_alignment(uint64_t size, unsigned alignment, bool is_signed)
{
  // Plain char comes before the other two, and no other kind competes with one of its size.
  for (int i = ik_char; i < ik_none; i++) {
    uint64_t kind_size, precision;
    unsigned kind_alignment;
    get_integer_size_and_alignment(an_integer_kind(i), &kind_size, &precision, &kind_alignment);
    if (kind_size == size && kind_alignment == alignment && int_kind_is_signed[i] == is_signed)
      return an_integer_kind(i);
  }
  return ik_none;
}

an_integer_kind int_kind_for_bit_size(unsigned bits, bool is_signed)
{
  if (bits % targ_char_bit != 0) return ik_none;
  for (int i = gcc_mode || gpp_mode ? ik_signed_char : ik_char; i < ik_none; i++) {
    uint64_t size, precision = 0;
    unsigned alignment;
    get_integer_size_and_alignment(an_integer_kind(i), &size, &precision, &alignment);
    // A kind that doesn't use all bits of its object isn't meant.
    if (size == bits / targ_char_bit && precision == bits && int_kind_is_signed[i] == is_signed)
      return an_integer_kind(i);
  }
  return ik_none;
}

// --- Integer constants ---------------------------------------------------------------------------

bool int_constant_is_signed(const a_constant *constant)
{
  a_type *type = constant->type;
  if (type == nullptr) return false;
  type = f_skip_typerefs(type);
  return type->kind == tk_integer && int_kind_is_signed[int_kind_of_type(type)];
}

static bool constant_is_negative(const a_constant *constant)
{
  return int_constant_is_signed(constant) && (integer_of(constant).digit[0] & 0x8000) != 0;
}

int bits_required_to_represent_integer_constant(const a_constant *constant)
{
  an_integer_value value = integer_of(constant);
  bool negative = constant_is_negative(constant);
  if (negative) complement_integer_value(&value);
  bool ignored;
  long long number;
  conv_integer_value_to_host_large_integer(&value, false, &number, &ignored);
  int bits = number == 0 ? 0 : 64 - __builtin_clzll(static_cast<unsigned long long>(number));
  if (negative) return bits + 1;
  return bits == 0 ? 1 : bits;
}

int cmplit_integer_constant(const a_constant *constant, long long number)
{
  an_integer_value value;
  set_integer_value(&value, number);
  return cmp_integer_values(&integer_of(constant), int_constant_is_signed(constant), &value, true);
}

int cmpulit_integer_constant(const a_constant *constant, unsigned long long number)
{
  an_integer_value value;
  set_unsigned_integer_value(&value, number);
  return cmp_integer_values(&integer_of(constant), int_constant_is_signed(constant), &value, false);
}

int cmp_integer_constants(const a_constant *a, const a_constant *b)
{
  return cmp_integer_values(&integer_of(a), int_constant_is_signed(a), &integer_of(b),
                            int_constant_is_signed(b));
}

long long value_of_integer_constant(const a_constant *constant, bool *overflow)
{
  return value_of_integer_value(&integer_of(constant), int_constant_is_signed(constant), overflow);
}

unsigned long long unsigned_value_of_integer_constant(const a_constant *constant, bool *overflow)
{
  long long number;
  bool ignored;
  conv_integer_value_to_host_large_integer(&integer_of(constant), false, &number, &ignored);
  *overflow = constant_is_negative(constant);
  return static_cast<unsigned long long>(number);
}

bool is_max_value_for_integer_kind(const a_constant *constant, an_integer_kind kind)
{
  return cmp_integer_values(&integer_of(constant), int_constant_is_signed(constant),
                            &max_integer_value_of_kind[kind], int_kind_is_signed[kind]) == 0;
}

bool le_max_integer_value_of_kind(const an_integer_value *value, bool is_signed,
                                  an_integer_kind kind)
{
  return cmp_integer_values(value, is_signed, &max_integer_value_of_kind[kind],
                            int_kind_is_signed[kind]) <= 0;
}

bool in_range_for_integer_kind(const a_constant *low, const a_constant *high, an_integer_kind kind)
{
  return cmp_integer_values(&integer_of(low), int_constant_is_signed(low),
                            &min_integer_value_of_kind[kind], int_kind_is_signed[kind]) >= 0 &&
         le_max_integer_value_of_kind(&integer_of(high), int_constant_is_signed(high), kind);
}

// --- Text ----------------------------------------------------------------------------------------

// Writes the digits in front of `end`; returns their start.
static char *digits_before(char *end, unsigned long long number)
{
  do {
    *--end = char('0' + number % 10);
    number /= 10;
  } while (number != 0);
  return end;
}

const char *str_for_integer_value(const an_integer_value *value, bool is_signed)
{
  static char text[24];
  char *end = text + sizeof text - 1;
  long long number;
  bool ignored;
  conv_integer_value_to_host_large_integer(value, is_signed, &number, &ignored);
  unsigned long long magnitude = static_cast<unsigned long long>(number);
  bool negative = is_signed && number < 0;
  char *start = digits_before(end, negative ? 0 - magnitude : magnitude);
  if (negative) *--start = '-';
  return start;
}

const char *str_for_integer_constant(const a_constant *constant)
{
  return str_for_integer_value(&integer_of(constant), int_constant_is_signed(constant));
}

const char *conv_unsigned_long_to_str(unsigned long number)
{
  static char text[24];
  return digits_before(text + sizeof text - 1, number);
}

// --- Floating point ------------------------------------------------------------------------------

void conv_integer_value_to_float(const an_integer_value *value, bool is_signed, simul_fval *result,
                                 unsigned char float_kind, bool *overflow)
{
  a_float_kind kind = a_float_kind(float_kind);
  long long number;
  conv_integer_value_to_host_large_integer(value, is_signed, &number, overflow);
  if (!*overflow) {
    if (is_signed)
      fp_host_large_integer_to_float(kind, number, result, overflow);
    else
      fp_host_large_unsigned_to_float(kind, static_cast<unsigned long long>(number), result,
                                      overflow);
  }
  if (*overflow)
    fp_string_to_float(kind, str_for_integer_value(value, is_signed), result, overflow);
}

// Reads the exponent of decimal floating text, held to a limit that no value reaches.
static long text_exponent(const char *text)
{
  while (isdigit(static_cast<unsigned char>(*text)) || *text == '.')
    text++;
  if (*text != 'e' && *text != 'E') return 0;
  long exponent = strtol(text + 1, nullptr, 10);
  constexpr long limit = 1000000;
  return exponent > limit ? limit : exponent < -limit ? -limit : exponent;
}

void conv_float_string_to_integer_value(const char *text, an_integer_value *value, bool is_signed,
                                        bool *overflow)
{
  an_integer_value base, digit;
  set_integer_value(&base, 10);
  set_integer_value(value, 0);
  bool negative = *text == '-';
  if (*text == '-' || *text == '+') text++;
  *overflow = negative && !is_signed;
  if (*overflow) return;
  const char *digits_end = text;
  long integer_digits = 0;
  while (isdigit(static_cast<unsigned char>(*digits_end)))
    digits_end++, integer_digits++;
  integer_digits += text_exponent(text);
  for (; integer_digits > 0 && (isdigit(static_cast<unsigned char>(*text)) || *text == '.');
       text++) {
    if (*text == '.') continue;
    // Signed even for an unsigned result: the loop stops early rather than wraps.
    multiply_integer_values(value, &base, true, overflow);
    if (*overflow) return;
    set_integer_value(&digit, *text - '0');
    if (negative)
      subtract_integer_values(value, &digit, is_signed, overflow);
    else
      add_integer_values(value, &digit, is_signed, overflow);
    if (*overflow) return;
    integer_digits--;
  }
  bool ignored;
  if (value_of_integer_value(value, true, &ignored) == 0) return; // zero, whatever the exponent
  for (; integer_digits > 0 && !*overflow; integer_digits--)
    multiply_integer_values(value, &base, is_signed, overflow);
}
