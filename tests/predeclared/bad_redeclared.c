// proves: a function that differs from the predeclared one is believed, with a warning
float abs(float x) // expect: warning not_compatible_with_builtin
{
  return x;
}
int memcpy(void); // expect: warning not_compatible_with_builtin
