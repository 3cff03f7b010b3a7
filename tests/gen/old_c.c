/* options: --old_c */
/* proves: old C: promotion of unsigned, float arithmetic in double, constants without new suffixes */
int printf();
struct s { char *name; unsigned u; float f; };
static struct s table[] = { "one", 40000, 1.5, "two", 3, 0.1 };
double half(f) float f; { return f / 2; }
unsigned char uc = 200;
main()
{
  register struct s *p;
  unsigned short us = 65535;
  char *text = "tab\there";
  for (p = table; p < table + 2; p++)
    printf("%s %u %d %s\n", p->name, p->u, (int)(half(p->f) * 100), text);
  printf("%d %d\n", us > 1, (int)(2000000000 % 7));
  return 0;
}
