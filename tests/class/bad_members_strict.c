/* options: -n --c89 --strict */
/* proves: what strict C89 has no room for: unnamed members, empty lists, other bit-field types */
struct a { int n; struct { int m; }; };  /* expect: error nonstd_unnamed_field */
struct b { };              /* expect: error exp_declaration */
struct c { int : 3; };     /* expect: error no_named_fields */
struct d { long l : 3; };  /* expect: error nonstd_bit_field_type */
struct e { int i;; };      /* expect: error extra_semicolon */
struct f { int n; char flexible[]; };  /* expect: error incomplete_type_not_allowed */
