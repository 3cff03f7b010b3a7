// options: --no_brief_diagnostics
// proves: where messages of expressions point, and their texts
struct S { int a; } s; int i, *ip; float f; const int k = 1; int arr[4]; int two(int, int); unsigned u;
void t(void)
{
  ip = i + 1;
  ip = f;
  i = s + 1;
  i = two(1, s);
  two(1);
  two(1, 2, 3);
  k = 2;
  i = arr[7];
  i = u < 0;
  i = 1 / 0;
  i = i << 40;
  i == 2;
  i = (int)s;
  i = ip == f;
  i = undefd + 1;
  s.zz = 1;
  i = i ? s : 2;
  if (i = 0) i = 1;
  int x = ip;
}
int a[i + 1];
int b = two(1, 2);
int c[3] = { 1, 2, 3, i };
