// digits.h - arithmetic on arrays of 16-bit digits, the most significant first.  Private to
// consts/.
#pragma once
#include <cstdint>

// product[0 .. a_count + b_count) := a * b; product overlaps neither operand.
void multiply_digits(const uint16_t *a, int a_count, const uint16_t *b, int b_count,
                     uint16_t *product);

// Knuth's Algorithm D.  quotient[0 .. count) := dividend / divisor, remainder[0 .. divisor_count)
// := rest. The divisor is not zero and has at most 8 digits, the dividend at most 16; arrays do not
// overlap.
void divide_digits(const uint16_t *dividend, int count, const uint16_t *divisor, int divisor_count,
                   uint16_t *quotient, uint16_t *remainder);

bool digits_are_zero(const uint16_t *digits, int count);
// -1, 0 or 1, unsigned.
int compare_digits(const uint16_t *a, const uint16_t *b, int count);
