// options: -C
// proves: comments stay in the output on demand
int a; // line
/* block
   of lines */ int b; /* end */
1
