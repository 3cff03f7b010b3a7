

printf("x" "1" "= %d, x" "2" "= %s", x1, x2);
fputs(
"strncmp(\"abc\\0d\", \"abc\", '\\4') == 0" ": @\n", s);
"vers2.h"
"hello";
"hello" ", world"
char p[] = "x ## y";
int j[] = { 123, 45, 67, 89,
 10, 11, 12,  };
