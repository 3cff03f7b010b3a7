// options: -E --no_brief_diagnostics
// proves: a line that has been left behind is read again: an open conditional is shown where it began
#if 1
first
#if 2
second
