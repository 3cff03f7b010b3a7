/* options: --check_misra=19.11,19.14,19.16 */
/* proves: names that #if needs are macros; defined has two forms, and no macro makes it; excluded directives exist */
#define KNOWN 1
#if KNOWN && !defined(UNKNOWN) && !defined UNKNOWN && (defined(KNOWN) || UNKNOWN)
#endif
#ifdef UNKNOWN
#endif
#if UNKNOWN                      /* expect: warning misra_c_2004_19_11 */
#elif KNOWN + UNKNOWN            /* expect: warning misra_c_2004_19_11 */
#endif
#define IS_THERE defined(KNOWN)
#if IS_THERE                     /* expect: warning misra_c_2004_19_14 */
#endif
#if defined(1)                   /* expect: warning misra_c_2004_19_14 expect: error exp_identifier
  expect-1: error extra_text_in_pp_directive */
#endif
#if defined(KNOWN + 1)           /* expect: warning misra_c_2004_19_14 expect: error exp_rparen
  expect-1: error extra_text_in_pp_directive */
#endif
#if 0
#pragma anything
#error not here
#
#els                             /* expect: warning misra_c_2004_19_16 */
# if nothing that counts
# endif
#endif
#wrong                           /* expect: warning misra_c_2004_19_16 */
int defined_is_a_name_elsewhere(int defined);
