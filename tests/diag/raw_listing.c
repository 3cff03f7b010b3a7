// options: --list=case.lst
// status: 2
// proves: the raw listing has a record for every line and every part of a message
int a;;
int f(int x)
{
  return y;
}
#define A 1
#define A 2
