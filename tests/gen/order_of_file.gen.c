/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
order_of_file.c (from line number 1, sequence numbers 1-14)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();





enum __T1 { LEFT, RIGHT};
struct list; typedef struct list *list_ptr; struct list {

  list_ptr next;/*  offset = 0 bytes, type alignment = 4*/ enum __T1 side;
/*  offset = 4 bytes, type alignment = 4*/};
int length(list_ptr);


int main(void);
static int start;



static struct list last; static struct list first;
static int start = 4;



static struct list last = {0,1U}; static struct list first = {&last};
int length(list_ptr __9_21_list)




{
  auto int __11_7_n; __11_7_n = 0;
  for (; (__9_21_list != ((list_ptr)0)); __9_21_list = (__9_21_list->next)) 
__11_7_n++;
  return __11_7_n;
}
int main(void) { return (length(&first)) + start; }
