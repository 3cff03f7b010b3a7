

1 a b 1-2#3 "x" not_this 1
