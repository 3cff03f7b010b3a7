// options: --no_anachronisms
// status: 4
// proves: an option for C++ only is refused in C though it repeats the default
int x;
