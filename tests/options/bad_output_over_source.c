// options: --list=bad_output_over_source.c
// status: 4
// proves: no output goes over the source
int x;
