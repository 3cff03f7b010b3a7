// options: --c99 --no_gcc
// proves: character constants that can't be what they seem are reported
int a = '';          // expect: error zero_length_string
int b = 'ab';        // expect: warning multi_char_literal
int c = 'abcde';     // expect: error too_many_characters
int d = L'ab';       // expect: warning too_many_characters
int e = '\q';        // expect: warning unrecognized_char_escape
int f = '\e';        // expect: warning unrecognized_char_escape
int g = '\x';        // expect: error bad_hex_digit
int h = '\x100';     // expect: warning bad_character_value
int i = '\400';      // expect: warning bad_character_value
char *j = "\u0100";  // expect: warning character_not_latin_1
int k = '
;                    // expect-1: error unclosed_string
// expect-2: error exp_primary_expr
