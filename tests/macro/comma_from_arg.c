// options: -P
// proves: a comma that came out of an argument separates, but for the last parameter it belongs to it
#define one(x) [x]
#define two(a, b) [a|b]
#define COMMA ,
#define pass_one(x) one(x)
#define pass_two(x) two(x)
#define rest(...) one(__VA_ARGS__)
#define rest2(a, ...) two(a, __VA_ARGS__)
pass_one(COMMA) pass_one(1 COMMA 2) pass_two(1 COMMA 2) pass_two(1 COMMA 2 COMMA 3)
rest(1, 2, 3) rest2(1, 2, 3) pass_one((1, 2)) pass_two((1, 2) COMMA 3)
