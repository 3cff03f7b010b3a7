// fe_init.cpp - initialisation of all modules in its fixed order.
// Rule:    later modules read what earlier ones set: the order is part of the meaning.
// Entry:   fe_early_init, fe_one_time_init, fe_init_part_1, fe_translation_unit_init,
//          fe_init_part_2.
#include "driver/fe_init.h"
#include <cstdlib>
#include <cstring>
#include <ctime>
#include "check/misra.h"
#include "consts/const_ints.h"
#include "consts/float_pt.h"
#include "consts/fp_constraints.h"
#include "driver/cfe.h"
#include "driver/cmd_line.h"
#include "driver/flags.h"
#include "driver/host_envir.h"
#include "driver/host_mapping.h"
#include "driver/il_file.h"
#include "driver/later_modules.h"
#include "driver/rov_util.h"
#include "driver/sys_predef.h"
#include "driver/target.h"
#include "driver/trans_unit.h"
#include "errors/error.h"
#include "il/il.h"
#include "il/il_to_str.h"
#include "il/il_walk.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/macro.h"
#include "lex/pragma.h"
#include "lex/preproc.h"
#include "lex/sections.h"
#include "lex/source_input.h"
#include "lex/token_cache.h"
#include "lower/lower_c99.h"
#include "lower/lower_il.h"
#include "lower/lower_name.h"
#include "mem/mem_manage.h"
#include "parse/attribute.h"
#include "parse/class_decl.h"
#include "parse/decl_spec.h"
#include "parse/decls.h"
#include "parse/expr.h"
#include "parse/layout.h"
#include "parse/lookup.h"
#include "parse/scope_stk.h"
#include "parse/statements.h"
#include "parse/symbol_messages.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"
#include "lower/lower_c99.h"
#include "lower/lower_il.h"

const char *compile_time_text;

static void clear_current_positions()
{
  pos_curr_token = null_source_position;
  error_position = null_source_position;
}

// ---- Before the command line ----

void fe_early_init()
{
  mem_manage_early_init();
  install_mapping_hooks();
  host_envir_early_init();
  target_early_init();
  cmd_line_early_init();
  error_early_init();
  call_if_present(pch_early_init);
  il_write_early_init();
  depth_scope_stack = -1;
  trans_unit_early_init();
  misra_early_init();
  call_if_present(ulp_early_init);
}

// ---- Behind the command line ----

void fe_one_time_init()
{
  clear_current_positions();
  if (multibyte_chars_in_source_enabled) set_multibyte_locale();
  target_one_time_init();
  host_envir_one_time_init();
  decls_one_time_init();
  call_if_present(def_arg_one_time_init);
  error_one_time_init();
  install_symbol_message_hooks();
  expr_one_time_init();
  il_one_time_init();
  types_one_time_init();
  lookup_one_time_init();
  lexical_one_time_init();
  macro_one_time_init();
  mem_manage_one_time_init();
  call_if_present(pch_one_time_init);
  pragma_one_time_init();
  sections_one_time_init();
  target_pragma_handlers.function_options = [](const char *name, const a_source_position *position) {
    get_opt_override(name, position);
  };
  qualified_name_one_time_init();
  preproc_hooks.builtin_va_list_is_declared = [] { return builtin_va_list_type != nullptr; };
  preproc_hooks.declare_builtin_va_list_type = declare_builtin_va_list_type;
  preproc_one_time_init();
  statements_one_time_init();
  symbol_tbl_one_time_init();
  scope_stk_one_time_init();
  call_if_present(templates_one_time_init);
  call_if_present(trans_copy_one_time_init);
  trans_unit_one_time_init();
  call_if_present(corresp_one_time_init);
  il_lower_one_time_init();
  lower_region_hook = lower_il_memory_region;
  lower_c99_one_time_init();
  call_if_present(lower_omp_one_time_init);
  name_lower_one_time_init();
  call_if_present(extasm_one_time_init);
  if (check_misra_c_2004) misra_one_time_init();
}

// ---- The primary unit ----

static void init_modules()
{
  error_init();
  mem_manage_init();
  host_envir_init();
  if (object_file_name == nullptr) {
    object_file_name = derived_name(primary_source_file_name, "obj");
  }
  il_to_str_init();
  il_walk_init();
  lexical_init();
  symbol_tbl_init();
  scope_stk_init();
  decls_init();
  class_decl_init();
  layout_init();
  call_if_present(def_arg_init);
  call_if_present(templates_init);
  call_if_present(corresp_init);
  expr_init();
  macro_init();
  statements_init();
  call_if_present(pch_init);
  pragma_init();
  preproc_init();
  target_init();
  const_ints_init();
  float_pt_init();
  FP_OPERATION_CONSTRAINTS_FACTORY();
  il_lower_init();
  lower_c99_init();
  name_lower_init();
  attribute_init();
}

static void record_modes_in_il_header()
{
  il_header.plain_char_is_signed = targ_has_signed_chars;
  il_header.source_language = C_dialect == 2 ? 0 : 1;
  il_header.is_old_c_dialect = C_dialect == 1;
  il_header.is_c99 = c99_mode;
  il_header.enum_is_integral = enum_type_is_integral;
  il_header.max_member_alignment = default_max_member_alignment;
  il_header.gcc_mode = gcc_mode;
  il_header.gpp_mode = gpp_mode;
  il_header.gnu_version = uint32_t(gnu_version);
  il_header.prototype_instantiations_in_il = prototype_instantiations_in_il;
  il_header.nonclass_prototype_instantiations_in_il =
      prototype_instantiations_in_il && nonclass_prototype_instantiations;
}

