// options: --no_brief_diagnostics --display_error_number --no_wrap_diagnostics
// proves: the source line and the caret stand below the message, with its number
#warning a long text that would be wrapped at the end of the line if the option did not forbid it, as it does here
