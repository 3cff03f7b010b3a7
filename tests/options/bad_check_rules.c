// options: --short_enums --no_gcc
// status: 4
// proves: an option that needs a GNU mode
int x;
