// options: -r
// proves: conflicts in one scope, hiding between scopes, tags beside other names
struct both { int a; };
int both;
enum values { one };
int one;                             // expect: error id_already_declared
typedef int number;
int number;                          // expect: error id_already_declared
int f(int parameter)
{
  int local = parameter;
  {
    int local = 2;                   // expect: remark local_variable_hidden
    parameter = local;
  }
  return local + parameter;
}
int g(int parameter)
{
  int parameter = 1;                 // expect: error id_already_declared
  return parameter;
}
