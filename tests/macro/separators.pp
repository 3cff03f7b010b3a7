

- -1 -x - -1 + + + + x  x(x)[x] . . .
a b L "s"  L"s"
+y++ y++ +z a= -1 x;x x,x 1e +1
