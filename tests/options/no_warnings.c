// options: -w
// proves: no warnings
#warning one
