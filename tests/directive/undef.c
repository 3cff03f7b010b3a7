// options: -E --strict --c99
// proves: what may and may not be undefined
#define A 1
#undef A
#undef A
#undef never_defined
#undef __LINE__      // expect: error cannot_undef_predef_macro
#undef 3             // expect: error exp_identifier
#undef B C           // expect: error extra_text_in_pp_directive
#ifdef A
#error A is still there
#endif
