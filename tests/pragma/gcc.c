// proves: visibilities are pushed and popped; other GCC pragmas are warned of
#pragma GCC visibility push(hidden)
int x;
#pragma GCC visibility pop
#pragma GCC visibility pop           // expect: warning ELF_visibility_stack_empty
#pragma GCC visibility push hidden   // expect: warning exp_lparen
#pragma GCC visibility push(secret)  // expect: warning unrecognized_visibility
#pragma GCC visibility push(hidden   // expect: warning exp_rparen
#pragma GCC visibility pop now       // expect: warning extra_text_in_pp_directive
#pragma GCC visibility hide          // expect: warning unrecognized_gcc_visibility_pragma
#pragma GCC poison x                 // expect: warning unrecognized_gcc_pragma
int y;
