// options: -n
// proves: a block's extern declaration takes no initializer, whatever the file says of the object
int tentative;
static int internal = 1;  // expect: warning set_but_not_used
extern int declared;
int defined = 1;
void f(void)
{
  extern int nowhere = 1;  // expect: error cannot_initialize
  extern int tentative = 2;  // expect: error cannot_initialize
  extern int internal = 3;  // expect: error cannot_initialize
  extern int declared = 4;  // expect: error cannot_initialize
  extern int defined = 5;  // expect: error cannot_initialize
  extern int list[] = {6, 7};  // expect: error cannot_initialize
  static int own = 8;
  int local = own;
  list[0] = local + nowhere + tentative + internal + declared + defined;
}
extern int with_value = 9;
