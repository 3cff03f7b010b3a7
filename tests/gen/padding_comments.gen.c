/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
padding_comments.c (from line number 1, sequence numbers 1-11)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();


struct tail;
struct bits;
struct tight;

struct two;

struct none;
union u;
struct tail { double d;/*  offset = 0 bytes, type alignment = 8*/ char c;
/*  offset = 8 bytes, type alignment = 1*/char __dummy[7];};
struct bits { signed short a: 3;/*  offset = 0 bytes, type alignment = 4*/ 
unsigned short b: 7;/*  offset = 0 bytes, 3 bits, type alignment = 4*/ char c;
/*  offset = 2 bytes, type alignment = 1*/char __dummy;};
struct tight { char c __attribute__((__packed__));
/*  offset = 0 bytes, type alignment = 1*/ int i __attribute__((__packed__));
/*  offset = 1 byte, type alignment = 4*/} __attribute__((__packed__));
#pragma pack(2)
struct two { char c;/*  offset = 0 bytes, type alignment = 1*/ int i;
/*  offset = 2 bytes, type alignment = 4*/};
#pragma pack()
struct none {};
union u { char c[5];/*  offset = 0 bytes, type alignment = 1*/ short s;
/*  offset = 0 bytes, type alignment = 2*/};
struct tail t; struct bits b; struct tight g; struct two w; struct none n; 
union u v;
