// options: --check_misra=6
// proves: basic types stand in typedefs only, and bit-fields are of a type that says its sign
typedef int INT32;
typedef unsigned int UINT32;
typedef signed char INT8;
int basic;                        // expect: warning misra_c_2004_6_3
unsigned long int once;           // expect: warning misra_c_2004_6_3
extern double const real;         // expect: warning misra_c_2004_6_3
unsigned short_of_words;          // expect: warning misra_c_2004_6_3
INT32 function(float x);          // expect: warning misra_c_2004_6_3
INT32 size(void) { return (INT32)sizeof(short); } // expect: warning misra_c_2004_6_3
char letter;
void *pointer;
int typedef LATE;
enum color { red };

struct bits {
  unsigned int u : 3;             // expect: warning misra_c_2004_6_3
  signed int s : 3;               // expect: warning misra_c_2004_6_3
  INT32 named : 3;
  UINT32 named_u : 1;
  INT8 narrow : 3;                // expect: warning misra_c_2004_6_4
  enum color e : 3;               // expect: warning misra_c_2004_6_4
  INT32 one : 1;                  // expect: warning misra_c_2004_6_5
  INT32 : 0;
};
struct plain_bits {
#pragma CHECK_MISRA("-6.3")
  int plain : 3;                  // expect: warning misra_c_2004_6_4
  unsigned long wide : 3;         // expect: warning misra_c_2004_6_4
  int first : 2, second : 1;      // expect: warning misra_c_2004_6_4 expect: warning misra_c_2004_6_4 expect: warning misra_c_2004_6_5
};
