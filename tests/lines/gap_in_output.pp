# 1 "gap_in_output.c"


int a;





int b;
# 16 "gap_in_output.c"
int c;
