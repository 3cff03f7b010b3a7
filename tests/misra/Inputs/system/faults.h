#ifndef SYSTEM_FAULTS_H
#define SYSTEM_FAULTS_H
// a comment /* in a comment
#define OCTAL 010
#define BARE -1
#undef OCTAL
#include "stdio.h"
#endif
