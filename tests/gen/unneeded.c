// options: --gcc --no_remove_unneeded_entities
// proves: what is kept but not needed stands in disabled text
struct never { int a; };
typedef struct never never_t;
enum unused_e { X, Y };
static int unused(never_t *p) { return p->a; }
extern int ext(struct never *);
static int sv = 3;
int main(void) { return 0; }
