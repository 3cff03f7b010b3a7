// options: --c99 --no_wrap_diagnostics
// proves: a typedef of variable length can be jumped over no more than an array can
void f(int n)
{
  goto inside;
  {
    typedef int (*row)[n];
  inside: ;
    typedef char text[n];
    goto later;
    text more[2];
  later: ;
  }
  switch (n) {
    typedef int line[n];
  case 1: ;
  }
  goto out;
  { typedef int skipped[n]; }
out: ;
  typedef int last[n];
again: ;
  if (n-- > 0) goto again;
}
