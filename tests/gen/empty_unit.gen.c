/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
empty_unit.c (from line number 1, sequence numbers 1-2)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
