// overload_select.cpp - the best of a list of candidates.
// Rule:    a candidate is best when no argument of it is worse than another candidate's and one is
//          better; ties go through a second, ordered comparison.
// Entry:   select_best_candidate.
// See:     C++98 13.3.3.
#include <cstring>
#include <initializer_list>

#include "driver/flags.h"
#include "il/il.h"
#include "il/il_entities.h"
#include "il/types.h"
#include "parse/overload.h"
#include "parse/overload_private.h"

// -------------------------------------------------------------------------------------------------
// Standard conversions.  Comparisons give 1 when the first is better, -1 when the second is, else 0.

static int prefer_clear(bool a, bool b)
{
  return (int)b - (int)a;
}

// Is `base` a proper base class of the class that the step starts from?
static bool derives_from(a_type *class_type, a_type *base)
{
  return class_type != base && find_base_class_of(class_type, base) != nullptr;
}

static int compare_base_class_steps(const a_std_conv_descr *a, const a_std_conv_descr *b,
                                    bool is_conversion_result)
{
  if (a->base_class == b->base_class) return 0;
  a_type *a_derived = a->base_class->derived_class, *b_derived = b->base_class->derived_class;
  a_type *a_base = a->base_class->type, *b_base = b->base_class->type;
  if (a->ptr_to_member_step != is_conversion_result) {
    if (derives_from(b_derived, a_derived)) return 1;
    if (derives_from(a_derived, b_derived)) return -1;
    return 0;
  }
  if (derives_from(a_base, b_base)) return 1;
  if (derives_from(b_base, a_base)) return -1;
  return 0;
}

// Both ends pointers to classes: where a conversion function's result loses its type, the pointer to
// the base class loses less.
static int compare_lost_pointers(const a_conv_descr *a, const a_conv_descr *b)
{
  if (a->routine == nullptr || b->routine == nullptr) return 0;
  a_type *a_result = rvalue_type(return_type_of(skip_typerefs(a->routine->type)));
  a_type *b_result = rvalue_type(return_type_of(skip_typerefs(b->routine->type)));
  if (!is_pointer_type(a_result) || !is_pointer_type(b_result)) return 0;
  a_type *a_class = skip_typerefs(type_pointed_to(a_result));
  a_type *b_class = skip_typerefs(type_pointed_to(b_result));
  if (!is_class_struct_union_type(a_class) || !is_class_struct_union_type(b_class)) return 0;
  if (derives_from(b_class, a_class)) return 1;
  return derives_from(a_class, b_class) ? -1 : 0;
}

static int compare_ranks_of(const a_std_conv_descr *a, const a_std_conv_descr *b)
{
  if (a->is_conversion != b->is_conversion) return prefer_clear(a->is_conversion, b->is_conversion);
  if (!a->is_conversion) return 0;
  return prefer_clear(b->is_promotion, a->is_promotion);
}

int compare_std_conversions(const a_conv_descr *a, const a_conv_descr *b, bool compare_ranks,
                            bool is_conversion_result)
{
  const a_std_conv_descr *x = &a->std_conv, *y = &b->std_conv;
  if (compare_ranks) {
    if (int order = compare_ranks_of(x, y)) return order;
  }
  if (bool_is_keyword && x->is_to_bool != y->is_to_bool)
    return prefer_clear(x->is_to_bool, y->is_to_bool);
  if (gpp_mode && x->real_to_complex != y->real_to_complex)
    return prefer_clear(x->real_to_complex, y->real_to_complex);
  if (x->base_class != nullptr && y->base_class != nullptr &&
      x->ptr_to_member_step == y->ptr_to_member_step)
    return compare_base_class_steps(x, y, is_conversion_result);
  if (!is_conversion_result) {
    // A step to a base class is better than one to void *.
    if (x->base_class != nullptr) return 1;
    if (y->base_class != nullptr) return -1;
    return 0;
  }
  if (x->to_void_or_null && y->to_void_or_null) return compare_lost_pointers(a, b);
  return 0;
}

// -------------------------------------------------------------------------------------------------
// Qualifiers

// A parameter that binds to an object: a reference, or `this`.
static bool is_reference_like(const an_arg_match_summary *summary)
{
  if (is_any_reference_type(summary->param_type)) return true;
  return summary->is_this_param && is_pointer_type(summary->param_type);
}

static bool same_kind_of_reference(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  return is_rvalue_reference_type(a->param_type) == is_rvalue_reference_type(b->param_type);
}

