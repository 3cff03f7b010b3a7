// exprutil_ref.cpp - references: what binds to them, and their use as the objects that they name.
// Entry:   bind_reference_operand.
// See:     C++ 8.5.3.
#include "consts/folding.h"
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "parse/exprutil.h"
#include "parse/symbol_ref.h"

// The object's type, or a class derived from it, with the same qualifiers or more.
static bool binds_directly(an_operand *operand, a_type *target)
{
  bool is_function = operand->state == os_function_designator;
  if (!is_lvalue_operand(operand) && !is_function) return false;
  a_type_qualifier_set wanted = get_type_qualifiers(target);
  if (get_type_qualifiers(operand->type) & ~wanted) return false;
  a_type *plain = make_unqualified_type(target), *source = make_unqualified_type(operand->type);
  if (identical_types(plain, source)) return true;
  return is_class_struct_union_type(plain) && is_class_struct_union_type(source) &&
         find_base_class_of(source, plain) != nullptr;
}

// The value goes into an object of its own, which lives as long as the block.
static bool bind_to_temporary(an_operand *operand, a_type *target)
{
  if (!is_const_qualified(target) || is_class_struct_union_type(operand->type)) return false;
  an_error_code code;
  an_error_severity severity;
  a_type *type = make_unqualified_type(target);
  do_operand_transformations(operand, 0);
  if (operand->kind == ok_error) return true;
  if (!implicit_conversion_possible(operand, type, &code, &severity)) return false;
  cast_operand_full(type, operand, &operand->position, true, true, true, false, false);
  if (operand->kind == ok_error) return true;
  an_operand saved = *operand;
  a_variable *temporary = make_expression_temporary(type);
  an_expr_node *lvalue = var_lvalue_expr(temporary);
  lvalue->next = make_node_from_operand(operand);
  an_expr_node *assignment = make_operator_node(eok_assign, type, lvalue);
  an_expr_node *reference = add_reference_to_to_node(var_lvalue_expr(temporary));
  make_expression_operand(make_comma_node(assignment, reference), operand);
  restore_operand_details_incl_ref(operand, &saved);
  return true;
}

static void take_reference(an_operand *operand, a_type *type)
{
  a_type *target = type_pointed_to(type);
  an_operand saved = *operand;
  change_ref_kinds(operand->ref_entries, rk_address_taken);
  an_expr_node *node = make_node_from_operand(operand);
  a_base_class *base = find_base_class_of(node->type, target);
  if (base != nullptr) node = base_class_selection_expr(node, base);
  a_constant address;
  bool is_dependent = false;
  if (expr_stack->favor_constant_result &&
      constant_lvalue_address(node, &address, false, &is_dependent)) {
    address.type = type;
    make_constant_operand(&address, operand);
  } else {
    node = add_reference_to_to_node(node);
    node->type = type;
    make_expression_operand(node, operand);
  }
  restore_operand_details_incl_ref(operand, &saved);
}

void bind_reference_operand(an_operand *operand, a_type *type, an_error_code code,
                            a_source_position *pos)
{
  a_type *target = type_pointed_to(type);
  do_operand_transformations(operand,
                             ot_keep_lvalues | ot_keep_arrays | ot_keep_function_designators);
  normalize_error_operand(operand);
  if (operand->kind == ok_error) return;
  if (is_error_type(target) || is_error_type(operand->type)) {
    conv_to_error_operand(operand);
    return;
  }
  if (binds_directly(operand, target)) {
    take_reference(operand, type);
    return;
  }
  if (bind_to_temporary(operand, target)) return;
  expr_pos_ty2_diagnostic(es_error, code, pos != nullptr ? *pos : operand->position, operand->type,
                          type);
  conv_to_error_operand(operand);
}
