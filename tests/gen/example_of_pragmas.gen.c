/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
example_of_pragmas.c (from line number 1, sequence numbers 1-62)
  Inputs/pragmas.c (from line number 1, sequence numbers 3-62)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
int printf(const char *, ...);
#pragma INTERRUPT(timer)
void timer(void);




#pragma FUNC_ALWAYS_INLINE(saturated)
static short saturated(int);




#pragma CODE_SECTION(filter, ".text:filter")
#pragma FUNC_CANNOT_INLINE(filter)
static short filter(short) __attribute__((__section__(".text:filter")));
int main(void);
#pragma DATA_SECTION(history, ".fast")

#pragma DATA_ALIGN(history, 16)
static short history[8] __attribute__((__aligned__(16))) __attribute__((
__section__(".fast")));



static short coefficients[8] __attribute__((__section__(".coefficients")));


static volatile int ticks;
static short coefficients[8] __attribute__((__section__(".coefficients"))) = {1
,2,3,4,4,3,2,1};





void timer(void)
{
  ticks++;
}


static short saturated(int __29_28_value)
{
  return (short)((__29_28_value > 32767) ? (32767) : ((__29_28_value < (-32768)
) ? (-32768) : (__29_28_value)));
}



static  __attribute__((__section__(".text:filter"))) short filter(short 
__36_27_sample)
{
  auto int __38_7_i; auto int __38_10_sum; __38_10_sum = 0;


#pragma MUST_ITERATE(7, 7, 1)
  for (__38_7_i = 7; (__38_7_i > 0); __38_7_i--)
    (history[__38_7_i]) = (history[__38_7_i - 1]);
  (history[0]) = __36_27_sample;

#pragma MUST_ITERATE(8, 8, 8)
#pragma UNROLL(4)
  for (__38_7_i = 0; (__38_7_i < 8); __38_7_i++)
    __38_10_sum += (((int)(history[__38_7_i])) * ((int)(coefficients[__38_7_i])
));
  return saturated(__38_10_sum);
}

int main(void)
{
  auto int __55_7_n;

  for (__55_7_n = 1; (__55_7_n <= 8); __55_7_n++) {
    timer();
    printf("%d: %d\n", ticks, (int)(filter((short)(__55_7_n * 1000))));
  }
  return 0;
}
