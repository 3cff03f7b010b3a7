// options: --check_misra=8,-8.7
// proves: the rules on declarations of functions and objects
// 8.1: prototypes at the definition
extern int known(int a);
int known(int a) { return a; }
int unknown(int a) { return a; }       // expect: warning misra_c_2004_8_1
static int internal(int a) { return a; } // expect: warning misra_c_2004_8_1
static int announced(int a);
static int announced(int a) { return a; }
extern int no_prototype();
int no_prototype(int a) { return a; }  // expect: warning misra_c_2004_8_1
int main(void)
{
  int result = known(1) + internal(2) + announced(3);
  result += implicit(result);          // expect: warning misra_c_2004_8_1_n
  return result;
}
extern int without();
extern int (*pointer)();
int caller(void);
int caller(void) { return without(1) + pointer(2); } // expect: warning misra_c_2004_8_1_n

// 8.2: the type is written
static no_type = 1;                    // expect: warning misra_c_2004_8_2
extern function_type(int a);           // expect: warning misra_c_2004_8_2
extern int old_style(int, int);
int old_style(a, b)                    // expect: warning misra_c_2004_8_2
  int a;
{
  return a + b + no_type;
}

// 8.6: functions are declared at file scope
int in_block(void);
int in_block(void)
{
  extern int later(int a);             // expect: warning misra_c_2004_8_6
  return later(1);
}

// 8.11: static is repeated
static int hidden;
extern int hidden;                     // expect: warning misra_c_2004_8_11
static int helper(int a);
int helper(int a) { return hidden + a; } // expect: warning misra_c_2004_8_11
int uses_hidden(void);
int uses_hidden(void)
{
  extern int hidden;                   // expect: warning misra_c_2004_8_11
  return hidden + helper(1);
}
static int repeated;
static int repeated = 1;
int uses_repeated(void);
int uses_repeated(void) { return repeated; }

// 8.12: external arrays say their size
extern int unsized[];                  // expect: warning misra_c_2004_8_12
extern int sized[2];
int completed[] = {1, 2};
static int internal_array[2];
int uses_array(void);
int uses_array(void) { return internal_array[1]; }
