// options: --gcc
// proves: null pointer constants and the types of conditionals
int *ip; void *vp; const int *cip; char *cp; int i; enum E { Z } e; int (*fp)(void); int arr[3]; int (*pa)[3]; int (*pi)[]; const void *cvp;
#define IS(n, x, type) extern int is_##n[__builtin_types_compatible_p(__typeof__(x), type) ? 1 : -1]
IS(1, 1 ? ip : 0, int *);
IS(2, 1 ? ip : (void *)0, int *);
IS(3, 1 ? ip : vp, void *);
IS(4, 1 ? ip : cip, const int *);
IS(5, 1 ? cip : vp, const void *);
IS(6, 1 ? 'a' : 'b', int);
IS(7, 1 ? 1 : 1.0f, float);
IS(8, 1 ? (char)1 : (char)2, int);
IS(9, 1 ? pa : pi, int (*)[3]);
IS(10, 1 ? fp : 0, int (*)(void));
IS(11, 1 ? arr : 0, int *);
IS(12, &arr, int (*)[3]);
IS(13, &arr[0], int *);
IS(14, *arr, int);
IS(15, "abc", char[4]);
IS(16, i ? i : 1u, unsigned);
IS(17, i ? 1LL : 1u, long long);
IS(18, (i, (char)1), char);
IS(19, -(char)1, int);
IS(20, !1.0, int);
IS(21, ip < ip, int);
IS(22, sizeof i, __SIZE_TYPE__);
IS(23, ip - ip, __PTRDIFF_TYPE__);
IS(24, (const int)1, int);
IS(25, i = 1.5, int);
IS(26, *cip, const int);
IS(27, 1 ? (void *)1 : ip, void *);
IS(28, 1 ? e : 1u, unsigned);
IS(29, +e == 0, int);
IS(30, 1 ? (void)0 : (void)1, void);
IS(31, 'a' + 1L, long);
IS(32, 1.0f * 1, float);
IS(33, 1.0f * 1.0, double);
IS(34, 1.0L + 1, long double);
IS(35, 1 << 1L, int);
IS(36, (unsigned char)1 >> 1, int);
IS(37, ~(short)1, int);
void t(void)
{
  ip = 0; ip = 0L; ip = (void *)0; ip = (int)0; ip = 1 - 1; ip = '\0'; ip = Z; ip = sizeof(int) - 4;
  fp = 0; fp = (void *)0; fp = !1;
  i = ip == 0 || 0 == ip || ip == (void *)0 || fp == (void *)0;
  ip = 0 ? ip : 0;
  ip = (void *)(void *)0;
  ip = i ? 0 : ip;
  ip = (char)0;
}
