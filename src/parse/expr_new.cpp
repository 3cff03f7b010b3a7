// expr_new.cpp - new and delete.
// Rule:    the node's supplement says it all: the function, its arguments (the size first) or the
//          operand, what the object begins with, and the destructor.
// Entry:   scan_new_operator, scan_delete_operator, find_usual_operator_delete,
//          enter_predeclared_operator_new_and_delete.
// See:     C++98 5.3.4, 5.3.5, 3.7.3, 12.5.
#include "driver/flags.h"
#include "driver/target.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "lex/token_cache.h"
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
// The functions that every program has

void enter_predeclared_operator_new_and_delete()
{
  int count = array_new_and_delete_enabled ? 4 : 2;
  for (int which = onk_new; which < onk_new + count; ++which)
    make_global_operator_new_or_delete_symbol(which)->is_predeclared = false;
}

// -------------------------------------------------------------------------------------------------
// The choice of functions

// In the class, unless :: was written; else the global ones.
static a_symbol *allocation_functions(unsigned opname_kind, a_type *type, bool is_global)
{
  a_type *class_type = class_of_elements(type);
  if (class_type != nullptr && !is_global && !is_incomplete_type(class_type)) {
    a_symbol *symbol = opname_member_function_symbol(opname_kind, class_type);
    if (symbol != nullptr) return symbol;
  }
  return opname_function_symbol(opname_kind);
}

static a_symbol *behind(a_symbol *symbol)
{
  while (symbol->kind == sk_projection)
    symbol = projected_symbol_of(symbol);
  return symbol;
}

// operator delete(void *), or of a class also with a size_t behind.
static bool is_usual_delete(a_symbol *symbol, bool with_size)
{
  if (!is_routine_symbol(symbol)) return false;
  a_param_type *param = param_types_of(skip_typerefs(routine_of_symbol(symbol)->type));
  if (param == nullptr) return false;
  if (!with_size) return param->next == nullptr;
  return symbol->is_class_member && param->next != nullptr && param->next->next == nullptr &&
         identical_types(make_unqualified_type(param->next->type), size_t_type());
}

static a_symbol *usual_delete_of_set(a_symbol *set, bool with_size)
{
  set = behind(set);
  bool is_set = set->kind == sk_overloaded_function;
  a_symbol *entry = is_set ? overloads_of_symbol(set) : set;
  for (; entry != nullptr; entry = is_set ? entry->next_same_name : nullptr) {
    if (is_usual_delete(behind(entry), with_size)) return behind(entry);
  }
  return nullptr;
}

a_symbol *find_usual_operator_delete(a_type *type, bool is_array, bool is_global, a_symbol **set)
{
  *set = allocation_functions(is_array ? onk_array_delete : onk_delete, type, is_global);
  if (*set == nullptr) return nullptr;
  a_symbol *symbol = usual_delete_of_set(*set, false);
  return symbol != nullptr ? symbol : usual_delete_of_set(*set, true);
}

static bool parameters_correspond(a_routine *new_routine, a_routine *delete_routine)
{
  a_param_type *a = param_types_of(skip_typerefs(new_routine->type));
  a_param_type *b = param_types_of(skip_typerefs(delete_routine->type));
  if (a == nullptr || b == nullptr) return false;
  for (a = a->next, b = b->next; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (!f_identical_types(a->type, b->type, ido_ignore_top_qualifiers)) return false;
  }
  return a == nullptr && b == nullptr;
}

