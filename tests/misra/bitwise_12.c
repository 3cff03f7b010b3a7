// options: --check_misra=12.7-9
// proves: bits of unsigned types only, counts within the underlying type, no minus before unsigned
typedef unsigned char u8;
extern u8 u8a, u8b;
extern unsigned short u16a;
extern unsigned u32a;
extern int i;
enum { mask = 8 };

void signs(void)
{
  u32a = u32a & u8a;
  u32a = u32a & i;       // expect: warning misra_c_2004_12_7
  u32a = u32a & 1;
  u32a = u32a & -1;      // expect: warning misra_c_2004_12_7
  u32a = u32a | mask;
  i = i | 1;             // expect: warning misra_c_2004_12_7
  i = 1 | 2;             // expect: warning misra_c_2004_12_7
  u32a = ~u32a;
  i = ~i;                // expect: warning misra_c_2004_12_7
  u32a = u32a >> i;
  i = i >> 1;            // expect: warning misra_c_2004_12_7
  u32a = 1U << 3;
  i = 1 << 3;            // expect: warning misra_c_2004_12_7
  u32a ^= 1U;
  i ^= 1U;               // expect: warning misra_c_2004_12_7
  u32a <<= i;
  i >>= 1;               // expect: warning misra_c_2004_12_7
}

void counts(void)
{
  u8a = (u8)(u8a << 7);
  u8a = (u8)(u8a << 8);  // expect: warning misra_c_2004_12_8
  u8a = (u8)(u8a << -1); // expect: warning misra_c_2004_12_8 expect: warning negative_shift_count
  u16a >>= 16;           // expect: warning misra_c_2004_12_8
  u32a = u32a >> 31;
  u32a = u32a << i;
  u32a = 1U << 31;
  u32a = sizeof(int) == 8 ? u32a >> 32 : 0;
}

void minus(void)
{
  i = -i;
  i = -u8a;              // expect: warning misra_c_2004_12_9
  u32a = -u32a;          // expect: warning misra_c_2004_12_9
  i = -5;
  u32a = -5U;            // expect: warning misra_c_2004_12_9
  i = -(i + 1);
}
