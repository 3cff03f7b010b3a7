# 1 "separators.c"






+ + - -1 x  y- - 1 . 2 . .3

1E+1 1 e +1 L 'a' "x"
