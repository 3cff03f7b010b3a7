// proves: lint comments bind silently; loop pragmas of other tools are unknown
/* ARGSUSED */
int f(int x)
{
  /* NOTREACHED */
  return 0;
}
/* VARARGS2 */
int g(int a, int b);
