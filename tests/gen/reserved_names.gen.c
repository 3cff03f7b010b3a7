/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
reserved_names.c (from line number 1, sequence numbers 1-5)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();


struct s; struct s { int __xfortran;/*  offset = 0 bytes, type alignment = 4*/ 
int __xpascal;/*  offset = 4 bytes, type alignment = 4*/};

int use(struct s *);
static int __xpascal; static int regular;
int use(struct s *__5_19_p) { return (((__5_19_p->__xfortran) + (__5_19_p->__xpascal
)) + __xpascal) + regular; }
