// options: --report_gnu_extensions
// proves: extensions are warned of
struct s { int a; };
struct s s = { a: 1 }; // expect: warning extended_designator_is_gnu_extension
