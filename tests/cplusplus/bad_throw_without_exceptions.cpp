// proves: without exceptions nothing is thrown
void f() { throw 1; } // expect: error no_exception_support
