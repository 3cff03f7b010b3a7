// proves: alignment and banks of objects and types; an operand that is computed is written by its value
enum { LINE = 64 };
char buffer[10];
#pragma DATA_ALIGN(buffer, LINE)
double wide;
#pragma DATA_ALIGN(wide, 2)            // no less than the type's
#pragma DATA_MEM_BANK(word, 3)
int word;
#pragma DATA_MEM_BANK(half, 4)
short half;
struct pair { char a; short b; };
#pragma STRUCT_ALIGN(pair, 8)
union either { int i; char c; };
#pragma STRUCT_ALIGN(union either, sizeof(int) * 4)
typedef struct { char c; } named;
#pragma STRUCT_ALIGN(named, 16);
struct pair p; union either e; named n;
int sizes[] = {sizeof(struct pair), sizeof(named)};
