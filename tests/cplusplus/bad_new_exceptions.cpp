// proves: a placement new whose memory nobody frees when the constructor throws
// options: --exceptions
struct X { X(); static void *operator new(unsigned, int); };
X *f() { return new (1) X; } // expect: warning no_corresponding_delete
