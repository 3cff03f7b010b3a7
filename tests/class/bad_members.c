// options: -n
// proves: members that can't be: each is reported and the others stay
struct unknown;
struct s {
  int a; int a;            // expect: error id_already_declared
  int f(void);             // expect: error function_type_not_allowed
  void v;                  // expect: error incomplete_type_not_allowed
  struct unknown u;        // expect: error incomplete_type_not_allowed
  struct s self;           // expect: error incomplete_type_not_allowed
  int init = 1;            // expect: error bad_data_member_initialization
  struct { int a; };       // expect: warning hidden_anonymous_union_field
  struct tag { int x; };   // expect: warning useless_decl
  int;                     // expect: warning useless_decl
  ;                        // nothing in GNU C
  unknown_t t;             // expect: error undefined_identifier
  int last
};                         // expect: warning exp_semicolon
struct early { char c[]; int i; };  // expect: error incomplete_type_not_allowed
union w { int a; char c[]; };
int use(struct s *p) { return p->last + p->nothing; }  // expect: error not_a_field
