// options: --write_cil_file --il_output_file=out.cil
// proves: the IL file is written when it is asked for
int x;
