// options: -n
// proves: incompatible declarations of one name
int a; char a;             // expect: error not_compatible_with_previous_decl
int f(int); int f(char);   // expect: error not_compatible_with_previous_decl
int g(void); int g;        // expect: error not_compatible_with_previous_decl
extern int x; static int x = 1;  // expect: warning linkage_conflict
int y; static int y;       // expect: warning linkage_conflict
int h(void) { return 0; }
int h(void) { return 1; }  // expect: error already_defined
typedef int T; int T;      // expect: error id_already_declared
int init = 1; int init = 2;  // expect: error already_initialized
void scope(void)
{
  int local = y; int local; // expect: error id_already_declared
  { extern char a; }       // expect: error not_compatible_with_previous_decl
  { extern int first; }
  { extern char first; }   // expect: error decl_incompatible_with_previous_use
  y = local + x;
}
