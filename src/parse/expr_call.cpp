// expr_call.cpp - function calls.
// Entry:   scan_function_call, start_call_argument_processing, process_call_argument.
// See:     C99 6.5.2.2.
#include <cstring>

#include "consts/folding.h"
#include "driver/flags.h"
#include "driver/sys_predef.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/attribute.h"
#include "parse/decls.h"
#include "parse/expr_args.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/scope_stk.h"
#include "parse/symbol_ref.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Arguments

static void set_format_information(a_type *routine_type, a_routine *routine,
                                   an_arg_check_block *block);

void start_call_argument_processing(a_type *routine_type, a_routine *routine,
                                    an_arg_check_block *block)
{
  *block = {};
  block->routine = routine;
  block->sentinel_position = -1;
  block->min_arg_count = -1;
  block->call_position = error_position;
  if (routine_type == nullptr) {
    block->is_error_call = true;
    return;
  }
  a_routine_type_supplement *supplement = routine_supplement_of(skip_typerefs(routine_type));
  block->prototyped = supplement->is_prototyped;
  block->has_ellipsis = supplement->has_ellipsis;
  block->next_param = supplement->param_types;
  block->params_known = supplement->is_prototyped || supplement->is_old_style_definition;
  set_format_information(routine_type, routine, block);
}

static void append_argument_node(an_expr_node *node, an_arg_check_block *block)
{
  node->next = nullptr;
  if (block->result_tail == nullptr)
    block->result_list = node;
  else
    block->result_tail->next = node;
  block->result_tail = node;
}

static bool is_null_argument(an_operand *argument)
{
  return argument->kind == ok_constant && is_zero_constant(&argument->value.constant) &&
         is_pointer_type(argument->type);
}

static bool parameter_is_nonnull(an_arg_check_block *block);

static void convert_to_prototype(an_operand *argument, an_arg_check_block *block)
{
  a_param_type *param = block->next_param;
  prep_argument_operand(argument, param->type, param, ec_incompatible_param);
  if (parameter_is_nonnull(block) && is_null_argument(argument)) {
    expr_pos_warning(ec_null_argument_for_nonnull_parameter, argument->position);
  }
  block->next_param = param->next;
}

static bool old_style_argument_fits(an_operand *argument, a_type *param_type,
                                    an_error_severity *severity)
{
  if (f_types_are_compatible(argument->type, param_type, tco_ignore_top_qualifiers)) return true;
  *severity = es_warning;
  a_type *type = rvalue_type(argument->type);
  if (interchangeable_types(type, param_type) ||
      integral_types_the_same_except_for_signedness(type, param_type)) {
    *severity = es_remark;
  }
  bool null_pointer = argument->kind == ok_constant &&
                      is_zero_constant(&argument->value.constant) && is_pointer_type(param_type) &&
                      !strict_ansi_mode &&
                      size_of_type(rvalue_type(argument->type)) == targ_sizeof_pointer;
  if (null_pointer) *severity = es_remark;
  return false;
}

// Promoted as the definition's own parameters are; a difference is worth a message, not an error.
static void convert_to_old_style_parameter(an_operand *argument, an_arg_check_block *block)
{
  a_param_type *param = block->next_param;
  arg_default_promote_operand(argument, false);
  block->next_param = param->next;
  if (argument->kind == ok_error || is_error_type(param->type)) return;
  an_error_severity severity;
  a_type *promoted = default_argument_promotion(rvalue_type(param->type));
  if (!old_style_argument_fits(argument, promoted, &severity)) {
    expr_pos_diagnostic(severity, ec_old_style_incompatible_param, argument->position);
  }
}

static void report_surplus_argument(an_operand *argument, an_arg_check_block *block)
{
  if (block->parameters_given_up) return;
  if (block->prototyped) {
    if (block->has_ellipsis) return;
    expr_pos_error(ec_too_many_arguments, argument->position);
  } else if (block->params_known && block->min_arg_count == -1) {
    expr_pos_warning(ec_too_many_arguments, argument->position);
  } else {
    return;
  }
  block->parameters_given_up = true;
}

