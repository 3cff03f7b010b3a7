/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
alignment.c (from line number 1, sequence numbers 1-18)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
struct pair;

union either;

struct __T1;
#pragma STRUCT_ALIGN(pair, 8)
struct pair { char a;/*  offset = 0 bytes, type alignment = 1*/ short b;
/*  offset = 2 bytes, type alignment = 2*/};


#pragma STRUCT_ALIGN(either, 16)
union either { int i;/*  offset = 0 bytes, type alignment = 4*/ char c;
/*  offset = 0 bytes, type alignment = 1*/};


#pragma STRUCT_ALIGN(named, 16)
struct __T1 { char c;/*  offset = 0 bytes, type alignment = 1*/}; typedef 
struct __T1 named;
#pragma DATA_ALIGN(buffer, 64)
char buffer[10] __attribute__((__aligned__(64)));


#pragma DATA_ALIGN(wide, 2)
double wide;

#pragma DATA_MEM_BANK(word, 3)
int word;
#pragma DATA_MEM_BANK(half, 4)
short half;
struct pair p; union either e; named n;
extern int sizes[2]; int sizes[2] = {4,1};
