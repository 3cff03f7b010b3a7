"""What of the torture suites lies outside the dialect, each with its reason."""

# (pattern of the path, reason)
EXCLUDED = [
]

# (regular expression in the text, reason)
EXCLUDED_BY_TEXT = [
    (r'dg-require-effective-target (?!alloca|label_values|indirect_jumps|int32plus|ptr32plus|size32plus|nonlocal_goto'
     r'|trampolines|untyped_assembly|run_expensive|fopenmp|c99_runtime|lto|stdint|strict)', 'asks for another target'),
    (r'&&\s*[A-Za-z_]\w*\s*[,;})\]]', 'addresses of labels, which the dialect rejects'),
    (r'\bgoto\s*\*', 'computed goto'),
    (r'__int128|__complex__ int|_Decimal|_Float16|_Float32|_Float64|_Float128|__float128|_Fract|_Accum|_Sat',
     'type outside the dialect'),
    (r'vector_size|__vector|__builtin_shuffle', 'vector types'),
    (r'_Generic|_Static_assert|_Alignof|_Alignas|_Noreturn|_Atomic|_Thread_local', 'C11'),
    (r'dg-options[^\n]*-std=(gnu|c)(11|17|2x|18)', 'later standard'),
    (r'__builtin_(setjmp|longjmp|apply|return|nonlocal_goto|unwind|eh_|dwarf|frob|init_dwarf)', 'built-in of code generation'),
    (r'__sync_|__atomic_', 'atomic built-ins'),
    (r'__label__', 'local labels used for nonlocal jumps'),
]
