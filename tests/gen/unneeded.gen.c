/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
unneeded.c (from line number 1, sequence numbers 1-9)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
#if 0
struct never;
#endif
#if 0
enum unused_e { X, Y};
#endif
#if 0
struct never { int a;/*  offset = 0 bytes, type alignment = 4*/};
#endif
#if 0
typedef struct never never_t;
#endif
#if 0
static int unused(struct never *);
#endif
#if 0
extern int ext(struct never *);
#endif
int main(void);
#if 0
static int sv;
#endif
#if 0
static int sv = 3;
#endif
#if 0
static int unused(struct never *__6_28_p) { return __6_28_p->a; }
#endif
int main(void) { return 0; }
