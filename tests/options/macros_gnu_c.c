// proves: a source ending in .c is GNU C, and the macros say so
strict __QN_STRICT_ANSI_MODE__ stdc __STDC__ version __STDC_VERSION__ hosted __STDC_HOSTED__
signed __signed_chars__ unsigned __unsigned_chars__ little _LITTLE_ENDIAN big _BIG_ENDIAN
gnu __GNUC_MINOR__ __GNUC_PATCHLEVEL__ stdc_inline __GNUC_STDC_INLINE__ text __VERSION__
no_long_long __NO_LONG_LONG