// The function that frees the memory when the object's initialization throws.
static a_symbol *find_corresponding_operator_delete_sym(a_routine *new_routine, a_type *type,
                                                        bool is_array, bool is_global)
{
  a_symbol *set = allocation_functions(is_array ? onk_array_delete : onk_delete, type, is_global);
  if (set == nullptr) return nullptr;
  a_param_type *params = param_types_of(skip_typerefs(new_routine->type));
  if (params != nullptr && params->next == nullptr) {
    a_symbol *ignored;
    return find_usual_operator_delete(type, is_array, is_global, &ignored);
  }
  set = behind(set);
  bool is_set = set->kind == sk_overloaded_function;
  a_symbol *entry = is_set ? overloads_of_symbol(set) : set;
  for (; entry != nullptr; entry = is_set ? entry->next_same_name : nullptr) {
    a_symbol *symbol = behind(entry);
    if (is_routine_symbol(symbol) && parameters_correspond(new_routine, routine_of_symbol(symbol)))
      return symbol;
  }
  return nullptr;
}

static void use_function(a_symbol *symbol, a_source_position position)
{
  if (!have_access_to_symbol(symbol))
    expr_pos_sy_diagnostic(es_error, ec_no_access_to_name, position, symbol);
  record_use_of_function(symbol, position);
}

// -------------------------------------------------------------------------------------------------
// new

struct a_new_scan {
  a_source_position position;
  a_new_delete_supplement *supplement;
  an_arg_operand *placement;
  a_type *type;     // allocated; of an array its element type
  an_operand count; // of elements, for arrays
  a_type *result_type;
  bool failed;
};

static void scan_placement(a_new_scan *scan)
{
  get_token();
  scan->placement = scan_argument_operands();
  required_token(tok_rparen, ec_exp_rparen);
  scan->supplement->is_placement = true;
}

// At a `(`.
static bool is_type_behind_paren()
{
  a_token_cache cache;
  clear_token_cache(&cache, false);
  cache_curr_token(&cache);
  get_token();
  bool is_type = is_decl_not_expr(dst_parenthesized_type | dst_cast);
  rescan_cached_tokens(&cache);
  return is_type;
}

// Behind `new`: a `(` opens the placement, or the type.
static void scan_placement_and_type(a_new_scan *scan)
{
  bool in_parens = false;
  if (curr_token == tok_lparen) {
    in_parens = is_type_behind_paren();
    if (!in_parens) {
      scan_placement(scan);
      if (curr_token == tok_lparen) in_parens = true;
    }
  }
  a_type *type = nullptr;
  if (in_parens) {
    get_token();
    add_stop_token(tok_rparen);
    type_name(&type);
    remove_stop_token(tok_rparen);
    required_token(tok_rparen, ec_exp_rparen);
  } else {
    a_decl_parse_state state = null_decl_parse_state;
    new_type_name(&state, false);
    type = state.declared_type;
  }
  scan->type = type != nullptr ? type : error_type();
}

static void check_new_type(a_new_scan *scan)
{
  a_type *type = scan->type;
  if (is_error_type(type)) {
    scan->failed = true;
  } else if (is_function_type(type) || is_any_reference_type(type)) {
    expr_pos_error(is_function_type(type) ? ec_function_type_not_allowed : ec_pointer_to_reference,
                   scan->position);
    scan->failed = true;
  } else if (is_incomplete_type(type)) {
    expr_pos_ty_diagnostic(es_error, ec_incomplete_type_not_allowed, scan->position, type);
    scan->failed = true;
  } else {
    check_for_abstract_object(type, &scan->position);
  }
}

// The first bound may be any expression; what is left is the type of an element.
static void take_bound(a_new_scan *scan)
{
  an_expr_node *bound = take_bound_of_new();
  make_error_operand(&scan->count);
  scan->result_type = scan->type;
  if (!is_array_type(scan->type)) return;
  scan->supplement->is_array = true;
  a_type *array = skip_typerefs(scan->type);
  a_type *element = as_array(array).element_type;
  if (bound != nullptr) {
    make_expression_operand(bound, &scan->count);
    cast_operand(size_t_type(), &scan->count, false);
  } else {
    a_constant constant;
    unsigned long long number = as_array(array).bound.number_of_elements;
    set_unsigned_integer_constant(&constant, number, targ_size_t_int_kind);
    constant.type = size_t_type();
    make_constant_operand(&constant, &scan->count);
  }
  scan->type = scan->result_type = element;
}

