#ifndef GUARDED_H
#define GUARDED_H
extern int guarded;
#endif
