// overload_candidates.cpp - from a name and arguments to the candidates, and the choice for a call.
// Entry:   add_candidates, select_overloaded_function, list_candidates, list_argument_types.
// See:     C++98 13.3.1, 13.3.2.
#include "driver/flags.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/lookup.h"
#include "parse/overload.h"
#include "parse/overload_private.h"
#include "parse/scope_stk.h"

// -------------------------------------------------------------------------------------------------
// One function

static bool param_has_default(const a_param_type *param)
{
  return param->has_default_arg;
}

static bool argument_count_fits(a_type *routine_type, const an_arg_operand *args)
{
  const a_routine_type_supplement *supplement = routine_supplement_of(routine_type);
  if (!supplement->is_prototyped) return true;
  const a_param_type *param = supplement->param_types;
  for (; args != nullptr && param != nullptr; args = args->next)
    param = param->next;
  if (args != nullptr) return supplement->has_ellipsis;
  return param == nullptr || param_has_default(param);
}

static void append_summary(a_candidate_function *candidate, an_arg_match_summary *summary)
{
  an_arg_match_summary **tail = &candidate->arg_summaries;
  while (*tail != nullptr)
    tail = &(*tail)->next;
  *tail = summary;
}

// Ranks all arguments against the parameters; false when one has no match.
static bool rank_arguments_of(a_candidate_search *search, a_type *routine_type,
                              a_candidate_function *candidate)
{
  const a_routine_type_supplement *supplement = routine_supplement_of(routine_type);
  a_param_type *param = supplement->param_types;
  for (an_arg_operand *arg = search->args; arg != nullptr; arg = arg->next) {
    an_arg_match_summary *summary = alloc_arg_match_summary();
    append_summary(candidate, summary);
    if (param == nullptr) {
      summary->level = is_error_type(arg->operand.type) ? aml_error : aml_ellipsis;
      continue;
    }
    determine_arg_match_level(&arg->operand, nullptr, param->type, param,
                              !search->no_user_conversions, search->is_copy_like, summary);
    if (summary->level == aml_no_match) return false;
    param = param->next;
  }
  return true;
}

static bool needs_object(const a_routine *routine)
{
  return routine_supplement_of(skip_typerefs(routine->type))->this_class != nullptr;
}

// The entry of the implicit object in front of the others; false drops the candidate.
static bool rank_object(a_candidate_search *search, a_routine *routine,
                        a_candidate_function *candidate)
{
  an_arg_match_summary *summary = alloc_arg_match_summary();
  append_summary(candidate, summary);
  if (!needs_object(routine)) return true; // neutral
  if (routine->special_kind == sfk_constructor || routine->special_kind == sfk_destructor) {
    summary->level = aml_exact;
    return true;
  }
  a_type *this_class = routine_supplement_of(skip_typerefs(routine->type))->this_class;
  if (search->object_type == nullptr ||
      !is_same_class_or_base_class_thereof(this_class, skip_typerefs(search->object_type))) {
    search->object_needed = true;
    return false;
  }
  selector_match_with_this_param(search->object, search->object_type, routine, summary);
  if (summary->level != aml_no_match) return true;
  search->object_qualifiers_failed = true;
  return false;
}

static void drop_candidate(a_candidate_function *candidate)
{
  free_candidate_function_list(candidate);
}

static void add_function(a_candidate_search *search, a_symbol *symbol, a_symbol *overload_symbol)
{
  a_symbol *function = symbol_behind(symbol);
  if (function->kind == sk_function_template) {
    if (overload_hooks.add_template_candidate != nullptr)
      overload_hooks.add_template_candidate(search, function, overload_symbol);
    return;
  }
  if (!is_routine_symbol(function) || search->has_explicit_args) return;
  if (function->is_invisible && !function->is_class_member) return;
  a_routine *routine = routine_of_symbol(function);
  if (routine->is_explicit && search->no_explicit_constructors) {
    search->explicit_constructor_skipped = true;
    return;
  }
  if (search->found_by_dependent_lookup && !dependent_lookup_finds_static_functions &&
      routine->storage_class == sc_static)
    return;
  a_type *type = skip_typerefs(routine->type);
  if (type->kind != tk_routine || !argument_count_fits(type, search->args)) return;
  a_candidate_function *candidate = alloc_candidate_function();
  candidate->symbol = function;
  candidate->overload_symbol = overload_symbol;
  bool is_member = function->is_class_member;
  if ((is_member && !rank_object(search, routine, candidate)) ||
      !rank_arguments_of(search, type, candidate)) {
    drop_candidate(candidate);
    return;
  }
  // A set may hold members beside non-members (operators): all candidates have the same number of
  // entries then, since the search for operators passes the left operand as the object.
  candidate->next = search->list;
  search->list = candidate;
}

void add_candidates(a_candidate_search *search, a_symbol *symbol)
{
  a_symbol *set = symbol_behind(symbol);
  if (set->kind != sk_overloaded_function) {
    add_function(search, symbol, symbol);
    return;
  }
  for (a_symbol *entry = overloads_of_symbol(set); entry != nullptr; entry = entry->next_same_name)
    add_function(search, entry, set);
}

// -------------------------------------------------------------------------------------------------
// Notes

static void list_function(a_candidate_function *candidate)
{
  if (candidate->surrogate_conversion != nullptr) {
    sym_add_diag_info(ec_surrogate_function, candidate->surrogate_conversion);
  } else if (candidate->symbol != nullptr && candidate->symbol->is_ambiguous) {
    sym_add_diag_info(ec_ambiguous_by_inheritance, candidate->symbol);
  } else if (candidate->symbol != nullptr) {
    sym_add_diag_info(ec_entity_with_params, candidate->symbol);
  }
}

