// overload_reference.cpp - the operand that a reference is initialized with.
// Entry:   prep_reference_initializer_operand, temp_init_from_operand.
// See:     C++98 8.5.3, 12.2.
#include "consts/folding.h"
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/overload.h"
#include "parse/overload_private.h"

// One initialization of a reference.
struct a_reference_init {
  an_operand *operand;
  a_type *reference_type;
  a_type *referred;
  a_reference_binding binding;
  unsigned flags;
  an_error_code code;
  a_source_position position;
};

// -------------------------------------------------------------------------------------------------
// Temporaries

void temp_init_from_operand(an_operand *operand, a_type *type, bool is_static)
{
  if (operand->kind == ok_error) return;
  an_operand saved = *operand;
  a_dynamic_init *init = nullptr;
  an_expr_node *temporary;
  if (operand->kind == ok_constant) {
    temporary =
        create_expr_temporary(type, true, is_static, false, dik_constant, &saved.position, &init);
    init->variant.constant = alloc_unshared_constant(constant_of_operand(operand));
  } else {
    an_expr_node *value = make_node_from_operand(operand);
    temporary =
        create_expr_temporary(type, true, is_static, false, dik_expression, &saved.position, &init);
    init->variant.expr = value;
  }
  make_lvalue_expression_operand(temporary, operand);
  restore_operand_details_incl_ref(operand, &saved);
}

// A class rvalue that is in memory already needs no second temporary.
static bool is_temporary_already(const an_operand *operand)
{
  return operand->kind == ok_expression && operand->value.expr->kind == enk_temp_init;
}

static void make_temporary(an_operand *operand, a_type *type, unsigned flags)
{
  if (is_temporary_already(operand))
    conv_class_rvalue_operand_to_lvalue(operand);
  else
    temp_init_from_operand(operand, type, (flags & rif_static) != 0);
}

// -------------------------------------------------------------------------------------------------
// Messages

static void report(const a_reference_init *init, an_error_severity severity, an_error_code code)
{
  expr_pos_diagnostic(severity, code, init->position);
  if (severity >= es_error) conv_to_error_operand(init->operand);
}

static void report_types(const a_reference_init *init, an_error_code code)
{
  expr_pos_ty2_diagnostic(es_error, code, init->position, init->referred, init->operand->type);
  conv_to_error_operand(init->operand);
}

static bool old_dialect_binds_rvalues(const a_reference_init *init)
{
  if (allow_anachronisms) return true;
  if ((cfront_2_1_mode || cfront_3_0_mode) && !(init->flags & rif_lives_on)) return true;
  return allow_nonconst_ref_anachronism && is_class_struct_union_type(init->referred);
}

// An rvalue of the very type meets a reference that takes lvalues only.
static void reject_rvalue(const a_reference_init *init)
{
  report(init, old_dialect_binds_rvalues(init) ? es_warning : es_error,
         init->binding.const_volatile_blocks ? ec_const_volatile_ref_init_from_rvalue
                                             : ec_nonconst_ref_init_from_rvalue);
}

// What was converted meets a reference that takes no temporary.
static void reject_temporary(const a_reference_init *init)
{
  bool const_volatile = init->binding.const_volatile_blocks;
  if (allow_anachronisms) {
    report(init, anachronism_error_severity,
           const_volatile ? ec_const_volatile_ref_init_anachronism
                          : ec_nonconst_ref_init_anachronism);
  } else if (!is_lvalue_operand(init->operand)) {
    reject_rvalue(init);
  } else {
    report_types(init, const_volatile ? ec_bad_const_volatile_ref_init : ec_bad_nonconst_ref_init);
  }
}

// -------------------------------------------------------------------------------------------------
// Binding

// The whole object that an lvalue is or is part of.
static an_expr_node *object_of_lvalue(an_expr_node *node)
{
  while (node->kind == enk_operation &&
         (op_of(node) == eok_dot_field || op_of(node) == eok_derived_to_base ||
          op_of(node) == eok_lvalue_cast))
    node = first_operand_of(node);
  return node;
}

static bool names_automatic_object(an_expr_node *node)
{
  if (node->kind != enk_variable) return false;
  const a_variable *variable = variable_of(node);
  return variable->source_corresp.is_local && variable->storage_class != sc_static &&
         variable->storage_class != sc_extern && !is_any_reference_type(variable->type);
}

static void warn_of_dangling_reference(const a_reference_init *init)
{
  if (!(init->flags & rif_return) || init->operand->kind != ok_expression) return;
  an_expr_node *node = object_of_lvalue(init->operand->value.expr);
  if (node->kind == enk_temp_init)
    expr_pos_warning(ec_return_ref_init_requires_temp, init->position);
  else if (names_automatic_object(node))
    expr_pos_warning(ec_returning_ref_to_local_variable, init->position);
}

static void adjust_to_base_class(a_reference_init *init)
{
  if (init->binding.base_class == nullptr) return;
  an_operand saved = *init->operand;
  an_expr_node *node = make_node_from_operand(init->operand);
  make_lvalue_expression_operand(base_class_selection_expr(node, init->binding.base_class),
                                 init->operand);
  restore_operand_details_incl_ref(init->operand, &saved);
}

