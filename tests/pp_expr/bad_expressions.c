// proves: faults of controlling expressions
#if 1 / 0           // expect: error divide_by_zero
#error not reached
#endif
#if 1 % 0           // expect: error mod_by_zero
#endif
#if 1 +             // expect: error exp_primary_expr
#endif
#if                 // expect: error exp_primary_expr
#endif
#if (1              // expect: error exp_rparen
#endif
#if 1 ? 2           // expect: error exp_colon
#endif
#if 1 = 2           // expect: error bad_pp_operator
#endif
#if 1, 2            // expect: error bad_pp_operator
#endif
#if ++1             // expect: error bad_pp_operator
#endif
#if 1.5             // expect: error expr_not_integral
#endif
#if "a"             // expect: error expr_not_integral
#endif
#if 1 2             // expect: error extra_text_in_pp_directive
#endif
#if 0x7fffffffffffffff + 1  // expect: warning integer_overflow
#endif
#if 1 << 70         // expect: warning shift_count_too_large
#endif
#if 1 << -1         // expect: error negative_shift_count
#endif
#if defined         // expect: error exp_identifier
#endif
#if defined(X       // expect: error exp_rparen
#endif
int done;
