// proves: a macro named as a keyword is the keyword where it is no call and inside its own expansion
#define int(x) x
#define if(x) if ((x))
#define while while
#define register
int count;
void g(register int n)
{
  if (n) count = int(3);
  while (n) n = int (0);
}
