

cplusplus 1 bool _BOOL wchar 1
