// options: -P --no_token_separators_in_pp_output
// proves: the option leaves such tokens side by side
#define neg(x) -x
neg(-1) neg(x)