static void open_pp_output()
{
  if (pp_file_name != nullptr) {
    f_pp_output =
        open_output_file_with_error_handling(pp_file_name, false, false, 0, ec_file_kind_pp_output);
  } else {
    f_pp_output = stdout;
  }
}

// A build that must come out the same each time gives its date in SOURCE_DATE_EPOCH.
static const char *current_time_text()
{
  static char text[32];
  const char *epoch = getenv("SOURCE_DATE_EPOCH");
  time_t now = epoch != nullptr ? time_t(strtoll(epoch, nullptr, 10)) : time(nullptr);
  tm parts;
  if ((epoch != nullptr ? gmtime_r(&now, &parts) : localtime_r(&now, &parts)) == nullptr ||
      strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y\n", &parts) == 0) {
    strcpy(text, "Thu Jan  1 00:00:00 1970\n");
  }
  return text;
}

void fe_init_part_1()
{
  compile_time_text = current_time_text();
  in_front_end = true;
  depth_stmt_stack = -1;
  init_modules();
  if (C_dialect == 2 && make_all_functions_unprototyped) {
    pass_stdarg_references_to_generated_code = false;
  }
  record_modes_in_il_header();
  if (pp_output_file_needed) open_pp_output();
  if (do_preprocessing_only) return;
  if (!suppress_il_file_write) open_il_output_file();
  start_il_file();
}

// ---- Every unit ----

static void init_modules_for_translation_unit()
{
  attribute_trans_unit_init();
  mem_manage_trans_unit_init(is_primary_translation_unit);
  host_envir_trans_unit_init();
  error_trans_unit_init();
  il_trans_unit_init();
  types_trans_unit_init();
  decls_trans_unit_init();
  lexical_trans_unit_init();
  symbol_tbl_trans_unit_init();
  scope_stk_trans_unit_init();
  call_if_present(templates_trans_unit_init);
  call_if_present(corresp_trans_unit_init);
  expr_trans_unit_init();
  statements_trans_unit_init();
  macro_trans_unit_init();
  preproc_trans_unit_init();
  sections_trans_unit_init();
  il_lower_trans_unit_init();
  lower_c99_trans_unit_init();
  call_if_present(lower_omp_trans_unit_init);
}

static void open_file_scope()
{
  file_scope_number = take_next_scope_number();
  a_scope *scope = new_il_region(sck_file, file_scope_number, nullptr);
  curr_translation_unit->primary_scope = scope;
  il_header.primary_scope = scope;
  push_file_scope(psf_none);
}

static void enter_predeclared_symbols_of_cplusplus()
{
  make_symbol_for_namespace_std();
  if (ignore_std_namespace || gpp_mode) enter_symbol_for_namespace_std();
  make_symbol_for_namespace_abi();
  call_if_present(enter_predeclared_type_info_classes);
  enter_predeclared_operator_new_and_delete();
}

void fe_translation_unit_init()
{
  clear_current_positions();
  init_modules_for_translation_unit();
  if (!is_primary_translation_unit) {
    cannot_do_pch_processing = true;
    using_a_pch_file = false;
  }
  enter_keywords();
  init_predefined_macros(compile_time_text);
  open_file_scope();
  if (C_dialect == 2) enter_predeclared_symbols_of_cplusplus();
  enter_system_specific_predeclared_symbols();
  if (is_primary_translation_unit) {
    call_if_present(init_name_linkage_constants);
  } else {
    generate_pp_output = false;
    do_preprocessing_only = false;
  }
}

// ---- The first line ----

static void open_primary_file()
{
  int saved_region = curr_il_region_number;
  curr_il_region_number = file_scope_region_number;
  if (is_primary_translation_unit) il_header.source_files = nullptr;
  open_file_and_push_input_stack(trans_unit_file_name, false, false, false, false, false, false,
                                 false);
  curr_translation_unit->primary_source_file = curr_ise->first_source_file;
  curr_il_region_number = saved_region;
}

static void start_preincludes()
{
  next_preinclude_file = macro_preinclude_file_list;
  processing_macro_preincludes = true;
  push_next_preinclude_file();
}

static const char *copy_to_il(const char *text)
{
  return text != nullptr ? copy_string_to_region(true, text) : nullptr;
}

void fe_init_for_pch_prefix_scan()
{
  open_primary_file();
  read_logical_source_line(true, false);
}

void fe_init_part_2()
{
  open_primary_file();
  if (!using_a_pch_file) start_preincludes();
  read_logical_source_line(true, false);
  if (is_primary_translation_unit) {
    il_header.version_string = front_end_version_text;
    il_header.compilation_date = copy_to_il(compile_time_text);
    il_header.instantiation_dir_name = copy_to_il(instantiation_dir_name);
  }
  if (using_a_pch_file) {
    fixup_predefined_macros(compile_time_text);
    building_pch_prefix = true;
  }
}
