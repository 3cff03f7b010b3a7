// options: -E --no_brief_diagnostics --no_wrap_diagnostics
// proves: the option keeps a message on one line and leaves the source line alone
#warning this warning has a text that is long enough to go over the end of the line, twice even, if one adds words
