// options: --check_misra=10.3-6
// proves: what complex expressions may be cast to, and where ~, << and a literal need a cast or a suffix
typedef unsigned char u8;
typedef unsigned short u16;
extern u8 u8a, u8b;
extern u16 u16a;
extern short s16a;
extern int s32a;
extern unsigned u32a;
extern float f32a;
extern double f64a;
extern u16 buf[10];
extern void take_u8(u8 x);
extern void take_int(int x);
extern u8 give_u8(void);
enum { five = 5 };

void casts(void)
{
  u32a = (unsigned)u16a + u16a;
  u32a = (unsigned)(u16a + u16a); // expect: warning misra_c_2004_10_3
  u16a = (u16)(u32a + u32a);
  s32a = (int)(u32a * u32a);      // expect: warning misra_c_2004_10_3
  u16a = (u16)(u16a + u16a);
  u32a = (unsigned)buf[u8a + u8b];
  u32a = (unsigned)give_u8();
  u32a = (unsigned)(u8)(u8a + u8b);
  u32a = (unsigned)(u8a == u8b);
  f64a = (double)(s32a / 3);      // expect: warning misra_c_2004_10_3
  f32a = (float)(f64a + f64a);
  f64a = (double)(f32a + f32a);   // expect: warning misra_c_2004_10_4
  f64a = (double)f32a;
  s32a = (int)(f32a * f32a);      // expect: warning misra_c_2004_10_4
  s32a = (int)f32a;
  s16a = (short)(s32a > 0 ? s32a : s16a);
}

void cut_off(void)
{
  u8a = (u8)(~u8b) >> 4;
  u8a = (~u8b) >> 4;              // expect: warning misra_c_2004_10_5
  u8a = ~u8b;
  u16a = (u16)(u8a << 4);         // expect: warning misra_c_2004_10_3 expect: warning misra_c_2004_10_5
  u16a = (u16)((u8)(u8a << 4));
  u8a = ~u8a & u8b;               // expect: warning misra_c_2004_10_5
  take_u8(~u8a);
  take_int(~u8a);                 // expect: warning misra_c_2004_10_5
  u32a = ~u32a << 3;
  u32a = 1U << 15;
  u32a = (u8)1U << 4;             // expect: warning misra_c_2004_10_5
  u8a <<= 2;
}

void suffixes(void)
{
  u8a = 5;                        // expect: warning misra_c_2004_10_6
  u8a = 5U;
  u8a = 'a';
  u8a = five;
  u8a = (u8)5;
  s32a = 5;
  u32a = 0x80000000;              // expect: warning misra_c_2004_10_6
  u32a = 4 + 5U;                  // expect: warning misra_c_2004_10_6
  s32a = u8a == 0;                // expect: warning misra_c_2004_10_6
  s32a = u8a >> 2;
  s32a = s16a + 5;
  u8a = u8a & 0x0F;               // expect: warning misra_c_2004_10_6
  u8a |= 1;                       // expect: warning misra_c_2004_10_6
  take_u8(7);                     // expect: warning misra_c_2004_10_6
  take_int(7);
  u16a = buf[3];
}
unsigned initialized = 1;         // expect: warning misra_c_2004_10_6
unsigned array[4] = { 1U, 2 };    // expect: warning misra_c_2004_10_6
int size[5];
