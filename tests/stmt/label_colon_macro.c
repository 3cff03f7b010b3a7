// proves: the colon behind a label may come from a macro
#define COLON :
int f(int n)
{
again COLON
  if (--n > 3) goto again;
  return n;
}
