// options: -C
// proves: comments stay in the output on demand
int a; // line
/* block
   of lines */ int b; /* end */
#define M /* gone */ 1
M
