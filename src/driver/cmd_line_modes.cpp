// cmd_line_modes.cpp - reconciling the flags: what the modes imply, after the last option.
// Uses:    option_seen and the flags as the options left them.
// Rule:    the rules run in the order of reconcile_dialect; later ones read what earlier ones set.
//          An option that was seen beats what a mode implies, except where a rule says "always".
// Entry:   reconcile_dialect.
// See:     cmd_line_gnu.cpp for the rules of the GNU modes.
#include <cstring>
#include "driver/cmd_line.h"
#include "driver/cmd_line_internal.h"
#include "driver/cmd_line_modes.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/target.h"
#include "errors/error.h"

static bool in_c()
{
  return C_dialect != 2;
}

static bool in_cplusplus()
{
  return C_dialect == 2;
}

static bool in_old_c()
{
  return C_dialect == 1;
}

static bool in_cfront_mode()
{
  return cfront_2_1_mode || cfront_3_0_mode;
}

// Used as what it stands for when it is on, not merely mentioned to switch the mode off.
static bool asked_for(an_option_id option, bool mode)
{
  return option_seen[option] && mode;
}

static bool gnu_mode_asked_for()
{
  return asked_for(opt_gcc, gnu_mode_value) || asked_for(opt_gplusplus, gpp_mode);
}

static bool cfront_mode_asked_for()
{
  return asked_for(opt_cfront_2_1, cfront_2_1_mode) || asked_for(opt_cfront_3_0, cfront_3_0_mode);
}

//-------------------------------------------------------------------------------------------------
// Which modes hold.

// Where no option says the language, the source's suffix does.
static void settle_language()
{
  if (!dialect_was_given && primary_source_file_argument != nullptr) {
    static const char *const c_suffixes[] = {"c", "i", "h"};
    const char *suffix = suffix_of(primary_source_file_argument);
    for (const char *c_suffix : c_suffixes) {
      if (strcmp(suffix, c_suffix) == 0) C_dialect = 0;
    }
  }
  if (gnu_mode_requested) (in_cplusplus() ? gpp_mode : gcc_mode) = gnu_mode_value;
}

static void settle_default_gnu_mode()
{
  if (option_seen[opt_gcc] || option_seen[opt_gplusplus] || SVR4_C_mode) return;
  (in_cplusplus() ? gpp_mode : gcc_mode) = true;
}

static void check_modes_of_language()
{
  if (C_dialect == 0) {
    if (cfront_mode_asked_for() || asked_for(opt_gplusplus, gpp_mode)) {
      command_line_error(ec_cl_incompatible_language_modes);
    }
    cfront_2_1_mode = cfront_3_0_mode = gpp_mode = false;
    return;
  }
  if (SVR4_C_mode) command_line_error(ec_cl_SVR4_C_option_only_in_ansi_C);
  if (c99_mode || asked_for(opt_gcc, gnu_mode_value)) {
    command_line_error(ec_cl_incompatible_language_modes);
  }
  gcc_mode = false;
  if (in_old_c()) gpp_mode = cfront_2_1_mode = cfront_3_0_mode = false;
}

static void check_modes_of_strict()
{
  if (!strict_ansi_mode) return;
  if (in_old_c()) command_line_error(ec_cl_strict_mode_incompatible_with_pcc);
  if (cfront_mode_asked_for()) command_line_error(ec_cl_strict_mode_incompatible_with_cfront);
  if (asked_for(opt_svr4, SVR4_C_mode)) {
    command_line_error(ec_cl_strict_mode_incompatible_with_SVR4);
  }
  if (gnu_mode_asked_for()) command_line_error(ec_cl_incompatible_language_modes);
  cfront_2_1_mode = cfront_3_0_mode = SVR4_C_mode = gcc_mode = gpp_mode = false;
}

static void check_modes_of_gnu()
{
  if (!gcc_mode && !gpp_mode) return;
  if (asked_for(opt_svr4, SVR4_C_mode)) command_line_error(ec_cl_incompatible_language_modes);
  SVR4_C_mode = false;
}

