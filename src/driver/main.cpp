// main.cpp - the process entry; all of the pipeline is in cfe.cpp.
#include "driver/cfe.h"

int main(int argc, char **argv)
{
  return cfe_main(argc, argv);
}
