// proves: GNU C takes the missing static function from another file
static int elsewhere(int);           // expect: warning undefined_static_function_treated_as_extern
int user(void)
{
  return elsewhere(1);
}
