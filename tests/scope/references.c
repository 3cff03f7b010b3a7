// proves: one line a reference: mark, name, kind, file, line, column
int defined;
extern int declared;
int function(int parameter)
{
  int local = parameter;
  local += declared;
  defined = local;
  int *pointer = &local;
  return *pointer + missing;         // expect: error undefined_identifier
}
