// options: -n
__declspec(dllimport) __declspec(dllexport) int both;  // expect: warning bad_combination_of_dll_attributes
