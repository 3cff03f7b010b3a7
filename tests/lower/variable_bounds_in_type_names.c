// options: --c99 --gcc --no_warnings
// needs: arm
// proves: the bounds in casts, literals, sizeof, va_arg and typeof are evaluated once, in their place
#include <stdarg.h>
#include <stdio.h>

static int calls;
static int next(void)
{
  return ++calls;
}
static int only_in_a_type(void)
{
  return ++calls;
}
static int item(int k, ...)
{
  va_list list;
  va_start(list, k);
  int(*p)[k] = va_arg(list, int(*)[next()]);
  va_end(list);
  return (*p)[1];
}

static void operators(int *buf, int n)
{
  printf("%d ", (int)sizeof(int[next()][n]));
  printf("%d ", (int)sizeof(*(int(*)[next()])buf));
  printf("%d ", ((int(*)[next() + 2])buf)[1][0]);
  printf("%d calls %d\n", item(3, buf), calls);
  int k = 3;
  printf("%d ", (int)((char *)(1 + (char(*)[k += 2])buf) - (char *)buf));
  (int(*)[k++]) buf;
  (void)(int(*)[k++]){0};
  printf("k %d ", k);
  int value = n == 0 ? ((int(*)[++k])buf)[1][0] : ((int(*)[--k])buf)[1][0];
  printf("%d k %d ", value, k);
  value = (n == 0 && sizeof(int[k++])) + (n != 0 && sizeof(int[k++]));
  printf("%d k %d\n", value, k);
  while (sizeof(int[k--]) > 12)
    ;
  for (int i = 0; i < 2; i++) {
    int(*row)[k] = (int(*)[k++])buf;
    printf("%d ", (int)sizeof *row);
  }
  printf("k %d\n", k);
}

static void literals(int *buf, int n)
{
  int(**pp)[n] = &(int(*)[n]){(void *)buf};
  n = 7;
  printf("%d ", (*pp)[1][0]);
  int(**rows)[n] = (int(*[2])[n]){(void *)buf, (void *)(buf + n)};
  printf("%d %d ", (*rows[1])[0], rows[0][1][0]);
  calls = 5;
  int(**qq)[6] = &(int(*)[next()]){(void *)buf};
  printf("%d calls %d\n", (*qq)[1][0], calls);
  ++(typeof(next(), (int(*)[n])buf)){(void *)buf};
  void *p = (++calls, (int(*)[++calls]){(void *)buf});
  printf("%d calls %d\n", p == buf, calls);
}

static void type_operators(int *buf)
{
  int k = 5;
  calls = 0;
  typeof((int(*)[next()])buf) one;
  typeof(int[next()]) two;
  typeof(int(*)[k]) fixed = (void *)buf;
  k = 9;
  printf("%d %d %d calls %d\n", (int)sizeof *one, (int)sizeof two, (int)sizeof *fixed, calls);
  typeof(*((void)only_in_a_type(), (char(*)[k])buf)) three;
  typeof(next()) none = __alignof__(typeof((int(*)[next()])buf)) + sizeof(typeof(next()));
  printf("%d %d calls %d\n", (int)sizeof three, none, calls);
  int m = sizeof(typeof(*(++k, (char(*)[k])buf)));
  printf("%d k %d\n", m, k);
  int(*p)[k] = 0;
  k = 2;
  p = p ?: (void *)buf;
  printf("%d\n", p[1][0]);
}

int main(void)
{
  int buf[64];
  for (int i = 0; i < 64; i++)
    buf[i] = i;
  operators(buf, 3);
  literals(buf, 3);
  type_operators(buf);
  return 0;
}
