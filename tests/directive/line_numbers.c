// proves: line directives and line markers set line and name
__LINE__ __FILE__
#line 100
__LINE__ __FILE__
#line 7 "a\\b.c"
__LINE__ __FILE__
#define NUMBERS 12 "m.c"
#line NUMBERS
__LINE__ __FILE__
# 30 "marker.c" 1 3
__LINE__ __FILE__
# 0 "zero.c"
__LINE__
#
# /* null */
__LINE__
