/* options: -n --old_c */
/* proves: a cast to the operand's own array type is ignored, one to another array type is one to its pointer */
typedef int row[3];
row r;
int f(p) char *p; {
    int *q = (row)r;  /* expect: warning nonstd_ignored_array_cast */
    q = (row)p;       /* expect: warning nonstd_array_cast */
    return *q + sizeof ((row)r);  /* expect: warning nonstd_ignored_array_cast */
}
