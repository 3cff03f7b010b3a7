// options: --diag_once=warning_directive
// proves: given once only
#warning one // expect: warning warning_directive
#warning two
