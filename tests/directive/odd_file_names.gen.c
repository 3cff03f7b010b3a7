/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
odd_file_names.c (from line number 1, sequence numbers 1-6)
  a	b"c\d
e.c (from line number 3, sequence numbers 4-5)
  all* /x.c (from line number 7, sequence numbers 6-6)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
# 1 "odd_file_names.c"
# 3 "a\011b\"c\\d\ne.c"
extern char *name;
# 7 "all*/x.c"
extern char *other;
# 3 "a\011b\"c\\d\ne.c"
char *name = "a\tb\"c\\d\ne.c";
# 7 "all*/x.c"
char *other = "all*/x.c";