//-------------------------------------------------------------------------------------------------
// C.

struct an_option_restriction {
  an_option_id option;
  an_error_code code;
};

// In C any spelling of these is an error, even one that repeats the default.
static const an_option_restriction cplusplus_only[] = {
    {opt_anachronisms, ec_cl_anachronism_option_only_in_cplusplus},
    {opt_suppress_vtbl, ec_cl_vtbl_option_only_in_cplusplus},
    {opt_force_vtbl, ec_cl_vtbl_option_only_in_cplusplus},
    {opt_instantiate, ec_cl_instantiation_option_only_in_cplusplus},
    {opt_auto_instantiation, ec_cl_auto_instantiation_option_only_in_cplusplus},
    {opt_exceptions, ec_cl_exceptions_option_only_in_cplusplus},
    {opt_array_new_and_delete, ec_cl_array_new_and_delete_option_only_in_cplusplus},
    {opt_explicit, ec_cl_explicit_option_only_in_cplusplus},
    {opt_namespaces, ec_cl_namespaces_option_only_in_cplusplus},
    {opt_wchar_t_keyword, ec_cl_wchar_t_option_only_in_cplusplus},
    {opt_bool, ec_cl_bool_option_only_in_cplusplus},
    {opt_special_subscript_cost, ec_cl_special_subscript_cost_option_only_in_cplusplus},
    {opt_typename, ec_cl_typename_option_only_in_cplusplus},
    {opt_implicit_typename, ec_cl_implicit_typename_option_only_in_cplusplus},
    {opt_old_for_init, ec_cl_old_for_init_option_only_in_cplusplus},
    {opt_for_init_diff_warning, ec_cl_for_init_diff_warning_option_only_in_cplusplus},
    {opt_guiding_decls, ec_cl_guiding_decls_option_only_in_cplusplus},
    {opt_old_specializations, ec_cl_old_specializations_option_only_in_cplusplus},
    {opt_implicit_extern_c_type_conversion, ec_cl_impl_extern_c_conv_option_only_in_cplusplus},
    {opt_extern_inline, ec_cl_extern_inline_option_only_in_cplusplus},
    {opt_embedded_cplusplus, ec_cl_embedded_cplusplus_option_only_in_cplusplus},
    {opt_enum_overloading, ec_cl_enum_overloading_option_only_in_cplusplus},
    {opt_nonstd_qualifier_deduction,
     ec_cl_nonstandard_qualifier_deduction_option_only_in_cplusplus},
    {opt_nonstd_using_decl, ec_cl_nonstd_using_decl_option_only_in_cplusplus},
    {opt_class_name_injection, ec_cl_class_name_injection_option_only_in_cplusplus},
    {opt_arg_dep_lookup, ec_cl_arg_dependent_lookup_option_only_in_cplusplus},
    {opt_friend_injection, ec_cl_friend_injection_option_only_in_cplusplus},
    {opt_dep_name, ec_cl_dep_name_option_only_in_cplusplus},
    {opt_parse_templates, ec_cl_parse_nonclass_templates_option_only_in_cplusplus},
    {opt_ignore_std, ec_cl_ignore_std_option_only_in_cplusplus},
    {opt_one_instantiation_per_object, ec_cl_one_instantiation_per_object_option_only_in_cplusplus},
    {opt_late_tiebreaker, ec_cl_late_tiebreaker_option_only_in_cplusplus},
    {opt_pending_instantiations, ec_cl_pending_instantiations_option_only_in_cplusplus},
    {opt_auto_type, ec_cl_auto_type_option_only_in_cplusplus},
    {opt_auto_storage, ec_cl_auto_storage_option_only_in_cplusplus},
};

static const an_option_restriction c_only[] = {
    {opt_designators, ec_cl_designators_option_only_in_C},
    {opt_extended_designators, ec_cl_extended_designators_option_only_in_C},
    {opt_compound_literals, ec_cl_compound_literals_option_only_in_C},
    {opt_embedded_c, ec_cl_embedded_c_option_only_in_C},
};

