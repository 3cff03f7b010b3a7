/* Pragmas of the target: where things are placed, what a function promises, how often a loop runs.
   `./run examples/pragmas.c` translates, compiles and runs it; the pragmas stand in the generated file. */
int printf(const char *format, ...);

#define TAPS 8
#define PRAGMA(text) _Pragma(#text)
#define IN_SECTION(object, name) PRAGMA(DATA_SECTION(object, name))

/* In C a pragma names its symbol and may stand anywhere in the file. */
IN_SECTION(history, ".fast")
static short history[TAPS];
#pragma DATA_ALIGN(history, 16)

#pragma SET_DATA_SECTION(".coefficients")
static short coefficients[TAPS] = {1, 2, 3, 4, 4, 3, 2, 1};
#pragma SET_DATA_SECTION()

static volatile int ticks;

#pragma INTERRUPT(timer)
void timer(void)
{
  ticks++;
}

#pragma FUNC_ALWAYS_INLINE(saturated)
static short saturated(int value)
{
  return value > 32767 ? 32767 : value < -32768 ? -32768 : value;
}

#pragma CODE_SECTION(filter, ".text:filter")
#pragma FUNC_CANNOT_INLINE(filter)
static short filter(short sample)
{
  int i, sum = 0;

  /* A loop's pragmas stand directly in front of it. */
#pragma MUST_ITERATE(TAPS - 1, TAPS - 1, 1)
  for (i = TAPS - 1; i > 0; i--)
    history[i] = history[i - 1];
  history[0] = sample;

#pragma MUST_ITERATE(TAPS, TAPS, TAPS)
#pragma UNROLL(4)
  for (i = 0; i < TAPS; i++)
    sum += history[i] * coefficients[i];
  return saturated(sum);
}

int main(void)
{
  int n;

  for (n = 1; n <= TAPS; n++) {
    timer();
    printf("%d: %d\n", ticks, filter(n * 1000));
  }
  return 0;
}
