// options: --no_brief_diagnostics
// proves: a missing name is reported at the token that stands in its place, and the nameless object not again
int x;
int ) c;
int *5;
struct s {
  int ];
};
static int 3;
void f(void)
{
  int *;
  static int (4);
}
int [ b;
