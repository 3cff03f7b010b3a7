// options: -n
// proves: comments of the old checkers, and pragmas of precompiled headers, say nothing here
#pragma hdrstop
#pragma no_pch
/*VARARGS*/
int f(int a, int b)  /*ARGSUSED*/
{
  return a;
  /*NOTREACHED*/
}
