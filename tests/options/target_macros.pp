



abi 1 1 1 1 1
order _LITTLE_ENDIAN 1 __little_endian__ 1
long 1 __QN_40BIT_LONG__ max 2147483647L
model _SMALL_MODEL 1 2
wide 32 unsigned int unsigned int
modes 0 1 1 1
