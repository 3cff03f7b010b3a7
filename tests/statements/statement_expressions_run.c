// needs: arm
// proves: GNU statement expressions: values, declarations inside, jumps out of them
extern int printf(const char *, ...);
#define MAX(a, b) ({ int a_ = (a), b_ = (b); a_ > b_ ? a_ : b_; })
static int search(int n)
{
  int i;
  for (i = 0;; i++) {
    int k = ({ if (i * i > n) break; i * 2; });
    if (k == 8) continue;
    if (({ int t = k; while (t > 3) t -= 3; t; }) == 1 && i > 5) return ({ goto out; 0; });  // expect: warning code_is_unreachable
  }
  return i;
out:
  return -i;
}
int main(void)
{
  int n = 3;
  int m = MAX(n++, ({ n *= 2; n; }));
  printf("%d %d %d %d\n", m, n, search(20), search(1000));
  printf("%d\n", ({ struct { int a; } s = { 5 }; s; }).a);
  ({ n = 1; });
  printf("%d %d\n", n, MAX(MAX(1, 2), MAX(4, 3)));
  return 0;
}
