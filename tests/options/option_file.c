// options: -@ Inputs/options.txt -Dlast -P
// proves: words of an option file are options, with its comments, quotes and escapes
first quoted hash slash not_this last