void list_candidates(a_candidate_function *list)
{
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    bool listed = false;
    for (a_candidate_function *before = list; before != c && !listed; before = before->next)
      listed = candidates_are_the_same_function(before, c);
    if (listed) continue;
    if (c->builtin_signature != nullptr)
      list_builtin_candidate(c);
    else
      list_function(c);
  }
}

void list_argument_types(an_arg_operand *args, an_operand *object)
{
  if (args != nullptr) add_types_of_arguments_to_message(args);
  if (object == nullptr) return;
  size_t length;
  str_add_diag_info(ec_object_type_is, format_type_string(object->type, &length));
}

// -------------------------------------------------------------------------------------------------
// The choice for a call

static bool is_single_function(a_symbol *symbol)
{
  a_symbol *function = symbol_behind(symbol);
  return is_routine_symbol(function);
}

static bool lookup_by_arguments_applies(const an_overload_request *request)
{
  if (!request->adl_allowed || request->symbol == nullptr) return false;
  if (request->symbol->is_class_member) return false;
  if (is_block_extern_symbol(request->symbol)) return gpp_mode;
  return true;
}

// Functions that the argument types' classes and namespaces bring along.
// True when they bring any beside the name as written.
static bool add_dependent_candidates(const an_overload_request *request, a_candidate_search *search)
{
  an_arg_dependent_type_list *types = nullptr;
  for (an_arg_operand *arg = request->args; arg != nullptr; arg = arg->next)
    add_to_arg_dependent_lookup_list(arg->operand.type, &types);
  if (types == nullptr) return false;
  a_symbol *known = request->is_undeclared ? nullptr : request->symbol;
  a_symbol_locator locator = cleared_locator;
  locator.header = request->symbol->header;
  locator.position = request->position;
  a_symbol *found = argument_dependent_lookup(known, &locator, types);
  if (found == known || found == nullptr) return false;
  search->found_by_dependent_lookup = true;
  add_candidates(search, found);
  search->found_by_dependent_lookup = false;
  return true;
}

static an_error_code code_of_failure(const an_overload_request *request,
                                     const a_candidate_search *search)
{
  if (search->object_qualifiers_failed) return ec_no_matching_function_due_to_selector;
  if (is_single_function(request->symbol)) return ec_function_does_not_match_arguments;
  return request->error_code;
}

static void report_no_candidate(const an_overload_request *request,
                                const a_candidate_search *search)
{
  if (!expr_error_should_be_issued()) return;
  if (search->object_needed) {
    pos_error(ec_member_ref_requires_object, request->position);
    return;
  }
  if (request->symbol == nullptr) {
    pos_error(ec_bad_call_of_class_object, request->position);
    return;
  }
  pos_sy_start_error(code_of_failure(request, search), request->position, request->symbol);
  list_argument_types(request->args, search->object_qualifiers_failed ? request->object : nullptr);
  end_error();
}

static void report_ambiguity(const an_overload_request *request, a_candidate_function *list)
{
  if (!expr_error_should_be_issued()) return;
  if (list->next == nullptr && list->symbol != nullptr && list->symbol->is_ambiguous) {
    pos_sy_error(ec_ambiguous_name, request->position, list->symbol);
    return;
  }
  bool any_surrogate = false;
  for (a_candidate_function *c = list; c != nullptr; c = c->next)
    any_surrogate |= c->surrogate_conversion != nullptr;
  if (any_surrogate) {
    pos_ty_start_error(ec_ambiguous_class_call, request->position, request->object->type);
  } else {
    pos_sy_start_error(request->ambiguity_code, request->position, request->symbol);
  }
  list_candidates(list);
  list_argument_types(request->args, nullptr);
  end_error();
}

static void take_winner(a_candidate_function *winner, an_overload_result *result)
{
  result->symbol = winner->symbol;
  if (winner->is_template && overload_hooks.instantiate_candidate != nullptr)
    result->symbol = overload_hooks.instantiate_candidate(winner);
  result->surrogate_conversion = winner->surrogate_conversion;
  result->summaries = winner->arg_summaries;
  winner->arg_summaries = nullptr;
}

void select_overloaded_function(const an_overload_request *request, an_overload_result *result)
{
  *result = {};
  a_candidate_search search = {};
  search.args = request->args;
  search.object = request->object;
  search.object_type = request->object != nullptr ? request->object->type : nullptr;
  search.has_explicit_args = request->has_explicit_args;
  search.explicit_args = request->explicit_args;
  search.no_explicit_constructors = request->no_explicit_constructors;
  bool by_arguments =
      lookup_by_arguments_applies(request) && add_dependent_candidates(request, &search);
  if (!by_arguments && request->is_undeclared) {
    result->not_found = true;
    return;
  }
  if (!by_arguments && !request->has_explicit_args && request->object == nullptr &&
      !request->is_constructor_call && request->symbol != nullptr &&
      is_single_function(request->symbol)) {
    result->symbol = symbol_behind(request->symbol);
    result->was_single_function = true;
    return;
  }
  if (request->symbol != nullptr && !request->is_undeclared)
    add_candidates(&search, request->symbol);
  result->explicit_constructor_skipped = search.explicit_constructor_skipped;
  if (search.list == nullptr) {
    report_no_candidate(request, &search);
    return;
  }
  a_selection selection = select_best_candidate(search.list);
  if (selection.is_ambiguous)
    report_ambiguity(request, selection.candidates);
  else if (!selection.is_undetermined)
    take_winner(selection.candidates, result);
  free_candidate_function_list(selection.candidates);
}
