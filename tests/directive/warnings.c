// options: -E
// proves: #warn and #warning show their lines
#warn first
#warning second   line
#if 0
#warning not shown
#endif
