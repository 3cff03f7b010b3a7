// options: --diag_error=1181 --diag_warning=1181
// proves: the later request holds
#warning one // expect: warning warning_directive