static bool has_qualification_flag(const an_arg_match_summary *summary)
{
  const a_std_conv_descr *conv = &summary->conv.std_conv;
  return conv->qualification_added || conv->ref_qualification_added;
}

static bool has_own_qualification_flag(const an_arg_match_summary *summary)
{
  const a_std_conv_descr *conv = &summary->conv.std_conv;
  return is_reference_like(summary) ? conv->ref_qualification_added : conv->qualification_added;
}

static a_type *referred_type(const an_arg_match_summary *summary)
{
  return is_reference_like(summary) ? type_pointed_to(summary->param_type) : summary->param_type;
}

static int compare_qualifier_sets(unsigned a, unsigned b)
{
  if (a == b) return 0;
  if ((a & b) == a) return 1;
  return (a & b) == b ? -1 : 0;
}

static int compare_referred_qualifiers(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  bool a_like = is_reference_like(a), b_like = is_reference_like(b);
  bool both = a_like && b_like && same_kind_of_reference(a, b);
  if (!both && !(single_ref_qual_ovl_res_tiebreaker && (a_like || b_like))) return 0;
  a_type *a_referred = referred_type(a), *b_referred = referred_type(b);
  if (!identical_types(make_unqualified_type(a_referred), make_unqualified_type(b_referred)))
    return 0;
  unsigned a_qualifiers = a_like ? get_type_qualifiers(a_referred) : 0;
  unsigned b_qualifiers = b_like ? get_type_qualifiers(b_referred) : 0;
  return compare_qualifier_sets(a_qualifiers, b_qualifiers);
}

// The pointers that two parameters are or refer to; null when they are none.
static a_type *compared_pointer(const an_arg_match_summary *summary, bool through_reference)
{
  a_type *type = through_reference ? referred_type(summary) : summary->param_type;
  return is_pointer_type(type) ? type : nullptr;
}

static int compare_added_qualifiers(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  bool references = is_reference_like(a) && is_reference_like(b) && same_kind_of_reference(a, b);
  a_type *a_pointer = compared_pointer(a, references), *b_pointer = compared_pointer(b, references);
  if (a_pointer == nullptr || b_pointer == nullptr) return 0;
  if (has_qualification_flag(a) && same_type_with_added_qualifiers(b_pointer, a_pointer)) return -1;
  if (has_qualification_flag(b) && same_type_with_added_qualifiers(a_pointer, b_pointer)) return 1;
  return 0;
}

static bool old_rule_decides(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  if (cfront_2_1_mode) return true;
  if (!cfront_3_0_mode) return false;
  auto indirect = [](const an_arg_match_summary *s) {
    return s->param_type != nullptr &&
           (is_pointer_type(s->param_type) || is_any_reference_type(s->param_type));
  };
  return indirect(a) && indirect(b);
}

static int compare_qualification(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  bool a_flag = has_qualification_flag(a), b_flag = has_qualification_flag(b);
  if (!a_flag && !b_flag) return 0;
  if (old_rule_decides(a, b)) {
    bool applies =
        (a->level == aml_exact && b->level == aml_exact) || (a->is_this_param && b->is_this_param);
    return applies ? prefer_clear(a_flag, b_flag) : 0;
  }
  if (a->param_type == nullptr || b->param_type == nullptr) return 0;
  bool a_own = has_own_qualification_flag(a), b_own = has_own_qualification_flag(b);
  bool a_step = a->conv.std_conv.base_class != nullptr;
  bool b_step = b->conv.std_conv.base_class != nullptr;
  if (a_own != b_own && !a_step && !b_step) return prefer_clear(a_own, b_own);
  if (int order = compare_referred_qualifiers(a, b)) return order;
  return compare_added_qualifiers(a, b);
}

static int qualification_tiebreak(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  bool a_literal = a->conv.std_conv.string_literal_to_nonconst;
  bool b_literal = b->conv.std_conv.string_literal_to_nonconst;
  if (a_literal != b_literal) return prefer_clear(a_literal, b_literal);
  if (int order = compare_qualification(a, b)) return order;
  return prefer_clear(a->anachronism, b->anachronism);
}

// -------------------------------------------------------------------------------------------------
// One argument of two candidates