template <size_t count> static void refuse_options(const an_option_restriction (&rows)[count])
{
  for (const an_option_restriction &row : rows) {
    if (option_seen[row.option]) command_line_error(row.code);
  }
}

static void clear_cpp11_flags()
{
  clear_flags({&auto_type_specifier_enabled,
               &decltype_enabled,
               &enable_underscore_decltype_only,
               &static_assert_enabled,
               &nullptr_enabled,
               &lambdas_enabled,
               &rvalue_references_enabled,
               &variadic_templates_enabled,
               &trailing_return_types_enabled,
               &alias_declarations_enabled,
               &deleted_functions_enabled,
               &defaulted_special_members_enabled,
               &explicit_enum_base_enabled,
               &enum_qualifiers_enabled,
               &cpp11_sfinae_enabled,
               &cpp11_sfinae_ignore_access,
               &explicit_conversion_functions_enabled,
               &right_shift_can_be_angle_brackets,
               &local_types_as_template_args_enabled,
               &decls_using_types_without_linkage_allowed,
               &std_attributes_enabled,
               &char16_t_and_char32_t_are_keywords,
               &cpp11_mode});
}

static void clear_cplusplus_flags()
{
  clear_flags({&rtti_enabled,
               &extern_c_can_throw,
               &bool_is_keyword,
               &array_new_and_delete_enabled,
               &explicit_keyword_enabled,
               &namespaces_enabled,
               &exceptions_enabled,
               &wchar_t_is_keyword,
               &record_form_of_name_reference,
               &enum_types_can_be_larger_than_int,
               &special_subscript_cost,
               &nonstandard_qualifier_deduction,
               &warning_on_for_init_difference,
               &remove_qualifiers_from_param_types,
               &impl_conv_between_c_and_cpp_function_ptrs_allowed,
               &operator_overloading_on_enums_enabled,
               &string_literals_are_const,
               &arg_dependent_lookup_enabled,
               &instantiate_before_pch_creation,
               &instantiate_extern_inline,
               &va_list_in_std_namespace,
               &do_dependent_name_processing,
               &nonstandard_instantiation_lookup_enabled,
               &export_template_allowed,
               &export_keyword_enabled,
               &type_traits_helpers_enabled});
  clear_cpp11_flags();
}

static void apply_c99()
{
  UNLESS_SEEN(vla_enabled, true);
  UNLESS_SEEN(restrict_keyword_enabled, true);
  UNLESS_SEEN(designators_allowed, true);
  UNLESS_SEEN(compound_literals_allowed, true);
  UNLESS_SEEN(variadic_macros_allowed, true);
  UNLESS_SEEN(alternative_tokens_allowed, true);
  set_flags({&pragma_operator_allowed, &end_of_line_comments_allowed, &va_copy_macro_allowed,
             &long_long_is_standard, &long_long_promotion_allowed, &c99_complex_enabled,
             &hex_floating_point_constants_allowed, &flexible_array_members_allowed,
             &universal_character_names_allowed, &allow_nonconstant_auto_aggr_init_in_c_mode,
             &mixed_string_concat_enabled, &std_c99_inlining});
  gnu_c89_inlining = false;
}

static void apply_c()
{
  refuse_options(cplusplus_only);
  if (option_seen[opt_type_traits_helpers]) {
    command_line_error(ec_cl_type_traits_helpers_option_only_in_cplusplus);
  }
  clear_cplusplus_flags();
  use_nonstandard_for_init_scope = true;
  enum_types_can_be_smaller_than_int =
      !in_old_c() && !SVR4_C_mode && !enum_is_int && targ_enum_types_can_be_smaller_than_int;
  if (in_old_c()) alternative_tokens_allowed = false;
  flexible_array_members_allowed = true;
  if (!c99_mode) end_of_line_comments_allowed = !strict_ansi_mode && !in_old_c();
  if (SVR4_C_mode) address_of_ellipsis_allowed = allow_ellipsis_only_param_in_C_mode = true;
  if (c99_mode) apply_c99();
  elab_type_lookup_finds_typedefs = false;
  pragma_operator_allowed = true;
}

