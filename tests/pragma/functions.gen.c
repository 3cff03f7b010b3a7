/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
functions.c (from line number 1, sequence numbers 1-32)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();


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
#pragma FUNC_INTERRUPT_THRESHOLD(f, -1)
int f(int);
#pragma FUNC_EXT_CALLED(called_outside)
static void called_outside(void) __attribute__((__used__));


#pragma HOOK_FUNCTION(hook)
static void hook(void) __attribute__((__used__));


#pragma INTERRUPT(tick)
static void tick(void) __attribute__((__used__));


#pragma INTERRUPT(kinds, fiq)
void kinds(void);


#pragma NMI_INTERRUPT(urgent)
void urgent();



#pragma FAR(there)
int there(void);


#pragma INTERRUPT(by_keyword)
static void by_keyword(void) __attribute__((__used__));



#pragma FUNC_IS_PURE(fortran)
int fortran(void);

int call(void);
#pragma NEAR(here)
int here;



#pragma NEAR(near_word)
int near_word;
#pragma FAR(far_word)
int far_word;
int f(int __2_11_n) { return __2_11_n; }
static  __attribute__((__used__)) void called_outside(void) { }

static  __attribute__((__used__)) void hook(void) { }

static  __attribute__((__used__)) void tick(void) { }

void kinds(void) { }

void urgent() { }




static  __attribute__((__used__)) void by_keyword(void) { here = (there()); }




int call(void) { return fortran(); }
