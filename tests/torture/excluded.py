"""What of the torture suites lies outside the dialect, each with its reason."""

# (pattern of the path, reason)
EXCLUDED = [
    ('compile/limits-declparen.c', 'nests declarators beyond the documented limit'),
    ('compile/limits-structnest.c', 'nests structures beyond the documented limit'),
    ('compile/20001116-1.c', 'takes two string literals of equal text for one object'),
    ('compile/20010112-1.c', 'register names of other machines'),
    ('compile/20101216-1.c', 'a constant beyond the range of int initializes an int, which is an error here'),
    ('compile/920817-1.c', 'a void function returns a value, which is an error here'),
    ('compile/950919-1.c', 'assertions of #if'),
    ('compile/961203-1.c', 'object beyond the size limit of the target'),
    ('compile/pr103813.c', 'object beyond the size limit of the target'),
    ('compile/pr65680.c', 'object beyond the size limit of the target'),
    ('execute/991014-1.c', 'object beyond the size limit of the target'),
    ('compile/mipscop-*', 'register names of other machines'),
    ('compile/pr77754-6.c', 'structure with a variable length array'),
    ('execute/pr71626-2.c', 'vector types'),
    ('execute/960405-1.c', 'literal of the 80-bit long double, which is out of range here'),
    ('execute/bitfld-5.c', "arithmetic in a wide bit-field's own width; here it has the declared type"),
    ('execute/alloca-1.c', 'the largest alignment of the target is 16, that of the compiler behind 8'),
    ('execute/ieee/fp-cmp-7.c', 'links only where the compiler behind optimizes'),
    ('execute/pr56837.c', 'complex integers'),
    ('execute/20050121-1.c', 'complex integers'),
    ('execute/complex-6.c', 'complex integers'),
    ('compile/pr41987.c', 'complex integers'),
    ('compile/20010510-1.c', '#ident'),
    ('execute/pushpop_macro.c', '#pragma push_macro'),
    ('compile/20180605-1.c', 'a void function returns a value, which is an error here'),
    ('execute/builtins/abs-1.c', 'needs an option of the compiler behind'),
    ('execute/eeprof-1.c', 'needs an option of the compiler behind'),
]

# Functions in functions: the definition stands behind its declarator in a block.
NESTED_FUNCTIONS = (
    'compile/20010226-1.c', 'compile/20010605-1.c', 'compile/20010903-2.c', 'compile/20011023-1.c',
    'compile/20020309-1.c', 'compile/20021204-1.c', 'compile/20030418-1.c', 'compile/20030716-1.c',
    'compile/20031011-1.c', 'compile/20040310-1.c', 'compile/20040317-3.c', 'compile/20040323-1.c',
    'compile/20050119-1.c', 'compile/930506-2.c', 'compile/951116-1.c', 'compile/nested-*.c', 'compile/pr35006.c',
    'compile/pr99324.c', 'execute/20000822-1.c', 'execute/20010209-1.c', 'execute/20010605-1.c',
    'execute/20030501-1.c', 'execute/20040520-1.c', 'execute/20061220-1.c', 'execute/20090219-1.c',
    'execute/920612-2.c', 'execute/921017-1.c', 'execute/921215-1.c', 'execute/931002-1.c', 'execute/nest-align-1.c',
    'execute/nest-stdar-1.c', 'execute/nestfunc-*.c', 'execute/pr22061-3.c', 'execute/pr22061-4.c',
    'compile/20050122-2.c', 'compile/pr21728.c', 'execute/920428-2.c', 'execute/920501-7.c', 'execute/pr103405.c',
    'execute/pr24135.c')

EXCLUDED += [(path, 'nested functions') for path in NESTED_FUNCTIONS]

VARIABLE_STRUCTURES = (
    'compile/20030224-1.c', 'compile/20050801-2.c', 'compile/20020210-1.c', 'compile/920428-4.c',
    'compile/920501-16.c', 'compile/pr42956.c', 'compile/pr82564.c', 'execute/20020412-1.c', 'execute/20040308-1.c',
    'execute/20040423-1.c', 'execute/20041218-2.c', 'execute/20070919-1.c', 'execute/align-nest.c',
    'execute/pr41935.c', 'execute/pr82210.c')

