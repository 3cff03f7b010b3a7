#ifndef DECLARED_H
#define DECLARED_H
extern int in_header;
extern int in_two_headers;
extern int function_in_header(int a);
extern int function_in_source(int a);
#endif
