// options: --gcc --check_misra=9
// proves: use before a value, braces of parts, enumerators with some values
int automatic(int a)
{
  int unset, set;
  set = a;
  return unset + set; // expect: warning misra_c_2004_9_1
}
struct pair { int x, y; };
struct outer { struct pair first; int rest[2]; char text[4]; };
int flat[2][2] = {1, 2, 3, 4};              // expect: warning misra_c_2004_9_2
int braced[2][2] = {{1, 2}, {3, 4}};
int zero[2][2] = {0};
int zeros[2][2] = {0, 0, {3, 4}};
int half[3][2] = {{1, 2}, 3, 4, {5, 6}};    // expect: warning misra_c_2004_9_2
struct outer mixed = {1, 2, {3, 4}, "abc"}; // expect: warning misra_c_2004_9_2
struct outer whole = {{1, 2}, {3, 4}, "abc"};
struct outer each[2] = {
    {1, 2, {3, 4}, "abc"},                  // expect: warning misra_c_2004_9_2
    {{1, 2}, 3, 4, "abc"}};                 // expect: warning misra_c_2004_9_2
struct outer designated = {.first.x = 1, .rest[1] = 2};
struct outer named = {.first = 1, 2};       // expect: warning misra_c_2004_9_2
void values(struct pair p)
{
  struct outer o = {p, {1, 2}, "x"};
  struct pair list[2] = {p, p};
  (void)o, (void)list;
}
enum none { a0, b0 };
enum first { a1 = 1, b1, c1 };
enum all { a2 = 1, b2 = 2 };
enum some { a3, b3 = 2, c3 };               // expect: warning misra_c_2004_9_3
enum first_and_more { a4 = 1, b4 = 2, c4 }; // expect: warning misra_c_2004_9_3