void process_call_argument(an_operand *argument, an_arg_check_block *block)
{
  ++block->arg_count;
  if (block->is_error_call) {
    do_operand_transformations(argument, 0);
    change_operand_refs_to_error(argument);
  } else if (block->next_param != nullptr && block->prototyped) {
    convert_to_prototype(argument, block);
  } else if (block->next_param != nullptr) {
    convert_to_old_style_parameter(argument, block);
  } else {
    report_surplus_argument(argument, block);
    bool keep = (gcc_mode || gpp_mode) && block->has_ellipsis && block->routine != nullptr &&
                is_gnu_builtin_function(block->routine) &&
                is_foldable_gnu_builtin_function(block->routine);
    if (keep)
      do_operand_transformations(argument, 0);
    else
      arg_default_promote_operand(argument, block->has_ellipsis);
  }
  an_expr_node *node = make_node_from_operand(argument);
  append_argument_node(node, block);
  if (block->format_kind != fmk_none) {
    if (block->arg_count == block->format_arg_number) block->format_arg = node;
    if (block->arg_count == block->first_checked_arg) block->first_format_arg = node;
  }
}

void process_converted_argument(an_operand *argument, an_arg_check_block *block)
{
  ++block->arg_count;
  if (parameter_is_nonnull(block) && is_null_argument(argument)) {
    expr_pos_warning(ec_null_argument_for_nonnull_parameter, argument->position);
  }
  block->next_param = block->next_param->next;
  an_expr_node *node = make_node_from_operand(argument);
  append_argument_node(node, block);
  if (block->format_kind == fmk_none) return;
  if (block->arg_count == block->format_arg_number) block->format_arg = node;
  if (block->arg_count == block->first_checked_arg) block->first_format_arg = node;
}

static void check_sentinel(an_arg_check_block *block, a_source_position *close_pos)
{
  if (block->sentinel_position < 0) return;
  int number = block->arg_count - block->sentinel_position;
  if (number < 1) {
    expr_pos_warning(ec_no_gnu_sentinel_argument, *close_pos);
    return;
  }
  an_expr_node *argument = block->result_list;
  for (int i = 1; i < number; ++i)
    argument = argument->next;
  bool is_null = argument->kind == enk_constant && is_zero_constant(constant_of(argument)) &&
                 is_pointer_type(argument->type);
  int named = 0;
  if (block->routine != nullptr) {
    for (a_param_type *p = param_types_of(block->routine->type); p != nullptr; p = p->next)
      ++named;
  }
  if (number <= named && gnu_version >= 40002) {
    expr_pos_warning(is_null ? ec_gnu_sentinel_must_be_ellipsis_argument
                             : ec_no_gnu_sentinel_argument,
                     *close_pos);
  } else if (!is_null) {
    expr_pos_warning(ec_invalid_gnu_sentinel_argument, argument->expr_range.start);
  }
}

// C++: the default arguments of the parameters that are left.
static void add_default_arguments(an_arg_check_block *block)
{
  while (block->next_param != nullptr && block->next_param->has_default_arg &&
         block->next_param->default_arg_expr != nullptr) {
    append_argument_node(copy_expr_tree(block->next_param->default_arg_expr, true), block);
    block->next_param = block->next_param->next;
  }
}

void finish_call_argument_processing(an_arg_check_block *block, a_source_position *close_pos)
{
  if (block->is_error_call) return;
  add_default_arguments(block);
  if (!block->parameters_given_up) {
    if (block->prototyped && block->next_param != nullptr) {
      expr_pos_error(ec_too_few_arguments, *close_pos);
    } else if (!block->prototyped && block->params_known && block->next_param != nullptr) {
      expr_pos_warning(ec_too_few_arguments, *close_pos);
    }
  }
  if (!expr_stack->value_required && expr_stack->unevaluated) return;
  if (block->format_kind != fmk_none && block->format_arg != nullptr) check_format_arguments(block);
  check_sentinel(block, close_pos);
}

// -------------------------------------------------------------------------------------------------
// What attributes and well-known names say of a function's arguments

static an_attribute *attributes_of_call(a_type *routine_type, a_routine *routine)
{
  if (routine != nullptr && routine->source_corresp.attributes != nullptr)
    return routine->source_corresp.attributes;
  return routine_type->source_corresp.attributes;
}

static long attribute_number(an_attribute *attribute, int which)
{
  an_attribute_arg *arg = attribute->args;
  for (int i = 1; i < which && arg != nullptr; ++i)
    arg = arg->next;
  if (arg == nullptr || arg->kind != aak_constant || arg->variant.constant->kind != ck_integer)
    return -1;
  bool overflow = false;
  return (long)value_of_integer_constant(arg->variant.constant, &overflow);
}

// #pragma __printf_args: the format is the last parameter, and the ellipsis behind it what it
// describes.
static void set_format_information_of_pragma(a_type *routine_type, a_routine *routine,
                                             an_arg_check_block *block)
{
  if (routine == nullptr || !block->has_ellipsis) return;
  if (!routine->checks_printf_args && !routine->checks_scanf_args) return;
  block->format_kind = routine->checks_printf_args ? fmk_printf : fmk_scanf;
  block->format_arg_number = 0;
  for (a_param_type *p = param_types_of(routine_type); p != nullptr; p = p->next)
    ++block->format_arg_number;
  block->first_checked_arg = block->format_arg_number + 1;
  if (block->format_arg_number == 0) block->format_kind = fmk_none;
}

