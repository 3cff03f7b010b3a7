/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
places.c (from line number 1, sequence numbers 1-19)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
#pragma RETAIN(unused)
static int unused(void) __attribute__((__used__));


#pragma LOCATION(start, 256)
void start(void);



#pragma WEAK(maybe_not)
extern int maybe_not(void) __attribute__((__weak__));


int use(void);
#pragma LOCATION(port, 4100)
int port;

#pragma NOINIT(quiet)
int quiet;


#pragma PERSISTENT(saved)
extern int saved;




#pragma RETAIN(kept)
static int kept __attribute__((__used__));

#pragma CLINK(linked)
static int linked;
#pragma WEAK(maybe)
extern int maybe __attribute__((__weak__));



#pragma LOCATION(port2, 8192)
int port2;
#pragma NOINIT(quiet2)
int quiet2;
#pragma PERSISTENT(saved2)
extern int saved2;
int saved = 3;
int saved2 = 4;
static  __attribute__((__used__)) int unused(void) { return linked; }

void start(void) { }




int use(void) { return (((&maybe) != ((int *)0)) && (maybe_not != ((int (*)(
void))0))) ? (maybe + (maybe_not())) : (0); }