static int compare_arguments(const an_arg_match_summary *a, const an_arg_match_summary *b)
{
  if (a->level == aml_no_match || b->level == aml_no_match) return 0;
  if (a->rvalue_ref_to_lvalue != b->rvalue_ref_to_lvalue)
    return prefer_clear(a->rvalue_ref_to_lvalue, b->rvalue_ref_to_lvalue);
  if (a->level != b->level) return a->level < b->level ? 1 : -1;
  if (!do_late_ovl_res_tiebreaker) {
    if (int order = qualification_tiebreak(a, b)) return order;
  }
  if (rvalue_references_enabled && !a->is_this_param && !b->is_this_param &&
      a->param_type != nullptr && b->param_type != nullptr &&
      is_any_reference_type(a->param_type) && is_any_reference_type(b->param_type) &&
      !same_kind_of_reference(a, b))
    return is_rvalue_reference_type(a->param_type) ? 1 : -1;
  bool is_user = a->level == aml_user;
  if (is_user && a->conv.routine != b->conv.routine) return 0;
  return compare_std_conversions(&a->conv, &b->conv, is_user, false);
}

// -------------------------------------------------------------------------------------------------
// Two candidates that no argument decides

static int compare_qualification_of_all_arguments(const a_candidate_function *a,
                                                  const a_candidate_function *b)
{
  int decided = 0;
  const an_arg_match_summary *y = b->arg_summaries;
  for (const an_arg_match_summary *x = a->arg_summaries; x != nullptr && y != nullptr;
       x = x->next, y = y->next) {
    int order = qualification_tiebreak(x, y);
    if (order == 0) continue;
    if (decided != 0 && decided != order) return 0;
    decided = order;
  }
  return decided;
}

static int prefer_non_template(const a_candidate_function *a, const a_candidate_function *b)
{
  return prefer_clear(a->is_template, b->is_template);
}

static a_type *result_type_of_conversion(const a_candidate_function *candidate)
{
  if (candidate->conv.routine == nullptr) return nullptr;
  return return_type_of(skip_typerefs(candidate->conv.routine->type));
}

static int compare_conversion_candidates(const a_candidate_function *a,
                                         const a_candidate_function *b)
{
  if (int order = compare_std_conversions(&a->conv, &b->conv, true, true)) return order;
  const a_std_conv_descr *x = &a->conv.std_conv, *y = &b->conv.std_conv;
  bool any = x->qualification_added || x->ref_qualification_added || y->qualification_added ||
             y->ref_qualification_added;
  a_type *a_result = result_type_of_conversion(a), *b_result = result_type_of_conversion(b);
  if (!any || a_result == nullptr || b_result == nullptr) return 0;
  if (same_type_with_added_qualifiers(a_result, b_result)) return 1;
  return same_type_with_added_qualifiers(b_result, a_result) ? -1 : 0;
}

// g++ takes the non-member when member and non-member differ in nothing but that.
static int prefer_non_member(const a_candidate_function *a, const a_candidate_function *b)
{
  const an_arg_match_summary *x = a->arg_summaries, *y = b->arg_summaries;
  if (!gpp_mode || x == nullptr || y == nullptr || x->is_this_param == y->is_this_param) return 0;
  if (!has_qualification_flag(x) || !has_qualification_flag(y)) return 0;
  if (x->param_type == nullptr || y->param_type == nullptr) return 0;
  if (get_type_qualifiers(referred_type(x)) != get_type_qualifiers(referred_type(y))) return 0;
  return prefer_clear(x->is_this_param, y->is_this_param);
}

static int compare_two_templates(const a_candidate_function *a, const a_candidate_function *b)
{
  if (!a->is_template || !b->is_template) return 0;
  if (overload_hooks.compare_function_templates == nullptr) return 0;
  uint32_t count = 0;
  for (const a_candidate_function *c : {a, b}) {
    for (const an_arg_match_summary *s = c->arg_summaries; s != nullptr; s = s->next)
      if (s->param_number > count) count = s->param_number;
  }
  return overload_hooks.compare_function_templates(a->symbol, b->symbol, 0, (int)count);
}

static int compare_candidates(const a_candidate_function *a, const a_candidate_function *b)
{
  bool cfront = cfront_2_1_mode || cfront_3_0_mode;
  if (do_late_ovl_res_tiebreaker && !(cfront && (a->is_template || b->is_template))) {
    if (int order = compare_qualification_of_all_arguments(a, b)) return order;
  }
  if (!late_template_ovl_res_tiebreaker) {
    if (int order = prefer_non_template(a, b)) return order;
  }
  if (a->is_conversion_candidate && b->is_conversion_candidate) {
    if (int order = compare_conversion_candidates(a, b)) return order;
  }
  if (late_template_ovl_res_tiebreaker) {
    if (int order = prefer_non_template(a, b)) return order;
  }
  if (int order = prefer_non_member(a, b)) return order;
  return compare_two_templates(a, b);
}

