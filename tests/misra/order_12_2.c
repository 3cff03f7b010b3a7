// options: --check_misra=12.2
// proves: side effects on an object that the same expression uses elsewhere without order
struct s { int a, b; struct s *next; };
union u { int a, b; };
extern void two(int x, int y);
extern int one(int x);
extern int *p, *q;

int f(int i, int n, volatile int v, volatile int w, struct s *sp, struct s s, union u u, int a[])
{
  i = i + 1;
  i = i++;                    // expect: warning misra_c_2004_12_2
  i += (i = 2);               // expect: warning misra_c_2004_12_2
  a[i] = i++;                 // expect: warning misra_c_2004_12_2
  a[i++] = i;                 // expect: warning misra_c_2004_12_2
  a[i] = a[i]++;              // expect: warning misra_c_2004_12_2
  a[0] = a[1]++;
  a[i] = n++;
  two(i, i++);                // expect: warning misra_c_2004_12_2
  two(i++, n++);
  n = one(i++) + i;           // expect: warning misra_c_2004_12_2
  n = one(i++);
  n = i++ + i;                // expect: warning misra_c_2004_12_2
  n = i++ + (n = 3);          // expect: warning misra_c_2004_12_2
  n = i++ && i;
  n = i++ || i;
  n = (i++, i);
  n = i ? i++ : i--;
  n = (i++ ? n : 2) + i;      // expect: warning misra_c_2004_12_2
  *p++ = *q++;
  *p++ = *p;                  // expect: warning misra_c_2004_12_2
  *p = *p + 1;
  *p = (*p)++;                // expect: warning misra_c_2004_12_2
  p[i] = (*q)++;
  s.a = s.b++;
  s.a = s.a++;                // expect: warning misra_c_2004_12_2
  u.a = u.b++;                // expect: warning misra_c_2004_12_2
  sp->a = sp->b++;
  sp->a = (*sp).a++;          // expect: warning misra_c_2004_12_2
  sp->next->a = sp->a++;
  sp->next = (sp = sp->next); // expect: warning misra_c_2004_12_2
  s = *(sp = &s);
  n = v + v;                  // expect: warning misra_c_2004_12_2
  n = v + w;
  v = v + 1;
  v |= 1;
  a[v] = v;                   // expect: warning misra_c_2004_12_2
  n = one(sizeof(i++)) + i;
  return i-- - i;             // expect: warning misra_c_2004_12_2
}
