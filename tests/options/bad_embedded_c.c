// options: --embedded_c
// status: 4
// proves: a row that isn't offered is an invalid option
int x;