// The lvalue gets the reference's qualifiers.
static void adjust_lvalue_type(a_reference_init *init)
{
  if (init->operand->kind == ok_error || identical_types(init->operand->type, init->referred))
    return;
  cast_operand_for_reference_cast(init->referred, init->operand, true, false);
}

static void bind_directly(a_reference_init *init)
{
  an_operand *operand = init->operand;
  bool is_rvalue_ref = is_rvalue_reference_type(init->reference_type);
  if (is_lvalue_operand(operand) && is_rvalue_ref) {
    if (!gpp_mode || gnu_version >= 40500) {
      report(init, es_error, ec_rvalue_reference_bound_to_lvalue);
      return;
    }
    report(init, es_remark,
           init->flags & rif_move_candidate ? ec_move_ctor_or_assign_copy_of_lvalue
                                            : ec_rvalue_reference_bound_to_lvalue);
  }
  if (!is_lvalue_operand(operand) && operand->state != os_function_designator) {
    if (!init->binding.temporary_allowed) {
      reject_rvalue(init);
      if (operand->kind == ok_error) return;
    }
    make_temporary(operand, rvalue_type(operand->type), init->flags);
  }
  adjust_to_base_class(init);
  adjust_lvalue_type(init);
  change_ref_kinds(operand->ref_entries, rk_address_taken);
}

static void bind_to_converted_value(a_reference_init *init, a_conv_descr *conv)
{
  an_operand *operand = init->operand;
  if (init->binding.qualifiers_lost && init->binding.base_class == nullptr &&
      f_identical_types(init->referred, operand->type, ido_ignore_top_qualifiers)) {
    if (init->flags & rif_copy_assignment) {
      expr_pos_ty_diagnostic(es_error, ec_no_suitable_assignment_operator, init->position,
                             skip_typerefs(init->referred));
      conv_to_error_operand(operand);
    } else {
      report_types(init, ec_qualifier_dropped_in_ref_init);
    }
    return;
  }
  if (!init->binding.temporary_allowed) {
    reject_temporary(init);
    if (operand->kind == ok_error) return;
  }
  if (in_constant_context()) {
    report(init, es_error, ec_init_needing_temp_not_allowed);
    return;
  }
  a_type *value_type = make_unqualified_type(init->referred);
  if (conv != nullptr && conv->routine != nullptr)
    user_convert_operand(operand, value_type, conv, true);
  else
    prep_initializer_operand(operand, value_type, 1, init->code, &init->position);
  if (operand->kind == ok_error) return;
  if (!is_lvalue_operand(operand)) make_temporary(operand, value_type, init->flags);
  adjust_lvalue_type(init);
  if (operand->kind != ok_error)
    expr_pos_diagnostic(es_remark, ec_temp_used_for_ref_init, init->position);
}

static bool convert_by_function_to_lvalue(a_reference_init *init, a_conv_descr *given)
{
  a_conv_descr conv;
  clear_conv_descr(&conv);
  if (given != nullptr && given->for_direct_reference_binding) {
    conv = *given;
  } else {
    if (given != nullptr || !is_class_struct_union_type(init->operand->type)) return false;
    if (is_rvalue_reference_type(init->reference_type)) return false;
    a_candidate_function *tied = nullptr;
    bool found = conversion_from_class_possible(
        init->operand, init->operand->type, init->referred,
        ucf_lvalue_only | ucf_direct_binding | ucf_derived_result_ok, &conv, &tied);
    free_candidate_function_list(tied);
    if (!found) return false;
  }
  user_convert_operand(init->operand, init->referred, &conv, true);
  if (init->operand->kind != ok_error) bind_directly(init);
  return true;
}

void prep_reference_initializer_operand(an_operand *operand, a_type *reference_type,
                                        a_conv_descr *conv, bool keep_object, unsigned flags,
                                        an_error_code code, a_source_position *position)
{
  normalize_error_operand(operand);
  if (operand->kind == ok_error) return;
  a_reference_init init = {};
  init.operand = operand;
  init.reference_type = reference_type;
  init.referred = type_pointed_to(reference_type);
  init.flags = flags;
  init.code = code;
  init.position = position != nullptr ? *position : operand->position;
  if (operand->kind == ok_indefinite_function) {
    bool is_ambiguous = false;
    a_symbol *function = find_addr_of_overloaded_function_match(
        operand->symbol, operand->template_args != nullptr, operand->template_args, false,
        reference_type, false, &is_ambiguous, nullptr, nullptr);
    if (function == nullptr) {
      expr_pos_sy_diagnostic(es_error,
                             is_ambiguous ? ec_ambiguous_ptr_to_overloaded_function
                                          : ec_no_match_for_addr_of_overloaded_function,
                             init.position, operand->symbol);
      conv_to_error_operand(operand);
      return;
    }
    overloaded_function_catch_up(operand, function);
  }
  bool is_lvalue = is_lvalue_operand(operand) || operand->state == os_function_designator;
  direct_reference_binding_possible(operand, nullptr, is_lvalue, reference_type, &init.binding);
  if (init.binding.is_direct)
    bind_directly(&init);
  else if (!convert_by_function_to_lvalue(&init, conv))
    bind_to_converted_value(&init, conv);
  if (operand->kind == ok_error) return;
  warn_of_dangling_reference(&init);
  if (!keep_object) take_reference_to_operand(operand);
}
