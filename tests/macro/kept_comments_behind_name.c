// options: -E -C
// proves: comments between a name and what is no call stay in the output
#define f(x) <x>
f /* of a call */
 /* are dropped */ (2)
f /* same line */ ;
f /* line end */
 /* next line */ ;
f // to the end
/* over
   two lines */ // and more

/* last */ ; /* behind */
#define g f /* in a text */
g /* behind a text */
; f /* before a directive */
#undef g
f /* at the end */
