#ifdef __cplusplus
extern "C" {
#endif
#if !defined(INNER_GUARD_H)
#define INNER_GUARD_H
extern int guarded_inside;
#endif
#ifdef __cplusplus
}
#endif
