// options: -r
// proves: the end of a scope names what was never used, and what was only set
static int never_used;               // expect: warning declared_but_not_referenced
static int used_by_attribute __attribute__((used));
static int unused_by_attribute __attribute__((unused));
int external_objects_may_be_used_elsewhere;
extern int take(int);

int function(int parameter)          // expect: remark unreferenced_function_param
{
  int nothing;                       // expect: warning declared_but_not_referenced
  int only_set;                      // expect: warning set_but_not_used
  volatile int device;
  int read_in_sizeof;
  int array[2];
  only_set = 1;
  device = 2;
  array[0] = 3;
  {
    int inner = take(0);             // expect: remark declared_but_not_referenced
  }
  return sizeof read_in_sizeof;
}