//-------------------------------------------------------------------------------------------------
// C++.

static void apply_cfront()
{
  if (!in_cfront_mode()) return;
  UNLESS_SEEN(special_subscript_cost, cfront_3_0_mode);
  UNLESS_SEEN(allow_nonconst_call_anachronism, cfront_2_1_mode);
  UNLESS_SEEN(allow_anachronisms, true);
  UNLESS_SEEN(allow_nonconst_ref_anachronism, true);
  UNLESS_SEEN(long_lifetime_temps, true);
  UNLESS_SEEN(implicit_typename_enabled, true);
  UNLESS_SEEN(use_nonstandard_for_init_scope, true);
  UNLESS_SEEN(allow_copy_assignment_op_with_base_class_param, true);
  UNLESS_SEEN(old_specializations_allowed, true);
  UNLESS_SEEN(impl_conv_between_c_and_cpp_function_ptrs_allowed, true);
  UNLESS_SEEN(do_late_ovl_res_tiebreaker, true);
  if (!option_seen[opt_friend_injection]) {
    friend_class_injection_enabled = friend_function_injection_enabled = true;
  }
  UNLESS_SEEN(nonstandard_default_arg_deduction, true);
  UNLESS_SEEN(bool_is_keyword, false);
  UNLESS_SEEN(explicit_keyword_enabled, false);
  UNLESS_SEEN(typename_enabled, false);
  UNLESS_SEEN(guiding_decls_allowed, false);
  UNLESS_SEEN(extern_inline_allowed, false);
  UNLESS_SEEN(operator_overloading_on_enums_enabled, false);
  UNLESS_SEEN(string_literals_are_const, false);
  UNLESS_SEEN(do_dependent_name_processing, false);
  UNLESS_SEEN(export_template_allowed, false);
  UNLESS_SEEN(export_keyword_enabled, false);
  UNLESS_SEEN(nonclass_prototype_instantiations, false);
  set_flags({&ptr_to_unknown_bound_array_allowed_in_param_type,
             &ref_to_unknown_bound_array_allowed_in_param_type,
             &no_access_check_on_friend_declarator_ids});
}

static void apply_cplusplus()
{
  refuse_options(c_only);
  if (option_seen[opt_gcc89_inlining]) command_line_error(ec_cl_gnu_c89_inlining_option_only_in_C);
  SVR4_C_mode = c99_mode = false;
  enum_types_can_be_larger_than_int = !enum_is_int;
  enum_types_can_be_smaller_than_int = !enum_is_int && targ_enum_types_can_be_smaller_than_int;
  UNLESS_SEEN(long_preserving_rules, false);
  UNLESS_SEEN(vla_enabled, false);
  clear_flags({&vla_deallocations_in_il, &designators_allowed, &extended_designators_allowed,
               &compound_literals_allowed, &pack_all_structs});
  set_flags({&end_of_line_comments_allowed, &universal_character_names_allowed,
             &elab_type_lookup_finds_typedefs, &pragma_operator_allowed});
}

static void apply_plain_cplusplus()
{
  if (strict_ansi_mode || gpp_mode || in_cfront_mode()) return;
  right_shift_can_be_angle_brackets = false;
  UNLESS_SEEN(variadic_macros_allowed, true);
  set_flags({&mixed_string_concat_enabled, &extended_friends_enabled, &pragma_operator_allowed,
             &extern_template_allowed, &standard_form_of_extern_template});
}

//-------------------------------------------------------------------------------------------------
// Strict mode.

