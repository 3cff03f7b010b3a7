// options: --xref=out.xref --gen_c_file_name=out.c --pp_output_file=out.pp
// proves: declarations and uses are listed
int f(int a)
{
  return a;
}
