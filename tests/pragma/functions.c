// proves: what pragmas say of functions is carried to the generated file, and so is what keywords say
int f(int n) { return n; }
#pragma FUNC_NEVER_RETURNS(f)
#pragma FUNC_CANNOT_INLINE(f)
#pragma FUNC_ALWAYS_INLINE(f)
#pragma FUNC_NO_GLOBAL_ASG(f)
#pragma FUNC_NO_IND_ASG(f)
#pragma FUNC_IS_PURE(f)
#pragma FUNC_IS_SYSTEM(f)
#pragma FUNC_EXCEPTIONS_NOUNWIND(f)
#pragma NO_HOOKS(f)
#pragma FUNCTION_OPTIONS(f, "--opt_level=3")
#pragma FUNC_INTERRUPT_THRESHOLD(f, 2 - 3)
static void called_outside(void) { }
#pragma FUNC_EXT_CALLED(called_outside)
static void hook(void) { }
#pragma HOOK_FUNCTION(hook)
static void tick(void) { }
#pragma INTERRUPT(tick)
void kinds(void) { }
#pragma INTERRUPT(kinds, fiq);
void urgent() { }
#pragma NMI_INTERRUPT(urgent)
int here; int there(void);
#pragma NEAR(here)
#pragma FAR(there)
static interrupt void by_keyword(void) { here = there(); }
__near int near_word; __far int far_word;
extern __near int near_word;
int fortran(void);
#pragma FUNC_IS_PURE(fortran)
int call(void) { return fortran(); }
