// options: -n --no_gcc
// proves: inline on members, elements with an open array
struct s { inline int n; };  // expect: error inline_not_allowed
struct flexible { int n; int rest[]; };
struct flexible several[3];  // expect: error flexible_array_member_not_allowed
