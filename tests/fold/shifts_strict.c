/* options: --c89 --strict */
/* proves: without the GNU modes a bad count is an error in a constant, a warning elsewhere */
enum { a = 1 << 40 };               /* expect: error shift_count_too_large */
enum { b = 1 << -1 };               /* expect: error negative_shift_count */
int f(int x)
{
  x = x << 31;
  x += 1 << 32;                     /* expect: warning shift_count_too_large */
  return x >> (5 - 6);              /* expect: warning negative_shift_count */
}
