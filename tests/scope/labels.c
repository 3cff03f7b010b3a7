// proves: labels live in their function; a missing one is reported at the end, once
int first(int n)
{
  if (n) goto missing;               // expect: error never_defined
  if (n > 2) goto missing;
unused:                              // expect: warning declared_but_not_referenced
  goto end;
end:
  return n;
}
int second(int n)
{
  goto end;
end:
end:                                 // expect: error already_defined
  return n;
}
int third(int n)
{
  {
    __label__ local;
    if (n) goto local;
  local:
    n++;
  }
  {
    __label__ local;
    if (n) goto local;
  local:
    n++;
  }
  return n;
}
