// options: -n
// proves: places for what has none; addresses that no pointer reaches
extern int ex; int x, f(void); typedef int type; void defined(void) { }
#pragma LOCATION(ex, 5)                 // expect: warning pragma_requires_level_zero_def
#pragma LOCATION(f, 5)                  // expect: warning pragma_requires_level_zero_def
#pragma LOCATION(x, 0x100000000)        // expect: warning pragma_location_value_too_large
#pragma LOCATION(x, -1)                 // expect: warning pragma_location_value_too_large
#pragma LOCATION(x)                     // expect: error exp_comma
#pragma NOINIT(defined)                 // expect: warning pragma_cannot_apply_to_func
#pragma PERSISTENT(f)                   // expect: warning pragma_cannot_apply_to_func
#pragma NOINIT(ex)                      // expect: warning requires_level_zero_def
#pragma PERSISTENT(x, 1)                // expect: error exp_rparen
#pragma RETAIN(f)                       // expect: warning pragma_requires_func_or_obj_def
#pragma CLINK(type)                     // expect: warning pragma_requires_func_or_obj_def
#pragma WEAK(type)                      // expect: warning pragma_requires_level_zero
#pragma WEAK(nowhere)                   // expect: warning pragma_bad_symbol
int far_off __attribute__((location(0x100000000))); // expect: warning pragma_location_value_too_large
void g(void)
{
  static int local __attribute__((noinit)); // expect: warning requires_level_zero_def
  int automatic = local;
#pragma RETAIN(automatic)               // expect: warning pragma_requires_level_zero_def
#pragma WEAK(local)                     // expect: warning pragma_requires_level_zero
#pragma NOINIT(local)                   // expect: warning requires_level_zero_def
  local = automatic;
}
