// options: -n
// proves: without the power advice its pragmas say nothing
#pragma CHECK_ULP(all)
#pragma RESET_ULP
int a;
