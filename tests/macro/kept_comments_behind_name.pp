# 1 "kept_comments_behind_name.c"
// options: -E -C
// proves: comments between a name and what is no call stay in the output


<2>
f /* same line */ ;

f /* line end */ /* next line */
;
# 9 "kept_comments_behind_name.c"




f // to the end
 /* over
   two lines */ // and more
 /* last */
; /* behind */
# 15 "kept_comments_behind_name.c"

f /* behind a text */
; 
f /* before a directive */
# 18 "kept_comments_behind_name.c"

f /* at the end */
