/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
line_directives.c (from line number 1, sequence numbers 1-20)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
# 1 "line_directives.c"
# 17
int f(int, int, int);
# 3
int a;





int b;
# 16
int c;
int f(int __17_11_first_operand, int __17_30_second_operand, int 
# 17
__17_50_third_operand)
{
  return ((__17_11_first_operand * __17_30_second_operand) + (
# 19
__17_30_second_operand * __17_50_third_operand)) + (__17_50_third_operand * 
# 19
__17_11_first_operand);
}
