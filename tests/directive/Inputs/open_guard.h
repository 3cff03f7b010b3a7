#ifndef OPEN_H
#define OPEN_H
first time
#endif
every time
