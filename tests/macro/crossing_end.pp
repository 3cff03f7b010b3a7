

2*9*g1
1 2 G2 ()
f ( 1 )
f ( 1 ) f ( 1 )
a b a after
A () 123
<1|3> end
