// options: --strict --gcc
// status: 4
// proves: strict mode excludes the GNU mode
int x;
