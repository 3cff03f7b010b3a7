// options: -P
// proves: an empty argument beside ## leaves the other operand alone (C99 6.10.3.3)
#define CAT(a,b) a##b
#define XCAT(a,b) CAT(a,b)
#define EMPTY
#define mid(a) <a##x##a>
CAT(x, y) CAT( x , y ) CAT(x,) CAT(,y) CAT(,) XCAT(EMPTY, y) XCAT(x,EMPTY)
XCAT(C,AT(x,y)) mid() mid(1) CAT(CA,T)(p,q)
CAT(-,=) CAT(<,<=) CAT(.,5) CAT(1.5e,3) CAT(L,'x') CAT(L,"x") CAT(/,=)
