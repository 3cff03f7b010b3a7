# 1 "in_macro_call.c"











[a + 1|a a] a