// -------------------------------------------------------------------------------------------------
// The same function, found twice

bool candidates_are_the_same_function(const a_candidate_function *a, const a_candidate_function *b)
{
  a_symbol *x = symbol_behind(a->symbol), *y = symbol_behind(b->symbol);
  if (x == nullptr || y == nullptr) return false;
  if (x == y) return a->surrogate_conversion == b->surrogate_conversion;
  if (!is_routine_symbol(x) || !is_routine_symbol(y)) return false;
  a_routine *x_routine = routine_of_symbol(x), *y_routine = routine_of_symbol(y);
  if (x_routine == y_routine) return true;
  auto canonical = [](a_routine *routine) {
    a_trans_unit_corresp *corresp = routine->source_corresp.trans_unit_corresp;
    return corresp != nullptr ? corresp->canonical : nullptr;
  };
  if (canonical(x_routine) != nullptr && canonical(x_routine) == canonical(y_routine)) return true;
  return gpp_mode && x_routine->source_corresp.name_linkage == nlk_c &&
         y_routine->source_corresp.name_linkage == nlk_c &&
         identical_types(x_routine->type, y_routine->type);
}

// -------------------------------------------------------------------------------------------------
// The selection

static void free_candidate(a_candidate_function *candidate)
{
  candidate->next = nullptr;
  free_candidate_function_list(candidate);
}

// Keeps the candidates for which `keep` holds, in their order.
template <class Predicate>
static a_candidate_function *filter(a_candidate_function *list, Predicate keep)
{
  a_candidate_function *head = nullptr, **tail = &head;
  while (list != nullptr) {
    a_candidate_function *candidate = list;
    list = list->next;
    if (keep(candidate)) {
      *tail = candidate;
      tail = &candidate->next;
    } else {
      free_candidate(candidate);
    }
  }
  *tail = nullptr;
  return head;
}

static bool is_second_rate(const a_candidate_function *candidate)
{
  for (const an_arg_match_summary *s = candidate->arg_summaries; s != nullptr; s = s->next)
    if (s->rvalue_ref_to_lvalue) return true;
  return false;
}

static a_candidate_function *drop_second_rate_candidates(a_candidate_function *list)
{
  bool any_first_rate = false, any_second_rate = false;
  for (a_candidate_function *c = list; c != nullptr; c = c->next)
    (is_second_rate(c) ? any_second_rate : any_first_rate) = true;
  if (!any_first_rate || !any_second_rate) return list;
  return filter(list, [](const a_candidate_function *c) { return !is_second_rate(c); });
}

static bool is_enum_comparison(const a_candidate_function *candidate)
{
  const char *signature = candidate->builtin_signature;
  return signature != nullptr && strncmp(signature, "EE", 2) == 0;
}

// A comparison of two enums gives way to a function that was written for just these operands.
static bool replaces_enum_comparison(const a_candidate_function *c)
{
  if (c->builtin_signature != nullptr || c->is_template || c->symbol == nullptr) return false;
  if (c->symbol->is_class_member) return false;
  for (const an_arg_match_summary *s = c->arg_summaries; s != nullptr; s = s->next) {
    if (s->param_type == nullptr) return false;
    a_type *type = s->param_type;
    if (is_any_reference_type(type)) type = type_pointed_to(type);
    if (!is_enum_type(type)) return false;
  }
  return true;
}

static a_candidate_function *drop_replaced_enum_comparisons(a_candidate_function *list)
{
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    if (!replaces_enum_comparison(c)) continue;
    return filter(list, [](const a_candidate_function *k) { return !is_enum_comparison(k); });
  }
  return list;
}

static bool any_is_ambiguous(const a_candidate_function *list)
{
  for (; list != nullptr; list = list->next)
    if (list->symbol != nullptr && list->symbol->is_ambiguous) return true;
  return false;
}

// Marks who is best for the argument at hand of all candidates; false when the arguments are through.
static bool rank_current_argument(a_candidate_function *list, bool *error_seen)
{
  if (list->current_arg == nullptr) return false;
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    if (c->current_arg == nullptr) return false;
  }
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    c->best_for_this_arg = true;
    if (c->current_arg->level == aml_error) {
      *error_seen = true;
      continue;
    }
    for (a_candidate_function *other = list; other != nullptr; other = other->next) {
      if (other == c || other->current_arg->level == aml_error) continue;
      if (compare_arguments(other->current_arg, c->current_arg) <= 0) continue;
      c->best_for_this_arg = false;
      break;
    }
  }
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    if (c->best_for_this_arg)
      c->best_for_some_arg = true;
    else
      c->viable = false;
    c->current_arg = c->current_arg->next;
  }
  return true;
}

