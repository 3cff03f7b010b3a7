/* options: --check_misra=all */
/* proves: the skip behind a group that was taken may reach the end of the source where conditionals may span files */
#if 1   /* expect: error missing_endif */
#elif 0
skipped
