// options: --uliterals
// proves: GNU C cuts long character constants; u takes one unit
int a = 'abcde';           // expect: warning leading_character_ignored_in_char_literal
int b = '\e';
int c = u'\x10000';        // expect: error no_char16_t_representation
int d = u'ab';             // expect: error too_many_characters
int e = U'ab';             // expect: error too_many_characters
