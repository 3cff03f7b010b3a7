// proves: attributes at the head of an abstract parameter list; bounds of parameters are not the function's
int bound(void);
void (**through_pointers)(int[][bound()]);
void of_type(int (__attribute__((__mode__(__SI__))) int inner));
void of_name(int (__attribute__((unused)) inner));
void call(void)
{
  int a[10][bound()];
  (**through_pointers)(a);
  of_type((int (*)(int))0);
}
