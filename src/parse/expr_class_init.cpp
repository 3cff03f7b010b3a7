// expr_class_init.cpp - how objects of classes are initialized and destroyed, wherever they stand.
// Rule:    one a_dynamic_init tells how an object begins (constructor, value, zero) and, with its
//          destructor, how it ends; whether it is a variable, a member or a temporary is its user's.
// Entry:   make_constructor_init, make_default_init, dynamic_init_from_expr, expr_select_destructor.
// See:     C++98 8.5, 12.1, 12.2, 12.4.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "parse/class_decl.h"
#include "parse/decl_inits.h"
#include "parse/expr_args.h"
#include "parse/expr_class.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/symbol_tbl.h"

// -------------------------------------------------------------------------------------------------
// Classes

a_type *class_of_elements(a_type *type)
{
  type = skip_typerefs(underlying_array_element_type(type));
  return is_class_struct_union_type(type) ? type : nullptr;
}

void check_for_abstract_object(a_type *type, const a_source_position *position)
{
  a_type *class_type = class_of_elements(type);
  if (C_dialect != 2 || class_type == nullptr) return;
  if (!as_class(class_type).abstract_known || !as_class(class_type).is_abstract) return;
  expr_pos_ty_diagnostic(es_error, ec_abstract_class_object_not_allowed, *position, class_type);
}

// -------------------------------------------------------------------------------------------------
// Destructors

static void check_access_of_special_member(a_symbol *symbol, const a_source_position *position)
{
  if (have_access_to_symbol(symbol)) return;
  expr_pos_sy_diagnostic(es_error, ec_no_access_to_name, *position, symbol);
}

a_routine *expr_select_destructor(a_type *type, const a_source_position *position)
{
  a_type *class_type = class_of_elements(type);
  a_class_symbol_supplement *supplement =
      class_type != nullptr ? class_symbol_supplement_of(class_type) : nullptr;
  if (supplement == nullptr || supplement->destructor == nullptr) return nullptr;
  a_symbol *symbol = supplement->destructor;
  a_routine *routine = routine_of_symbol(symbol);
  if (routine->is_trivial) return nullptr;
  check_access_of_special_member(symbol, position);
  record_use_of_function(symbol, *position);
  return routine;
}

void add_dtor_to_dynamic_init(a_dynamic_init *init, a_type *type, const a_source_position *position)
{
  init->destructor = expr_select_destructor(type, position);
  init->has_destructor = init->destructor != nullptr;
}

void set_temp_dynamic_init_lifetime(a_dynamic_init *init, a_type *type,
                                    const a_source_position *position)
{
  if (!expr_stack->code_is_generated) return;
  if (!init->has_destructor && class_of_elements(type) != nullptr && position != nullptr)
    add_dtor_to_dynamic_init(init, type, position);
  init->lifetime_set = true;
  if (init->has_destructor && expr_stack->value_required)
    record_end_of_lifetime_destruction(init, false, false);
}

// -------------------------------------------------------------------------------------------------
// Constructors

static void set_constructor(a_dynamic_init *init, a_routine *constructor, an_expr_node *arguments)
{
  init->variant.constructor.routine = constructor;
  init->variant.constructor.first_arg = arguments;
}

// A class without constructors: zero, or a copy.
static a_dynamic_init *init_without_constructor(a_type *type, an_arg_operand *args,
                                                a_source_position position)
{
  if (args == nullptr) return alloc_dynamic_init(dik_zero);
  if (args->next != nullptr) {
    expr_pos_error(ec_too_many_initializer_values, args->next->operand.position);
    return nullptr;
  }
  prep_initializer_operand(&args->operand, type, 1, ec_bad_initializer_type, &position);
  if (args->operand.kind == ok_error) return nullptr;
  return dynamic_init_from_expr(make_node_from_operand(&args->operand), type);
}

static void report_missing_default_constructor(a_type *type, a_source_position position)
{
  expr_pos_ty_diagnostic(es_error, ec_no_default_constructor, position, type);
}

static a_symbol *choose_constructor(a_type *type, a_symbol *constructors, an_arg_operand *args,
                                    a_source_position position, an_overload_result *chosen)
{
  bool is_ambiguous = false;
  *chosen = {};
  if (args == nullptr) {
    chosen->symbol = select_overloaded_default_constructor(type, &position, &is_ambiguous);
    if (is_ambiguous)
      expr_pos_ty_diagnostic(es_error, ec_ambiguous_default_constructor, position, type);
    else if (chosen->symbol == nullptr)
      report_missing_default_constructor(type, position);
    return is_ambiguous ? nullptr : chosen->symbol;
  }
  an_overload_request request = {};
  request.symbol = constructors;
  request.args = args;
  request.error_code = ec_no_matching_constructor;
  request.ambiguity_code = ec_ambiguous_overloaded_function;
  request.position = position;
  request.is_constructor_call = true;
  select_overloaded_function(&request, chosen);
  return chosen->symbol;
}

// C c = c2, C c(C()): the one argument is an object of the class that nobody else has.
static bool is_temporary_of_class(const an_arg_operand *args, a_type *type)
{
  if (args == nullptr || args->next != nullptr || args->operand.kind != ok_expression) return false;
  return !is_lvalue_operand(&args->operand) &&
         f_identical_types(args->operand.type, type, ido_ignore_top_qualifiers);
}

