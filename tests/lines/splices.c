// options: -P
// proves: a backslash before the newline joins lines, in tokens and in directives
int a\
b = 1 \
+ 2;
#define x\
y long \
  text
xy "str\
ing" /* com\
ment */ end
/\
* a comment *\
/ /\
/ another \
one
last
