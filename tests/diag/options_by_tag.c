// options: -E --diag_error=bad_macro_redef --diag_suppress=14 --diag_warning=nested_comment
// status: 2
// proves: options change severities by tag and by number
#define A 1
#define A 2
#undef A extra
