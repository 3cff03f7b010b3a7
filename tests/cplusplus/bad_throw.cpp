// options: --exceptions
// proves: what can't be thrown, and where
struct Incomplete;
struct Hidden { Hidden(); private: Hidden(const Hidden &); };
void nothing();
Incomplete *pointer();
Hidden hidden;
void f(int n)
{
  throw nothing(); // expect: error void_throw
  throw pointer(); // expect: error ptr_incomplete_throw
  throw hidden; // expect: error no_access_to_name
  n ? throw 1 : 2; // expect: warning code_is_unreachable
  throw;
}
extern "C" void g() { throw 1; } // expect: error extern_c_cannot_throw
enum { e = throw }; // expect: error bad_integral_operator
