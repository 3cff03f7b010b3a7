// options: -n
// proves: heads without tag or body, tags of another kind, bodies that are cut off
struct;                    // expect: error exp_identifier
struct 1 x;                // expect: error exp_identifier
struct s { int a; };
enum s e;                  // expect: error tag_kind_incompatible_with_declaration
struct s { int b; } again;  // expect: error redefinition
int use(void) { struct s v; v.a = 1; return v.a + again.b; }
