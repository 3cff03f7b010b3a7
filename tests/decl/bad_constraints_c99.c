// options: -n --strict --c99
// proves: members and elements that strict C99 refuses for a flexible array in them
struct flexible { int n; int tail[]; };
union holder { int n; struct flexible f; };
struct outer { struct flexible f; };  // expect: error flexible_array_member_not_allowed
struct second { int n; struct flexible f; int last; };  // expect: error flexible_array_member_not_allowed
struct flexible list[2];  // expect: error flexible_array_member_not_allowed
union holder many[2];  // expect: error flexible_array_member_not_allowed
enum early *p;  // expect: error nonstd_forward_decl_enum
enum own { A = sizeof(enum own *) };  // expect: error nonstd_forward_decl_enum
int accepted(int a[const], int b[static const 3], int c[restrict]);
