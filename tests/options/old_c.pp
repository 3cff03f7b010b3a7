// options: -K -P
// proves: K&R preprocessing expands macros in strings and joins over comments
"one" twothree
