// options: --noenhance
// proves: a file name is escaped where it becomes a string, and cannot end a comment
#line 3 "a\tb\"c\\d\ne.c"
char *name = __FILE__;
#line 7 "all*/x.c"
char *other = __FILE__;
