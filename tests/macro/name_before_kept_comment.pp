# 1 "name_before_kept_comment.c"
// options: -E -C
// proves: a name without call between comments that span lines puts each line out once


foo /* a
b */
+ 
# 6 "name_before_kept_comment.c"

foo /*
*/
# 8 "name_before_kept_comment.c"
, 
foo
