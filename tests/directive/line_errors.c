// options: -E
// proves: wrong numbers of lines are reported and change nothing
#line 0              // expect: error bad_line_number
#line 4294967296     // expect: error bad_line_number
#line x              // expect: error exp_line_number
#line 9 9            // expect: error exp_file_name
#line 9 L"a"         // expect: error exp_file_name
#line                // expect: error exp_line_number
