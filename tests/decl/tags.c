// options: -n
// proves: tags have their scope and one kind each (C99 6.7.2.3)
struct s { int a; };
void f(void)
{
  struct s outer;
  struct s;
  struct s *inner;
  struct s { char c; } own;
  outer.a = 1;
  own.c = 2;
  inner = &own;
  (void)inner, (void)outer;
}
struct s { int b; };       // expect: error redefinition
union s *clash;            // expect: error tag_kind_incompatible_with_declaration
void g(struct only_here *p);  // expect: warning decl_in_prototype_scope
struct n { struct n { int a; } b; };  // expect: error redefinition
