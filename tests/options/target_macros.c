// options: --big_endian --abi=eabi --dsbt --use_libc_tls --predefine_memory_model_macros --mem_model:code=far
// options: --mem_model:data=far_aggregates --mem_model:const=far --long_precision_bits=32 --wchar_t_bits=32
// options: --fp_mode=relaxed -u --vencode --asmheaders --version=6000 -P
// proves: the target's macros follow the target's options
abi __QN_EABI__ __QN_ELFABI__ __DSBT__ __QN_TLS__ __QN_USE_TLS
order _LITTLE_ENDIAN _BIG_ENDIAN __little_endian__ __big_endian__
long __QN_32BIT_LONG__ __QN_40BIT_LONG__ max __LONG_MAX__
model _SMALL_MODEL _LARGE_MODEL _LARGE_MODEL_OPTION
wide __QN_WCHAR_T_BITS__ __WCHAR_T_TYPE__ __SIZE_T_TYPE__ __PTRDIFF_T_TYPE__
modes __QN_STRICT_FP_MODE__ __VIRTUAL_ENCODING__ __ASM_HEADER__ __unsigned_chars__
