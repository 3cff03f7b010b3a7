// options: -n
// proves: registers of another family are given by strings and numbers
#pragma VCC_VREG(vreg, 3)            // expect: error bad_pragma_format
#pragma VCC_VREG("vreg")             // expect: error exp_comma
#pragma VCC_VREG                     // expect: error exp_lparen
#pragma Cedar_REG("name", 3)         // expect: error bad_pragma_format
#pragma Cedar_REG("name", "r", 4)    // expect: error exp_rparen
int a;
