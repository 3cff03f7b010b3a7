// options: -E --no_brief_diagnostics --display_error_number
// proves: source line, caret, blank line; numbers, and -D on what a pragma can change
#define A(x) x
#define A(y) y y
#if 1 +
#endif
	#undef	A	tabs stay tabs
