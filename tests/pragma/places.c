// proves: addresses, initialization and retention of objects; attributes of the same names say it alike
int port, quiet, saved = 3;
#pragma LOCATION(port, 0x1000 + 4)
#pragma NOINIT(quiet)
#pragma PERSISTENT(saved)
static int kept, linked;
#pragma RETAIN(kept)
#pragma CLINK(linked)
static int unused(void) { return linked; }
#pragma RETAIN(unused)
void start(void) { }
#pragma LOCATION(start, 256)
extern int maybe, maybe_not(void);
#pragma WEAK(maybe)
#pragma WEAK(maybe_not)
int use(void) { return &maybe != 0 && maybe_not != 0 ? maybe + maybe_not() : 0; }
int port2 __attribute__((location(0x2000)));
int quiet2 __attribute__((noinit));
int saved2 __attribute__((persistent)) = 4;
