// options: --no_brief_diagnostics --wrap_diagnostics --no_display_error_number
// proves: a long message is wrapped
#warning a long text that is wrapped at the end of the line because no option forbids it, and goes on below
