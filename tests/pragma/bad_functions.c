// options: -n
// proves: properties of functions on what is none, or isn't defined; interrupts that take or give a value
int x, f(int n); int defined(void) { return x; } void handler(void) { } typedef int type;
#pragma FUNC_NEVER_RETURNS(x)              // expect: warning pragma_requires_func
#pragma FUNC_IS_PURE(type)                 // expect: warning pragma_requires_func
#pragma HOOK_FUNCTION(x)                   // expect: warning pragma_requires_func
#pragma FUNC_EXT_CALLED(f)                 // expect: warning pragma_requires_func_def
#pragma NO_HOOKS(x)                        // expect: warning pragma_requires_func_def
#pragma FUNC_EXCEPTIONS_NOUNWIND(nowhere)  // expect: warning pragma_bad_symbol
#pragma FUNC_INTERRUPT_THRESHOLD(x, 1)     // expect: warning pragma_requires_func
#pragma FUNC_INTERRUPT_THRESHOLD(f)        // expect: error exp_comma
#pragma FUNC_INTERRUPT_THRESHOLD(f, 1, 2)  // expect: error exp_rparen
#pragma FUNCTION_OPTIONS(x, "-o")          // expect: warning pragma_requires_func_def
#pragma FUNCTION_OPTIONS(f, o)             // expect: error bad_pragma_format
#pragma INTERRUPT(x)                       // expect: warning pragma_interrupt_requires_void
#pragma NMI_INTERRUPT(defined)             // expect: error pragma_interrupt_requires_void
void takes(int n);
#pragma INTERRUPT(takes)                   // expect: error pragma_interrupt_has_params
#pragma INTERRUPT(handler, 5)              // expect: error bad_pragma_format
#pragma NEAR(type)                         // expect: error pragma_symbol_invalid
#pragma FAR(nowhere)                       // expect: warning pragma_bad_symbol
#pragma FUNC_IS_SYSTEM handler             // expect: error exp_lparen
// expect-1: warning pragma_processing_error
#pragma FUNC_IS_SYSTEM(handler             // expect: error exp_rparen
#pragma FUNC_IS_SYSTEM(handler) again      // expect: error extra_text_in_pp_directive
#pragma FUNC_IS_SYSTEM()                   // expect: warning pragma_processing_error
#pragma FUNC_IS_SYSTEM(int)                // expect: warning pragma_processing_error
