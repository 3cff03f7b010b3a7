

xy xy x y  y x
CAT(x,y) <x> <1x1> CAT(p,q)
-= <<= .5 1.5e3 L'x' L"x" /=
