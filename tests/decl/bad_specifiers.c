// options: -n
// proves: combinations that name no type are reported once, and the declaration goes on
int char a;               // expect: error bad_combination_of_type_specifiers
short long b;             // expect: error bad_combination_of_type_specifiers
long long long c;         // expect: error bad_combination_of_type_specifiers
unsigned float d;         // expect: error bad_combination_of_type_specifiers
long __int40_t e;         // expect: error bad_combination_of_type_specifiers
signed unsigned f;        // expect: error bad_combination_of_type_specifiers
short short g;            // expect: error dupl_decl_specifier
_Complex int h;           // expect: error only_applies_to_float_types
struct s { int m; } int i;  // expect: error exp_semicolon
int counter;
unknown_t j;              // expect: error undefined_identifier
static const unknown_t *k;  // expect: error undefined_identifier
counter l;                // expect: error sym_not_a_type_name
