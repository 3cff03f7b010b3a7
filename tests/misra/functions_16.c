// options: --check_misra=16,-16.7,-16.9
// proves: parameter lists and results of functions
typedef int FUNCTION(int);
extern int declared(const char *format, ...);
int variable(int count, ...) { return count; } // expect: warning misra_c_2004_16_1
extern int unnamed(int, char c);       // expect: warning misra_c_2004_16_3
extern int second_unnamed(int a, char);  // expect: warning misra_c_2004_16_3
extern int none_named(int, char);      // expect: warning misra_c_2004_16_3
extern int no_parameters(void);
extern int (*pointer)(int);
extern FUNCTION of_typedef;
extern int renamed(int a, int b);
int renamed(int a, int c) { return a + c; } // expect: warning misra_c_2004_16_4
extern int kept(int a, int b);
int kept(int a, int b) { return a + b; }
extern int empty();                    // expect: warning misra_c_2004_16_5
extern int (*empty_pointer)();         // expect: warning misra_c_2004_16_5
int end_reached(int a)
{
  if (a == 1) { return 1; }
}                                      // expect: warning misra_c_2004_16_8
int plain_return(int a)
{
  if (a == 1) { return; }              // expect: warning misra_c_2004_16_8
  return a;
}
void no_result(int a) { a++; return; }
int endless(void) { for (;;) { declared("x"); } }
int main(void) { declared("y"); }      // expect: warning misra_c_2004_16_8
