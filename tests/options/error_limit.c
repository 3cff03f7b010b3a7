// options: --error_limit=2 --diag_error=1181
// proves: the run ends at the limit
#warning one
#warning two
#warning three
