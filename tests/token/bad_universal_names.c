// options: --c99
// proves: universal character names are checked against the standard's rules
char *a = "\u0041";        // expect: warning UCN_names_basic_char
char *b = "\u00";          // expect: error malformed_universal_character
char *c = "\ud800";        // expect: warning UCN_names_surrogate_code_point
char *d = "\U00110000";    // expect: warning UCN_names_invalid_code_point
char *e = "\u0024 \u0040 \u0060 \u00a0";
int \u00e9;
int \u00d7;                // expect: warning invalid_identifier_UCN
int \u0660;                // expect: warning invalid_identifier_start_UCN
int x\u0660;
#if 0
\u00
#endif
