int before2;
#include "deep3.h"
int after2 = __LINE__;
