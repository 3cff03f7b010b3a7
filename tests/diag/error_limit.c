// options: -E --error_limit=2
// status: 4
// proves: the run stops when the limit is reached
#if +
#endif
#if +
#endif
#if +
#endif
