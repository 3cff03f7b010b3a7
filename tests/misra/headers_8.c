// options: --check_misra=8.5,8.8 -IInputs
// proves: definitions in headers, and declarations of one name in several files
#include "declared.h"
int defined_before = 1;
#include "declared_again.h"

extern int in_header;
int in_header = 1;
extern int function_in_header(int a);
int function_in_source(int a) { return a + function_of_header(a); }
extern int twice_in_one_file;
extern int twice_in_one_file;
int in_block(void)
{
  extern int in_two_headers;
  return in_two_headers;
}
