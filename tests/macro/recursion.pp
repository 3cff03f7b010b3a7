

a b c
42
AA BB AA f(AA) f(f)(1)
obj obj(2)
again again again again
in_arg in_arg
