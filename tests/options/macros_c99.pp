# 1 "macros_c99.c"


strict 0 stdc 1 version 199901L hosted 1
signed 1 unsigned __unsigned_chars__ little 1 big _BIG_ENDIAN
gnu 4 2 stdc_inline 1 text "ZOK gcc 4.4.2 mode"
no_long_long __NO_LONG_LONG
