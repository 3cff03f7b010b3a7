// options: --gcc
// proves: tags and enums, then classes and typedefs, routines, variables, initializers and bodies
static int start = 4;
typedef struct list *list_ptr;
int length(list_ptr list);
struct list { list_ptr next; enum { LEFT, RIGHT } side; };
static struct list last = { 0, RIGHT }, first = { &last };
int main(void) { return length(&first) + start; }
int length(list_ptr list)
{
  int n = 0;
  for (; list; list = list->next) n++;
  return n;
}
