// options: --help
// proves: the usage, with status 0, whatever follows
