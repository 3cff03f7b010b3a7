

3 "builtin.c" "builtin.c" "Jan  1 1970" "00:00:00" 0 1
70 "a \"b\".c" "builtin.c"
74 v74
1 199409L
