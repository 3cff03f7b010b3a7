// options: --c99
// proves: a loop's pragmas stand in front of the loop in the generated file, wherever lowering puts it
#define EIGHT 8
int f(int n)
{
  int sum = 0;
#pragma MUST_ITERATE(EIGHT, , 2)
#pragma UNROLL(EIGHT / 2)
  for (int i = 0; i < n; i++) sum += i;
#pragma PROB_ITERATE(1, 100);
  while (sum > 100) sum--;
#pragma LOOP_NO_ALIAS
  do sum++; while (sum < 10);
  if (n)
#pragma NO_ALIAS_CLONE()
    for (; n; n--) continue;
  else
#pragma UNROLL 2
    while (sum++ < 3) ;
again:
#pragma UNROLL(3)
  for (int k = ({ int z = n; z; }); k < 3; k++)
#pragma MUST_ITERATE(,,4)
    while (({ int z = --sum; z > 4; }))
#pragma PROB_ITERATE(,5)
      do n++; while (({ int z = n; z < 4; }));
  if (sum < 0) goto again;
  return sum;
}
