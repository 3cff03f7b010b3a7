// out_of_memory.cpp - the end of a tool that gets no memory.
#include "DIAG/out_of_memory.h"
#include <cstdio>
#include <cstdlib>

void tool_out_of_memory()
{
  fputs("OUT OF MEMORY - APPLICATION ABORTED\n", stderr);
  exit(1);
}
