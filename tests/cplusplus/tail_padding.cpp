// proves: members that lie in the tail padding of a base are pointed out
// options: --strict --set_flag=warn_about_tail_padding_use
struct A { A(); int i; char c; };
struct B : A { char d; };                 // expect: warning size_affected_by_tail_padding
struct V { virtual void f(); char c; };
struct W : V { char d; };                 // expect: warning size_affected_by_tail_padding