static void apply_strict_cplusplus()
{
  clear_flags({&ptr_to_unknown_bound_array_allowed_in_param_type,
               &ref_to_unknown_bound_array_allowed_in_param_type,
               &single_ref_qual_ovl_res_tiebreaker, &floating_point_template_parameters_allowed,
               &no_access_check_on_friend_declarator_ids});
  dependent_lookup_finds_static_functions = true;
  UNLESS_SEEN(alternative_tokens_allowed, true);
  UNLESS_SEEN(wchar_t_is_keyword, true);
  UNLESS_SEEN(bool_is_keyword, true);
  UNLESS_SEEN(array_new_and_delete_enabled, true);
  UNLESS_SEEN(explicit_keyword_enabled, true);
  UNLESS_SEEN(namespaces_enabled, true);
  UNLESS_SEEN(typename_enabled, true);
  UNLESS_SEEN(extern_inline_allowed, true);
  UNLESS_SEEN(operator_overloading_on_enums_enabled, true);
  UNLESS_SEEN(string_literals_are_const, true);
  UNLESS_SEEN(class_name_injection_enabled, true);
  UNLESS_SEEN(arg_dependent_lookup_enabled, true);
  UNLESS_SEEN(do_dependent_name_processing, true);
  UNLESS_SEEN(nonclass_prototype_instantiations, true);
  UNLESS_SEEN(long_lifetime_temps, false);
  UNLESS_SEEN(implicit_typename_enabled, false);
  UNLESS_SEEN(special_subscript_cost, false);
  UNLESS_SEEN(use_nonstandard_for_init_scope, false);
  UNLESS_SEEN(warning_on_for_init_difference, false);
  UNLESS_SEEN(guiding_decls_allowed, false);
  UNLESS_SEEN(old_specializations_allowed, false);
  UNLESS_SEEN(impl_conv_between_c_and_cpp_function_ptrs_allowed, false);
  if (!option_seen[opt_friend_injection]) {
    friend_class_injection_enabled = friend_function_injection_enabled = false;
  }
  UNLESS_SEEN(export_template_allowed, false);
  UNLESS_SEEN(nonstandard_using_decl_allowed, false);
  UNLESS_SEEN(nonstandard_qualifier_deduction, false);
  UNLESS_SEEN(nonstandard_default_arg_deduction, false);
  UNLESS_SEEN(nonstandard_instantiation_lookup_enabled, false);
  UNLESS_SEEN(do_late_ovl_res_tiebreaker, false);
  UNLESS_SEEN(allow_copy_assignment_op_with_base_class_param, false);
  UNLESS_SEEN(exceptions_enabled, false);
  if (option_seen[opt_ignore_std]) {
    command_line_error(ec_cl_strict_mode_incompatible_with_ignore_std);
  }
  ignore_std_namespace = false;
}

static void apply_strict_c()
{
  UNLESS_SEEN(alternative_tokens_allowed, true);
  if (c99_mode) return;
  UNLESS_SEEN(vla_enabled, false);
  UNLESS_SEEN(designators_allowed, false);
  UNLESS_SEEN(compound_literals_allowed, false);
  UNLESS_SEEN(long_long_is_standard, false);
}

static void apply_strict()
{
  if (!strict_ansi_mode) return;
  long_long_promotion_allowed = false;
  if (asked_for(opt_anachronisms, allow_anachronisms) ||
      asked_for(opt_nonconst_ref_anachronism, allow_nonconst_ref_anachronism)) {
    command_line_error(ec_cl_strict_mode_incompatible_with_anachronisms);
  }
  allow_anachronisms = allow_nonconst_ref_anachronism = false;
  if (option_seen[opt_long_preserving_rules]) {
    command_line_error(ec_cl_strict_mode_incompatible_with_long_preserving);
  }
  UNLESS_SEEN(trigraphs_allowed, true);
  UNLESS_SEEN(extended_designators_allowed, false);
  UNLESS_SEEN(extended_variadic_macros_allowed, false);
  UNLESS_SEEN(allow_dollar_in_id_chars, false);
  UNLESS_SEEN(uliterals_enabled, false);
  UNLESS_SEEN(check_concatenations, true);
  if (!c99_mode) {
    flexible_array_members_allowed = false;
    UNLESS_SEEN(variadic_macros_allowed, false);
    UNLESS_SEEN(restrict_keyword_enabled, false);
  }
  if (in_c()) {
    apply_strict_c();
  } else {
    apply_strict_cplusplus();
  }
}

//-------------------------------------------------------------------------------------------------
// Implications.

