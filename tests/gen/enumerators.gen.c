/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
enumerators.c (from line number 1, sequence numbers 1-4)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();


enum e { A, B, C = 5, D, E = -2, F, G = 2147483647};
extern enum e x; enum e x = 6;
