// options: --old_style_preprocessing -P
// proves: the same in another dialect
#define glue(a, b) a/**/b
glue(two, three)
