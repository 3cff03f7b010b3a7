// cmd_line_gnu.cpp - reconciling the flags in the GNU modes.  gnu_version is the measure of what
// the emulated compiler had.
// Uses:    option_seen and the flags as the rules before left them (cmd_line_modes.cpp).
// Entry:   apply_gnu_modes.
#include "driver/cmd_line_modes.h"

static void refuse_gnu_options()
{
  if (short_enums) command_line_error(ec_cl_short_enums_requires_gcc_mode);
  if (option_seen[opt_report_gnu_extensions]) {
    command_line_error(ec_cl_report_gnu_extensions_requires_gnu_mode);
  }
  report_gnu_extensions = false;
  if (option_seen[opt_nonstd_gnu_keywords]) {
    command_line_error(ec_cl_nonstd_gnu_keywords_requires_gnu_mode);
  }
}

static void apply_both_gnu_modes()
{
  UNLESS_SEEN(designators_allowed, true);
  UNLESS_SEEN(extended_designators_allowed, true);
  UNLESS_SEEN(compound_literals_allowed, true);
  UNLESS_SEEN(variadic_macros_allowed, true);
  UNLESS_SEEN(extended_variadic_macros_allowed, true);
  UNLESS_SEEN(allow_dollar_in_id_chars, true);
  UNLESS_SEEN(alternative_tokens_allowed, true);
  UNLESS_SEEN(trigraphs_allowed, true);
  UNLESS_SEEN(check_concatenations, true);
  UNLESS_SEEN(nonstd_gnu_keywords_enabled, true);
  UNLESS_SEEN(vla_enabled, true);
  UNLESS_SEEN(stdc_zero_in_system_headers, false);
  UNLESS_SEEN(thread_local_storage_specifier_enabled, gnu_version > 30299);
  set_flags({&pragma_operator_allowed, &gnu_restrict_keyword_enabled,
             &flexible_array_members_allowed, &end_of_line_comments_allowed, &long_long_is_standard,
             &allow_nonstandard_anonymous_unions, &hex_floating_point_constants_allowed,
             &null_chars_allowed_in_source, &mixed_string_concat_enabled, &gnu_attributes_enabled});
  clear_flags({&pass_stdarg_references_to_generated_code, &va_arg_returns_lvalue,
               &late_template_ovl_res_tiebreaker});
  long_long_promotion_allowed = c99_mode;
}

static void apply_gnu_c()
{
  enum_types_can_be_larger_than_int = !enum_is_int;
  binary_constants_allowed = allow_nonconstant_auto_aggr_init_in_c_mode = true;
  std_c99_inlining = c99_mode && !gcc89_inlining && gnu_version > 40299;
  gnu_c89_inlining = !std_c99_inlining;
}

// What options may still decide.
static void apply_gnu_cplusplus_defaults()
{
  if (gnu_version > 30399) {
    UNLESS_SEEN(do_dependent_name_processing, true);
    UNLESS_SEEN(nonclass_prototype_instantiations, true);
    UNLESS_SEEN(defer_function_prototype_instantiations, nonclass_prototype_instantiations);
  }
  UNLESS_SEEN(exceptions_enabled, false);
  UNLESS_SEEN(extern_inline_allowed, true);
  UNLESS_SEEN(nonstandard_instantiation_lookup_enabled, false);
  UNLESS_SEEN(guiding_decls_allowed, false);
  UNLESS_SEEN(string_literals_are_const, true);
  UNLESS_SEEN(nonstandard_default_arg_deduction, gnu_version <= 40299);
  if (!option_seen[opt_friend_injection]) {
    friend_class_injection_enabled = gnu_version <= 40000;
    friend_function_injection_enabled = gnu_version <= 40099;
  }
  UNLESS_SEEN(type_traits_helpers_enabled, gnu_version > 40299);
}

static void apply_gnu_cplusplus()
{
  apply_gnu_cplusplus_defaults();
  gnu_namespace_and_class_in_same_scope = gnu_version <= 40299;
  no_access_check_on_friend_declarator_ids = gnu_version <= 30399;
  cpp11_sfinae_enabled = gnu_version > 30399;
  cpp11_sfinae_ignore_access = true;
  if (gnu_version > 40499) explicit_conversion_functions_enabled = true;
  set_flags({&gpp_dependent_name_lookup, &gpp_using_directive_lookup,
             &friend_class_decl_can_find_using_dir,
             &allow_default_arg_on_template_member_definition, &extern_template_allowed,
             &inline_template_allowed});
  clear_flags({&parameters_visible_late, &pragma_define_type_info_is_required,
               &floating_point_template_parameters_allowed, &equiv_typedefs_are_lookup_equivalent,
               &assume_this_cannot_be_null_in_conditional_operators});
  if (!cpp11_mode && gnu_version > 40299) decltype_enabled = enable_underscore_decltype_only = true;
}

void apply_gnu_modes()
{
  if (!gcc_mode && !gpp_mode) {
    refuse_gnu_options();
    return;
  }
  apply_both_gnu_modes();
  if (gcc_mode) {
    apply_gnu_c();
  } else {
    apply_gnu_cplusplus();
  }
}
