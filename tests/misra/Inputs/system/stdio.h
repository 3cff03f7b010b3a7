extern int printf(const char *, ...);
#define errno (*location_of_errno())