static void set_format_information(a_type *routine_type, a_routine *routine,
                                   an_arg_check_block *block)
{
  set_format_information_of_pragma(routine_type, routine, block);
  an_attribute *list = attributes_of_call(skip_typerefs(routine_type), routine);
  if (list == nullptr) return;
  if (an_attribute *format = f_find_attribute(ak_format, list)) {
    an_attribute_arg *archetype = format->args;
    const char *name =
        archetype != nullptr && archetype->kind == aak_name ? archetype->variant.text : "";
    if (strstr(name, "printf") != nullptr)
      block->format_kind = fmk_printf;
    else if (strstr(name, "scanf") != nullptr)
      block->format_kind = fmk_scanf;
    block->format_arg_number = (int)attribute_number(format, 2);
    block->first_checked_arg = (int)attribute_number(format, 3);
    if (block->first_checked_arg < 1) block->format_kind = fmk_none; // the arguments are a va_list
  }
  if (an_attribute *sentinel = f_find_attribute(ak_sentinel, list)) {
    long distance = attribute_number(sentinel, 1);
    block->sentinel_position = distance < 0 ? 0 : (int)distance;
  }
}

// Does a nonnull attribute name the parameter of the argument at hand?
static bool parameter_is_nonnull(an_arg_check_block *block)
{
  if (block->routine == nullptr || block->routine->source_corresp.attributes == nullptr)
    return false;
  an_attribute *attribute = f_find_attribute(ak_nonnull, block->routine->source_corresp.attributes);
  if (attribute == nullptr) return false;
  if (attribute->args == nullptr) return is_pointer_type(block->next_param->type);
  for (int i = 1;; ++i) {
    long number = attribute_number(attribute, i);
    if (number == -1) return false;
    if (number == block->arg_count) return true;
  }
}

// -------------------------------------------------------------------------------------------------
// The function

// The operand's function, through the address that a designator has become.
static a_routine *routine_from_function_operand(an_operand *function)
{
  if (function->kind == ok_expression) return routine_from_function_expr(function->value.expr);
  if (function->kind != ok_constant || function->value.constant.kind != ck_address) return nullptr;
  const a_constant_address &address = address_of(&function->value.constant);
  return address.kind == ack_routine ? (a_routine *)address.entity : nullptr;
}

// An undeclared name before "(" is declared as int name().
static void declare_function_of_call(an_operand *function)
{
  a_symbol_locator locator = cleared_locator;
  locator.header = function->symbol->header;
  locator.position = function->position;
  a_source_position pos = function->position, end = function->end_position;
  if (C_dialect == 2 || (c99_mode && strict_ansi_mode) || in_constant_context()) {
    expr_pos_st_diagnostic(es_error, ec_undefined_identifier, pos, locator.header->identifier);
    enter_undefined_symbol(&locator);
    conv_to_error_operand(function);
    return;
  }
  expr_pos_st_diagnostic(c99_mode ? es_warning : es_remark, ec_implicit_func_decl, pos,
                         locator.header->identifier);
  a_symbol *symbol = declare_implicit_routine(&locator);
  if (symbol == nullptr || !is_routine_symbol(symbol)) {
    conv_to_error_operand(function);
    return;
  }
  make_function_designator_operand(symbol, &pos, &end, function, ref_entry(symbol, pos));
}

static a_type *called_routine_type(an_operand *function)
{
  a_type *type = function->type;
  if (is_pointer_type(type)) {
    type = type_pointed_to(type);
  } else if (is_ptr_to_member_type(type)) {
    type = pm_member_type(type);
  }
  return skip_typerefs(type);
}

// -------------------------------------------------------------------------------------------------
// The call

static void scan_argument_list(an_arg_check_block *block)
{
  ++expr_stack->paren_depth;
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  if (curr_token != tok_rparen) {
    do {
      an_operand argument;
      scan_operand_of_list(&argument);
      process_call_argument(&argument, block);
      flush_ref_entries_except(nullptr, nullptr);
    } while (loop_token(tok_comma));
  }
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rparen);
  --expr_stack->paren_depth;
}

