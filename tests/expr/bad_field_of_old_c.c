/* options: -n --old_c */
/* proves: a member of two classes at different offsets */
struct a { int x; int y; }; struct b { char y; int x; };
int n;
int f() { return n.x; }  /* expect: error pcc_field_ambiguity */
