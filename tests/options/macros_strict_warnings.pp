#line 1 "macros_strict_warnings.c"
 
 
strict 1 stdc 1 version 199409L hosted 1
signed 1 unsigned __unsigned_chars__ little 1 big _BIG_ENDIAN
gnu __GNUC_MINOR__ __GNUC_PATCHLEVEL__ stdc_inline __GNUC_STDC_INLINE__ text __VERSION__
no_long_long __NO_LONG_LONG
