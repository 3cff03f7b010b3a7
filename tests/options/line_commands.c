// options: --old_line_commands -E
// proves: line directives of the old form
#line 7 "other.c"
int a = __LINE__;
