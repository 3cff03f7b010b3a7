// options: -E -U1+
// status: 4
// proves: what can't be a name is refused
