// options: -E --emit_warnings_as_errors --display_error_number
// status: 2
// proves: a warning is printed and counted as an error, without the mark of what can be changed
#define A 1
#define A 2
