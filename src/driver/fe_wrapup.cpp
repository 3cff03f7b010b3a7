// fe_wrapup.cpp - the parse of a unit, its wrap-up, and the wrap-up of the whole program.
// Rule:    the order is part of the meaning: marking what is needed comes after the last lowering
//          that can need something, elimination after the marking.
// Entry:   translation_unit, translation_unit_wrapup, fe_wrapup, fe_wrapup_part_2.
#include "driver/fe_wrapup.h"
#include <cerrno>
#include <cstdio>
#include "check/misra.h"
#include "driver/cfe.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/il_file.h"
#include "driver/later_modules.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_walk.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/pragma.h"
#include "lex/preproc.h"
#include "lex/source_input.h"
#include "lower/lower_il.h"
#include "lower/lower_name.h"
#include "mem/mem_manage.h"
#include "parse/class_decl.h"
#include "parse/decls.h"
#include "parse/func_def.h"
#include "parse/scope_stk.h"
#include "parse/symbol_tbl.h"
#include "lower/lower_c99.h"
#include "lower/lower_il.h"

static bool in_cfront_mode()
{
  return cfront_2_1_mode || cfront_3_0_mode;
}

static bool is_cplusplus()
{
  return C_dialect == 2;
}

// The declarations are those of a whole unit, not of preprocessing alone.
static bool unit_was_parsed()
{
  return !do_preprocessing_only;
}

// ---- The parse ----

static bool is_strict_c89()
{
  return !c99_mode && C_dialect == 0 && strict_ansi_mode && strict_ansi_error_severity == es_error;
}

static void parse_declarations()
{
  if (check_misra_c_2004 && !is_strict_c89()) misra_check_language_version();
  while (curr_token != tok_end_of_source) {
    if (c99_mode || fixed_point_enabled) check_for_stdc_pragmas();
    declaration(false, false, true, false, nullptr, nullptr);
  }
}

static void run_file_scope_checks()
{
  if (depth_scope_stack < 0) return;
  a_scope *file_scope = curr_translation_unit->primary_scope;
  if (check_misra_c_2004) misra_check_file_scope(file_scope);
  if (check_ulp) call_if_present(check_scope_for_ulp_violations, file_scope);
}

void translation_unit()
{
  if (using_a_pch_file) call_if_present(pch_prefix_processing_for_preinclude);
  if (macro_preinclude_file_list != nullptr) process_macro_preincludes();
  next_token_is_top_level_decl_start = true;
  get_token();
  next_token_is_top_level_decl_start = false;
  if (next_event_resumes_compilation) call_if_present(pch_fixup_part_2);
  if (curr_token != tok_end_of_source) {
    parse_declarations();
  } else if (!is_cplusplus() && strict_ansi_mode) {
    diagnostic(strict_ansi_error_severity, ec_empty_translation_unit);
  }
  run_file_scope_checks();
  if (c99_mode) check_for_stdc_pragmas();
  process_curr_token_pragmas();
}

// ---- A unit's wrap-up ----

void translation_unit_wrapup()
{
  if (unit_was_parsed() && in_cfront_mode()) call_if_present(check_class_linkage);
  if (is_cplusplus() && unit_was_parsed()) define_needed_generated_routines(false);
  pop_scope();
  push_file_scope(1);
  if (unit_was_parsed()) call_if_present(set_trans_unit_correspondences);
  make_module_id(nullptr);
  lower_functions_waiting_for_module_id();
  if (is_cplusplus() && !is_primary_translation_unit && unit_was_parsed()) {
    call_if_present(count_instantiations_of_secondary_unit);
  }
}

// ---- Steps of the whole program's wrap-up, on the unit in force ----

static a_scope *file_scope_of_unit()
{
  return curr_translation_unit->primary_scope;
}

