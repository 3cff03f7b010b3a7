// proves: values and ranges of cases that appear again, in the type of the selector
enum color { red, green };
void f(int n, unsigned char c, enum color e)
{
  switch (n) {
    case 1: break;
    case 2 ... 9: break;
    case 5: break;                   // expect: error case_label_conflict
    case 8 ... 12: break;            // expect: error case_label_conflict
    case 20 ... 10: break;           // expect: warning invalid_case_range
    case -1: break;
    case 1: break;                   // expect: error case_label_conflict
  }
  switch (c) {
    case 'a': break;
    case 'b': break;
  }
  switch (e) {
    case red: break;
    case green: break;
    case 1: break;                   // expect: error case_label_conflict
  }
}
