// options: --uliterals
// proves: strings of different width join only where one of them is plain
void *a = L"a" "b";
void *b = L"a" u"b";       // expect: error mixed_string_concatenation
void *c = "a" U"b" "c";