EXCLUDED += [(path, 'variable length arrays in structures') for path in VARIABLE_STRUCTURES]

# (regular expression in the text without its comments, reason)
EXCLUDED_BY_TEXT = [
    (r'[=,({\[?:+\-]\s*&&\s*[A-Za-z_]|\breturn\s*&&', 'addresses of labels'),
    (r'\bgoto\s*\*', 'computed goto'),
    (r'\basm(__)?\s+(volatile\s+|__volatile__\s+)?(inline\s+)?goto\b', 'asm goto'),
    (r'\b(asm|__asm|__asm__)\s*(volatile|__volatile|__volatile__)?\s*\(\s*("[^"]*"\s*)+:', 'operands of an asm statement'),
    (r'__int128|_Decimal|_Float16|_Float32|_Float64|_Float128|__float128|_Fract|_Accum|_Sat|__ibm128',
     'type outside the dialect'),
    (r'(_Complex|__complex__|__complex)\s+((un)?signed|char|short|int|long\s+(int|long)|unsigned)\b'
     r'|\b((un)?signed|char|short|int|long long)\s+(_Complex|__complex__)', 'complex integers'),
    (r'vector_size|__vector|__builtin_shuffle', 'vector types'),
    (r'_Generic|_Static_assert|_Alignof|_Alignas|_Noreturn|_Atomic|_Thread_local', 'C11'),
    (r'\bu8?"|\bU"|__auto_type|__VA_OPT__', 'C11 and later'),
    (r'__builtin_(setjmp|longjmp|apply|return|nonlocal_goto|unwind|eh_|dwarf|frob|init_dwarf)', 'built-in of code generation'),
    (r'__sync_|__atomic_', 'atomic built-ins'),
]

# (regular expression in the comments, reason)
EXCLUDED_BY_COMMENT = [
    (r'dg-error', 'is meant to be rejected'),
    (r'dg-require-effective-target (dfp|int128|longlong64)', 'asks for another target'),
    (r'dg-do compile \{ target (?!arm)', 'asks for another target'),
    (r'dg-options[^\n]*-std=(gnu|c)(11|17|2x|18)', 'later standard'),
    (r'dg-options[^\n]*-f(gimple|openmp|openacc)', 'extension of the compiler chosen by an option'),
]

# Run-time cases of gcc.dg: (pattern of the path, reason).
EXCLUDED_DG = [
    ('attr-ifunc-*.c', 'attribute of the compiler behind'),
    ('ipa/ipa-pta-19.c', 'attribute of the compiler behind'),
    ('sso-*.c', 'attribute of the compiler behind'),
    ('sso/*', 'attribute of the compiler behind'),
    ('bitfld-3.c', "a bit-field's type doesn't align the target's structures"),
    ('bitfld-4.c', "a bit-field's type doesn't align the target's structures"),
    ('c90-*.c', 'what C90 without extensions reads in another way'),
    ('cpp/pr23827_c90.c', 'what C90 without extensions reads in another way'),
    ('cpp/pr61854-*.c', 'what C90 without extensions reads in another way'),
    ('cpp/strify5.c', 'white space that only empty expansions leave'),
    ('cpp/utf8-5byte-1.c', 'a sequence of five bytes is no character'),
    ('vla-stexp-[1259].c', 'members of variable length, which a warning turns into empty ones'),
    ('packed-vla.c', 'members of variable length, which a warning turns into empty ones'),
    ('20050527-1.c', 'members of variable length, which a warning turns into empty ones'),
    ('nested-func-*.c', 'nested functions'),
    ('torture/pr48953.c', 'members of variable length, which a warning turns into empty ones'),
    ('torture/pr8081.c', 'members of variable length, which a warning turns into empty ones'),
    ('torture/pr92088-*.c', 'members of variable length, which a warning turns into empty ones'),
    ('ucnid-5.c', 'the dollar sign as a universal character'),
    ('ucnid-9.c', 'another execution character set'),
]
