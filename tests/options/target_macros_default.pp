

abi __QN_EABI__ __DSBT__ __QN_TLS__
order 1 _BIG_ENDIAN 1 __big_endian__
long __QN_32BIT_LONG__ 1 max 2147483647L
model 1 _LARGE_MODEL
wide 16 unsigned short
modes 1 1
empty [][] order 1234 width __INT64_C(1)
