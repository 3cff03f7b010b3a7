// options: --gcc --check_misra=14,-14.2,-14.8-9,-14.3
// proves: unreachable code, jumps, breaks of loops and exits of functions
extern void exit(int status);
extern int next(void);
#define FOREVER 1

void unreachable(int a)
{
  if (0) { a = 1; }                 // expect: warning misra_c_2004_14_1
  if (0) { label: a = 2; }
  if (FOREVER) { a = 1; } else { a = 2; } // expect: warning misra_c_2004_14_1
  while (0) { a = 3; }              // expect: warning misra_c_2004_14_1
  do { a = 4; } while (0);
  if (a == 2) { goto label; }       // expect: warning misra_c_2004_14_4
  if (a == 3) { exit(1); a = 5; }   // expect: warning misra_c_2004_14_1
  while (FOREVER) { next(); }
  a = 6;                            // expect: warning misra_c_2004_14_1
}

int behind_return(int a)            // expect: warning misra_c_2004_14_7
{
  return a;
  while (next()) { a--; }           // expect: warning misra_c_2004_14_1
}

int loops(int n)
{
  int i;
  for (i = 0; i < n; i++) {
    if (next()) { continue; }       // expect: warning misra_c_2004_14_5
    if (next() == 2) { break; }
  }
  while (n > 0) {                   // expect: warning misra_c_2004_14_6
    n--;
    if (next()) { break; }
    if (next() == 2) { break; }
  }
  do {
    switch (next()) {
    case 1: break;
    case 2: break;
    default: break;
    }
    while (next()) { break; }
    if (n == 1) { break; }
  } while (next());
  if (n == 2)
    for (;;)                        // expect: warning misra_c_2004_14_6
      if (next()) break;
      else if (next() == 2) break;  // expect: warning misra_c_2004_14_10
  return i;
}

int one_exit(int a) { a++; return a; }
void no_return(int a) { a++; }
int two_exits(int a)
{
  if (a == 1) { return 1; }
  return 2;                         // expect: warning misra_c_2004_14_7
}
void early_exit(int a)              // expect: warning misra_c_2004_14_7
{
  if (a == 1) { return; }
  a++;
}
int in_last_block(int a) { { a++; return a; } }
void endless(void) { for (;;) { next(); } }

int chains(int a)
{
  if (a == 1) { a = 2; }
  if (a == 1) { a = 2; } else { a = 3; }
  if (a == 1) { a = 2; } else if (a == 3) { a = 4; } // expect: warning misra_c_2004_14_10
  if (a == 1) { a = 2; } else if (a == 3) { a = 4; } else { a = 5; }
  if (a == 1) {
    a = 2;
  } else if (a == 3) {
    if (a == 5) { a = 1; }
  } else if (a == 4) {              // expect: warning misra_c_2004_14_10
    a = 3;
  }
  a = ({ if (a == 1) { a = 2; } else if (a == 3) { a = 4; } a; }); // expect: warning misra_c_2004_14_10
  return a;
}
