# 1 "macros_relaxed.c"


strict 0 stdc 1 version 199409L hosted 1
signed 1 unsigned __unsigned_chars__ little 1 big _BIG_ENDIAN
gnu 3 0 stdc_inline __GNUC_STDC_INLINE__ text "ZOK gcc 4.3 mode"
no_long_long __NO_LONG_LONG
