// options: --float_operations_allowed=all --keep_unneeded_types=true --unaligned_access=on --import_undef=on
// options: --visibility=default --dllexport_visibility=protected --size_speed_goal=high_risk_size -i init
// options: --msvc_target_version=1600 --context_limit=4 --set_flag=reuse_tail_padding
// options: --clear_flag=reuse_tail_padding -q --db_typerw --i --keep_unneeded_statics --scalar_replacement
// options: --small_container_bitfield_layout --no_loop_pragmas --no_iterate_pragmas --symdebug:dwarf --symdebug:coff
// options: --export_all_vtbl --import_helper_functions --suppress_ah_warnings --stdio_ah_warnings --embed_icode
// options: --embed_inline_assembly --neon --no_inlining -N -n -# -v -j --pch_messages --no_pch_messages --pch_verbose
// options: --no_pch_verbose --buffer_diagnostics --remove_unneeded_entities --no_remove_unneeded_entities
// options: --no_long_preserving_rules --const_string_literals --no_const_string_literals
// options: --no_multibyte_chars --no_stdarg_builtin --stdc_zero_in_system_headers --no_stdc_zero_in_system_headers
// options: --template_typedefs_in_diagnostics --no_template_typedefs_in_diagnostics --dump_configuration
// proves: options that change no meaning of plain C are taken, with and without their arguments
int plain(int a)
{
  return a + 1;
}
