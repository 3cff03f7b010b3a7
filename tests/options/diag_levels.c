// options: --diag_error=warning_directive,1181
// proves: a message can be named by tag or by number
#warning one // expect: error warning_directive
