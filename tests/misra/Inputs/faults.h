#ifndef FAULTS_H
#define FAULTS_H
// a comment /* in a comment
#define OCTAL 010
#define BARE -1
#undef OCTAL
#include "once.h"
#endif
