// options: -n
struct derived : base { int n; };  // expect: error exp_identifier
