// expr_call_overload.cpp - C++ calls by name: the function is chosen once the arguments are known.
// Entry:   scan_call_by_name.
// See:     C++98 13.3.1.1, 3.4.2.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_alloc.h"
#include "il/types.h"
#include "lex/lexical.h"
#include "parse/expr_args.h"
#include "parse/expr_internal.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/symbol_tbl.h"

an_arg_operand *scan_argument_operands()
{
  an_arg_operand *list = nullptr, **tail = &list;
  ++expr_stack->paren_depth;
  add_stop_token(tok_rparen);
  add_stop_token(tok_comma);
  if (curr_token != tok_rparen) {
    do {
      an_operand argument;
      scan_operand_of_list(&argument);
      *tail = alloc_arg_operand(&argument);
      tail = &(*tail)->next;
    } while (loop_token(tok_comma));
  }
  remove_stop_token(tok_comma);
  remove_stop_token(tok_rparen);
  --expr_stack->paren_depth;
  return list;
}

static void process_plain_arguments(an_arg_operand *args, an_arg_check_block *block)
{
  for (; args != nullptr; args = args->next)
    process_call_argument(&args->operand, block);
}

// Arguments of a function that was ranked: each follows its summary.
void process_ranked_arguments(an_arg_operand *args, an_arg_match_summary *summary,
                              an_arg_check_block *block)
{
  if (summary != nullptr && summary->is_this_param) summary = summary->next;
  for (; args != nullptr; args = args->next) {
    if (summary == nullptr || block->next_param == nullptr) {
      process_call_argument(&args->operand, block);
    } else {
      convert_argument_by_summary(&args->operand, block->next_param, summary);
      process_converted_argument(&args->operand, block);
    }
    if (summary != nullptr) summary = summary->next;
  }
}

static void report_undeclared(an_operand *function)
{
  expr_pos_st_diagnostic(es_error, ec_undefined_identifier, function->position,
                         function->symbol->header->identifier);
  a_symbol_locator locator = cleared_locator;
  locator.header = function->symbol->header;
  locator.position = function->position;
  enter_undefined_symbol(&locator);
}

// What is known of a member only when it was chosen from its set.
static void check_chosen_member(an_operand *function, a_symbol *symbol, bool has_object)
{
  if (!symbol->is_class_member) return;
  if (!have_access_to_symbol(symbol)) {
    expr_pos_sy_diagnostic(es_error, ec_no_access_to_name, function->position, symbol);
  } else if (!has_object && !routine_of_symbol(symbol)->is_static_member) {
    expr_pos_error(ec_member_ref_requires_object, function->position);
  }
}

// Chooses; null with the arguments marked as unused when there is none.
static a_symbol *choose_function(an_operand *function, an_operand *selector, an_arg_operand *args,
                                 an_overload_result *result)
{
  an_overload_request request = {};
  an_operand object;
  if (selector != nullptr) {
    object = *selector;
    object.type = type_pointed_to(selector->type);
    request.object = &object;
  }
  request.symbol = function->symbol;
  request.is_undeclared = function->kind == ok_undefined_symbol;
  request.has_explicit_args = function->template_args != nullptr;
  request.explicit_args = function->template_args;
  request.args = args;
  request.adl_allowed = !function->parenthesized && !function->suppress_virtual;
  request.error_code = ec_no_matching_new_function;
  request.ambiguity_code = ec_ambiguous_overloaded_function;
  request.position = function->position;
  select_overloaded_function(&request, result);
  if (result->symbol == nullptr && result->not_found) report_undeclared(function);
  if (result->symbol != nullptr) check_chosen_member(function, result->symbol, selector != nullptr);
  return result->symbol;
}

static void give_up(an_arg_operand *args, an_operand *result)
{
  for (; args != nullptr; args = args->next)
    operand_will_not_be_used_because_of_error(&args->operand);
  make_error_operand(result);
}

void scan_call_by_name(an_operand *function, an_operand *result)
{
  a_source_position open_pos = pos_curr_token, start = function->position;
  a_source_position name_end = function->end_position;
  an_operand selector;
  bool is_bound = function->is_bound_function;
  if (is_bound) take_bound_selector(&selector);
  get_token();
  an_arg_operand *args = scan_argument_operands();
  a_source_position end = end_pos_curr_token, close = pos_curr_token;
  required_token(tok_rparen, ec_exp_rparen);
  an_overload_result chosen;
  a_symbol *symbol = choose_function(function, is_bound ? &selector : nullptr, args, &chosen);
  if (symbol == nullptr) {
    give_up(args, result);
  } else {
    bool suppress_virtual = function->suppress_virtual;
    change_ref_kinds(function->ref_entries, rk_error);
    make_function_designator_operand(symbol, &start, &name_end, function, ref_entry(symbol, start));
    function->is_bound_function = is_bound;
    function->suppress_virtual = suppress_virtual;
    change_some_ref_kinds(function->ref_entries, rk_plain, rk_read);
    function->ref_entries = function->last_ref_entry = nullptr;
    a_routine *routine = routine_of_symbol(symbol);
    a_type *routine_type = skip_typerefs(routine->type);
    an_arg_check_block block;
    start_call_argument_processing(routine_type, routine, &block);
    if (is_bound) add_object_argument(routine_type, &selector, &block);
    if (chosen.was_single_function)
      process_plain_arguments(args, &block);
    else
      process_ranked_arguments(args, chosen.summaries, &block);
    finish_call_argument_processing(&block, &close);
    do_operand_transformations(function, 0);
    finish_call(function, routine, &block, return_type_of_call(routine_type, &start), &open_pos,
                &end, result);
    if (is_bound && routine->is_static_member) keep_side_effects_of_object(&selector, result);
  }
  free_arg_match_summary_list(chosen.summaries);
  free_arg_operand_list(args);
  flush_ref_entries_except(result->ref_entries, nullptr);
  result->position = start;
  result->end_position = end;
}
