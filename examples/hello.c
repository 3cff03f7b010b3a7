/* What ./run shows first: a program with macros, structures, a table and a loop. */
#include <stdio.h>

#define SQUARE(x) ((x) * (x))

struct sample {
  const char *name;
  unsigned width : 4;
  unsigned height : 4;
};

static const struct sample samples[] = {
  {"small", 2, 3},
  [2] = {.name = "large", .height = 9, .width = 8},
  [1] = {"middle", 5, 5},
};

int main(void)
{
  unsigned i;
  for (i = 0; i < sizeof samples / sizeof *samples; i++) {
    const struct sample *s = &samples[i];
    printf("%-6s %2u, squared %3u\n", s->name, s->width * s->height, SQUARE(s->width * s->height));
  }
  return 0;
}