a_dynamic_init *make_constructor_init(a_type *type, an_arg_operand *args,
                                      a_source_position position)
{
  if (is_incomplete_type(type)) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, position, type);
    return nullptr;
  }
  for (an_arg_operand *arg = args; arg != nullptr; arg = arg->next) {
    if (arg->operand.kind == ok_error) return nullptr;
  }
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(skip_typerefs(type));
  a_symbol *constructors = supplement != nullptr ? supplement->constructors : nullptr;
  a_dynamic_init *init;
  if (constructors == nullptr || is_temporary_of_class(args, type)) {
    init = init_without_constructor(type, args, position);
    if (init == nullptr) return nullptr;
  } else {
    an_overload_result chosen;
    a_symbol *symbol = choose_constructor(type, constructors, args, position, &chosen);
    if (symbol == nullptr) return nullptr;
    check_access_of_special_member(symbol, &position);
    record_use_of_function(symbol, position);
    a_routine *constructor = routine_of_symbol(symbol);
    an_arg_check_block block;
    start_call_argument_processing(skip_typerefs(constructor->type), constructor, &block);
    an_arg_match_summary *summary = chosen.summaries;
    if (summary != nullptr) summary = summary->next; // the object
    process_ranked_arguments(args, summary, &block);
    finish_call_argument_processing(&block, &position);
    free_arg_match_summary_list(chosen.summaries);
    bool is_trivial = args == nullptr && constructor->is_trivial_default_constructor;
    init = alloc_dynamic_init(is_trivial ? dik_zero : dik_constructor);
    if (!is_trivial) set_constructor(init, constructor, block.result_list);
  }
  init->position = position;
  if (!init->has_destructor) add_dtor_to_dynamic_init(init, type, &position);
  return init;
}

// -------------------------------------------------------------------------------------------------
// Values

static bool is_call(const an_expr_node *node)
{
  return is_operation(node, eok_call) || is_operation(node, eok_virtual_call) ||
         is_operation(node, eok_ptr_to_member_call);
}

// The temporaries of which one is the value: they become the object that takes it.
void release_class_value(an_expr_node *node)
{
  switch (node->kind) {
  case enk_temp_init: {
    a_dynamic_init *init = dynamic_init_of(node);
    if (node->is_lvalue) return;
    remove_from_destruction_list(init);
    init->destructor = nullptr;
    init->has_destructor = false;
    return;
  }
  case enk_lifetime_wrapper: release_class_value(lifetime_wrapper_of(node).expr); return;
  case enk_operation: break;
  default: return;
  }
  if (is_operation(node, eok_comma)) {
    release_class_value(second_operand_of(node));
  } else if (is_operation(node, eok_question) && !node->is_lvalue) {
    release_class_value(second_operand_of(node));
    release_class_value(third_operand_of(node));
  }
}

void make_temporary_of_class_result(an_operand *result)
{
  if (C_dialect != 2 || result->kind != ok_expression || is_lvalue_operand(result)) return;
  if (!is_class_struct_union_type(result->type) || !expr_stack->code_is_generated) return;
  if (expr_select_destructor(result->type, &result->position) == nullptr) return;
  an_operand saved = *result;
  a_dynamic_init *init;
  a_type *type = make_unqualified_type(result->type);
  an_expr_node *temporary = create_expr_temporary(type, false, false, true,
                                                  dik_call_returning_class, &saved.position, &init);
  expr_of(init) = saved.value.expr;
  make_expression_operand(temporary, result);
  restore_operand_details_incl_ref(result, &saved);
}

a_dynamic_init *dynamic_init_from_expr(an_expr_node *node, a_type *type)
{
  bool is_object = node->kind == enk_temp_init && !node->is_lvalue &&
                   f_identical_types(node->type, type, ido_ignore_top_qualifiers);
  if (is_object) {
    a_dynamic_init *init = dynamic_init_of(node);
    remove_from_destruction_list(init);
    init->is_temporary = init->lifetime_set = init->is_conditional = false;
    return init;
  }
  if (C_dialect == 2 && is_class_struct_union_type(type)) release_class_value(node);
  bool returns_object = is_call(node) && is_class_struct_union_type(type);
  a_dynamic_init *init =
      alloc_dynamic_init(returns_object ? dik_call_returning_class : dik_expression);
  expr_of(init) = node;
  return init;
}

bool converts_to_class_element(an_operand *operand, a_type *type)
{
  a_class_symbol_supplement *supplement = class_symbol_supplement_of(skip_typerefs(type));
  if (supplement != nullptr && !supplement->is_aggregate) return true;
  a_conv_descr conv;
  return conversion_to_class_possible(operand, operand->type, rvalue_type(type), 0, &conv, nullptr);
}

// -------------------------------------------------------------------------------------------------
// Objects without initializer

a_dynamic_init *make_default_init(a_type *type, a_source_position position, bool *failed)
{
  a_type *class_type = class_of_elements(type);
  a_class_symbol_supplement *supplement =
      class_type != nullptr ? class_symbol_supplement_of(class_type) : nullptr;
  *failed = false;
  if (supplement == nullptr) return nullptr;
  a_dynamic_init *init = make_constructor_init(class_type, nullptr, position);
  if (init == nullptr) {
    *failed = true;
    return nullptr;
  }
  if (init->kind == dik_zero) { // nobody zeroes an object that has no constructor
    if (!init->has_destructor) return nullptr;
    set_dynamic_init_kind(init, dik_none);
  }
  return init; // of an array: each element begins so
}
