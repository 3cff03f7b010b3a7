// options: --signed_bit_fields --default_nocommon_tentative_definitions --default_common_tentative_definitions
// options: --thread_local_storage --check_concatenations --no_uliterals --module_init=init --il_output_file=x.cil
// options: --i_output_file=x.i --ah_output_file=x.ah --misra_required=error --misra_advisory=suppress
// options: --opt_opt=f -o3 --opt_cg=x.c:f -mv6000 --opt_ansi=- --dollar --embed_opts=2 --such --words
// options: --override_opts=1 --another --opt_shell=2 -o out --array_alignment=8 --gcc89_inlining
// options: --distinct_template_signatures --no_distinct_template_signatures --nonconst_ref_anachronism
// options: --no_nonconst_ref_anachronism --no_using_std --base_assign_op_is_default --no_base_assign_op_is_default
// options: --building_runtime --long_preserving_rules --short_lifetime_temps --long_lifetime_temps
// options: --nonstd_default_arg_deduction --no_nonstd_default_arg_deduction --noenhance --quiet_mode
// options: --nonstd_instantiation_lookup --no_nonstd_instantiation_lookup --suppress_instantiation_flags
// options: --defer_parse_function_templates --no_defer_parse_function_templates
// proves: options that change no meaning of plain C are taken, with and without their arguments
int plain(int a)
{
  return a + 1;
}