// The object of a member function is its first argument.
void add_object_argument(a_type *routine_type, an_operand *selector, an_arg_check_block *block)
{
  a_type *type = f_implicit_this_param_type_of(routine_type);
  if (type == nullptr || selector->kind == ok_error) return;
  a_type *object = type_pointed_to(selector->type);
  if (get_type_qualifiers(object) & ~get_type_qualifiers(type_pointed_to(type))) {
    a_symbol *symbol =
        block->routine != nullptr ? block->routine->source_corresp.assoc_symbol : nullptr;
    if (symbol != nullptr) {
      expr_pos_sy_diagnostic(es_error, ec_unqual_function_with_qual_object, selector->position,
                             symbol);
    }
    return;
  }
  if (!step_object_to_class(selector, true, type_pointed_to(type))) return;
  cast_operand(type, selector, false);
  append_argument_node(make_node_from_operand(selector), block);
}

// A virtual function that isn't named with its class is found through the object.
static an_expr_operator_kind operator_of_call(const an_operand *function)
{
  if (is_ptr_to_member_type(function->type)) return eok_ptr_to_member_call;
  bool is_virtual = function->is_bound_function && function->names_virtual_function;
  return is_virtual && !function->suppress_virtual ? eok_virtual_call : eok_call;
}

static an_expr_node *make_call_node(an_operand *function, an_expr_node *arguments,
                                    a_type *return_type)
{
  an_expr_operator_kind op = operator_of_call(function);
  an_expr_node *target = make_node_from_operand(function);
  target->next = arguments;
  return make_operator_node(op, return_type, target);
}

static void check_for_call_of_pure_virtual(const an_operand *function, const a_routine *routine)
{
  if (routine == nullptr || !routine->is_pure_virtual || routine->is_defined) return;
  if (operator_of_call(function) == eok_call)
    expr_pos_warning(ec_call_of_pure_virtual, function->position);
}

// A class result of incomplete type can't be returned; void can.
a_type *return_type_of_call(a_type *routine_type, a_source_position *pos)
{
  a_type *type = return_type_of(routine_type);
  if (is_any_reference_type(type)) return type;
  type = rvalue_type(type);
  if (is_incomplete_type(type) && !is_void_type(type) && expr_stack->code_is_generated) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, *pos, type);
    return error_type();
  }
  return type;
}

static void skip_call_after_error(an_operand *result)
{
  an_arg_check_block block;
  start_call_argument_processing(nullptr, nullptr, &block);
  scan_argument_list(&block);
  make_error_operand(result);
}

// GNU: the unnamed arguments of the call that an inline function is expanded into.
static bool check_va_arg_pack(a_routine *builtin, a_source_position pos)
{
  const char *name = builtin->source_corresp.name;
  if (name == nullptr || strncmp(name, "__builtin_va_arg_pack", 21) != 0) return true;
  a_routine *routine = curr_routine();
  if (routine != nullptr && routine->is_inline &&
      routine_supplement_of(skip_typerefs(routine->type))->has_ellipsis) {
    return true;
  }
  expr_pos_error(ec_bad_function_for_gnu_va_arg_pack, pos);
  return false;
}

static bool check_callable(an_operand *function, a_routine *routine, a_source_position *pos)
{
  do_operand_transformations(function, 0);
  if (!check_call_function_pointer_operand(function)) return false;
  if (routine == nullptr) return true;
  if (is_gnu_builtin_function(routine) && !check_va_arg_pack(routine, *pos)) return false;
  if (C_dialect == 2 && !gpp_mode && routine->is_main) expr_pos_error(ec_bad_use_of_main, *pos);
  return true;
}

void finish_call(an_operand *function, a_routine *routine, an_arg_check_block *block,
                 a_type *return_type, a_source_position *open_pos, a_source_position *end,
                 an_operand *result)
{
  a_source_position start = function->position;
  bool foldable = routine != nullptr && is_gnu_builtin_function(routine) &&
                  is_foldable_gnu_builtin_function(routine);
  check_for_call_of_pure_virtual(function, routine);
  an_expr_node *node = make_call_node(function, block->result_list, return_type);
  node->operator_position = *open_pos;
  node->expr_range.start = start;
  node->expr_range.end = *end;
  if (is_error_type(return_type)) {
    make_error_operand(result);
  } else {
    make_expression_operand(node, result);
    if (is_any_reference_type(return_type)) add_reference_indirection(result);
    if (foldable) fold_builtin_call_if_possible(routine, block->result_list, result);
  }
  if (result->kind == ok_expression && in_constant_context() && expr_stack->value_required) {
    expr_pos_error(ec_bad_constant_function_call, start);
    make_error_operand(result);
  }
  result->position = start;
  result->end_position = *end;
  if (result->kind != ok_expression) return;
  rule_out_expr_kinds(rule_out_any_constant, result);
  if (C_dialect == 2) make_temporary_of_class_result(result);
}

