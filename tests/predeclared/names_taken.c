// proves: any declaration may take the name of a predeclared function that nothing used
int memcpy;
struct abs { int fabs; } labs;
enum { fabsf };
typedef int _add2;
int f(_add2 abs)
{
  return abs + labs.fabs + fabsf + memcpy;
}
