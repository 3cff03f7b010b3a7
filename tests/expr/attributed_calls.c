// options: -n --gcc --gnu_version=40500 --remarks
// proves: what attributes of the function ask of its calls, and mixed signs of comparisons
void end(int *p, ...) __attribute__((sentinel));
void need(int *p, int *q) __attribute__((nonnull(1)));
int use(void) __attribute__((warn_unused_result));
void k(int u, unsigned v, int *p)
{
  end(p, 2, 3);  // expect: warning invalid_gnu_sentinel_argument
  end(p, 2, (void *)0);
  end((int *)0);  // expect: warning gnu_sentinel_must_be_ellipsis_argument
  end(p);  // expect: warning no_gnu_sentinel_argument
  need(0, 0);  // expect: warning null_argument_for_nonnull_parameter
  use();  // expect: warning call_result_should_be_used
  if (u < v) u = 1;  // expect: remark signed_unsigned_comparison
}
