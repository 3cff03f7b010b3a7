// options: -E
// status: 4
// proves: the expression of a directive nested a million deep ends in a message
#define A1 ( ( ( ( ( ( ( ( ( (
#define A2 A1 A1 A1 A1 A1 A1 A1 A1 A1 A1
#define A3 A2 A2 A2 A2 A2 A2 A2 A2 A2 A2
#define A4 A3 A3 A3 A3 A3 A3 A3 A3 A3 A3
#define A5 A4 A4 A4 A4 A4 A4 A4 A4 A4 A4
#define A6 A5 A5 A5 A5 A5 A5 A5 A5 A5 A5
#if A6 1 // expect: catastrophe program_too_large
#endif
