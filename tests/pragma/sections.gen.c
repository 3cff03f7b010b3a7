/* Translated by the Zokara C++/C front end (version 4.4) */
/* Thu Jan  1 00:00:00 1970 */
/* Source file information:
sections.c (from line number 1, sequence numbers 1-26)
*/
int __ZOKCPFE__4_4;
void *memcpy(); void *memset();
static int count(void);
#pragma CODE_SECTION(f, "code_a")
int f(void) __attribute__((__section__("code_a")));
int g(void) __attribute__((__section__("code_b")));

int h(void);
extern int table[2] __attribute__((__section__(".block")));
#pragma DATA_SECTION(early, ".early")
int early __attribute__((__section__(".early")));

#pragma DATA_SECTION(late, ".late")
static int late __attribute__((__section__(".late")));




extern int in_block __attribute__((__section__(".block")));

#pragma DATA_SECTION(own, ".own")
int own __attribute__((__section__(".own")));


int by_attribute __attribute__((__section__(".attr")));
int behind;
int table[2] __attribute__((__section__(".block"))) = {1,2};


static int late __attribute__((__section__(".late"))) = 3;




int in_block __attribute__((__section__(".block"))) = 1;



static int count(void)
{
  static int __16_14_calls __attribute__((__section__(".block"))) = 7;
  auto int __17_7_local; __17_7_local = __16_14_calls++;
  return __17_7_local;
}



 __attribute__((__section__("code_a"))) int f(void) { return late + (count()); 
}
 __attribute__((__section__("code_b"))) int g(void) { return f(); }

int h(void) { return g(); }
