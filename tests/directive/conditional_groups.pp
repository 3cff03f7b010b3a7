# 1 "conditional_groups.c"


# 18 "conditional_groups.c"
taken
# 25 "conditional_groups.c"
builtin


defined is no macro


both forms
