// options: --error_limit=12a
// status: 4
// proves: digits only
int x;
