// status: 4
// proves: declarators nested four million deep end in a message
#define A1 (* (* (* (* (* (* (* (* (* (*
#define A2 A1 A1 A1 A1 A1 A1 A1 A1 A1 A1
#define A3 A2 A2 A2 A2 A2 A2 A2 A2 A2 A2
#define A4 A3 A3 A3 A3 A3 A3 A3 A3 A3 A3
#define A5 A4 A4 A4 A4 A4 A4 A4 A4 A4 A4
#define A6 A5 A5 A5 A5 A5 A5 A5 A5 A5 A5
int A6 A6 A6 A6 x // expect: catastrophe program_too_large
