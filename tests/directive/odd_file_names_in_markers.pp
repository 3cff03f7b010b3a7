# 1 "odd_file_names_in_markers.c"


# 3 "a\011b\"c\\d\ne.c"
char *name = "a\011b\"c\\d\ne.c";
# 7 "all*/x.c"
char *other = "all*/x.c";
