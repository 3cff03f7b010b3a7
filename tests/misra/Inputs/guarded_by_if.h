/* A header. */
#if !defined(GUARDED_BY_IF_H)
#define GUARDED_BY_IF_H
extern int guarded_by_if;
#endif
