// float_pt.h - floating point of the target, in software.
// The f_ routines compute on one wide format; the fp_ routines do one source-level operation each
// and round its result to the format of the float kind, so that every constant is a value of the
// target. Nothing here uses the host's floating point, issues diagnostics, or allocates from the
// general heap.
#pragma once
#include <cstdint>
#include "consts/const_ints.h"

// The wide format: a fraction in base 65536 with the point before digit 0, times 2 to the exponent.
// Finite non-zero values are aligned: the exponent is a multiple of 16 and digit 0 is not zero.
struct simul_fval {
  uint16_t mantissa[6];
  int16_t exponent;
  uint8_t sign;
  uint8_t unused;
};
static_assert(sizeof(simul_fval) == 16, "constants hold 16 bytes of floating value");

// IEEE 754 single in word 0, or double in both words, the high one first.
struct trg_fval {
  uint32_t word[2];
};

// Bits of fp_error.
enum : int { fpe_invalid = 1, fpe_divide_by_zero = 2, fpe_overflow = 4, fpe_underflow = 8 };
extern int fp_error; // writers: the f_ routines; meaningful between a clear and the next read

extern const simul_fval pos_zero, neg_zero, pos_infin, neg_infin, a_nan;
extern const simul_fval one_q, one_half, three_q, one, neg_one, one_p_five, two, neg_two, four, ten,
    sixteen;

void float_pt_init();

// The front layer.  `error`: the operation failed or its result is out of the kind's range; the
// result is then the infinity, zero or NaN that IEEE arithmetic gives.  `second` is 0 except in
// fp_negate, where it is 1.
void fp_add(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
            bool *error, bool *second);
void fp_subtract(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
                 bool *error, bool *second);
void fp_multiply(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
                 bool *error, bool *second);
void fp_divide(a_float_kind kind, const simul_fval *a, const simul_fval *b, simul_fval *result,
               bool *error, bool *second);
void fp_negate(a_float_kind kind, const simul_fval *a, simul_fval *result, bool *error,
               bool *second);
void fp_change_kind(const simul_fval *value, a_float_kind from, simul_fval *result, a_float_kind to,
                    bool *error, bool *second);
// 1, 0 or -1; 0 with `unordered` set when an operand is a NaN.
int fp_compare(a_float_kind kind, const simul_fval *a, const simul_fval *b, bool *unordered);
bool fp_is_negative(const simul_fval *value);
bool fp_is_zero_constant(const simul_fval *value);
bool fp_is_infinity(const simul_fval *value);
bool fp_is_nan(const simul_fval *value);
// Neither zero, denormal in the kind's format, infinity nor NaN.
bool fp_is_normalized(a_float_kind kind, const simul_fval *value);
bool fp_same_representation(a_float_kind kind, const simul_fval *a, const simul_fval *b);
unsigned fp_hash(const simul_fval *value);

// Text.  The conversion from text rounds correctly for every length and exponent.
void fp_string_to_float(a_float_kind kind, const char *text, simul_fval *result, bool *error);
// `inexact`: the kind has no value equal to the text.
void fp_hex_string_to_float(a_float_kind kind, const char *text, simul_fval *result, bool *error,
                            bool *inexact);
// Exact hexadecimal text ("0x1.8p+1", "inf", "-inf", "nan") in a static buffer; flags given are
// cleared.
const char *fp_to_string(a_float_kind kind, const simul_fval *value, bool *is_nan = nullptr,
                         bool *is_positive_infinity = nullptr,
                         bool *is_negative_infinity = nullptr);
const char *fp_to_hex_string(a_float_kind kind, const simul_fval *value);

// Integers.
void fp_host_large_integer_to_float(a_float_kind kind, long long number, simul_fval *result,
                                    bool *error);
void fp_host_large_unsigned_to_float(a_float_kind kind, unsigned long long number,
                                     simul_fval *result, bool *error);
// Truncate toward zero; `error`: NaN, infinity or out of the host integer's range.
void fp_to_host_large_integer(a_float_kind kind, const simul_fval *value, long long *number,
                              bool *error, bool *second);
void fp_to_host_large_unsigned(a_float_kind kind, const simul_fval *value,
                               unsigned long long *number, bool *error, bool *second);
// The maximum of the integer type's kind for a value not below zero, else its minimum.
void make_saturated_integer_for_float(a_float_kind kind, const simul_fval *value,
                                      an_integer_value *result, a_type *type);

// The constants, rounded to the kind; the result tells whether the kind holds them.
bool make_fp_infinity(simul_fval *result, a_float_kind kind);
bool make_fp_nan(simul_fval *result, a_float_kind kind);
// The largest finite value of the kind (the folded value where no infinity may stand).
void make_fp_max(simul_fval *result, a_float_kind kind);

// The wide package.  A non-zero result is failure; the result argument may be an operand.
int f_add(const simul_fval *a, const simul_fval *b, simul_fval *result);
int f_sub(const simul_fval *a, const simul_fval *b, simul_fval *result);
int f_mul(const simul_fval *a, const simul_fval *b, simul_fval *result);
int f_div(const simul_fval *a, const simul_fval *b, simul_fval *result);
int f_neg(const simul_fval *a, simul_fval *result);
int f_abs(const simul_fval *a, simul_fval *result);
bool f_eq(const simul_fval *a, const simul_fval *b);
bool f_ne(const simul_fval *a, const simul_fval *b);
bool f_lt(const simul_fval *a, const simul_fval *b);
bool f_le(const simul_fval *a, const simul_fval *b);
bool f_gt(const simul_fval *a, const simul_fval *b);
bool f_ge(const simul_fval *a, const simul_fval *b);
int f_ldexp(const simul_fval *a, int exponent, simul_fval *result);
int f_frexp(const simul_fval *a, int *exponent, simul_fval *result);
int f_atof(const char *text, simul_fval *result);
// Writes `format` with its one conversion replaced; returns the text's length.
int f_ftoa(const char *format, const simul_fval *value, char *text);
long long f_ftoi(const simul_fval *value);
unsigned long long f_ftou(const simul_fval *value);
void f_itof(long long number, simul_fval *result);
void f_utof(unsigned long long number, simul_fval *result);
int f_cvt_stot(const simul_fval *value, trg_fval *target, bool is_double);
int f_cvt_ttos(const trg_fval *target, simul_fval *value, bool is_double);
int ieee_cvt_stod(const simul_fval *value, trg_fval *target);
int ieee_cvt_dtos(const trg_fval *target, simul_fval *value);
int ieee_cvt_stof(const simul_fval *value, trg_fval *target);
int ieee_cvt_ftos(const trg_fval *target, simul_fval *value);
// The bits of the target format: sign, biased exponent, mantissa without its hidden bit.
void get_ieee_flt_fmt(const trg_fval *target, int *sign, int *exponent, uint64_t *mantissa);
void get_ieee_dbl_fmt(const trg_fval *target, int *sign, int *exponent, uint64_t *mantissa);
