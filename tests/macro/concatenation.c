// options: -P
// proves: a result of ## that isn't one token is reported
#define cat(a, b) a ## b
cat(a, b) cat(1, x) cat(+, +) cat(, x)
cat(x, (1))
cat(., ..)
