# 1 "line_commands.c"


# 7 "other.c"
int a = 7;
