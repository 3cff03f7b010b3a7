// proves: GNU C splices over blanks behind the backslash, with a warning
int a \ 	
// expect-1: warning white_space_inside_splice
  = 1;
