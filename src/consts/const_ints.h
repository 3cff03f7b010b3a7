// const_ints.h - integers of the target: values, kinds, limits, text.
// A value is 64 bits of two's complement and carries no signedness; a narrower value is held sign-
// or zero-extended.  No operation issues diagnostics or allocates; `overflow` is always written.
#pragma once
#include <cstdint>
#include "il/il_enums.h"
#include "il/il_fwd.h"

struct an_integer_value {
  uint16_t digit[4]; // digit[0] is the most significant
};

// Tables by kind.  Entry ik_char of the first is written by set_plain_char_int_kind only; the
// limits are filled by const_ints_init, when the target's precisions are final.
extern bool int_kind_is_signed[ik_none + 1];
extern const an_integer_kind unsigned_int_kind_of[ik_none + 1];
extern an_integer_value max_integer_value_of_kind[ik_none];
extern an_integer_value min_integer_value_of_kind[ik_none];

// Fills the limits of all kinds.  Runs after target_init.
void const_ints_init();

// Stores and host values.
void set_integer_value(an_integer_value *value, long long number);
void set_unsigned_integer_value(an_integer_value *value, unsigned long long number);
void conv_integer_value_to_host_large_integer(const an_integer_value *value, bool is_signed,
                                              long long *number, bool *overflow);
// Overflow: an unsigned value beyond the signed range of the host.
long long value_of_integer_value(const an_integer_value *value, bool is_signed, bool *overflow);

// -1, 0 or 1; each operand is negative only when its flag is set and its top bit too.
int cmp_integer_values(const an_integer_value *a, bool a_is_signed, const an_integer_value *b,
                       bool b_is_signed);

// a := a op b, modulo 2 to the 64.  A divisor is never zero: the caller has tested it.
void add_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                        bool *overflow);
void subtract_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                             bool *overflow);
void add_mixed_signed_integer_values(an_integer_value *a, bool a_is_signed,
                                     const an_integer_value *b, bool b_is_signed, bool *overflow);
void subtract_mixed_signed_integer_values(an_integer_value *a, bool a_is_signed,
                                          const an_integer_value *b, bool b_is_signed,
                                          bool *overflow);
void multiply_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                             bool *overflow);
void divide_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                           bool *overflow);
void remainder_integer_values(an_integer_value *a, const an_integer_value *b, bool is_signed,
                              bool *overflow);
void negate_integer_value(an_integer_value *a, bool *overflow);
void complement_integer_value(an_integer_value *a);
void or_integer_values(an_integer_value *a, const an_integer_value *b);
void and_integer_values(an_integer_value *a, const an_integer_value *b);
void xor_integer_values(an_integer_value *a, const an_integer_value *b);
void incr_integer_value(an_integer_value *a);

// Overflow: a set bit leaves the top of the 64 bits.
void shift_left_integer_value(an_integer_value *a, int count, bool *overflow);
// Vacated bits are copies of the sign bit when both flags are set, else zero.
void shift_right_integer_value(an_integer_value *a, int count, bool is_signed, bool arithmetic);
void make_integer_value_mask(an_integer_value *a, int bits);
void sign_extend_integer_value(an_integer_value *a, int bits);

// Kinds.
void get_integer_size_and_alignment(an_integer_kind kind, uint64_t *size, uint64_t *precision,
                                    unsigned *alignment);
// The kind with that size and alignment in bytes, or ik_none.
an_integer_kind int_kind_for_size_and_alignment(uint64_t size, unsigned alignment, bool is_signed);
// The kind with that width, or ik_none.
an_integer_kind int_kind_for_bit_size(unsigned bits, bool is_signed);
// "char", "unsigned long", ...: static text.
const char *int_kind_name_full(an_integer_kind kind);

// Integer constants (ck_integer); the signedness is that of the constant's type.
bool int_constant_is_signed(const a_constant *constant);
int bits_required_to_represent_integer_constant(const a_constant *constant);
int cmplit_integer_constant(const a_constant *constant, long long number);
int cmpulit_integer_constant(const a_constant *constant, unsigned long long number);
int cmp_integer_constants(const a_constant *a, const a_constant *b);
long long value_of_integer_constant(const a_constant *constant, bool *overflow);
unsigned long long unsigned_value_of_integer_constant(const a_constant *constant, bool *overflow);
bool is_max_value_for_integer_kind(const a_constant *constant, an_integer_kind kind);
bool le_max_integer_value_of_kind(const an_integer_value *value, bool is_signed,
                                  an_integer_kind kind);
bool in_range_for_integer_kind(const a_constant *low, const a_constant *high, an_integer_kind kind);

// Decimal text in a static buffer of each routine, valid until its next call.
const char *str_for_integer_value(const an_integer_value *value, bool is_signed);
const char *str_for_integer_constant(const a_constant *constant);
const char *conv_unsigned_long_to_str(unsigned long number);

// Floating point (float_pt.h).
struct simul_fval;
void conv_integer_value_to_float(const an_integer_value *value, bool is_signed, simul_fval *result,
                                 unsigned char float_kind, bool *overflow);
// Decimal floating text to its integer part; overflow stops the work.
void conv_float_string_to_integer_value(const char *text, an_integer_value *value, bool is_signed,
                                        bool *overflow);
