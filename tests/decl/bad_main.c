// options: -n --strict --c99 --remarks
// proves: the return type and the parameters of main
long main(long n, char *v, int e);  // expect: error bad_return_type_on_main, expect: remark main_first_param_not_int, expect: remark main_second_param_wrong_type, expect: remark main_wrong_num_params
