

cplusplus 1 exceptions __EXCEPTIONS
