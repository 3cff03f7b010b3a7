/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
visibility_pragma.c (from line number 1, sequence numbers 1-8)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();



int hidden_function(void) __attribute__((visibility("hidden")));



int *use(void);
extern int hidden_object __attribute__((visibility("hidden")));

extern int shown __attribute__((visibility("default")));

int ordinary;
int hidden_object __attribute__((visibility("hidden"))) = 1;




int *use(void) { hidden_function(); return &shown; }