// The scope's last declarations, fixups and names.
static void finish_declarations_of_unit()
{
  lexical_trans_unit_wrapup();
  if (in_cfront_mode() && is_primary_translation_unit && unit_was_parsed()) {
    call_if_present(check_class_linkage);
  }
  wrapup_scope(file_scope_of_unit(), sck_file, curr_translation_unit->scope_pointers, true, 0);
  wrapup_namespace_scopes();
  if (is_cplusplus()) do_based_type_fixup();
  if (il_lowering_needed()) {
    do_all_name_mangling(false);
    call_if_present(externalize_entities_for_exported_templates, file_scope_of_unit());
  }
  if (is_cplusplus() && !prototype_instantiations_in_il) {
    call_if_present(clear_instantiation_required_of_unreal_members);
  }
}

static void make_statics_external_for_instantiations()
{
  if (!one_instantiation_per_object || !il_lowering_needed()) return;
  end_of_file_scope_needed_flags_phase = true;
  call_if_present(make_statics_referenced_from_instantiations_external);
  end_of_file_scope_needed_flags_phase = false;
}

static void mark_needed_entities()
{
  set_needed_flags_at_end_of_file_scope(file_scope_of_unit());
  make_statics_external_for_instantiations();
}

static void mark_kept_entities()
{
  end_of_file_scope_needed_flags_phase = true;
  mark_to_keep_in_il(file_scope_of_unit(), iek_scope);
  end_of_file_scope_needed_flags_phase = false;
}

static void eliminate_what_is_not_needed()
{
  if (total_errors != 0) okay_to_eliminate_unneeded_il_entries = false;
  if (total_errors == 0 && is_cplusplus()) {
    call_if_present(clear_instantiation_required_on_unneeded_entities);
  }
  if (!okay_to_eliminate_unneeded_il_entries) return;
  eliminate_bodies_of_unneeded_functions();
  eliminate_unneeded_il_entries(file_scope_of_unit());
}

// What only the primary unit has to do once its scope is closed.
static void finish_primary_il()
{
  if (total_errors == 0) {
    mark_needed_entities();
    mark_kept_entities();
  }
  if (il_lowering_needed()) do_final_name_mangling();
  eliminate_what_is_not_needed();
  if (il_lowering_needed() && perform_type_list_ordering) {
    fix_type_list_ordering_problems(file_scope_of_unit());
  }
  check_for_done_with_all_function_memory_regions();
  if (is_cplusplus()) {
    if (total_errors == 0) {
      call_if_present(update_auto_instantiation_flags);
      call_if_present(update_inline_function_flags);
    }
    call_if_present(wrapup_auto_instantiation_information);
  }
  if (il_lowering_needed()) call_if_present(clear_parent_information);
  check_for_done_with_memory_region(file_scope_region_number);
}

// Lowers and closes the file scope.
static void close_unit()
{
  if (is_primary_translation_unit) {
    if (is_cplusplus()) call_if_present(remove_unneeded_static_data_member_instantiations);
    lower_il_memory_region(file_scope_region_number);
  }
  empty_shareable_constants_table();
  if (is_primary_translation_unit && is_cplusplus()) {
    pop_object_lifetime();
    if (il_lowering_needed()) {
      call_if_present(clean_up_all_object_lifetimes, file_scope_of_unit());
    }
  }
  pop_scope();
  if (is_primary_translation_unit) finish_primary_il();
}

// ---- The whole program ----

// One line for each macro with text, and where it was defined.
static void list_macros_of_unit()
{
  for (a_macro *macro = il_header.macros; macro != nullptr; macro = macro->next) {
    if (macro->text == nullptr || *macro->text == '\0') continue;
    const char *file_name = "";
    const char *full_name;
    a_line_number line;
    bool at_end_of_file;
    if (macro->predefined) {
      fprintf(f_pp_output, "%s\t/* Predefined */\n", macro->text);
      continue;
    }
    conv_seq_to_file_and_line(macro->source_corresp.decl_position.seq, &file_name, &full_name,
                              &line, &at_end_of_file);
    if (*file_name != '\0') {
      fprintf(f_pp_output, "%s\t/* %s */\n", macro->text, file_name);
    } else {
      fprintf(f_pp_output, "%s\n", macro->text);
    }
  }
}

