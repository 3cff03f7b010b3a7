// options: --no_token_separators_in_pp_output -P
// proves: tokens that touch after expansion aren't kept apart when that is asked for
#define neg(x) -x
neg(-1)
