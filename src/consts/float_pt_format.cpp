// float_pt_format.cpp - conversion between the wide format and the IEEE formats of the target.
// Rule:  to the target: to nearest, ties to even, gradual underflow.  From the target: exact.
#include "consts/float_pt_wide.h"

namespace {
struct an_ieee_format {
  int mantissa_bits; // with the hidden bit
  int bias;          // of a fraction in one half to one
  int max_exponent;  // largest biased exponent of a number
};

// A number on its way into a target format.
struct a_rounded_number {
  uint64_t mantissa; // with the hidden bit, unless denormal
  int exponent;      // biased; 0 for a denormal
};
} // namespace

static constexpr an_ieee_format single_format = {24, 126, 254};
static constexpr an_ieee_format double_format = {53, 1022, 2046};

// Rounds a finite value that is not zero.
static a_rounded_number round_to_format(const simul_fval *wide, const an_ieee_format &format)
{
  simul_fval value = *wide;
  f_left_justify(&value);
  uint64_t high = 0, low = 0;
  for (int i = 0; i < 4; i++)
    high = high << 16 | value.mantissa[i];
  low = uint64_t(value.mantissa[4]) << 16 | value.mantissa[5];
  int exponent = value.exponent + format.bias;
  int dropped = 64 - format.mantissa_bits;
  if (exponent < 1) {
    dropped += 1 - exponent;
    exponent = 0;
  }
  if (dropped > 64) return {0, 0}; // less than half of the smallest denormal
  uint64_t kept = dropped == 64 ? 0 : high >> dropped;
  uint64_t half = 1ULL << (dropped - 1);
  bool round = (high & half) != 0;
  bool sticky = (high & (half - 1)) != 0 || low != 0;
  if (round && (sticky || (kept & 1) != 0)) kept++;
  uint64_t hidden = 1ULL << (format.mantissa_bits - 1);
  if (kept == hidden << 1) {
    kept >>= 1;
    exponent++;
  } else if (exponent == 0 && kept == hidden) {
    exponent = 1;
  }
  return {kept, exponent};
}

// The fields of the target's bit pattern; sets fp_error for a value that rounds to zero or
// infinity.
static a_rounded_number target_fields(const simul_fval *value, const an_ieee_format &format)
{
  int all_ones = format.max_exponent + 1;
  uint64_t hidden = 1ULL << (format.mantissa_bits - 1);
  if (wide_is_zero(value)) return {0, 0};
  if (wide_is_nan(value)) return {hidden >> 1, all_ones};
  if (wide_is_infinity(value)) return {0, all_ones};
  a_rounded_number number = round_to_format(value, format);
  if (number.exponent == 0 && number.mantissa == 0) {
    fp_error |= fpe_underflow;
  } else if (number.exponent > format.max_exponent) {
    fp_error |= fpe_overflow;
    return {0, all_ones};
  }
  return {number.mantissa & (hidden - 1), number.exponent};
}

int ieee_cvt_stod(const simul_fval *value, trg_fval *target)
{
  a_rounded_number fields = target_fields(value, double_format);
  target->word[0] = uint32_t(value->sign) << 31 | uint32_t(fields.exponent) << 20 |
                    uint32_t(fields.mantissa >> 32);
  target->word[1] = uint32_t(fields.mantissa);
  return 0;
}

int ieee_cvt_stof(const simul_fval *value, trg_fval *target)
{
  a_rounded_number fields = target_fields(value, single_format);
  target->word[0] =
      uint32_t(value->sign) << 31 | uint32_t(fields.exponent) << 23 | uint32_t(fields.mantissa);
  target->word[1] = 0;
  return 0;
}

int f_cvt_stot(const simul_fval *value, trg_fval *target, bool is_double)
{
  return is_double ? ieee_cvt_stod(value, target) : ieee_cvt_stof(value, target);
}

void get_ieee_flt_fmt(const trg_fval *target, int *sign, int *exponent, uint64_t *mantissa)
{
  *sign = target->word[0] >> 31;
  *exponent = target->word[0] >> 23 & 0xff;
  *mantissa = target->word[0] & 0x7fffff;
}

void get_ieee_dbl_fmt(const trg_fval *target, int *sign, int *exponent, uint64_t *mantissa)
{
  *sign = target->word[0] >> 31;
  *exponent = target->word[0] >> 20 & 0x7ff;
  *mantissa = uint64_t(target->word[0] & 0xfffff) << 32 | target->word[1];
}

static void value_of_fields(bool negative, int exponent, uint64_t mantissa,
                            const an_ieee_format &format, simul_fval *value)
{
  if (exponent > format.max_exponent) {
    *value = mantissa != 0 ? a_nan : signed_infinity(negative);
    return;
  }
  if (exponent == 0 && mantissa == 0) {
    *value = signed_zero(negative);
    return;
  }
  if (exponent == 0)
    exponent = 1; // a denormal: no hidden bit, and the exponent of the smallest normal number
  else
    mantissa |= 1ULL << (format.mantissa_bits - 1);
  simul_fval number = {{0}, int16_t(exponent - format.bias), negative, 0};
  mantissa <<= 64 - format.mantissa_bits;
  for (int i = 0; i < 4; i++)
    number.mantissa[i] = uint16_t(mantissa >> (48 - 16 * i));
  f_left_justify(&number);
  f_align_radix_pt(&number);
  *value = number;
}

int ieee_cvt_dtos(const trg_fval *target, simul_fval *value)
{
  int sign, exponent;
  uint64_t mantissa;
  get_ieee_dbl_fmt(target, &sign, &exponent, &mantissa);
  value_of_fields(sign != 0, exponent, mantissa, double_format, value);
  return 0;
}

int ieee_cvt_ftos(const trg_fval *target, simul_fval *value)
{
  int sign, exponent;
  uint64_t mantissa;
  get_ieee_flt_fmt(target, &sign, &exponent, &mantissa);
  value_of_fields(sign != 0, exponent, mantissa, single_format, value);
  return 0;
}

int f_cvt_ttos(const trg_fval *target, simul_fval *value, bool is_double)
{
  return is_double ? ieee_cvt_dtos(target, value) : ieee_cvt_ftos(target, value);
}
