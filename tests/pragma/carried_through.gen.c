/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
carried_through.c (from line number 1, sequence numbers 1-10)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();


#pragma VCC_VREG("vreg", 3)
#pragma Cedar_REG("name", "register")
#pragma LPM_INFO(any (thing), NUMBER)
#pragma PORTS_INIT_INFO
void f(void);
void f(void)
{
#pragma HW_MPY32 "f5"
}
