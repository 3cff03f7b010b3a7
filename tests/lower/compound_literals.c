// options: --c99
// proves: a compound literal is made anew at each evaluation, also in the condition of a loop
// needs: arm
int printf(const char *, ...);
struct p { int x, y; const char *n; };
static int calls;
static int helper(int a) { calls++; return a * 2; }
static int sum(int *p, int n)
{
  int s = 0;
  while (n--) { s += *p; *p++ = 0; }
  return s;
}
static int *fsp = (int[]){ 5, 6 };
int main(void)
{
  int k = 0, t = 0;
  struct p *r = &(struct p){ helper(1), 2, "lit" };
  const struct p c = { r->x, r->x + 1, "k" };
  printf("%d %d %s %d %d\n", r->x, r->y, r->n, c.x, c.y);
  printf("%d\n", sum((int[]){ 1, 2, helper(4) }, 3));
  for (int i = 0; i < 3; i++) {
    int *q = (int[2]){ i, 1 };
    q[0]++;
    printf("%d ", q[0] + q[1]);
  }
  while (sum((int[]){ 1, 0 }, 2) + k++ < 4) t++;
  do t += 10; while (sum((int[3]){ 2 }, 3) + k++ < 9);
  for (int i = 0; i < 2; i += sum((int[]){ 1 }, 1)) t += 100;
  printf("%d %d %d %d\n", t, k, fsp[1], calls);
  return (int)sizeof((char[7]){ 0 }) - 7;
}
