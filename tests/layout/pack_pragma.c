// options: -n
// proves: the stack of pack values, and that a value limits every member behind it
#pragma pack(2)
struct two { char c; int i; double d; };
typedef char check_1[sizeof(struct two) == 14 && __alignof__(struct two) == 2 ? 1 : -1];
#pragma pack(push, outer, 1)
struct one { char c; long long l; };
#pragma pack(push)
#pragma pack(4)
struct four { char c; double d; };
#pragma pack(pop, outer)
struct again { char c; int i; };
#pragma pack()
struct natural { char c; int i; };
typedef char check_2[sizeof(struct one) == 9 && sizeof(struct four) == 12 ? 1 : -1];
typedef char check_3[sizeof(struct again) == 6 && sizeof(struct natural) == 8 ? 1 : -1];
