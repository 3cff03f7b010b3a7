// options: --check_misra=10.1,10.2
// proves: which implicit conversions of numbers keep the underlying type
typedef unsigned char u8;
typedef signed char s8;
typedef unsigned short u16;
extern u8 u8a, u8b;
extern s8 s8a, s8b;
extern u16 u16a;
extern short s16a;
extern int s32a;
extern unsigned u32a;
extern float f32a;
extern double f64a;
extern long double f80a;
extern struct { unsigned three : 3; signed four : 4; } bits;
extern enum color { red, green } color;
extern void take_u8(u8 x);
extern void take_u16(u16 x);
extern void take_double(double x);
extern void take_any(int n, ...);

void assignments(void)
{
  u8a = u8b;
  u8a = u16a;                       // expect: warning misra_c_2004_10_1
  s8b = u8a;                        // expect: warning misra_c_2004_10_1
  s32a = s16a;
  u16a = u8b + u8a;                 // expect: warning misra_c_2004_10_1
  u8a = u8b + u8a;
  s32a = s8a + s8b;                 // expect: warning misra_c_2004_10_1
  s32a = ~s8a;                      // expect: warning misra_c_2004_10_1
  u8a = 255U;
  u8a = 256U;                       // expect: warning misra_c_2004_10_1 expect: warning integer_truncated
  s8a = 128;                        // expect: warning misra_c_2004_10_1 expect: warning integer_sign_change
  s8a = -128;
  u8a = -1;                         // expect: warning misra_c_2004_10_1 expect: warning integer_sign_change
  s8a = 'a';
  u8a = bits.three;
  s8a = bits.four;
  s8a = bits.three;                 // expect: warning misra_c_2004_10_1
  color = green;
  s32a = u8a == u8b;
  u8a = (s8a < 3) && (s8b < 3);
  u8a = !s32a;
  u8a += u16a;                      // expect: warning misra_c_2004_10_1
  u8a += u8b;
  s8a += 5U;                        // expect: warning misra_c_2004_10_1
  u16a <<= 3;
  s32a = (u8a, s8a);                // expect: warning expr_has_no_effect
  s32a = s32a > 0 ? s8a : s8b;      // expect: warning misra_c_2004_10_1
  s32a = s16a = s8a;
  s32a = u8a == 0 ? 3 : 4;
  u8a = s8a == 0 ? 3 : 300;         // expect: warning misra_c_2004_10_1
  u32a = u32a + (s8a < s8b);
  u32a = (s8a < s8b) << 1;          // expect: warning misra_c_2004_10_1
}

void floats(void)
{
  f64a = f32a;
  f32a = f64a;                      // expect: warning misra_c_2004_10_2
  f32a = 2.5;                       // expect: warning misra_c_2004_10_2
  f32a = 2.5F;
  f64a = f32a + f32a;               // expect: warning misra_c_2004_10_2
  f64a = f64a * f32a;
  f64a = (f32a + f32a) * f64a;      // expect: warning misra_c_2004_10_2
  f80a = f64a;
  f64a = s32a;                      // expect: warning misra_c_2004_10_2
  f64a = 1;                         // expect: warning misra_c_2004_10_2
  s32a = f64a;                      // expect: warning misra_c_2004_10_2
  f32a += s32a;                     // expect: warning misra_c_2004_10_2
  s32a = f32a > 0.5F;
}

void operators(void)
{
  s32a = s8a + s32a;
  s32a = (s8a + s8b) + s32a;        // expect: warning misra_c_2004_10_1
  s32a = u8a == s8a;                // expect: warning misra_c_2004_10_1
  s32a = u8a == 5;
  s32a = s32a + 5U;                 // expect: warning misra_c_2004_10_1
  u32a = u32a & u8a;
  u32a = u8a << s32a;               // expect: warning misra_c_2004_10_1
  s32a = s8a < 300;
  u8a = u8a < 300;
}

u16 results(int n, u8 *p)
{
  take_u8(*p);
  take_u8(u8a + u8b);
  take_u8(u16a);                    // expect: warning misra_c_2004_10_1
  take_u8(5U);
  take_u16(p[1]);                   // expect: warning misra_c_2004_10_1
  take_u16(u8a + u8b);              // expect: warning misra_c_2004_10_1
  take_double(f32a);                // expect: warning misra_c_2004_10_2
  take_double(2.5F);                // expect: warning misra_c_2004_10_2
  take_any(n, u8a, f32a);
  if (n == 1) { return u8a; }       // expect: warning misra_c_2004_10_1
  if (n == 2) { return u8a + u8b; } // expect: warning misra_c_2004_10_1
  if (n == 3) { return 5U; }
  return u16a;
}

double result(void)
{
  return f32a;                      // expect: warning misra_c_2004_10_2
}
static const u8 table[] = {
  1U,
  256U,                             // expect: warning misra_c_2004_10_1 expect: warning integer_truncated
};
u8 initialized = 3 * 100;           // expect: warning misra_c_2004_10_1 expect: warning integer_truncated
const u8 *use(void)
{
  s8 local = u8a;                   // expect: warning misra_c_2004_10_1
  return local == 0 ? table : &u8a;
}
