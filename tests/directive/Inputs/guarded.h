/* comment */
#if !defined(GUARDED_H)
#define GUARDED_H
guarded
#endif
// comment
