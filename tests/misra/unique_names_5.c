// options: --gcc --check_misra=5
// proves: a name that means something else as well is reported once, by the first rule that it breaks
typedef int INT32;
typedef unsigned COUNT;
struct point { INT32 px; INT32 py; };
struct vector { INT32 px; };               // expect: warning misra_c_2004_5_7
enum color { red, green };
static INT32 level = 1;
extern INT32 shared;
INT32 shared;
extern INT32 twice(INT32 value);
INT32 twice(INT32 value) { return value + value; }

// 5.2: an inner name hides an outer one
INT32 hide_object(INT32 level) { return level; }   // expect: warning misra_c_2004_5_2
INT32 hide_in_block(void)
{
  INT32 first = 1 + level;
  {
    INT32 first = 2;                       // expect: warning misra_c_2004_5_2
    first++;
  }
  return first;
}
INT32 hide_constant(void) { INT32 red = 1; return red; } // expect: warning misra_c_2004_5_2
void hide_tag(void) { struct point { INT32 only; } here; here.only = 1; here.only++; } // expect: warning misra_c_2004_5_2
void hide_typedef(void) { INT32 COUNT = 1; COUNT++; } // expect: warning misra_c_2004_5_2
INT32 same_object(void) { extern INT32 shared; return shared; }

// 5.3: a typedef name stands for nothing else
struct COUNT { INT32 tagged; };            // expect: warning misra_c_2004_5_3
struct holder { INT32 INT32; };            // expect: warning misra_c_2004_5_3
void local_type(void) { typedef INT32 LOCAL; LOCAL a1 = 1; a1++; }
void local_type_again(void) { typedef INT32 LOCAL; LOCAL a2 = 1; a2++; } // expect: warning misra_c_2004_5_3
typedef struct node { INT32 depth; } node; // expect: warning misra_c_2004_5_3

// 5.4: nor a tag
INT32 vector;                              // expect: warning misra_c_2004_5_4
struct keeper { INT32 color; };            // expect: warning misra_c_2004_5_4
void local_tag(void) { struct inner { INT32 b1; } i1; i1.b1 = 1; i1.b1++; }
void local_tag_again(void) { struct inner { INT32 b2; } i2; i2.b2 = 1; i2.b2++; } // expect: warning misra_c_2004_5_4

// 5.6: labels and other names
void label(void) { goto level; level: return; } // expect: warning misra_c_2004_5_6

// 5.7: names are used once
INT32 user(INT32 argument) { return argument; }
INT32 other_user(INT32 argument) { return argument; } // expect: warning misra_c_2004_5_7
INT32 px;                                 // expect: warning misra_c_2004_5_7
void out(void) { goto done; done: return; }
void out_again(void) { goto done; done: return; } // expect: warning misra_c_2004_5_7

// One entity in several declarations
void block_one(void) { extern INT32 behind; behind = 1; }
void block_two(void) { extern INT32 behind; behind = 2; }
INT32 behind;

struct tree;
struct tree { struct tree *left; };
