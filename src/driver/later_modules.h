// later_modules.h - entry points of modules that are not part of the system yet, in the places
// where the pipeline calls them.  They are weak: what is absent is null, and the driver goes on
// without it.  A module that arrives declares its routines in its own header, and its rows here and
// the tests of them go.
#pragma once
#include "il/il_fwd.h"
#include "mem/mem_manage.h"

#define LATER __attribute__((weak))

// Precompiled headers.
LATER void pch_early_init();
LATER void pch_one_time_init();
LATER void pch_init();
LATER void pch_prefix_processing_for_preinclude();
LATER void pch_fixup_part_2();
LATER void precompiled_header_processing();

// Templates.
LATER void def_arg_one_time_init();
LATER void def_arg_init();
LATER void templates_one_time_init();
LATER void templates_init();
LATER void templates_trans_unit_init();
LATER void template_and_inline_function_wrapup();
LATER void count_instantiations_of_secondary_unit();
LATER void externalize_entities_for_exported_templates(a_scope *scope);
LATER void clear_instantiation_required_of_unreal_members();
LATER void clear_instantiation_required_on_unneeded_entities();
LATER void remove_unneeded_static_data_member_instantiations();
LATER void make_statics_referenced_from_instantiations_external();
LATER void update_auto_instantiation_flags();
LATER void update_inline_function_flags();
LATER void wrapup_auto_instantiation_information();

// Secondary translation units.
LATER void trans_copy_one_time_init();
LATER void corresp_one_time_init();
LATER void corresp_init();
LATER void corresp_trans_unit_init();
LATER void set_trans_unit_correspondences();
LATER void mark_secondary_trans_unit_IL_entities_used_from_primary_as_needed();
LATER void copy_secondary_trans_unit_IL_to_primary();

// Classes and namespaces of C++.
LATER void clean_up_all_object_lifetimes(a_scope *scope);
LATER void enter_predeclared_type_info_classes();
LATER void init_name_linkage_constants();
LATER void check_class_linkage();

// Checkers.
LATER void ulp_early_init();
LATER void check_scope_for_ulp_violations(a_scope *scope);

// Lowering of OpenMP, and the assembly extensions.
LATER void lower_omp_one_time_init();
LATER void lower_omp_trans_unit_init();
LATER void clear_parent_information();
LATER void extasm_one_time_init();

// Calls a routine of a module that may be absent.
#define call_if_present(routine, ...)                                                              \
  do {                                                                                             \
    if ((routine) != nullptr) routine(__VA_ARGS__);                                                \
  } while (0)
