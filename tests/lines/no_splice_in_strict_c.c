// options: --strict --c
// proves: outside GNU C the line ends there
/* \  expect: warning not_a_line_splice */
int a;
// a comment \  
int b; 
