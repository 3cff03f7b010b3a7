/* options: --preproc_macros --no_gcc --strict -DFROM_OPTION=1 */
/* proves: every macro with the place of its definition */
#define HERE 1
