// options: -E --c99
// proves: conditionals that don't fit together are reported where they stand
#else            // expect: error missing_pp_if
#elif 1          // expect: error missing_pp_if
#endif           // expect: error missing_pp_if
#if 1
#else
#else            // expect: error pp_else_already_appeared
#elif 1          // expect: error pp_else_already_appeared
#endif
#ifdef           // expect: error exp_identifier
#endif
#ifndef 3        // expect: warning exp_identifier
#endif
#ifdef A B       // expect: warning extra_text_in_pp_directive
#endif C         // expect: warning extra_text_in_pp_directive
#if 1 2          // expect: error extra_text_in_pp_directive
#endif
#if              // expect: error exp_primary_expr
#endif
#foo             // expect: error bad_pp_directive_keyword
#if 1            // expect: error missing_endif
#ifdef X         // expect: error missing_endif
