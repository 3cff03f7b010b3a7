// options: --check_misra=17.4,17.6
// proves: indexing of arrays against arithmetic on pointers, and addresses that outlive their objects
typedef unsigned char u8;
struct s { int a, row[3], *p; };
extern int *global, array[4], n;
extern struct s object, *sp;
static int *in_static = array + 1;     // expect: warning misra_c_2004_17_4

void arithmetic(u8 *p1, u8 p2[], char *argv[], int matrix[3][4])
{
  u8 *p3;
  int local[3], square[2][2];
  p1++;                                // expect: warning misra_c_2004_17_4
  p1 = p1 + 5;                         // expect: warning misra_c_2004_17_4
  p1[5] = 0U;                          // expect: warning misra_c_2004_17_4
  p3 = &p1[5];                         // expect: warning misra_c_2004_17_4
  p2[n] = 0U;
  p3 = &p2[5];
  n = p3 - p1;                         // expect: warning misra_c_2004_17_4
  p3 -= 2;                             // expect: warning misra_c_2004_17_4
  n = *p3;
  n = p3 > p1;
  array[0] = 1;
  1[array] = 1;
  global[0] = *in_static;              // expect: warning misra_c_2004_17_4
  local[1] = 1;
  square[0][1] = 1;
  matrix[1][2] = 1;
  argv[1] = 0;
  argv[1][0] = 'a';                    // expect: warning misra_c_2004_17_4
  object.row[1] = sp->row[2];
  object.p[1] = 2;                     // expect: warning misra_c_2004_17_4
  sp[1].a = 3;                         // expect: warning misra_c_2004_17_4
  n = "text"[n];
  n = *(array + 1);                    // expect: warning misra_c_2004_17_4
  global = local;                      // expect: warning misra_c_2004_17_6
  global = array;
}

int *lifetimes(int param, int **out, struct s *o)
{
  int local, *pointer, row[4];
  static int in_file;
  struct s s;
  pointer = &local;
  pointer = &param;
  global = &local;                     // expect: warning misra_c_2004_17_6
  global = &in_file;
  global = row;                        // expect: warning misra_c_2004_17_6
  global = &row[1];                    // expect: warning misra_c_2004_17_6
  global = &param;                     // expect: warning misra_c_2004_17_6
  global = (int *)(void *)&local;      // expect: warning misra_c_2004_17_6
  global = (param != 0) ? &local : &n; // expect: warning misra_c_2004_17_6
  global = &s.a;                       // expect: warning misra_c_2004_17_6
  global = s.row;                      // expect: warning misra_c_2004_17_6
  global = &o->a;
  global = pointer;
  s.p = &local;
  object.p = &local;                   // expect: warning misra_c_2004_17_6
  *out = &local;                       // expect: warning misra_c_2004_17_6
  o->p = &local;                       // expect: warning misra_c_2004_17_6
  {
    int inner, *inner_pointer;
    pointer = &inner;                  // expect: warning misra_c_2004_17_6
    s.p = &inner;                      // expect: warning misra_c_2004_17_6
    inner_pointer = &inner;
    inner_pointer = &local;
    global = inner_pointer;
  }
  if (param == 1) { return &local; }   // expect: warning misra_c_2004_17_6
  if (param == 2) { return row; }      // expect: warning misra_c_2004_17_6
  if (param == 3) { return &in_file; }
  if (param == 4) { return &param; }   // expect: warning misra_c_2004_17_6
  if (param == 5) { return &o->row[1]; }
  return pointer;
}
