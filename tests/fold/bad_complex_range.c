// options: -n
_Complex float w = 1e38f * (1e38f + 1e38fi);  // expect: error bad_complex_operation_result
