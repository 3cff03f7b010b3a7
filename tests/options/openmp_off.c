// options: --openmp:device --no_openmp -P
// proves: no OpenMP, no macro
_OPENMP