// The bytes asked for: a constant, or the count times the size of an element, in this order: lowering
// finds the count there.
static void make_size_operand(a_new_scan *scan, an_operand *result)
{
  a_constant constant;
  set_unsigned_integer_constant(&constant, size_of_type(scan->type), targ_size_t_int_kind);
  constant.type = size_t_type();
  make_constant_operand(&constant, result);
  result->position = result->end_position = scan->position;
  if (!scan->supplement->is_array || scan->count.kind == ok_error) return;
  an_operand element = *result, count = scan->count;
  a_source_position position = scan->position;
  do_binary_operation(eok_multiply, &count, &element, size_t_type(), result, &position, tok_star);
}

// An array in memory of its own: who counts the elements frees them too when one doesn't begin.
static void note_deallocation_of_elements(a_new_scan *scan, a_symbol *allocation)
{
  a_new_delete_supplement *supplement = scan->supplement;
  if (!supplement->is_array || supplement->is_placement) return;
  supplement->has_array_cookie = true;
  if (!allocation->is_class_member) return;
  a_symbol *set;
  a_symbol *symbol =
      find_usual_operator_delete(scan->type, array_new_and_delete_enabled, false, &set);
  if (symbol == nullptr || !symbol->is_class_member) return;
  supplement->cleanup_init = alloc_dynamic_init(dik_none);
  supplement->cleanup_init->is_new_cleanup = true;
  supplement->cleanup_init->destructor = routine_of_symbol(symbol);
}

static void choose_allocation(a_new_scan *scan)
{
  a_new_delete_supplement *supplement = scan->supplement;
  bool is_array = supplement->is_array && array_new_and_delete_enabled;
  a_symbol *set =
      allocation_functions(is_array ? onk_array_new : onk_new, scan->type, supplement->is_global);
  an_operand size;
  make_size_operand(scan, &size);
  an_arg_operand *args = alloc_arg_operand(&size);
  args->next = scan->placement;
  an_overload_request request = {};
  an_overload_result chosen = {};
  request.symbol = set;
  request.args = args;
  request.error_code = ec_no_matching_new_function;
  request.ambiguity_code = ec_ambiguous_overloaded_function;
  request.position = scan->position;
  request.is_constructor_call = true; // ranked though there may be only one
  if (set != nullptr) select_overloaded_function(&request, &chosen);
  if (chosen.symbol == nullptr) {
    scan->failed = true;
  } else {
    use_function(chosen.symbol, scan->position);
    supplement->routine = routine_of_symbol(chosen.symbol);
    note_deallocation_of_elements(scan, chosen.symbol);
    an_arg_check_block block;
    start_call_argument_processing(skip_typerefs(supplement->routine->type), supplement->routine,
                                   &block);
    an_arg_match_summary *summary = chosen.summaries;
    process_ranked_arguments(args, summary, &block);
    finish_call_argument_processing(&block, &scan->position);
    supplement->first_arg = block.result_list;
  }
  free_arg_match_summary_list(chosen.summaries);
  free_arg_operand_list(args);
  scan->placement = nullptr;
}

static a_dynamic_init *init_of_scalar(a_new_scan *scan, an_arg_operand *args)
{
  if (args == nullptr) return alloc_dynamic_init(dik_zero);
  if (args->next != nullptr) {
    expr_pos_error(ec_too_many_initializer_values, args->next->operand.position);
    scan->failed = true;
    return nullptr;
  }
  prep_initializer_operand(&args->operand, scan->type, 1, ec_bad_initializer_type,
                           &args->operand.position);
  if (args->operand.kind == ok_error) scan->failed = true;
  a_dynamic_init *init = alloc_dynamic_init(dik_expression);
  expr_of(init) = make_node_from_operand(&args->operand);
  return init;
}

