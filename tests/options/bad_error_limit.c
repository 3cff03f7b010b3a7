// options: -e0
// status: 4
// proves: the limit is above 0
int x;
