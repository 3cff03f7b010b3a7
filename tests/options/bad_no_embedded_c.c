// options: --no_embedded_c
// status: 4
// proves: so is its other spelling
int x;
