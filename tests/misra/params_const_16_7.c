// options: --gcc --check_misra=16.7
// proves: a pointer parameter that nothing is stored through is reported, with the type that it should have
typedef int INT32;
struct s {
  INT32 x;
  INT32 array[4];
  struct s *next;
  char *text;
};
extern void take(char *p);
extern void take_const(const char *p);
extern INT32 take_any(const char *format, ...);
extern void take_old();

// Reading
INT32 read(char *p) { return p[0] + *(p + 1); }                  // expect: warning misra_c_2004_16_7
INT32 unread(char *p) { return sizeof *p; }                      // expect: warning misra_c_2004_16_7
INT32 step(char *p) { INT32 n = 0; for (; *p; p++) n++; return n; } // expect: warning misra_c_2004_16_7
INT32 tested(char *p) { return p ? 1 : 0; }                      // expect: warning misra_c_2004_16_7
INT32 matrix(INT32 (*m)[3]) { return m[1][2]; }                  // expect: warning misra_c_2004_16_7
INT32 array(INT32 a[]) { return a[1]; }                          // expect: warning misra_c_2004_16_7
INT32 loaded(void *p) { return *(const INT32 *)p; }              // expect: warning misra_c_2004_16_7
void copied(struct s *to, struct s *from) { *to = *from; }       // expect: warning misra_c_2004_16_7
INT32 fixed(char *const p) { return *p; }                        // expect: warning misra_c_2004_16_7
INT32 in_expression(char *p) { return ({ take_const(p); 1; }); }  // expect: warning misra_c_2004_16_7

// Storing
void store(char *p) { *p++ = 0; }
void add(INT32 *p) { p[2] += 1; }
void store_arm(char *p, char *q) { *(p ? p : q) = 1; }
void store_comma(char *p) { *(take_const(p), p) = 1; }
void store_matrix(INT32 (*m)[3]) { m[1][2] = 3; }
void store_cast(void *p) { *(INT32 *)p = 1; }
void store_inside(char *p) { ({ *p = 1; }); }
void by_address(char *p) { char **q = &p; **q = 1; }

// Members are part of the object, what they point to is not
INT32 member(struct s *p) { return p->x + p->array[2] + p->next->x; } // expect: warning misra_c_2004_16_7
void behind_member(struct s *p) { p->next->x = 1; }              // expect: warning misra_c_2004_16_7
char *member_value(struct s *p) { return p->text; }              // expect: warning misra_c_2004_16_7
void store_member(struct s *p) { p->array[2] = 1; }
void step_member(struct s *p) { ++(*p).x; }
INT32 *give_array(struct s *p) { return p->array; }
INT32 *give_member(struct s *p) { return &p->x; }
const INT32 *give_const_member(struct s *p) { return &p->x; }    // expect: warning misra_c_2004_16_7

// Handing out: the receiver's type says whether it stores
void to_const(char *p) { take_const(p); take_const(p + 1); }     // expect: warning misra_c_2004_16_7
INT32 const_copy(char *p) { const char *q = p; return *q; }      // expect: warning misra_c_2004_16_7
const char *const_result(char *p) { return p; }                  // expect: warning misra_c_2004_16_7
void to_function(char *p) { take(p); }
void to_ellipsis(char *p) { take_any("%s", p); }
void to_unprototyped(char *p) { take_old(p); }
void local_copy(char *p) { char *q = p; *q = 1; }
char *result(char *p) { return p; }
void to_member(char *p) { struct s object; object.text = p; take(object.text); }
void to_number(char *p, unsigned *n) { *n = (unsigned)p; }
void to_aggregate(char *p) { char *list[2] = {p, 0}; take(list[0]); }

// Several levels
INT32 levels(INT32 argc, char *argv[]) { return argv[argc - 1][0]; } // expect: warning misra_c_2004_16_7
void store_last(char **v) { v[0][0] = 1; }                       // expect: warning misra_c_2004_16_7
void store_first(char **to, char *from) { *to = from; }

// Nothing to add
void constant(const char *p) { take_const(p); }
void function(void (*p)(void)) { p(); }
