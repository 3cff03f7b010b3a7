// options: --display_error_number
// proves: each of the diag_ pragmas speaks for what stands behind it, by number and by tag
#pragma diag_suppress 1, 9
int a; /* /* */
#pragma diag_error nested_comment
int b; /* /* */
#pragma diag_default 9
int c; /* /* */
#pragma diag_remark = nested_comment
int d; /* /* */
#pragma diag_warning 9
int e; /* /* */
#pragma diag_once 9
int f; /* /* */
int g; /* /* */
#pragma diag_suppress 9999
#pragma diag_suppress no_such_tag
#pragma diag_suppress "text"
#pragma diag_suppress 20
int h(void) { return undefined_name; }
