// options: -n --remarks
// proves: a message that comes late has the severity of the place that it is about
static int before;                   // expect: warning declared_but_not_referenced
#pragma diag_suppress declared_but_not_referenced
static int within;
#pragma diag_error 179
static int behind;                   // expect: error declared_but_not_referenced
#pragma diag_default 179
void f(void)
{
  int first;                         // expect: warning declared_but_not_referenced
#pragma diag_remark 179
  int second;                        // expect: remark declared_but_not_referenced
}
