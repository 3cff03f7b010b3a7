/* options: -n --old_c */
/* proves: a typedef of void itself is warned of and dropped in old C */
typedef void;  /* expect: warning decl_of_void_ignored */
void f() { }
