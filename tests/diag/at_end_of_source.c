// proves: what is missing at the very end is reported there; what was opened keeps its own place
int f(int a)
{
  switch (a) {
  case 1:
    a = (a +
