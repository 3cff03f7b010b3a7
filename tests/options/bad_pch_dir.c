// options: --pch_dir=no_such_dir
// status: 4
// proves: a directory that isn't there
int x;
