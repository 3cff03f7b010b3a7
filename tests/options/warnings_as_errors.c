// options: --emit_warnings_as_errors
// proves: warnings count as errors
#warning one // expect: error warning_directive
