// options: --check_misra=10.1,10.2,12.6
// proves: what the messages say of why a conversion or an operand is wrong
typedef unsigned char u8;
extern u8 a, b;
extern unsigned short wide;
extern int found, sum;
extern float f;
extern double d;
extern void take(unsigned short x);
extern void take_double(double x);
unsigned short g(void)
{
  wide = a + b;
  take(a);
  a = wide;
  d = f + f;
  take_double(f);
  f = d;
  sum = (a < b) + 1;
  found = !(a + b);
  found = ((a < b) == 7U);
  return a;
}
double h(void)
{
  return f;
}
