// options: --strict --diag_suppress=illegal_end_of_line_comment --diag_suppress=white_space_required_after_macro_name
// proves: a macro may end behind its name in strict C; a character outside the basic set may not follow it
#define EMPTY
#define COMMENTED/* */
#define DOLLAR$ 1  // expect: error nonstd_character_at_start_of_macro_def
int a;
