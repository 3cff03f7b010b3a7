// options: -b -P
// proves: cfront 2.1 knows no bool
cplusplus __cplusplus bool _BOOL wchar _WCHAR_T
