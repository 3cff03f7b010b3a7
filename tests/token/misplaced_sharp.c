// proves: a "#" behind other tokens is no directive
int x; # define X           // expect: error bad_use_of_sharp
// expect-1: error exp_declaration
