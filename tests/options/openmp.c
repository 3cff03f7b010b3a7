// options: --openmp --openmp:host --vectypes -P
// proves: OpenMP is told by its macro
_OPENMP
