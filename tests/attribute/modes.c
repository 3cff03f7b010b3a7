// options: -n --long_precision_bits=32
// proves: mode words name types by size
typedef int qi __attribute__((mode(QI)));
typedef unsigned hi __attribute__((__mode__(__HI__)));
typedef int si __attribute__((mode(SI)));
typedef unsigned int di __attribute__((mode(DI)));
typedef float df __attribute__((mode(DF)));
typedef int word __attribute__((mode(__word__)));
typedef char check_1[sizeof(qi) == 1 && (qi)-1 < 0 && sizeof(hi) == 2 && (hi)-1 > 0 ? 1 : -1];
typedef char check_2[sizeof(si) == 4 && sizeof(di) == 8 && sizeof(df) == 8 ? 1 : -1];
typedef int bad_1 __attribute__((mode(ZZ)));  // expect: error invalid_argument_to_attribute
typedef int bad_2 __attribute__((mode(SF)));  // expect: error mode_incompatible_with_type
typedef int bad_3 __attribute__((mode(TI)));  // expect: error no_type_of_specified_width
