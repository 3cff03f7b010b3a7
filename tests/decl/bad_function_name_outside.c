// options: -n --c99 --no_gcc
const char *d = __func__;  // expect: error id_can_only_appear_in_function
