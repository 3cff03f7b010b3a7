# 1 "line_numbers.c"

2 "line_numbers.c"
# 100 "line_numbers.c"
100 "line_numbers.c"
# 7 "a\\b.c"
7 "a\\b.c"
# 12 "m.c"
12 "m.c"
# 30 "marker.c"
30 "marker.c"
# 1 "zero.c"
1


4