// The name of the called function if it has no prototype (MISRA 8.1), else null.
static const char *name_without_prototype(an_operand *function)
{
  if (function->kind == ok_undefined_symbol) return function->symbol->header->identifier;
  a_routine *routine = routine_from_function_operand(function);
  if (routine == nullptr) return nullptr;
  a_type *type = skip_typerefs(routine->type);
  bool lacks_prototype = type->kind == tk_routine && !routine_supplement_of(type)->is_prototyped;
  return lacks_prototype ? routine->source_corresp.name : nullptr;
}

static void check_prototype_for_misra(an_operand *function)
{
  const char *name = name_without_prototype(function);
  if (name == nullptr) return;
  expr_pos_st_diagnostic(misra_required_severity, ec_misra_c_2004_8_1_n, function->position, name);
}

// C++: a function that is chosen by its arguments.
static bool is_call_by_name(an_operand *function)
{
  if (in_constant_context() && expr_stack->value_required) return false;
  if (function->kind == ok_indefinite_function || function->kind == ok_undefined_symbol)
    return true;
  a_routine *routine = routine_from_function_operand(function);
  return function->is_id_expression && function->symbol != nullptr && routine != nullptr &&
         is_routine_symbol(function->symbol) && !function->symbol->is_class_member &&
         !is_gnu_builtin_function(routine);
}

// C++: an object of a class is called through its operator(), or converts to what can be called.
static void resolve_call_of_object(an_operand *function)
{
  if (function->kind == ok_error || !is_class_struct_union_type(function->type)) return;
  an_operand object = *function;
  a_symbol *symbol = opname_member_function_symbol(onk_call, skip_typerefs(object.type));
  if (symbol == nullptr) {
    try_to_convert_class_operand_to_builtin_type(function, cvm_function_pointer,
                                                 ec_bad_call_of_class_object);
    return;
  }
  a_source_position pos = object.position;
  make_indefinite_function_operand(symbol, function);
  select_function(symbol, &object, false, &pos, function);
  function->end_position = object.end_position;
}

void scan_function_call(an_operand *function, a_rescan_control_block *, an_operand *result)
{
  a_source_position open_pos = pos_curr_token, start = function->position;
  if (C_dialect == 2) {
    bind_member_to_this(function);
    resolve_call_of_object(function);
  }
  if (check_misra_c_2004) check_prototype_for_misra(function);
  if (C_dialect == 2 && is_call_by_name(function)) {
    scan_call_by_name(function, result);
    return;
  }
  if (function->kind == ok_undefined_symbol) declare_function_of_call(function);
  a_routine *routine = routine_from_function_operand(function);
  bool is_builtin = routine != nullptr && is_gnu_builtin_function(routine);
  if (is_builtin && has_special_arguments(routine)) {
    change_ref_kinds(function->ref_entries, rk_read);
    scan_builtin_with_special_arguments(function, routine, result);
    result->position = start;
    return;
  }
  bool forbidden = in_constant_context() && expr_stack->value_required &&
                   !(is_builtin && is_foldable_gnu_builtin_function(routine));
  change_some_ref_kinds(function->ref_entries, rk_plain,
                        rk_read); // a called function's address isn't taken
  a_ref_entry *refs = function->ref_entries;
  function->ref_entries = function->last_ref_entry = nullptr;
  bool is_bound = function->is_bound_function;
  an_operand selector;
  if (is_bound) take_bound_selector(&selector);
  bool ok = check_callable(function, routine, &start);
  get_token();
  if (!ok) {
    change_ref_kinds(refs, rk_error);
    skip_call_after_error(result);
    result->position = start;
    result->end_position = end_pos_curr_token;
    required_token(tok_rparen, ec_exp_rparen);
    return;
  }
  a_type *routine_type = called_routine_type(function);
  an_arg_check_block block;
  start_call_argument_processing(routine_type, routine, &block);
  if (is_bound) add_object_argument(routine_type, &selector, &block);
  scan_argument_list(&block);
  a_source_position end = end_pos_curr_token, close = pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  finish_call_argument_processing(&block, &close);
  if (forbidden) {
    expr_pos_error(ec_bad_constant_function_call, start);
    make_error_operand(result);
    result->position = start;
    result->end_position = end;
    return;
  }
  finish_call(function, routine, &block, return_type_of_call(routine_type, &start), &open_pos, &end,
              result);
  if (is_bound && routine != nullptr && routine->is_static_member)
    keep_side_effects_of_object(&selector, result);
}
