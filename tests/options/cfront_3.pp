

cplusplus 1
