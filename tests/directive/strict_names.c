// options: -E --c99 --strict
// proves: what only GNU or this tool chain has is reported in strict mode
#warning x           // expect: error bad_pp_directive_keyword
# 5 "strict_names.c" // expect: error nonstd_pp_directive
