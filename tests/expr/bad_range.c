// options: --remarks
// proves: constant subscripts and pointer offsets are compared with the array's size
char a[5]; int m[2][3]; struct S { int n; int v[4]; int last[2]; } s; extern char unknown[]; int one[1]; char *p; int i; const char *str = "abc" + 5;  // expect: warning pointer_outside_base_object
void t(int n)
{
  char local[4]; int vla[n];
  p = a + 5;
  p = a + 6;  // expect: warning pointer_outside_base_object
  p = a - 1;  // expect: warning pointer_outside_base_object
  p = 5 + a;
  p = &a[5];
  p = &a[6];  // expect: warning subscript_out_of_range
  p = &a[-1];  // expect: warning subscript_out_of_range
  *(a + 5) = 1;  // expect: warning pointer_outside_base_object
  *(a + 4) = 1;
  a[4] = 1;
  a[5] = 1;  // expect: warning subscript_out_of_range
  a[-1] = 1;  // expect: warning subscript_out_of_range
  i = a[5];  // expect: warning subscript_out_of_range
  i = *(p + 100);
  i = m[1][3];  // expect: warning subscript_out_of_range
  i = m[2][0];
  i = s.v[4];  // expect: warning subscript_out_of_range
  i = s.last[5];  // expect: warning subscript_out_of_range
  unknown[100] = 1;
  one[3] = 1;
  local[4] = 1;  // expect: warning subscript_out_of_range
  vla[100] = 1;
  i = "abc"[4];  // expect: warning subscript_out_of_range
  i = "abc"[3];
  i = "abc"[5];  // expect: warning subscript_out_of_range
  i = sizeof a[10];
  i = 0 ? a[10] : 1;
  i = (a + 6)[-1];  // expect: warning pointer_outside_base_object expect: warning subscript_out_of_range
  i = *(&a[2] + 7);  // expect: warning pointer_outside_base_object
  i = 6[a];  // expect: warning subscript_out_of_range
  a[5]++;  // expect: warning subscript_out_of_range
  a[5] += 1;  // expect: warning subscript_out_of_range
  p = a + 2 + 4;  // expect: warning pointer_outside_base_object
  p = (a + 5) + 1;  // expect: warning pointer_outside_base_object
  if (0) a[7] = 1;  // expect: warning subscript_out_of_range
}
int *g1 = m[0] + 4; char *g2 = &a[6]; char *g3 = a - 1; int *g4 = &one[2]; char *g5 = a + 5; int g6 = &a[5] - &a[0]; char *g7 = &a[5] + 1;  // expect: warning subscript_out_of_range expect: warning pointer_outside_base_object expect: warning pointer_outside_base_object
