// options: --c99 --strict
// proves: a static function that is called needs a definition; one that is not called is unused
static int called_but_missing(int);  // expect: error never_defined
static int neither(void);            // expect: warning declared_but_not_referenced
static int defined_but_unused(void)  // expect: warning declared_but_not_referenced
{
  return 1;
}
static int forward(void);
int user(void)
{
  return called_but_missing(forward());
}
static int forward(void)
{
  return 2;
}
