#ifndef DECLARED_AGAIN_H
#define DECLARED_AGAIN_H
extern int in_two_headers;
int object_of_header;
static int function_of_header(int a)
{
  return a;
}
extern int defined_before;
#endif
