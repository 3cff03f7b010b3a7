# 1 "comments_kept.c"
// options: -E -C
// proves: -C leaves comments where they are
int a; /* one */ // two
/* three
   four */ int b;
