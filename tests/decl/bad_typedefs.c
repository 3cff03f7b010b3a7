// options: -n
// proves: typedefs that declare nothing, clash, or carry what only objects can have
typedef int;               // expect: warning missing_typedef_name
typedef int T; typedef char T;  // expect: error bad_type_name_redeclaration
typedef int named __asm__("x");  // expect: warning asm_name_in_typedef
typedef unsigned long long size_t;  // expect: warning unexpected_type_for_size_t
typedef int inited = 1;    // expect: error cannot_initialize
typedef int function(int);
function body { return 1; }  // expect: error function_type_must_come_from_declarator
