// options: --entry_hook=enter --entry_parm=name --exit_hook=leave --exit_parm=none
// proves: the hook functions are declared with the parameters that were asked for
void enter(const char *name);
void leave(void);
