// expr_class.cpp - expressions on objects of classes: calls of special members.
// Entry:   make_constructor_call_operand, call_conversion_function, call_operator_function.
// See:     C++98 12.3, 13.5.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/expr_args.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/symbol_tbl.h"

// A call of `routine` on an object (null for none) with converted arguments; *result is its value.
static void make_call(a_routine *routine, an_operand *object, an_arg_check_block *block,
                      an_operand *result)
{
  a_source_position start = object != nullptr ? object->position : block->call_position;
  a_type *type = return_type_of_call(skip_typerefs(routine->type), &start);
  if (is_error_type(type)) {
    make_error_operand(result);
    return;
  }
  an_expr_node *target = function_rvalue_expr(routine);
  if (object != nullptr) {
    conv_class_operand_to_object_pointer(object);
    an_expr_node *self = make_node_from_operand(object);
    self->next = block->result_list;
    target->next = self;
  } else {
    target->next = block->result_list;
  }
  an_expr_node *call = make_operator_node(eok_call, type, target);
  call->expr_range.start = start;
  make_expression_operand(call, result);
  if (is_any_reference_type(type)) add_reference_indirection(result);
  result->position = start;
  rule_out_expr_kinds(rule_out_any_constant, result);
  make_temporary_of_class_result(result);
}

void call_conversion_function(a_routine *function, an_operand *operand)
{
  if (operand->kind == ok_error) return;
  an_arg_check_block block;
  start_call_argument_processing(skip_typerefs(function->type), function, &block);
  an_operand object = *operand;
  adjust_object_to_member_class(&object, function);
  make_call(function, &object, &block, operand);
}

void adjust_object_to_member_class(an_operand *object, a_routine *function)
{
  a_type *this_class = routine_supplement_of(skip_typerefs(function->type))->this_class;
  a_type *object_class = skip_typerefs(object->type);
  if (this_class == nullptr || identical_types(this_class, object_class)) return;
  a_base_class *base = find_base_class_of(object_class, this_class);
  if (base == nullptr) return;
  an_operand saved = *object;
  if (!is_lvalue_operand(object)) conv_class_rvalue_operand_to_lvalue(object);
  an_expr_node *node = make_node_from_operand(object);
  make_lvalue_expression_operand(base_class_selection_expr(node, base), object);
  restore_operand_details_incl_ref(object, &saved);
}

void make_constructor_call_operand(a_routine *constructor, a_type *type, an_operand *operand)
{
  if (operand->kind == ok_error) return;
  an_operand saved = *operand;
  a_symbol *symbol = constructor->source_corresp.assoc_symbol;
  if (symbol != nullptr) {
    if (!have_access_to_symbol(symbol))
      expr_pos_sy_diagnostic(es_error, ec_no_access_to_name, saved.position, symbol);
    record_use_of_function(symbol, saved.position);
  }
  an_arg_check_block block;
  start_call_argument_processing(skip_typerefs(constructor->type), constructor, &block);
  process_call_argument(operand, &block);
  finish_call_argument_processing(&block, &saved.end_position);
  a_dynamic_init *init;
  an_expr_node *temporary = create_expr_temporary(make_unqualified_type(type), false, false, false,
                                                  dik_constructor, &saved.position, &init);
  init->variant.constructor.routine = constructor;
  init->variant.constructor.first_arg = block.result_list;
  make_expression_operand(temporary, operand);
  restore_operand_details(operand, &saved);
  rule_out_expr_kinds(rule_out_any_constant, operand);
}

void copy_class_lvalue(an_operand *operand)
{
  if (operand->kind == ok_error || !is_lvalue_operand(operand)) return;
  a_source_position position = operand->position;
  prep_initializer_operand(operand, rvalue_type(operand->type), 1, ec_bad_initializer_type,
                           &position);
}

void construct_temporary(a_type *type, an_arg_operand *args, a_source_position position,
                         an_operand *result)
{
  a_type *plain = make_unqualified_type(type);
  a_dynamic_init *init = make_constructor_init(plain, args, position);
  if (init == nullptr) {
    make_error_operand(result);
    return;
  }
  check_for_abstract_object(plain, &position);
  init->is_conditional = expr_stack->conditionally_evaluated;
  init->is_temporary = true;
  init->position = position;
  set_temp_dynamic_init_lifetime(init, plain, &position);
  make_expression_operand(alloc_temp_init_node(plain, init, false), result);
  rule_out_expr_kinds(rule_out_any_constant, result);
}

void call_operator_function(const an_operator_request *request, a_candidate_function *winner,
                            an_operand *left, an_operand *right, an_operand *result)
{
  a_routine *routine = routine_of_symbol(winner->symbol);
  an_arg_match_summary *summary = winner->arg_summaries;
  an_arg_check_block block;
  start_call_argument_processing(skip_typerefs(routine->type), routine, &block);
  bool is_member = winner->symbol->is_class_member;
  record_use_of_function(winner->symbol, request->position);
  if (is_member) {
    issue_warning_from_arg_match_summary(summary, left->position);
    adjust_object_to_member_class(left, routine);
  } else {
    convert_argument_by_summary(left, block.next_param, summary);
    process_converted_argument(left, &block);
  }
  if (right != nullptr) {
    convert_argument_by_summary(right, block.next_param, summary->next);
    process_converted_argument(right, &block);
  }
  finish_call_argument_processing(&block, &left->end_position);
  make_call(routine, is_member ? left : nullptr, &block, result);
  result->end_position = right != nullptr ? right->end_position : left->end_position;
}

void record_use_of_function(a_symbol *symbol, a_source_position position)
{
  a_ref_entry *entry = ref_entry(symbol, position);
  if (entry != nullptr) entry->ref_kind = rk_read;
}
