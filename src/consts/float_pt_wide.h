// float_pt_wide.h - what the files of float_pt share and no one else sees.
#pragma once
#include "consts/float_pt.h"

inline constexpr int wide_digits = 6;
inline constexpr int16_t special_exponent = 32767; // infinities and NaN
inline constexpr int16_t zero_exponent = -32767;
inline constexpr int max_wide_exponent = 32766;

inline bool wide_is_zero(const simul_fval *a)
{
  return a->exponent == zero_exponent && a->mantissa[0] == 0;
}

inline bool wide_is_infinity(const simul_fval *a)
{
  return a->exponent == special_exponent && a->mantissa[0] == 0;
}

inline bool wide_is_nan(const simul_fval *a)
{
  return a->exponent == special_exponent && a->mantissa[0] != 0;
}

inline simul_fval signed_zero(bool negative)
{
  return negative ? neg_zero : pos_zero;
}

inline simul_fval signed_infinity(bool negative)
{
  return negative ? neg_infin : pos_infin;
}

// result := the fraction digits[0 .. count) times 2 to the exponent, a multiple of 16.  Digits that
// do not fit set the lowest bit kept.  Non-zero when the exponent is out of range.
int f_finish(bool negative, int exponent, const uint16_t *digits, int count, simul_fval *result);

// Shifts until the top bit of digit 0 is set.  The value is finite and not zero.
void f_left_justify(simul_fval *value);
// Makes the exponent of a left-justified value a multiple of 16.
void f_align_radix_pt(simul_fval *value);
