// options: --gcc --abi=eabi
// proves: offsets as the layout computed them, tail padding, packing
struct tail { double d; char c; };
struct bits { int a : 3; unsigned b : 7; char c; };
struct __attribute__((packed)) tight { char c; int i; };
#pragma pack(2)
struct two { char c; int i; };
#pragma pack()
struct none { };
union u { char c[5]; short s; };
struct tail t; struct bits b; struct tight g; struct two w; struct none n; union u v;
