// options: -P
// proves: the macros whose text is made at each use
__LINE__ __FILE__ __BASE_FILE__ __DATE__ __TIME__ __COUNTER__ __COUNTER__
#line 70 "a \"b\".c"
__LINE__ __FILE__ __BASE_FILE__
#define line() __LINE__
#define cat(a, b) a##b
#define xcat(a, b) cat(a, b)
line() xcat(v, __LINE__)
__STDC__ __STDC_VERSION__
