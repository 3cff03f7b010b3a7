// options: --write_cil_file
// proves: a run that also writes the image of its IL completes
static int counter;
int next(void)
{
  return ++counter;
}
