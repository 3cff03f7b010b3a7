// options: --anachronisms
// proves: old C++ bound temporaries to references to objects that aren't const
int &first(long l)
{
  int &bound = l;          // expect: warning nonconst_ref_init_anachronism
  const volatile int &cv = l; // expect: warning const_volatile_ref_init_anachronism
  (void)cv;
  return bound;
}
