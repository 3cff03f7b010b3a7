// proves: registers of another family and notes for the power advice go through to the generated file
#define NUMBER 3
#pragma VCC_VREG("vreg", NUMBER)
#pragma Cedar_REG("name", "register")
#pragma LPM_INFO(any (thing), NUMBER)
#pragma PORTS_INIT_INFO
void f(void)
{
#pragma HW_MPY32 "f5"
}