static void settle_template_features()
{
  if (!do_dependent_name_processing) UNLESS_SEEN(export_template_allowed, false);
  if (export_template_allowed && !do_dependent_name_processing) {
    command_line_error(ec_cl_export_template_requires_dep_name);
  }
  if (export_template_allowed && !distinct_template_signatures) {
    command_line_error(ec_cl_export_template_requires_distinct_templ_sigs);
  }
  if (trans_unit_test_mode) {
    export_template_allowed = false;
    set_severity_for_error_number(ec_no_export_support, es_warning, nullptr, true);
  }
  if (!do_dependent_name_processing) return;
  if (!nonclass_prototype_instantiations && option_seen[opt_parse_templates]) {
    command_line_error(ec_cl_dep_name_requires_parse_nonclass_templates);
  }
  nonclass_prototype_instantiations = true;
  arg_dependent_lookup_enabled = true;
}

static void settle_meaning_of_auto()
{
  if (auto_type_specifier_enabled || auto_storage_class_specifier_enabled) return;
  if (option_seen[opt_auto_type] && option_seen[opt_auto_storage]) {
    command_line_error(ec_cl_auto_cannot_be_disabled);
  }
  (option_seen[opt_auto_storage] ? auto_type_specifier_enabled
                                 : auto_storage_class_specifier_enabled) = true;
}

static void apply_implications()
{
  if (extended_designators_allowed) designators_allowed = true;
  if (extended_variadic_macros_allowed) variadic_macros_allowed = true;
  settle_template_features();
  if (lambdas_enabled) {
    local_types_as_template_args_enabled = decls_using_types_without_linkage_allowed = true;
  }
  if (long_lifetime_temps && (lambdas_enabled || cpp11_sfinae_enabled)) {
    command_line_error(ec_cl_long_lifetime_temps_incompat_with_newer_features);
  }
  settle_meaning_of_auto();
}

//-------------------------------------------------------------------------------------------------
// What is left.

static void settle_instantiation()
{
  if (instantiation_mode == 3 && automatic_instantiation_mode) {
    if (option_seen[opt_auto_instantiation]) {
      command_line_error(ec_cl_tim_local_conflicts_with_auto_instantiation);
    }
    automatic_instantiation_mode = false;
  }
  if (!one_instantiation_per_object) {
    instantiation_dir_name = nullptr;
  } else if (instantiation_dir_name == nullptr) {
    instantiation_dir_name = current_directory_name;
  }
}

static void settle_the_rest()
{
  if (in_cplusplus() && uliterals_enabled) char16_t_and_char32_t_are_keywords = true;
  if (nonclass_prototype_instantiations) UNLESS_SEEN(implicit_typename_enabled, false);
  restrict_enabled = true;
  if (ignore_std_namespace) va_list_in_std_namespace = false;
  settle_instantiation();
  enum_type_is_integral = in_c() || in_cfront_mode();
  anachronism_error_severity = allow_anachronisms ? es_warning : es_error;
  if (allow_anachronisms) allow_nonconst_ref_anachronism = true;
  if (use_nonstandard_for_init_scope) warning_on_for_init_difference = false;
  pcc_preprocessing_mode = in_old_c() || old_style_preprocessing;
  UNLESS_SEEN(no_token_separators_in_pp_output, pcc_preprocessing_mode);
  // Without the module that makes and reads them nothing is asked for.
  bool wants_pch = automatic_pch_processing || create_precompiled_header || use_precompiled_header;
  precompiled_header_processing_required = wants_pch && pch_option_hook != nullptr;
  use_predefined_macro_file = *zok_base_directory != '\0';
}

void reconcile_dialect()
{
  settle_language();
  if (emulate_unsafe_gnu_abi_bugs) emulate_gnu_abi_bugs = true;
  settle_default_gnu_mode();
  check_modes_of_language();
  check_modes_of_strict();
  check_modes_of_gnu();
  if (in_c()) {
    apply_c();
  } else {
    apply_cfront();
    apply_cplusplus();
    apply_plain_cplusplus();
  }
  apply_strict();
  apply_implications();
  apply_gnu_modes();
  TRG_check_cmd_options();
  settle_the_rest();
}
