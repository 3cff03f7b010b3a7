// options: --brief_diagnostics --wrap_diagnostics
// proves: one line a message
#warning short
