// options: --nonsense
// status: 4
// proves: an unknown option ends the run
int x;
