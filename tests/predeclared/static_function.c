// proves: a static function with the name of a predeclared one is a function of its own
static float abs(float x) { return x; }
long labs(long);
double fabs(double x) { return x; }
float user(void)
{
  return abs(1.5f);
}