static bool rank_arguments(a_candidate_function *list)
{
  bool error_seen = false;
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    c->viable = true;
    c->best_for_some_arg = false;
    c->current_arg = c->arg_summaries;
  }
  while (rank_current_argument(list, &error_seen)) {
  }
  return error_seen;
}

static int number_viable(const a_candidate_function *list)
{
  int count = 0;
  for (; list != nullptr; list = list->next)
    count += list->viable;
  return count;
}

// Pairwise elimination among the viable ones, in list order.
static void eliminate_pairwise(a_candidate_function *list)
{
  a_candidate_function *best = nullptr;
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    if (!c->viable) continue;
    if (best == nullptr) {
      best = c;
      continue;
    }
    int order = candidates_are_the_same_function(best, c) ? 1 : compare_candidates(best, c);
    if (order > 0) {
      c->viable = false;
    } else if (order < 0) {
      for (a_candidate_function *before = list; before != c; before = before->next)
        before->viable = false;
      best = c;
    }
  }
}

// Old g++: among candidates of which each is worse somewhere, the built-in whose worst argument is
// the best of all.
static a_candidate_function *least_bad_builtin(a_candidate_function *list)
{
  a_candidate_function *chosen = nullptr;
  int least = aml_no_match + 1;
  bool unique = false;
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    int worst = 0;
    for (an_arg_match_summary *s = c->arg_summaries; s != nullptr; s = s->next)
      if (s->level > worst) worst = s->level;
    if (worst < least) {
      least = worst;
      chosen = c;
      unique = true;
    } else if (worst == least) {
      unique = false;
    }
  }
  return unique && chosen->builtin_signature != nullptr ? chosen : nullptr;
}

static bool beats(const a_candidate_function *a, const a_candidate_function *b)
{
  const an_arg_match_summary *y = b->arg_summaries;
  for (const an_arg_match_summary *x = a->arg_summaries; x != nullptr && y != nullptr;
       x = x->next, y = y->next) {
    if (x->level == aml_error || y->level == aml_error) return true;
    if (compare_arguments(x, y) > 0) return true;
  }
  return compare_candidates(a, b) > 0;
}

// The one viable candidate must beat all others.
static a_selection confirm_winner(a_candidate_function *list, a_candidate_function *winner)
{
  bool beaten_all = true;
  for (a_candidate_function *c = list; c != nullptr; c = c->next) {
    c->best_for_some_arg = false;
    if (c == winner || candidates_are_the_same_function(winner, c) || beats(winner, c)) continue;
    c->best_for_some_arg = true;
    beaten_all = false;
  }
  winner->best_for_some_arg = true;
  list = filter(list, [](const a_candidate_function *c) { return c->best_for_some_arg; });
  return {list, false, !beaten_all};
}

a_selection select_best_candidate(a_candidate_function *list)
{
  list = drop_second_rate_candidates(drop_replaced_enum_comparisons(list));
  if (list == nullptr) return {nullptr, false, false};
  if (any_is_ambiguous(list)) return {list, false, true};
  if (list->next == nullptr) return {list, false, false};
  bool error_seen = rank_arguments(list);
  int viable = number_viable(list);
  if (viable > 1) {
    eliminate_pairwise(list);
    viable = number_viable(list);
    if (viable > 1 && error_seen) {
      free_candidate_function_list(list);
      return {nullptr, true, false};
    }
    if (viable > 1) {
      list = filter(list, [](const a_candidate_function *c) { return c->viable; });
      return {list, false, true};
    }
  }
  if (viable == 0) {
    a_candidate_function *chosen =
        gpp_mode && gnu_version <= 39999 ? least_bad_builtin(list) : nullptr;
    if (chosen != nullptr) {
      list = filter(list, [chosen](const a_candidate_function *c) { return c == chosen; });
      return {list, false, false};
    }
    list = filter(list, [](const a_candidate_function *c) { return c->best_for_some_arg; });
    return {list, false, true};
  }
  a_candidate_function *winner = list;
  while (!winner->viable)
    winner = winner->next;
  return confirm_winner(list, winner);
}