template <class F> static void for_secondary_units(F step)
{
  for (a_translation_unit *unit = translation_units->next; unit != nullptr; unit = unit->next) {
    switch_translation_unit(unit);
    step();
  }
}

static void list_all_macros()
{
  if (f_pp_output == nullptr) return;
  list_macros_of_unit();
  for_secondary_units(list_macros_of_unit);
  switch_translation_unit(translation_units);
}

static void finish_secondary_units()
{
  bool no_errors = total_errors == 0;
  if (no_errors) for_secondary_units(mark_needed_entities);
  if (no_errors) for_secondary_units(mark_kept_entities);
  for_secondary_units(eliminate_what_is_not_needed);
  for_secondary_units(close_unit);
  if (total_errors == 0 && !trans_unit_test_mode && !suppress_il_lowering) {
    call_if_present(copy_secondary_trans_unit_IL_to_primary);
    function_body_processing_delayed_on_some_func_in_primary_il = true;
  }
}

// Functions whose lowering waited for the end of the file: the inline ones first.
static void finish_delayed_functions()
{
  if (!function_body_processing_delayed_on_some_func_in_primary_il) return;
  for (int inline_only = 1; inline_only >= 0; inline_only--) {
    for (a_memory_region_number region = 2; region <= highest_used_region_number; region++) {
      finish_function_processing_for_memory_region(region, inline_only != 0);
    }
  }
  function_body_processing_delayed_on_some_func_in_primary_il = false;
}

static void free_regions_of_secondary_units()
{
  for (a_memory_region_number region = 2; region <= highest_used_region_number; region++) {
    a_scope *root = region_scope_table[region];
    bool is_kept = root != nullptr && entry_flags_of(root).keep_in_il;
    if (mem_region_table[region] != nullptr && !is_kept) free_memory_region(region);
  }
}

static void close_listings()
{
  finish_il_file();
  if (f_pp_output != nullptr) {
    close_output_file_with_error_handling(&f_pp_output, ec_file_kind_pp_output);
  }
  if (f_xref_info != nullptr) {
    close_output_file_with_error_handling(&f_xref_info, ec_file_kind_xref);
  }
  curr_stop_token_stack_entry = nullptr;
  clear_file_index_list();
}

void fe_wrapup()
{
  switch_translation_unit(translation_units);
  if (is_cplusplus()) call_if_present(template_and_inline_function_wrapup);
  if (list_macro_definitions) gen_pp_output_for_macro_definitions();
  if (list_macros) list_all_macros();
  for_secondary_units(finish_declarations_of_unit);
  switch_translation_unit(translation_units);
  finish_declarations_of_unit();
  if (total_errors == 0) {
    call_if_present(mark_secondary_trans_unit_IL_entities_used_from_primary_as_needed);
  }
  bool has_secondary_units = translation_units->next != nullptr;
  if (has_secondary_units) {
    finish_secondary_units();
    switch_translation_unit(translation_units);
  }
  finish_delayed_functions();
  close_unit();
  if (has_secondary_units) free_regions_of_secondary_units();
  close_listings();
  in_front_end = false;
  if (check_misra_c_2004) misra_wrapup();
}

static void close_raw_listing()
{
  if (f_raw_listing == nullptr) return;
  bool failed = fflush(f_raw_listing) != 0 || ferror(f_raw_listing) != 0;
  failed = fclose(f_raw_listing) != 0 || failed;
  f_raw_listing = nullptr;
  if (failed) file_write_error(ec_file_kind_raw_listing, 0);
}

void fe_wrapup_part_2()
{
  close_il_output_file();
  close_raw_listing();
  write_signoff();
  free_all_memory_regions();
}
