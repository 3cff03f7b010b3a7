// options: -E --c99 --strict
// proves: unknown directives in skipped groups are warned of in strict mode only
#if 0
#unknown             // expect: warning bad_pp_directive_keyword
#endif
