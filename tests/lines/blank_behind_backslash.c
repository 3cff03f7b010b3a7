// proves: GNU C splices over blanks behind the backslash, with a warning
int a \ 	
  = 1;
// expect-2: warning white_space_inside_splice
