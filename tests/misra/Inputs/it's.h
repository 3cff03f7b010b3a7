#ifndef ITS_H
#define ITS_H
#endif
