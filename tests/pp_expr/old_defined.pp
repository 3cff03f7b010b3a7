// options: -K -P
// proves: a macro that expands to defined works in old C, where replacements are scanned as text
good
3 + 1
