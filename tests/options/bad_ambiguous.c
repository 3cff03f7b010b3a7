// options: --no_p
// status: 4
// proves: all candidates of an abbreviation are named
int x;
