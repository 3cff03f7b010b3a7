/* Compresses generated data with the fast and the strong compressor and checks that it comes back. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include "lz4.h"
#include "lz4hc.h"

static unsigned state = 12345;
static unsigned next_random(void)
{
  state = state * 1103515245u + 12345u;
  return state >> 16;
}

static unsigned long sum_of(const char *p, int n)
{
  unsigned long h = 5381;
  while (n-- > 0) h = h * 33 + (unsigned char)*p++;
  return h & 0xffffffffUL;
}

int main(void)
{
  int round;
  for (round = 1; round <= 24; round++) {
    int size = round * round * 997, i, packed, strong, back;
    char *data = malloc(size), *out = malloc(LZ4_compressBound(size)), *again = malloc(size);
    for (i = 0; i < size; i++) {
      data[i] = (char)(i > 64 && next_random() % 3 ? data[i - 1 - next_random() % 64] : next_random());
    }
    packed = LZ4_compress_default(data, out, size, LZ4_compressBound(size));
    back = LZ4_decompress_safe(out, again, packed, size);
    printf("%d %d %08lx %d ", size, packed, sum_of(out, packed), back == size && !memcmp(data, again, size));
    strong = LZ4_compress_HC(data, out, size, LZ4_compressBound(size), 1 + round % 12);
    memset(again, 0, size);
    back = LZ4_decompress_safe(out, again, strong, size);
    printf("%d %08lx %d\n", strong, sum_of(out, strong), back == size && !memcmp(data, again, size));
    free(data);
    free(out);
    free(again);
  }
  return 0;
}
