// options: --little_endian --no_thread_local_storage --predefine_memory_model_macros -P
// proves: the target's macros without options; those with a parenthesis in the name match nothing
abi __QN_EABI__ __DSBT__ __QN_TLS__
order _LITTLE_ENDIAN _BIG_ENDIAN __little_endian__ __big_endian__
long __QN_32BIT_LONG__ __QN_40BIT_LONG__ max __LONG_MAX__
model _SMALL_MODEL _LARGE_MODEL
wide __QN_WCHAR_T_BITS__ __WCHAR_T_TYPE__
modes __QN_STRICT_FP_MODE__ __QN_GNU_ATTRIBUTE_SUPPORT__
empty [__nothrow__][__leaf__] order __BYTE_ORDER__ width __INT64_C(1)
