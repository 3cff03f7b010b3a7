// proves: a bound of a field that isn't constant counts as zero (GNU)
int n;
int next(int);
struct at_file_level {
  char kind;
  int tail[n];           // expect: warning vla_size_ignored
};
void f(int m)
{
  struct local {
    int count;
    struct { short s[m]; } pairs[2];  // expect: warning vla_size_ignored
    char rows[m][3];     // expect: warning vla_size_ignored
    int fixed[sizeof(struct at_file_level) == 4 ? 1 : -1];
  } v;
  int check[sizeof v == 8 ? 1 : -1];
  v.count = check[0] = m;
  next(v.count);
}
struct in_error { int a[undeclared]; };  // expect: error undefined_identifier
