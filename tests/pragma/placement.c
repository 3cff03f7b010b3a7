// proves: a pragma that binds to a declaration is reported where no declaration follows
#pragma __printf_args
int f(const char *, ...);
int main(void)
{
#pragma __scanf_args          // expect: warning pragma_must_precede_declaration
  f("");
#pragma __printf_args         // expect: warning pragma_may_not_be_used_here
}
#pragma unknown_to_all        // expect: warning unrecognized_pragma
#pragma
#pragma once
_Pragma("unknown_too")        // expect: warning unrecognized_pragma
int x;
