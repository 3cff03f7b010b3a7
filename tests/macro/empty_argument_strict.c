/* options: -n --c89 --strict */
/* proves: strict C89 has no empty arguments, and wants white space behind a name */
#define FIRST(a, b) a b
int m = FIRST( , 2);  /* expect: warning empty_macro_argument */
#define STAR$ 1  /* expect: error nonstd_character_at_start_of_macro_def, expect: warning white_space_required_after_macro_name */
#define AT@ 1  /* expect: error nonstd_character_at_start_of_macro_def, expect: warning white_space_required_after_macro_name */