// (values), or nothing.  The value may not come to be used, when there is no memory.
static void scan_new_initializer(a_new_scan *scan)
{
  a_new_delete_supplement *supplement = scan->supplement;
  bool saved = expr_stack->conditionally_evaluated, failed = false;
  expr_stack->conditionally_evaluated = true;
  a_type *class_type = class_of_elements(scan->type);
  supplement->has_paren_init = curr_token == tok_lparen;
  if (!supplement->has_paren_init) {
    if (!scan->failed && class_type != nullptr)
      supplement->init = make_default_init(class_type, scan->position, &failed);
  } else {
    get_token();
    an_arg_operand *args = scan_argument_operands();
    curr_construct_end_position = end_pos_curr_token;
    required_token(tok_rparen, ec_exp_rparen);
    if (supplement->is_array && args != nullptr) {
      expr_pos_error(ec_initializer_not_allowed_on_array_new, scan->position);
      scan->failed = true;
    } else if (!scan->failed && class_type != nullptr) {
      supplement->init = make_constructor_init(class_type, args, scan->position);
      failed = supplement->init == nullptr;
    } else if (!scan->failed) {
      supplement->init = init_of_scalar(scan, args);
    }
    free_arg_operand_list(args);
  }
  scan->failed |= failed;
  expr_stack->conditionally_evaluated = saved;
}

// The object lives on; only its failing to come to life undoes the allocation.
static void note_cleanup(a_new_scan *scan)
{
  a_new_delete_supplement *supplement = scan->supplement;
  a_dynamic_init *init = supplement->init;
  if (init != nullptr && !supplement->is_array) {
    init->destructor = nullptr;
    init->has_destructor = false;
  }
  bool may_throw =
      init != nullptr && init->kind == dik_constructor && !supplement->has_array_cookie;
  if (!exceptions_enabled || !may_throw) return;
  bool is_array = supplement->is_array && array_new_and_delete_enabled;
  a_symbol *symbol = find_corresponding_operator_delete_sym(supplement->routine, scan->type,
                                                            is_array, supplement->is_global);
  if (symbol == nullptr) {
    a_symbol *new_symbol = supplement->routine->source_corresp.assoc_symbol;
    if (expr_diagnostic_should_be_issued(es_warning, ec_no_corresponding_delete))
      pos_stsy_warning(ec_no_corresponding_delete, scan->position, is_array ? "[]" : "",
                       new_symbol);
    return;
  }
  use_function(symbol, scan->position);
  supplement->cleanup_init = alloc_dynamic_init(dik_none);
  supplement->cleanup_init->is_new_cleanup = true;
  supplement->cleanup_init->destructor = routine_of_symbol(symbol);
}

static void make_new_operand(a_new_scan *scan, an_operand *result)
{
  an_expr_node *node = alloc_expr_node(enk_new_delete);
  new_delete_of(node) = scan->supplement;
  scan->supplement->type = scan->type;
  node->type = make_pointer_type(scan->result_type);
  node->expr_range.start = scan->position;
  node->expr_range.end = curr_construct_end_position;
  make_expression_operand(node, result);
}

static bool scan_global_mark()
{
  if (curr_token != tok_colon_colon) return false;
  get_token();
  return true;
}

static bool reject_in_constant(a_source_position position)
{
  if (!in_constant_context()) return false;
  expr_pos_error(not_allowed_in_constant_code(), position);
  return true;
}

void scan_new_operator(an_operand *result)
{
  a_new_scan scan = {};
  scan.position = pos_curr_token;
  an_expr_node *holder = alloc_expr_node(enk_new_delete);
  scan.supplement = new_delete_of(holder);
  scan.supplement->is_new = true;
  scan.supplement->is_global = scan_global_mark();
  get_token();
  scan_placement_and_type(&scan);
  take_bound(&scan);
  check_new_type(&scan);
  a_source_position end = curr_construct_end_position;
  if (!scan.failed) choose_allocation(&scan);
  scan_new_initializer(&scan);
  if (scan.supplement->has_paren_init) end = curr_construct_end_position;
  if (reject_in_constant(scan.position)) scan.failed = true;
  if (scan.failed) {
    make_error_operand(result);
  } else {
    note_cleanup(&scan);
    make_new_operand(&scan, result);
  }
  free_arg_operand_list(scan.placement);
  result->position = scan.position;
  result->end_position = end;
  rule_out_expr_kinds(rule_out_any_constant, result);
}

