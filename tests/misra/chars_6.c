// options: --check_misra=6.1,6.2
// proves: plain char holds characters, the other two char types numbers
typedef unsigned char u8;
extern char c, d;
extern u8 u, v;
extern signed char s;
extern int i;
extern void take_char(char x);
extern void take_u8(u8 x);
char give_char(void);

void f(void)
{
  char text[4] = {0}, other[3] = {'a', 'b', 1}; // expect: warning misra_c_2004_6_1
  c = 'a';
  c = d;
  c = '\0';
  c = 0;
  c = 5;                                        // expect: warning misra_c_2004_6_1
  c = u;                                        // expect: warning misra_c_2004_6_1
  c = i;
  c = (char)u;
  u = 5U;
  u = c;                                        // expect: warning misra_c_2004_6_2
  u = 'a';                                      // expect: warning misra_c_2004_6_2
  u = (u8)c;
  s = c;                                        // expect: warning misra_c_2004_6_2
  s = -1;
  u += v;
  u += 'a';                                     // expect: warning misra_c_2004_6_2
  c = text[0] + other[0];
  i = c == 'x';
  i = c == u;                                   // expect: warning misra_c_2004_6_1
  i = u == 'x';                                 // expect: warning misra_c_2004_6_2
  i = c == 10;                                  // expect: warning misra_c_2004_6_1
  i = 10 == c;                                  // expect: warning misra_c_2004_6_1
  i = c - '0';
  i = c + 1;                                    // expect: warning misra_c_2004_6_1
  i = i + 'a';
  i = u < v;
  i = i > 0 ? c : u;                            // expect: warning misra_c_2004_6_1
  take_char('x');
  take_char(u);                                 // expect: warning misra_c_2004_6_1
  take_u8(1U);
  take_u8(give_char());                         // expect: warning misra_c_2004_6_2
}

char give_char(void)
{
  if (i == 1) { return 'x'; }
  return u;                                     // expect: warning misra_c_2004_6_1
}
