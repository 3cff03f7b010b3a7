// overload_special.cpp - which special member a copy, a default construction or a memberwise
// assignment uses, and arguments that follow their ranking.
// Entry:   select_overloaded_copy_constructor, select_overloaded_default_constructor,
//          select_assignment_operator_for_memberwise_copy, convert_argument_by_summary.
// See:     C++98 12.1, 12.8.
#include <cstdio>

#include "driver/flags.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/overload.h"
#include "parse/overload_private.h"
#include "parse/symbol_links.h"
#include "parse/symbol_tbl.h"

static a_symbol *first_of_set(a_symbol *symbol)
{
  return symbol != nullptr && symbol->kind == sk_overloaded_function ? overloads_of_symbol(symbol)
                                                                     : symbol;
}

// -------------------------------------------------------------------------------------------------
// Copies

static bool takes_const_reference(const a_param_type *param)
{
  if (!is_any_reference_type(param->type)) return true;
  a_type_qualifier_set qualifiers = get_type_qualifiers(type_pointed_to(param->type));
  return (qualifiers & tq_const) && !(qualifiers & tq_volatile);
}

// Adds a one-argument member whose parameter takes a `source`; false when it can't.
static a_candidate_function *candidate_for_copy(a_symbol *function, a_type *source)
{
  a_param_type *param = param_types_of(skip_typerefs(routine_of_symbol(function)->type));
  if (param == nullptr) return nullptr;
  an_arg_match_summary *summary = alloc_arg_match_summary();
  determine_arg_match_level(nullptr, make_reference_type(source), param->type, param, false, true,
                            summary);
  if (summary->level == aml_no_match) {
    free_arg_match_summary_list(summary);
    return nullptr;
  }
  a_candidate_function *candidate = alloc_candidate_function();
  candidate->symbol = function;
  candidate->arg_summaries = summary;
  return candidate;
}

static a_symbol *choose(a_candidate_function *list, bool *is_ambiguous)
{
  a_selection selection = select_best_candidate(list);
  *is_ambiguous = selection.is_ambiguous;
  a_symbol *symbol = selection.candidates != nullptr && !selection.is_ambiguous
                         ? selection.candidates->symbol
                         : nullptr;
  free_candidate_function_list(selection.candidates);
  return symbol;
}

a_symbol *select_overloaded_copy_constructor(a_type *class_type, unsigned qualifiers,
                                             bool is_rvalue, a_source_position *position,
                                             bool *is_ambiguous, bool *is_anachronistic,
                                             bool *no_copy_needed)
{
  (void)position;
  *is_ambiguous = *is_anachronistic = *no_copy_needed = false;
  a_class_symbol_supplement *supplement = class_supplement_of_type(class_type);
  if (supplement == nullptr ||
      (supplement->has_trivial_copy_constructor && !(qualifiers & tq_volatile))) {
    *no_copy_needed = true;
    return nullptr;
  }
  a_type *source = f_make_qualified_type(class_type, qualifiers);
  a_candidate_function *list = nullptr;
  a_symbol *held = nullptr;
  int held_count = 0;
  for (a_symbol *entry = first_of_set(supplement->constructors); entry != nullptr;
       entry = entry->next_same_name) {
    a_symbol *function = symbol_behind(entry);
    if (!is_routine_symbol(function) || !routine_of_symbol(function)->is_copy_constructor) continue;
    a_candidate_function *candidate = candidate_for_copy(function, source);
    if (candidate == nullptr) continue;
    a_param_type *param = param_types_of(skip_typerefs(routine_of_symbol(function)->type));
    if (is_rvalue && !takes_const_reference(param)) {
      held = function;
      ++held_count;
      free_candidate_function_list(candidate);
      continue;
    }
    candidate->next = list;
    list = candidate;
  }
  if (list == nullptr && held_count == 1) {
    *is_anachronistic = true;
    return held;
  }
  return choose(list, is_ambiguous);
}

a_symbol *select_overloaded_default_constructor(a_type *class_type, a_source_position *position,
                                                bool *is_ambiguous)
{
  (void)position;
  *is_ambiguous = false;
  a_class_symbol_supplement *supplement = class_supplement_of_type(class_type);
  if (supplement == nullptr) return nullptr;
  if (supplement->constructors == nullptr) return supplement->trivial_default_constructor;
  a_candidate_search search = {};
  add_candidates(&search, supplement->constructors);
  if (search.list == nullptr) return nullptr;
  return choose(search.list, is_ambiguous);
}

a_symbol *select_assignment_operator_for_memberwise_copy(a_type *class_type, unsigned qualifiers,
                                                         a_source_position *position)
{
  a_class_symbol_supplement *supplement = class_supplement_of_type(class_type);
  if (supplement == nullptr) return nullptr;
  a_type *source = f_make_qualified_type(class_type, qualifiers);
  a_candidate_function *list = nullptr;
  for (a_symbol *entry = first_of_set(supplement->assignment_operator); entry != nullptr;
       entry = entry->next_same_name) {
    a_symbol *function = symbol_behind(entry);
    if (!is_routine_symbol(function)) continue;
    a_candidate_function *candidate = candidate_for_copy(function, source);
    if (candidate == nullptr) continue;
    candidate->next = list;
    list = candidate;
  }
  if (list == nullptr) {
    an_error_code code = qualifiers & tq_const ? ec_missing_const_assignment_operator
                                               : ec_no_suitable_assignment_operator;
    if (expr_stack == nullptr || expr_error_should_be_issued())
      pos_ty_error(code, *position, class_type);
    return nullptr;
  }
  bool is_ambiguous;
  a_symbol *symbol = choose(list, &is_ambiguous);
  if (is_ambiguous) pos_ty_error(ec_ambiguous_assignment_operator, *position, class_type);
  return symbol;
}

// -------------------------------------------------------------------------------------------------
// Arguments

void convert_argument_by_summary(an_operand *operand, a_param_type *param,
                                 an_arg_match_summary *summary)
{
  issue_warning_from_arg_match_summary(summary, operand->position);
  if (summary->level == aml_error) {
    conv_to_error_operand(operand);
    return;
  }
  if (summary->selected_function != nullptr)
    overloaded_function_catch_up(operand, summary->selected_function);
  a_conv_descr *conv = summary->level == aml_user ? &summary->conv : nullptr;
  if (is_any_reference_type(param->type)) {
    prep_reference_initializer_operand(operand, param->type, conv, false, 0, ec_incompatible_param,
                                       nullptr);
    return;
  }
  if (conv != nullptr && conv->is_ambiguous) {
    a_conv_descr again;
    user_defined_conversion_possible(operand, param->type, false, &again, nullptr);
    return;
  }
  if (conv != nullptr) user_convert_operand(operand, rvalue_type(param->type), conv, true);
  prep_argument_operand(operand, param->type, param, ec_incompatible_param);
}

void add_types_of_arguments_to_message(an_arg_operand *args)
{
  char text[1024];
  size_t used = 0, length;
  for (; args != nullptr && used + 40 < sizeof text; args = args->next) {
    const char *type = format_type_string(args->operand.type, &length);
    size_t room = sizeof text - used - 8;
    used += (size_t)snprintf(text + used, room, "%s%s", type, args->next != nullptr ? ", " : "");
    if (used > sizeof text - 8) used = sizeof text - 8;
  }
  text[used] = 0;
  str_add_diag_info(ec_argument_types_are, text);
}