// -------------------------------------------------------------------------------------------------
// delete

static bool check_delete_operand(an_operand *operand)
{
  if (operand->kind == ok_error) return false;
  if (is_class_struct_union_type(operand->type) &&
      !try_to_convert_class_operand_to_builtin_type(operand, cvm_pointer, ec_expr_not_pointer))
    return false;
  do_operand_transformations(operand, 0);
  if (!check_pointer_operand(operand)) return false;
  if (is_function_type(type_pointed_to(operand->type))) {
    expr_pos_error(ec_delete_of_function_pointer, operand->position);
    return false;
  }
  return true;
}

// The destructor of what the pointer points to, or null.
static a_routine *destructor_of_deleted(a_type *type, a_source_position position)
{
  a_type *class_type = class_of_elements(type);
  if (class_type == nullptr) return nullptr;
  if (is_incomplete_type(class_type)) {
    expr_pos_ty_diagnostic(es_warning, ec_delete_of_incomplete_class, position, class_type);
    return nullptr;
  }
  return expr_select_destructor(class_type, &position);
}

static bool choose_deallocation(a_new_delete_supplement *supplement, a_type *type,
                                a_source_position position)
{
  a_symbol *set;
  bool is_array = supplement->is_array && array_new_and_delete_enabled;
  a_symbol *symbol = find_usual_operator_delete(type, is_array, supplement->is_global, &set);
  if (symbol == nullptr) {
    a_type *class_type = class_of_elements(type);
    a_symbol *owner = class_type != nullptr ? class_type->source_corresp.assoc_symbol : set;
    if (owner != nullptr)
      expr_pos_sy_diagnostic(es_error, ec_no_appropriate_delete, position, owner);
    return false;
  }
  use_function(symbol, position);
  supplement->routine = routine_of_symbol(symbol);
  supplement->has_array_cookie = is_array && !symbol->is_class_member;
  return true;
}

// delete[] may hold an expression, which older dialects asked for.
static void scan_array_mark(a_new_delete_supplement *supplement)
{
  if (curr_token != tok_lbracket) return;
  supplement->is_array = true;
  get_token();
  required_token(tok_rbracket, ec_exp_rbracket);
}

void scan_delete_operator(an_operand *result)
{
  a_source_position position = pos_curr_token;
  an_expr_node *node = alloc_expr_node(enk_new_delete);
  a_new_delete_supplement *supplement = new_delete_of(node);
  supplement->is_global = scan_global_mark();
  get_token();
  scan_array_mark(supplement);
  an_operand operand;
  scan_expression(&operand, nullptr, prec_cast_operand, 0);
  a_source_position end = operand.end_position;
  bool ok = check_delete_operand(&operand);
  if (reject_in_constant(position)) ok = false;
  a_type *type = ok ? type_pointed_to(operand.type) : error_type();
  a_routine *destructor = ok ? destructor_of_deleted(type, operand.position) : nullptr;
  if (!ok || !choose_deallocation(supplement, type, position)) {
    change_operand_refs_to_error(&operand);
    make_error_operand(result);
  } else {
    supplement->type = type;
    supplement->first_arg = make_node_from_operand(&operand);
    if (destructor != nullptr) {
      supplement->init = alloc_dynamic_init(dik_none);
      supplement->init->destructor = destructor;
      supplement->init->has_destructor = true;
    }
    node->type = void_type();
    node->expr_range.start = position;
    node->expr_range.end = end;
    make_expression_operand(node, result);
  }
  result->position = position;
  result->end_position = end;
  rule_out_expr_kinds(rule_out_any_constant, result);
}
