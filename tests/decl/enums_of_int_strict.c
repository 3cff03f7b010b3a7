/* options: --strict_warnings */
/* proves: a value that fits unsigned int becomes the int of the same bits, with a warning, where strict rules only warn */
enum high { h0 = 0x80000000, h1 = 0xffffffff };  /* expect: warning enum_value_out_of_int_range, expect: warning enum_value_out_of_int_range */
enum later;      /* expect: warning nonstd_forward_decl_enum */
enum later { l0, };  /* expect: warning nonstd_extra_comma */
int check0[h0 < 0 ? 1 : -1];
int check1[h1 == -1 ? 1 : -1];
int check2[sizeof(enum high) == sizeof(int) ? 1 : -1];
