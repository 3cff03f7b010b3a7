// options: -n --gcc --gnu_version=40500
// proves: each use of what is deprecated is told once, with the text that was given
int old __attribute__((deprecated));
int older(void) __attribute__((deprecated("use newer")));
struct s { int field __attribute__((deprecated)); };
int use(struct s *s) { return old; }  // expect: warning deprecated_entity
int call(struct s *s) { return older(); }  // expect: warning deprecated_entity_with_custom_message
int take(struct s *s) { int (*p)(void) = older; return p(); }  // expect: warning deprecated_entity_with_custom_message
int select(struct s *s) { return s->field; }  // expect: warning deprecated_entity
