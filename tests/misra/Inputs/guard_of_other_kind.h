#ifdef __cplusplus
extern "C" {
#endif
extern int other_kind;
