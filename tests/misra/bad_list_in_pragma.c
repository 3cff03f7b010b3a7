/* options: --strict --check_misra=none */
/* proves: what can't be read as a list of rules is reported, the rest of the list is applied */
#pragma CHECK_MISRA("1.2.3, 7.1")       /* expect: error bad_pragma_format */
int octal = 010;                        /* expect: warning misra_c_2004_7_1 */
#pragma CHECK_MISRA("7.x")              /* expect: error bad_pragma_format */
#pragma CHECK_MISRA("7.")               /* expect: error bad_pragma_format */
#pragma CHECK_MISRA("7-8-9")            /* expect: error bad_pragma_format */
#pragma CHECK_MISRA("any")              /* expect: error bad_pragma_format */
#pragma CHECK_MISRA("7.1,")             /* expect: error bad_pragma_format */
#pragma CHECK_MISRA(7.1)                /* expect: error bad_pragma_format */
#pragma CHECK_MISRA "7.1"               /* expect: error bad_pragma_format */
#pragma CHECK_MISRA(L"7.1")             /* expect: error bad_pragma_format */
#pragma CHECK_MISRA("7.1"               /* expect: error bad_pragma_format */
#pragma RESET_MISRA("none")             /* expect: error bad_pragma_format */
#pragma RESET_MISRA("-7.1")             /* expect: error bad_pragma_format */
